// The number module's rules, checked in the classic locale and again in a
// decimal-comma one: what is read and how far, what does not convert, and the
// texts written.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdlib>
#include <optional>
#include <string>

#include "json/number_text.h"
#include "comma_locale.h"

namespace {

using ZOLVA::Json::AppendFixed;
using ZOLVA::Json::AppendGeneral;
using ZOLVA::Json::ReadNumber;

struct ReadCase {
  const char* text;
  std::optional<double> value;  // nothing: a reader keeps its field
  size_t length;
};
const ReadCase kReads[] = {
    {"1.5", 1.5, 3}, {"-0.25,x", -0.25, 5}, {"2E-2}", 0.02, 4}, {"1e3", 1000.0, 3}, {"1e", 1.0, 1},
    {"1e+x", 1.0, 1}, {"7.", 7.0, 2}, {".5", 0.5, 2}, {"-.5", -0.5, 3}, {"1,5", 1.0, 1}, {"0x10", 0.0, 1},
    {"1.2.3", 1.2, 3}, {"9007199254740993", 9007199254740992.0, 16},  // halfway: rounds to even
    {"1.7976931348623157e308", DBL_MAX, 22}, {"4.9406564584124654e-324", 5e-324, 23}, {"0e-999", 0.0, 6},
    {"1.8e308", std::nullopt, 0}, {"-1e999", std::nullopt, 0}, {"1e-400", std::nullopt, 0},
    {"+1", std::nullopt, 0}, {" 1", std::nullopt, 0}, {"-", std::nullopt, 0}, {".", std::nullopt, 0},
    {"inf", std::nullopt, 0}, {"nan", std::nullopt, 0}, {"", std::nullopt, 0}};

struct FormatCase {
  double value;
  int digits;  // significant digits, or decimals when `fixed`
  bool fixed;
  const char* text;
};
const FormatCase kFormats[] = {
    {123.4567891, 6, false, "123.457"}, {1234567.0, 6, false, "1.23457e+06"}, {1e-7, 6, false, "1e-07"},
    {0.1 + 0.2, 6, false, "0.3"}, {-0.0, 6, false, "-0"}, {INFINITY, 6, false, "inf"},
    {1.0 / 3.0, 15, false, "0.333333333333333"}, {1e21, 15, false, "1e+21"}, {0.1, 17, false, "0.10000000000000001"},
    {120.0, 6, true, "120.000000"}, {-0.5, 6, true, "-0.500000"}, {2.5, 0, true, "2"},
    {1e22, 1, true, "10000000000000000000000.0"}};

void CheckTable() {
  for (const ReadCase& c : kReads) {
    size_t length = 0;
    const std::optional<double> value = ReadNumber(c.text, &length);
    EXPECT_EQ(value, c.value) << c.text;
    if (value) {
      EXPECT_EQ(length, c.length) << c.text;
    }
  }
  EXPECT_TRUE(std::signbit(*ReadNumber("-0")));
  for (const FormatCase& c : kFormats) {
    std::string text = "=";
    (c.fixed ? AppendFixed : AppendGeneral)(text, c.value, c.digits);
    EXPECT_EQ(text, std::string("=") + c.text) << c.value;
  }
  std::string huge;  // longer than any fixed buffer
  AppendFixed(huge, -DBL_MAX, 2);
  EXPECT_EQ(huge.size(), 313u);
  EXPECT_EQ(huge.substr(0, 5) + huge.substr(huge.size() - 3), "-1797.00");
  // Seventeen significant digits read back to the same double.
  for (double value : {0.1, 1.0 / 3.0, -DBL_MAX, DBL_MIN, 5e-324, 123456.789e-300, 6.02214076e23}) {
    std::string text;
    AppendGeneral(text, value, 17);
    EXPECT_EQ(ReadNumber(text), value) << text;
  }
}

TEST(NumberText, ReadsAndWritesTheSameInEveryLocale) {
  CheckTable();
  sim::CommaLocale comma;
  if (!comma.active && std::getenv("CI")) FAIL() << "no decimal-comma locale: generate de_DE.UTF-8 (scripts/run-tests.sh does)";
  if (!comma.active) GTEST_SKIP() << "no decimal-comma locale installed; the locale check did not run";
  CheckTable();
}

}  // namespace
