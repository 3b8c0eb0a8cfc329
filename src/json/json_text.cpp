#include "json/json_text.h"

#include <cstring>

#include "json/escape.h"
#include "json/number_text.h"

namespace ZOLVA::Json {

namespace {

// Appends `text` with quote, backslash, line feed, carriage return and tab
// escaped; every other byte, control bytes included, is copied as is.
void AppendEscaped(std::string& out, std::string_view text) {
  Text::AppendEscaped(out, text, [](char c) -> const char* {
    switch (c) {
      case '"': return "\\\"";
      case '\\': return "\\\\";
      case '\n': return "\\n";
      case '\r': return "\\r";
      case '\t': return "\\t";
      default: return nullptr;
    }
  });
}

}  // namespace

std::string EscapeJsonString(std::string_view text) {
  std::string out;
  out.reserve(text.size() + 8);
  AppendEscaped(out, text);
  return out;
}

std::string BuildJsonError(std::string_view message) {
  std::string out = "{\"success\":false,\"error\":";
  AppendString(out, message);
  out += '}';
  return out;
}

void AppendString(std::string& out, std::string_view text) {
  out += '"';
  AppendEscaped(out, text);
  out += '"';
}

void AppendNumber(std::string& out, double value) { AppendGeneral(out, value, 6); }

std::string FormatNumber(double value) {
  std::string out;
  AppendNumber(out, value);
  return out;
}

bool OptionEnabled(const char* options, std::string_view key, bool defaultValue) {
  if (!options) return defaultValue;
  std::string needle = "\"";
  needle.append(key);
  needle += defaultValue ? "\":false" : "\":true";
  const bool found = std::strstr(options, needle.c_str()) != nullptr;
  return found ? !defaultValue : defaultValue;
}

}  // namespace ZOLVA::Json
