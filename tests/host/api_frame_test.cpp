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
int StartIndex(int start) { return start; }
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

void* Call(const ZOLVA::ApiSpec& spec, void* slot) { return spec.vararg(&slot, 1); }
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

TEST(ApiFrame, AnIntegerSlotKeepsOnlyItsLow32Bits) {
  EXPECT_EQ(Call(kSpecs[6], Int(0x100000003LL)), Int(3));
  EXPECT_EQ(Call(kSpecs[6], Int(0xFFFFFFFFLL)), Int(-1));
}

}  // namespace
