// The streaming writer of the Work Unit documents: it appends to one text,
// keeps the names of the open elements for indentation and closing, and
// escapes attribute values and text. No tree, no validation.
#pragma once

#include <deque>
#include <string>
#include <string_view>
#include <utility>

namespace ZOLVA_Wwise::Xml {

// The module's boolean spellings.
inline constexpr std::string_view kTrue = "True";
inline constexpr std::string_view kFalse = "False";

class XmlBuilder {
 public:
  // Starts the text with the declaration line.
  XmlBuilder();

  // Closes a pending start tag with ">" and a line feed, then writes "<" and
  // the name after one tab per open element. Attributes may follow until
  // content, a child or the end of the element.
  void StartElement(std::string_view name);

  // ` name="escaped value"` while a start tag is open; otherwise nothing.
  void AddAttribute(std::string_view name, std::string_view value);
  void AddAttribute(std::string_view name, const char* value) { AddAttribute(name, std::string_view(value)); }
  // Fixed notation with six decimals ("120.000000"), whatever the locale.
  void AddAttribute(std::string_view name, double value);
  // Integers and flags have no attribute form of their own: write their text
  // (std::to_string, kTrue/kFalse) so that neither turns into a double.
  void AddAttribute(std::string_view name, bool value) = delete;
  void AddAttribute(std::string_view name, int value) = delete;

  // Closes a pending start tag with ">" and a line feed, then writes the
  // escaped text as it is: no indentation before it, no line feed after it.
  void AddTextContent(std::string_view text);

  // Self-closes an element that got nothing (" />"), otherwise writes its
  // closing tag after one tab per element still open. Nothing when no
  // element is open.
  void EndElement();

  // "<!-- text -->" on a line of its own, indented like an element; the text
  // is written as it is.
  void AddComment(std::string_view text);

  // Room for a text of that many bytes in all, so that a large document
  // grows without moving.
  void Reserve(size_t bytes) { out_.reserve(bytes); }

  // The text so far; stays valid until the next call that writes.
  const std::string& Text() const { return out_; }
  // Hands the finished text over; the builder is spent afterwards.
  std::string Release() { return std::move(out_); }

  static std::string EscapeXml(std::string_view text);
  // The size of the escaped text.
  static size_t EscapedSize(std::string_view text);
  // Appends the escaped text; unescaped runs are copied whole.
  static void AppendEscaped(std::string& out, std::string_view text);

 private:
  void CloseStartTag();
  void Indent(size_t depth);

  std::string out_;
  std::deque<std::string> open_;  // pushed at the back
  bool startTagOpen_ = false;
  bool hasContent_ = false;
};

}  // namespace ZOLVA_Wwise::Xml
