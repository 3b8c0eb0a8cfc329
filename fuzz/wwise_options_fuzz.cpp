// Export option texts come from scripts: any bytes are read without harm, a
// flag changes only for the exact spelling of its other value, and a string
// option never reaches past the text.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "json/json_text.h"
#include "wwise/export_options.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const ZOLVA_Wwise::ExportOptions options = ZOLVA_Wwise::ParseExportOptions(text.c_str());
  using ZOLVA::Json::OptionEnabled;
  if (options.createEvents != OptionEnabled(text.c_str(), "createEvents", true) ||
      options.flattenHierarchy != OptionEnabled(text.c_str(), "flattenHierarchy", false) ||
      options.outputPath.size() > size || options.projectName.size() > size + 12) {
    std::abort();
  }
  return 0;
}
