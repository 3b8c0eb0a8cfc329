#include "wwise/native/names.h"

#include <cstdint>

namespace ZOLVA_Wwise::Native {
namespace {

// The length of the well-formed UTF-8 sequence at `at`, or 0.
size_t SequenceLength(std::string_view text, size_t at) {
  const auto byte = [&](size_t i) { return static_cast<uint8_t>(text[i]); };
  const uint8_t lead = byte(at);
  if (lead < 0x80) return 1;
  size_t length = 0;
  uint8_t low = 0x80, high = 0xBF;  // bounds of the second byte
  if (lead >= 0xC2 && lead <= 0xDF) length = 2;
  else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) low = 0xA0;
    if (lead == 0xED) high = 0x9F;  // no surrogates
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) low = 0x90;
    if (lead == 0xF4) high = 0x8F;
  } else {
    return 0;
  }
  if (at + length > text.size()) return 0;
  if (byte(at + 1) < low || byte(at + 1) > high) return 0;
  for (size_t k = 2; k < length; ++k) {
    if ((byte(at + k) & 0xC0) != 0x80) return 0;
  }
  // U+FFFE and U+FFFF are not characters XML allows.
  if (length == 3 && lead == 0xEF && byte(at + 1) == 0xBF && byte(at + 2) >= 0xBE) return 0;
  return length;
}

}  // namespace

std::string CleanText(std::string_view text, bool& changed) {
  changed = false;
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size();) {
    const auto c = static_cast<uint8_t>(text[i]);
    if (c < 0x20 || c == 0x7F) {
      changed = true;
      ++i;
      continue;
    }
    const size_t length = SequenceLength(text, i);
    if (length == 0) {
      out += "\xEF\xBF\xBD";
      changed = true;
      ++i;
      continue;
    }
    out.append(text.data() + i, length);
    i += length;
  }
  return out;
}

std::string WwiseIdentifier(std::string_view name) {
  std::string out;
  out.reserve(name.size() + 1);
  for (size_t i = 0; i < name.size();) {
    const char c = name[i];
    const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    const bool digit = c >= '0' && c <= '9';
    if (letter || digit || c == '_') {
      if (digit && out.empty()) out += '_';
      out += c;
      ++i;
      continue;
    }
    out += '_';
    const size_t length = SequenceLength(name, i);
    i += length == 0 ? 1 : length;
  }
  return out.empty() ? "_" : out;
}

}  // namespace ZOLVA_Wwise::Native
