#include "wwise/export_options.h"

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

// A JSON string value with its escapes decoded (a path from a script
// carries its backslashes doubled); kept only when the string is closed.
void ReadJsonString(std::string_view text, std::string_view key, std::string& field) {
  const std::string opener = "\"" + std::string(key) + "\":\"";
  const size_t start = text.find(opener);
  if (start == std::string_view::npos) return;
  size_t end = 0;
  bool closed = false;
  std::string value = ZOLVA::Text::ReadEscapedString(text, start + opener.size() - 1, end, closed);
  if (closed) field = std::move(value);
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
  options.nativeFormat = text.find("\"format\":\"native\"") != std::string_view::npos;
  ReadJsonString(text, "wwiseProject", options.wwiseProject);
  return options;
}

}  // namespace ZOLVA_Wwise
