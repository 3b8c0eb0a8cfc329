#include "json/text_scan.h"

#include <algorithm>

namespace ZOLVA::Text {

std::vector<int32_t> ScanIntegerList(const char* text) {
  std::vector<int32_t> values;
  if (!text) return values;
  auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  const char* p = text;
  while (*p) {
    if (!isDigit(*p) && *p != '-') {
      ++p;
      continue;
    }
    const char* start = p;
    if (*p == '-') ++p;
    const char* digits = p;
    while (isDigit(*p)) ++p;
    if (p == digits) continue;  // a lone '-'
    const std::optional<int32_t> value =
        ParseInteger<int32_t>(std::string_view(start, static_cast<size_t>(p - start)));
    if (value) values.push_back(*value);
  }
  return values;
}

size_t FindValueQuote(std::string_view text, size_t afterKey, size_t limit) {
  if (afterKey < text.size() && text[afterKey] == '"') ++afterKey;
  return text.substr(0, std::min(limit, text.size())).find('"', afterKey);
}

}  // namespace ZOLVA::Text
