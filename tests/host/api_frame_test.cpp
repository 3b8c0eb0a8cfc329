// The generated guard and vararg twin: what the host gets back when a
// registered function throws, and how argument slots are read.
#include "host/api_frame.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <stdexcept>

namespace {

using ZOLVA::Api;

int g_voidCalls = 0;
int ThrowInt(int) { throw 1; }
constexpr int StartIndex(int start) { return start; }
bool ThrowBool(const char*) { throw std::bad_alloc(); }
const char* ThrowText(double) { throw std::runtime_error("x"); }
constexpr char kFailText[] = "fail";
void ThrowVoid() {
  ++g_voidCalls;
  throw 2;
}
int Echo(int value) { return value; }

constexpr ZOLVA::ApiSpec kSpecs[] = {
    Api<&ThrowInt, -1>("A", "v", ""),       Api<&ThrowInt, &StartIndex>("B", "v", ""),
    Api<&ThrowBool, false>("C", "s", ""),   Api<&ThrowText, kFailText>("D", "d", ""),
    Api<&ThrowText, nullptr>("E", "d", ""), Api<&ThrowVoid, ZOLVA::NoFailure::value>("F", "", ""),
    Api<&Echo, 0>("G", "v", ""),
};

void* Call(const ZOLVA::ApiSpec& entry, void* slot) { return entry.vararg(&slot, 1); }
void* Int(intptr_t value) { return reinterpret_cast<void*>(value); }

TEST(ApiFrame, AThrowingFunctionAnswersItsFailureValueThroughBothEntries) {
  double d = 1.0;
  EXPECT_EQ(Call(kSpecs[0], Int(7)), Int(-1));  // sign-extended
  EXPECT_EQ(Call(kSpecs[1], Int(7)), Int(7));
  EXPECT_EQ(Call(kSpecs[2], nullptr), Int(0));
  EXPECT_EQ(Call(kSpecs[3], &d), kFailText);
  EXPECT_EQ(Call(kSpecs[4], &d), nullptr);
  EXPECT_EQ(Call(kSpecs[5], nullptr), nullptr);
  EXPECT_EQ(g_voidCalls, 1);
  // The "API_" entry is the same guarded function.
  EXPECT_EQ(reinterpret_cast<int (*)(int)>(kSpecs[1].typedAddress())(9), 9);
  EXPECT_FALSE(reinterpret_cast<bool (*)(const char*)>(kSpecs[2].typedAddress())(""));
}

constexpr int LastArgument(const char*, int, int last) { return last; }
int ThrowThree(const char*, int, int) { throw 3; }
constexpr char kQuoted[] = "{\"a\":\"b\\\"}";
constexpr char kPlain[] = "it's \\";
constexpr char kBoth[] = "\"'";

constexpr ZOLVA::ApiSpec kRendered[] = {
    Api<&ThrowThree, &LastArgument>("H", "s,a,b", ""),
    Api<&ThrowText, kQuoted>("I", "d", ""),
    Api<&ThrowText, ZOLVA::kEmptyText>("J", "d", ""),
    Api<&ThrowInt, -2147483647 - 1>("K", "v", ""),
    Api<&ThrowBool, true>("L", "s", ""),
};

TEST(ApiFrame, TheFailureValueIsRenderedForTheReference) {
  EXPECT_STREQ(kSpecs[0].failureText, "-1");
  EXPECT_STREQ(kSpecs[2].failureText, "false");
  EXPECT_STREQ(kSpecs[3].failureText, "\"fail\"");
  EXPECT_STREQ(kSpecs[4].failureText, "null");
  EXPECT_STREQ(kSpecs[6].failureText, "0");
  EXPECT_STREQ(kRendered[1].failureText, "'{\"a\":\"b\\\\\"}'");
  EXPECT_STREQ(kRendered[2].failureText, "\"\"");
  EXPECT_STREQ(kRendered[3].failureText, "-2147483648");
  EXPECT_STREQ(kRendered[4].failureText, "true");
  EXPECT_STREQ((Api<&ThrowText, kPlain>("M", "d", "").failureText), "\"it's \\\\\"");
  EXPECT_STREQ((Api<&ThrowText, kBoth>("N", "d", "").failureText), "'\"\\''");
  // No value at all: the function has no result, or its failure is an argument.
  EXPECT_EQ(kSpecs[5].failureText, nullptr);
  EXPECT_EQ(kSpecs[1].failureText, nullptr);
  EXPECT_EQ(kSpecs[1].failureArgument, 0);
  EXPECT_EQ(kRendered[0].failureArgument, 2);
  EXPECT_EQ(kSpecs[0].failureArgument, -1);
  EXPECT_EQ(kSpecs[5].failureArgument, -1);
  // The argument found is the one the guard answers.
  EXPECT_EQ(reinterpret_cast<int (*)(const char*, int, int)>(kRendered[0].typedAddress())("", 4, 5), 5);
}

TEST(ApiFrame, AnIntegerSlotKeepsOnlyItsLow32Bits) {
  EXPECT_EQ(Call(kSpecs[6], Int(0x100000003LL)), Int(3));
  EXPECT_EQ(Call(kSpecs[6], Int(0xFFFFFFFFLL)), Int(-1));
}

}  // namespace
