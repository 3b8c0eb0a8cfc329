#include "json/json_text.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <locale>
#include <sstream>
#include <stdexcept>

namespace {

using namespace ZOLVA::Json;

const double kSample[] = {0.0,       -0.0,        1.0,       2.0,      -3.0,        1.5,
                          0.1 + 0.2, 1e-7,        123.4567891, 1234567.0, 0.0001,    1e-5,
                          999999.0,  999999.5,    1e15,      -1e300,   DBL_MIN,     DBL_MAX,
                          5e-324,    1.0 / 3.0,   -2.5e-10,  42.0,     100000.0,    123456.7,
                          INFINITY,  -INFINITY,   0.000123456789, 65536.0, -0.5, 7.77777777};

std::string Classic(double value) {
  std::ostringstream s;
  s.imbue(std::locale::classic());
  s << value;
  return s.str();
}

TEST(FormatNumber, MatchesAClassicDefaultStream) {
  for (double value : kSample) EXPECT_EQ(FormatNumber(value), Classic(value)) << value;
  struct {
    double value;
    const char* text;
  } const fixed[] = {{1.5, "1.5"},           {2.0, "2"},          {1234567.0, "1.23457e+06"},
                     {0.0001, "0.0001"},     {123.4567891, "123.457"}, {0.1 + 0.2, "0.3"},
                     {1e-7, "1e-07"},        {-42.0, "-42"}};
  for (const auto& c : fixed) EXPECT_EQ(FormatNumber(c.value), c.text);
}

// The host may switch the process to a decimal-comma locale at any time.
TEST(FormatNumber, IgnoresADecimalCommaLocale) {
  const char* names[] = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "de_DE"};
  std::locale comma;
  bool found = false;
  for (const char* name : names) {
    try {
      comma = std::locale(name);
      found = true;
      break;
    } catch (const std::runtime_error&) {
    }
  }
  if (!found) GTEST_SKIP() << "no decimal-comma locale installed";
  const std::locale previous = std::locale::global(comma);
  std::setlocale(LC_ALL, comma.name().c_str());
  std::string out;
  AppendNumber(out, 1.5);
  out += ',';
  AppendNumber(out, 123.4567891);
  out += ',';
  AppendNumber(out, 1234567.0);
  std::locale::global(previous);
  std::setlocale(LC_ALL, "C");
  EXPECT_EQ(out, "1.5,123.457,1.23457e+06");
}

TEST(EscapeJsonString, EscapesOnlyTheFiveBytes) {
  const std::string raw("q\"b\\n\nr\rt\tc\x01\x08\x0b\x0c\x1f\x7f\xc3\xa9");
  EXPECT_EQ(EscapeJsonString(raw),
            std::string("q\\\"b\\\\n\\nr\\rt\\tc\x01\x08\x0b\x0c\x1f\x7f\xc3\xa9"));
  EXPECT_EQ(EscapeJsonString(std::string("a\0b", 3)), std::string("a\0b", 3));
}

TEST(BuildJsonError, WrapsTheEscapedMessage) {
  EXPECT_EQ(BuildJsonError("a\"b\nc"), "{\"success\":false,\"error\":\"a\\\"b\\nc\"}");
  EXPECT_EQ(BuildJsonError(""), "{\"success\":false,\"error\":\"\"}");
}

TEST(OptionEnabled, MatchesTheExactLiteralOnly) {
  struct {
    const char* options;
    bool defaultValue;
    bool expected;
  } const cases[] = {
      {"{\"solo_items\":true}", false, true},
      {"{\"solo_items\": true}", false, false},
      {"{\"solo_items\":1}", false, false},
      {"{\"x\":{\"solo_items\":true}}", false, true},
      {"{\"solo_items\":false}", false, false},
      {"{\"solo_items\":false}", true, false},
      {"{\"solo_items\":true}", true, true},
      {"{\"not_solo_items\":true}", false, false},
      {"", true, true},
      {nullptr, false, false},
      {nullptr, true, true},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(OptionEnabled(c.options, "solo_items", c.defaultValue), c.expected)
        << (c.options ? c.options : "(null)") << " default " << c.defaultValue;
  }
}

TEST(ScanIntegerList, ReadsEveryRunOfDigits) {
  struct {
    const char* text;
    std::vector<int32_t> expected;
  } const cases[] = {
      {"[1, 2,3]", {1, 2, 3}},
      {"1 2 3", {1, 2, 3}},
      {"x1y2z3", {1, 2, 3}},
      {"-", {}},
      {"-5", {-5}},
      {"5-3", {5, -3}},
      {"--7", {-7}},
      {"", {}},
      {nullptr, {}},
      {"2147483647,-2147483648", {INT32_MAX, INT32_MIN}},
      {"2147483648,4,-2147483649", {4}},
      {"99999999999999999999999999,1", {1}},
      {"007", {7}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(ScanIntegerList(c.text), c.expected) << (c.text ? c.text : "(null)");
  }
}

}  // namespace
