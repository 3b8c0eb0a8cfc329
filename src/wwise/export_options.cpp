#include "wwise/export_options.h"

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

#include "json/json_text.h"
#include "json/number_text.h"
#include "json/text_scan.h"

namespace ZOLVA_Wwise {
namespace {

// Options are searched for by exact text, never parsed: a string option is
// read after "\"key\":\"" up to the next quote, as it stands, and a flag
// leaves its default only for the exact spelling of the other value.
void ReadQuoted(std::string_view text, std::string_view key, std::string& field) {
  const std::string opener = "\"" + std::string(key) + "\":\"";
  const size_t start = text.find(opener);
  if (start == std::string_view::npos) return;
  const size_t from = start + opener.size();
  const size_t end = text.find('"', from);
  if (end != std::string_view::npos) field = std::string(text.substr(from, end - from));
}

// The options of Wwise's own format are read as JSON members, blanks allowed
// around the colon. A string value has its escapes decoded (a path from a
// script carries its backslashes doubled); `closed` says whether it ended.
// Any other value is its text up to the next ',' or '}', blanks trimmed.
// False when the text has no such member.
bool ReadMember(std::string_view text, std::string_view key, std::string& value, bool& closed) {
  const size_t at = ZOLVA::Text::FindMemberValue(text, key);
  if (at == std::string_view::npos) return false;
  if (at < text.size() && text[at] == '"') {
    size_t end = 0;
    value = ZOLVA::Text::ReadEscapedString(text, at, end, closed);
    return true;
  }
  const size_t end = std::min(text.size(), text.find_first_of(",}", at));
  const size_t last = text.find_last_not_of(" \t\r\n", end - 1);  // the key lies before `at`
  value = std::string(text.substr(at, last == std::string_view::npos || last < at ? 0 : last + 1 - at));
  closed = false;
  return true;
}

void ReadNumber(std::string_view text, std::string_view key, double& field) {
  const std::string opener = "\"" + std::string(key) + "\":";
  size_t at = text.find(opener);
  if (at == std::string_view::npos) return;
  at = text.find_first_not_of(" \t\r\n", at + opener.size());
  if (at == std::string_view::npos) return;
  if (const std::optional<double> value = ZOLVA::Json::ReadNumber(text.substr(at))) field = *value;
}

}  // namespace

ExportOptions ParseExportOptions(const char* options_json) {
  ExportOptions options;
  if (!options_json || !*options_json) return options;
  const std::string_view text(options_json);
  ReadQuoted(text, "outputPath", options.outputPath);
  ReadQuoted(text, "projectName", options.projectName);
  options.copyAudioFiles = ZOLVA::Json::OptionEnabled(options_json, "copyAudioFiles", true);
  options.createEvents = ZOLVA::Json::OptionEnabled(options_json, "createEvents", true);
  options.createSoundBank = ZOLVA::Json::OptionEnabled(options_json, "createSoundBank", true);
  options.flattenHierarchy = ZOLVA::Json::OptionEnabled(options_json, "flattenHierarchy", false);
  ReadNumber(text, "defaultFadeTime", options.defaultFadeTime);
  std::string value;
  bool closed = false;
  if (ReadMember(text, "format", value, closed)) options.format = std::move(value);
  if (ReadMember(text, "wwiseProject", value, closed) && closed) options.wwiseProject = std::move(value);
  return options;
}

}  // namespace ZOLVA_Wwise
