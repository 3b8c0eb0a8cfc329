// Reading numbers and quoted values out of texts that scripts and older
// versions of the interface script wrote, by search rather than by parsing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZOLVA::Text {

// A base-10 integer: leading blanks, an optional sign and at least one digit;
// whatever follows the digits is ignored. Nothing when there are no digits or
// the value does not fit `Int` (a run of any length is read safely).
template <typename Int>
std::optional<Int> ParseInteger(std::string_view text) {
  size_t i = text.find_first_not_of(" \t\n\v\f\r");
  if (i == std::string_view::npos) return std::nullopt;
  bool negative = false;
  if (text[i] == '-' || text[i] == '+') negative = text[i++] == '-';
  // The magnitude may reach one past the largest value, for the most negative one.
  const uint64_t limit = negative ? uint64_t{0} - static_cast<uint64_t>(std::numeric_limits<Int>::min())
                                  : static_cast<uint64_t>(std::numeric_limits<Int>::max());
  const size_t digits = i;
  uint64_t magnitude = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    const uint64_t digit = static_cast<uint64_t>(text[i] - '0');
    if (digit > limit || magnitude > (limit - digit) / 10) return std::nullopt;
    magnitude = magnitude * 10 + digit;
  }
  if (i == digits) return std::nullopt;
  if (!negative) return static_cast<Int>(magnitude);
  if (magnitude == 0) return Int{0};
  return static_cast<Int>(-static_cast<Int>(magnitude - 1) - 1);
}

// Every run of an optional '-' and digits, in order, as 32-bit integers; runs
// that do not fit (or a lone '-') are dropped. A null text gives nothing.
std::vector<int32_t> ScanIntegerList(const char* text);

// Where the quoted value after a key opens: the first '"' at or after
// `afterKey` and before `limit`. A quote right at `afterKey` closes a quoted
// key ("key":"value", ["key"]="value") and is not the value's. npos if none.
size_t FindValueQuote(std::string_view text, size_t afterKey, size_t limit = std::string_view::npos);

// The double-quoted string whose opening quote is at `open`, unescaped (a
// backslash before n, t or r gives that control character, before anything
// else that character); `end` receives the index after the closing quote, or
// the text's size when the string is not closed, and `closed` says which.
std::string ReadEscapedString(std::string_view text, size_t open, size_t& end, bool& closed);

// Where the value of the member `key` starts in a JSON object text: the
// first "\"key\"" that opens a member (after '{' or ',') and is followed by
// ':', with blanks allowed around each; the index after the blanks that
// follow the colon (the text's size when nothing follows). npos if none.
size_t FindMemberValue(std::string_view text, std::string_view key);

}  // namespace ZOLVA::Text
