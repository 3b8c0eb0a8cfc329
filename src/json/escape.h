// Escaping for every text format the extension writes: a byte the format
// must escape is replaced by its escape text, and the runs between such bytes
// are copied whole.
#pragma once

#include <string>
#include <string_view>

namespace ZOLVA::Text {

// `escapeOf(byte)` gives the escape text of a byte, or null to keep it.
template <typename EscapeOf>
void AppendEscaped(std::string& out, std::string_view text, EscapeOf escapeOf) {
  size_t copied = 0;  // bytes of `text` already in `out`
  for (size_t i = 0; i < text.size(); ++i) {
    const char* escape = escapeOf(text[i]);
    if (!escape) continue;
    out.append(text.data() + copied, i - copied);
    out += escape;
    copied = i + 1;
  }
  out.append(text.data() + copied, text.size() - copied);
}

}  // namespace ZOLVA::Text
