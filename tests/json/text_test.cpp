// The shared text helpers: numbers in any locale, escaping and the integer scanners.
#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstdlib>
#include <locale>
#include <sstream>
#include <stdexcept>

#include "json/json_text.h"
#include "json/text_scan.h"
#include "comma_locale.h"

namespace {

using namespace ZOLVA::Json;
using ZOLVA::Text::ParseInteger;
using ZOLVA::Text::ScanIntegerList;

const double kSample[] = {0.0, -0.0, 1.5, 0.1 + 0.2, 1e-7, 123.4567891, 1234567.0, 0.0001, 999999.5, 1e15,
                          -1e300, DBL_MIN, DBL_MAX, 5e-324, 1.0 / 3.0, INFINITY, -INFINITY, 65536.0, -42.0};

std::string Classic(double value) {
  std::ostringstream s;
  s.imbue(std::locale::classic());
  s << value;
  return s.str();
}

// Every sample as a classic default stream writes it, also while the process runs in a
// decimal-comma locale, as a host may set one at any time.
TEST(FormatNumber, WritesWhatAClassicStreamWritesInAnyLocale) {
  for (double value : kSample) EXPECT_EQ(FormatNumber(value), Classic(value)) << value;
  sim::CommaLocale comma;
  if (!comma.active && std::getenv("CI")) FAIL() << "no decimal-comma locale: generate de_DE.UTF-8 (scripts/run-tests.sh does)";
  if (!comma.active) GTEST_SKIP() << "no decimal-comma locale installed; the locale check did not run";
  for (double value : kSample) EXPECT_EQ(FormatNumber(value), Classic(value)) << value;
  EXPECT_EQ(FormatNumber(123.4567891) + ' ' + FormatNumber(1234567.0) + ' ' + FormatNumber(1e-7), "123.457 1.23457e+06 1e-07");
}

TEST(JsonText, EscapesOnlyTheFiveBytesAndWrapsErrors) {
  using namespace std::string_literals;
  EXPECT_EQ(EscapeJsonString("q\"b\\\nr\rt\tc\x01\x1f\x7f\xc3\xa9\0z"s), "q\\\"b\\\\\\nr\\rt\\tc\x01\x1f\x7f\xc3\xa9\0z"s);
  EXPECT_EQ(BuildJsonError("a\"b"), "{\"success\":false,\"error\":\"a\\\"b\"}");
}

TEST(TextScan, IntegersAtAndPastTheirBounds) {
  EXPECT_EQ(ParseInteger<int>(" -2147483648,"), INT32_MIN);
  EXPECT_EQ(ParseInteger<int>("+2147483647"), INT32_MAX);
  for (const char* bad : {"2147483648", "-2147483649", "99999999999999999999999999", "-", "x1", ""}) {
    EXPECT_EQ(ParseInteger<int>(bad), std::nullopt) << bad;
  }
  EXPECT_EQ(ParseInteger<int64_t>("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(ParseInteger<int64_t>("18446744073709551626"), std::nullopt);  // wraps a 64-bit accumulator
  EXPECT_EQ(ParseInteger<uint32_t>("4294967295"), UINT32_MAX);
  EXPECT_EQ(ParseInteger<uint32_t>("-5"), std::nullopt);
  const std::pair<const char*, std::vector<int32_t>> lists[] = {
      {"[1, 2,3]", {1, 2, 3}}, {"x1y-2z", {1, -2}}, {"5-3", {5, -3}}, {"--7", {-7}}, {"-", {}}, {nullptr, {}},
      {"2147483647,-2147483648,2147483648,-2147483649,4294967296,99999999999999999999,007", {INT32_MAX, INT32_MIN, 7}}};
  for (const auto& [text, values] : lists) EXPECT_EQ(ScanIntegerList(text), values) << (text ? text : "null");
}

}  // namespace
