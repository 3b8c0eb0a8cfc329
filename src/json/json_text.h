// The JSON text conventions every module shares: escaping, the error object,
// locale-independent numbers and option lookup by exact text.
#pragma once

#include <string>
#include <string_view>

namespace ZOLVA::Json {

// Escapes quote, backslash, line feed, carriage return and tab; every other
// byte, control bytes and UTF-8 included, is copied unchanged.
std::string EscapeJsonString(std::string_view text);

// "{\"success\":false,\"error\":\"<escaped message>\"}"
std::string BuildJsonError(std::string_view message);

// A double as a default output stream in the classic locale writes it: six
// significant digits, shorter of fixed and exponent form, whatever locale the
// process has set.
std::string FormatNumber(double value);
void AppendNumber(std::string& out, double value);

// Appends "\"" + escaped text + "\"".
void AppendString(std::string& out, std::string_view text);

// Boolean options are read by exact text, never parsed: an option that is off
// by default is on only when "\"key\":true" occurs in the text, one that is on
// by default is off only when "\"key\":false" occurs. A null text is empty.
bool OptionEnabled(const char* options, std::string_view key, bool defaultValue);

}  // namespace ZOLVA::Json
