#include "wwise/native/xml_scan.h"

#include <cstdint>

namespace ZOLVA_Wwise::Native {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

bool IsNameChar(char c) { return !IsBlank(c) && c != '/' && c != '>' && c != '=' && c != '<' && c != '"' && c != '\''; }

void AppendUtf8(std::string& out, uint32_t code) {
  if (code < 0x80) {
    out += static_cast<char>(code);
  } else if (code < 0x800) {
    out += static_cast<char>(0xC0 | (code >> 6));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    out += static_cast<char>(0xE0 | (code >> 12));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  } else {
    out += static_cast<char>(0xF0 | (code >> 18));
    out += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
    out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (code & 0x3F));
  }
}

// The five named entities and character references; anything else is kept
// as it stands.
std::string Decode(std::string_view raw) {
  std::string out;
  out.reserve(raw.size());
  for (size_t i = 0; i < raw.size(); ++i) {
    const size_t end = raw[i] == '&' ? raw.find(';', i) : std::string_view::npos;
    if (end == std::string_view::npos || end - i > 10) {
      out += raw[i];
      continue;
    }
    const std::string_view entity = raw.substr(i + 1, end - i - 1);
    static constexpr std::pair<std::string_view, char> kNamed[] = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};
    bool done = false;
    for (const auto& [name, c] : kNamed) {
      if (entity == name) {
        out += c;
        done = true;
      }
    }
    if (!done && entity.size() > 1 && entity[0] == '#') {
      const bool hex = entity[1] == 'x';
      uint32_t code = 0;
      bool valid = entity.size() > (hex ? 2u : 1u);
      for (size_t k = hex ? 2 : 1; valid && k < entity.size(); ++k) {
        const char c = entity[k];
        const int digit = c >= '0' && c <= '9' ? c - '0'
                          : hex && c >= 'a' && c <= 'f' ? c - 'a' + 10
                          : hex && c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                        : -1;
        valid = digit >= 0;
        code = code * (hex ? 16 : 10) + static_cast<uint32_t>(digit);
        valid = valid && code <= 0x10FFFF;
      }
      if (valid) {
        AppendUtf8(out, code);
        done = true;
      }
    }
    if (!done) {
      out += raw[i];
      continue;
    }
    i = end;
  }
  return out;
}

}  // namespace

const std::string* Tag::Attribute(std::string_view attribute) const {
  for (const auto& [name, value] : attributes) {
    if (name == attribute) return &value;
  }
  return nullptr;
}

void ScanTags(std::string_view text, const std::function<void(const Tag&)>& onTag) {
  size_t at = 0;
  Tag tag;
  while ((at = text.find('<', at)) != std::string_view::npos) {
    const std::string_view rest = text.substr(at);
    std::string_view closer;
    if (rest.substr(0, 4) == "<!--") closer = "-->";
    else if (rest.substr(0, 9) == "<![CDATA[") closer = "]]>";
    else if (rest.substr(0, 2) == "<?") closer = "?>";
    else if (rest.substr(0, 2) == "<!") closer = ">";
    if (!closer.empty()) {
      const size_t end = text.find(closer, at + 2);
      if (end == std::string_view::npos) return;
      at = end + closer.size();
      continue;
    }
    size_t i = at + 1;
    tag.kind = Tag::Start;
    if (i < text.size() && text[i] == '/') {
      tag.kind = Tag::End;
      ++i;
    }
    const size_t nameStart = i;
    while (i < text.size() && IsNameChar(text[i])) ++i;
    tag.name = text.substr(nameStart, i - nameStart);
    tag.attributes.clear();
    // Attributes up to the closing '>': name="value" or name='value'.
    for (;;) {
      while (i < text.size() && IsBlank(text[i])) ++i;
      if (i >= text.size()) return;
      if (text[i] == '>') break;
      if (text[i] == '/') {
        if (tag.kind == Tag::Start) tag.kind = Tag::Empty;
        ++i;
        continue;
      }
      const size_t attributeStart = i;
      while (i < text.size() && IsNameChar(text[i])) ++i;
      const std::string_view attribute = text.substr(attributeStart, i - attributeStart);
      while (i < text.size() && IsBlank(text[i])) ++i;
      if (i >= text.size()) return;
      if (text[i] != '=') {
        if (attribute.empty()) ++i;  // a stray character
        continue;
      }
      ++i;
      while (i < text.size() && IsBlank(text[i])) ++i;
      if (i >= text.size()) return;
      const char quote = text[i];
      if (quote != '"' && quote != '\'') continue;
      const size_t end = text.find(quote, i + 1);
      if (end == std::string_view::npos) return;
      tag.attributes.emplace_back(attribute, Decode(text.substr(i + 1, end - i - 1)));
      i = end + 1;
    }
    if (!tag.name.empty()) onTag(tag);
    at = i + 1;
  }
}

}  // namespace ZOLVA_Wwise::Native
