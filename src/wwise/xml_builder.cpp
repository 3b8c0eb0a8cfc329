#include "wwise/xml_builder.h"

#include "json/escape.h"
#include "json/number_text.h"

namespace ZOLVA_Wwise::Xml {

namespace {

constexpr std::string_view kDeclaration = "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n";

// Six decimals in fixed notation, with a point whatever the locale.
std::string FormatFixed6(double value) {
  std::string text;
  ZOLVA::Json::AppendFixed(text, value, 6);
  return text;
}

}  // namespace

XmlBuilder::XmlBuilder() : out_(kDeclaration) {}

void XmlBuilder::CloseStartTag() {
  if (!startTagOpen_) return;
  out_ += ">\n";
  startTagOpen_ = false;
}

void XmlBuilder::Indent(size_t depth) { out_.append(depth, '\t'); }

void XmlBuilder::StartElement(std::string_view name) {
  CloseStartTag();
  Indent(open_.size());
  out_ += '<';
  out_ += name;
  open_.emplace_back(name);
  startTagOpen_ = true;
  hasContent_ = false;
}

void XmlBuilder::AddAttribute(std::string_view name, std::string_view value) {
  if (!startTagOpen_) return;
  out_ += ' ';
  out_ += name;
  out_ += "=\"";
  AppendEscaped(out_, value);
  out_ += '"';
}

void XmlBuilder::AddAttribute(std::string_view name, double value) {
  if (!startTagOpen_) return;
  AddAttribute(name, std::string_view(FormatFixed6(value)));
}

void XmlBuilder::AddTextContent(std::string_view text) {
  if (startTagOpen_) {
    CloseStartTag();
    hasContent_ = true;
  }
  AppendEscaped(out_, text);
}

void XmlBuilder::EndElement() {
  if (open_.empty()) return;
  if (startTagOpen_ && !hasContent_) {
    out_ += " />\n";
    startTagOpen_ = false;
  } else {
    Indent(open_.size() - 1);
    out_ += "</";
    out_ += open_.back();
    out_ += ">\n";
  }
  open_.pop_back();
  hasContent_ = true;
}

void XmlBuilder::AddComment(std::string_view text) {
  CloseStartTag();
  Indent(open_.size());
  out_ += "<!-- ";
  out_ += text;
  out_ += " -->\n";
  hasContent_ = true;
}

std::string XmlBuilder::EscapeXml(std::string_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 8);
  AppendEscaped(out, text);
  return out;
}

size_t XmlBuilder::EscapedSize(std::string_view text) {
  size_t size = text.size();
  for (char c : text) {
    switch (c) {
      case '&': size += 4; break;
      case '<':
      case '>': size += 3; break;
      case '"':
      case '\'': size += 5; break;
      default: break;
    }
  }
  return size;
}

void XmlBuilder::AppendEscaped(std::string& out, std::string_view text) {
  ZOLVA::Text::AppendEscaped(out, text, [](char c) -> const char* {
    switch (c) {
      case '&': return "&amp;";
      case '<': return "&lt;";
      case '>': return "&gt;";
      case '"': return "&quot;";
      case '\'': return "&apos;";
      default: return nullptr;
    }
  });
}

}  // namespace ZOLVA_Wwise::Xml
