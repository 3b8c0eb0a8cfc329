// Decimal numbers as text, the same in every locale and on every platform:
// the C library formats and reads them, and the point is swapped for the one
// its current locale uses, so neither a decimal comma nor a missing
// floating-point <charconv> changes a byte.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace ZOLVA::Json {

// The number at the start of `text`: an optional minus, digits with an
// optional point (at least one digit), and an optional exponent ("e" or "E",
// an optional sign, digits; without digits it is not part of the number).
// Nothing when no number starts there, or when the number lies outside what
// a double holds: too large, or not zero yet closer to zero than the smallest
// double. `length`, when given, receives the count of characters read.
std::optional<double> ReadNumber(std::string_view text, size_t* length = nullptr);

// `significantDigits` significant digits, the shorter of fixed and exponent
// form, trailing zeros dropped ("0.1", "1.23457e+06", "inf", "-nan").
void AppendGeneral(std::string& out, double value, int significantDigits);

// Fixed notation with `decimals` digits after the point ("120.000000").
void AppendFixed(std::string& out, double value, int decimals);

}  // namespace ZOLVA::Json
