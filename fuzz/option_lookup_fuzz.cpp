// Option texts come from scripts: any bytes must be looked up without harm.
#include <cstddef>
#include <cstdint>
#include <string>

#include "json/json_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string options(reinterpret_cast<const char*>(data), size);
  for (const char* key : {"solo_items", "a", "", "\""}) {
    ZOLVA::Json::OptionEnabled(options.c_str(), key, false);
    ZOLVA::Json::OptionEnabled(options.c_str(), key, true);
  }
  return 0;
}
