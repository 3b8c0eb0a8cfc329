#include "json/json_text.h"

#include <cstring>
#include <locale>
#include <mutex>
#include <sstream>

#include "json/escape.h"

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

void AppendNumber(std::string& out, double value) {
  // One stream pinned to the classic locale, so that neither the C locale nor
  // a global C++ locale the host sets can change the text. It is a plain
  // static behind a lock rather than thread-local: a thread-local object with
  // a destructor would keep the library from ever being unloaded.
  static std::mutex mutex;
  static std::ostringstream stream = [] {
    std::ostringstream s;
    s.imbue(std::locale::classic());
    return s;
  }();
  std::lock_guard<std::mutex> lock(mutex);
  stream.str(std::string());
  stream.clear();
  stream << value;
  out += stream.str();
}

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
