#include "json/number_text.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace ZOLVA::Json {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The decimal point the C library writes and reads in its current locale
// ("." or "," or a longer sequence), as it formats one half.
std::string LocalePoint() {
  char probe[16];
  const int size = std::snprintf(probe, sizeof probe, "%.1f", 0.5);
  if (size < 3 || size >= static_cast<int>(sizeof probe)) return ".";
  return std::string(probe + 1, static_cast<size_t>(size) - 2);  // between "0" and "5"
}

// Writes `value` with a printf conversion and turns the locale's point, which
// follows the leading digits, into ".". printf never groups thousands
// unless asked, so the point is the only locale mark in its output.
void AppendPrintf(std::string& out, const char* format, int precision, double value) {
  char buffer[64];
  const int size = std::snprintf(buffer, sizeof buffer, format, precision, value);
  if (size < 0) return;
  std::string text;
  if (size < static_cast<int>(sizeof buffer)) {
    text.assign(buffer, static_cast<size_t>(size));
  } else {  // fixed notation of a large value
    text.resize(static_cast<size_t>(size) + 1);
    std::snprintf(text.data(), text.size(), format, precision, value);
    text.pop_back();
  }
  size_t at = text[0] == '-' ? 1 : 0;
  const size_t digits = at;
  while (at < text.size() && IsDigit(text[at])) ++at;
  if (at == digits || at == text.size() || text[at] == 'e') {  // no point: inf, nan or an exponent
    out += text;
    return;
  }
  size_t fraction = at;
  while (fraction < text.size() && !IsDigit(text[fraction])) ++fraction;
  out.append(text, 0, at).append(1, '.').append(text, fraction, std::string::npos);
}

}  // namespace

std::optional<double> ReadNumber(std::string_view text, size_t* length) {
  size_t end = 0;
  bool significant = false;  // a nonzero digit
  size_t digits = 0;
  if (end < text.size() && text[end] == '-') ++end;
  for (; end < text.size() && IsDigit(text[end]); ++end, ++digits) significant |= text[end] != '0';
  const size_t point = end;
  if (end < text.size() && text[end] == '.') {
    for (++end; end < text.size() && IsDigit(text[end]); ++end, ++digits) significant |= text[end] != '0';
  }
  if (digits == 0) return std::nullopt;
  if (end + 1 < text.size() && (text[end] == 'e' || text[end] == 'E')) {
    size_t exponent = end + 1;
    if (text[exponent] == '+' || text[exponent] == '-') ++exponent;
    if (exponent < text.size() && IsDigit(text[exponent])) {
      while (exponent < text.size() && IsDigit(text[exponent])) ++exponent;
      end = exponent;
    }
  }
  // strtod reads the number with the locale's point in place of ".".
  std::string local(text.substr(0, end));
  if (point < end && text[point] == '.') local.replace(point, 1, LocalePoint());
  char* stop = nullptr;
  const double value = std::strtod(local.c_str(), &stop);
  if (stop != local.c_str() + local.size()) return std::nullopt;  // the locale changed in between
  if (std::isinf(value) || (value == 0.0 && significant)) return std::nullopt;
  if (length) *length = end;
  return value;
}

void AppendGeneral(std::string& out, double value, int significantDigits) {
  AppendPrintf(out, "%.*g", significantDigits, value);
}

void AppendFixed(std::string& out, double value, int decimals) { AppendPrintf(out, "%.*f", decimals, value); }

}  // namespace ZOLVA::Json
