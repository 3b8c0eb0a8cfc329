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

std::string ReadEscapedString(std::string_view text, size_t open, size_t& end, bool& closed) {
  std::string value;
  size_t i = open + 1;
  for (; i < text.size() && text[i] != '"'; ++i) {
    char c = text[i];
    if (c == '\\' && i + 1 < text.size()) {
      c = text[++i];
      if (c == 'n') c = '\n';
      else if (c == 't') c = '\t';
      else if (c == 'r') c = '\r';
    }
    value += c;
  }
  closed = i < text.size();
  end = closed ? i + 1 : text.size();
  return value;
}

size_t FindMemberValue(std::string_view text, std::string_view key) {
  static constexpr char kBlanks[] = " \t\r\n";
  const std::string quoted = "\"" + std::string(key) + "\"";
  for (size_t at = text.find(quoted); at != std::string_view::npos; at = text.find(quoted, at + 1)) {
    const size_t before = at == 0 ? std::string_view::npos : text.find_last_not_of(kBlanks, at - 1);
    if (before == std::string_view::npos || (text[before] != '{' && text[before] != ',')) continue;
    const size_t colon = text.find_first_not_of(kBlanks, at + quoted.size());
    if (colon == std::string_view::npos || text[colon] != ':') continue;
    return std::min(text.size(), text.find_first_not_of(kBlanks, colon + 1));
  }
  return std::string_view::npos;
}

}  // namespace ZOLVA::Text
