#include "host/api_frame.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

using ZOLVA::ApiFunction;
using ZOLVA::DefineApi;

double g_seenDouble = 0.0;
int g_seenInt = 0;

int Negate(int value) { return -value; }
bool StoreDouble(const char*, double value) {
  g_seenDouble = value;
  return value > 0.0;
}
const char* Echo(const char* text) { return text; }
void WriteOut(char* buf, int size, int* count, double* value) {
  if (size > 0) buf[0] = 'x';
  *count = size;
  *value = 2.5;
}
void NoArguments() { g_seenInt = 7; }

// A literal with embedded NULs, all its bytes but the terminating one.
template <size_t N>
std::string Bytes(const char (&text)[N]) {
  return std::string(text, N - 1);
}

using Slot = void*;
Slot IntSlot(int v) { return reinterpret_cast<void*>(static_cast<intptr_t>(v)); }
void* Call(const ApiFunction& f, Slot* slots, int count) {
  return reinterpret_cast<void* (*)(void**, int)>(f.vararg)(slots, count);
}

TEST(ApiFrame, DefinitionTextHasFourFieldsFromTheSignature) {
  struct {
    ApiFunction f;
    std::string definition;
  } const cases[] = {
      {DefineApi<&Negate>("Z_Negate", "value", "Negates."), Bytes("int\0int\0value\0Negates.\0")},
      {DefineApi<&StoreDouble>("Z_Store", "name,value", "Stores."),
       Bytes("bool\0const char*,double\0name,value\0Stores.\0")},
      {DefineApi<&WriteOut>("Z_Out", "bufOut,bufOut_sz,countOut,valueOut", "Outs."),
       Bytes("void\0char*,int,int*,double*\0bufOut,bufOut_sz,countOut,valueOut\0Outs.\0")},
      {DefineApi<&NoArguments>("Z_None", "", "Nothing."), Bytes("void\0\0\0Nothing.\0")},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.f.definition, c.definition);
    const std::string name = c.f.apiKey.substr(4);
    EXPECT_EQ(c.f.varargKey, "APIvararg_" + name);
    EXPECT_EQ(c.f.defKey, "APIdef_" + name);
  }
}

TEST(ApiFrame, VarargTwinReadsSlotsAsReaScriptFillsThem) {
  const ApiFunction negate = DefineApi<&Negate>("Z_Negate", "value", "");
  Slot one[] = {IntSlot(5)};
  EXPECT_EQ(reinterpret_cast<intptr_t>(Call(negate, one, 1)), -5);  // sign-extended
  // Only the low 32 bits of a widened integer count.
  Slot wide[] = {reinterpret_cast<void*>(static_cast<intptr_t>(0x100000003LL))};
  EXPECT_EQ(reinterpret_cast<intptr_t>(Call(negate, wide, 1)), -3);

  const ApiFunction echo = DefineApi<&Echo>("Z_Echo", "text", "");
  const char* text = "hello";
  Slot textSlot[] = {const_cast<char*>(text)};
  EXPECT_EQ(Call(echo, textSlot, 1), text);

  const ApiFunction out = DefineApi<&WriteOut>("Z_Out", "bufOut,bufOut_sz,countOut,valueOut", "");
  char buf[4] = {};
  int count = 0;
  double value = 0.0;
  Slot outSlots[] = {buf, IntSlot(4), &count, &value};
  EXPECT_EQ(Call(out, outSlots, 4), nullptr);
  EXPECT_EQ(buf[0], 'x');
  EXPECT_EQ(count, 4);
  EXPECT_EQ(value, 2.5);

  const ApiFunction none = DefineApi<&NoArguments>("Z_None", "", "");
  EXPECT_EQ(Call(none, nullptr, 0), nullptr);
  EXPECT_EQ(g_seenInt, 7);
}

TEST(ApiFrame, NullDoublePointerGivesThePerFunctionDefault) {
  const ApiFunction zero = DefineApi<&StoreDouble>("Z_Zero", "name,value", "");
  const ApiFunction minusOne = DefineApi<&StoreDouble, ZOLVA::NullDoubleIsMinusOne>("Z_M1", "name,value", "");
  double given = 3.25;
  Slot withValue[] = {nullptr, &given};
  Slot withNull[] = {nullptr, nullptr};

  EXPECT_EQ(reinterpret_cast<intptr_t>(Call(zero, withValue, 2)), 1);
  EXPECT_EQ(g_seenDouble, 3.25);
  EXPECT_EQ(reinterpret_cast<intptr_t>(Call(zero, withNull, 2)), 0);
  EXPECT_EQ(g_seenDouble, 0.0);
  Call(minusOne, withNull, 2);
  EXPECT_EQ(g_seenDouble, -1.0);
}

}  // namespace
