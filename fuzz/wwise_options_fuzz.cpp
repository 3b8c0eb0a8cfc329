// Export option texts come from scripts: any bytes are read without harm, a
// flag changes only for the exact spelling of its other value, a string
// option never reaches past the text, and a JSON member is found only where
// its quoted key stands.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <algorithm>
#include <string>

#include "json/json_text.h"
#include "json/text_scan.h"
#include "wwise/export_options.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const ZOLVA_Wwise::ExportOptions options = ZOLVA_Wwise::ParseExportOptions(text.c_str());
  using ZOLVA::Json::OptionEnabled;
  if (options.createEvents != OptionEnabled(text.c_str(), "createEvents", true) ||
      options.flattenHierarchy != OptionEnabled(text.c_str(), "flattenHierarchy", false) ||
      options.outputPath.size() > size || options.projectName.size() > size + 12 ||
      options.wwiseProject.size() > size || options.format.size() > std::max<size_t>(size, 5)) {
    std::abort();
  }
  // A member's value follows its quoted key, a colon and blanks only.
  const size_t value = ZOLVA::Text::FindMemberValue(text, "format");
  if (value == std::string::npos) {
    if (options.format != "fixed") std::abort();
    return 0;
  }
  if (value > size) std::abort();
  std::string before = text.substr(0, value);
  auto trim = [&before] { before.erase(before.find_last_not_of(" \t\r\n") + 1); };
  trim();
  if (before.empty() || before.back() != ':') std::abort();
  before.pop_back();
  trim();
  if (before.size() < 8 || before.compare(before.size() - 8, 8, "\"format\"") != 0) std::abort();
  return 0;
}
