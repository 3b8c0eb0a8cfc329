// Integer list texts come from scripts: any bytes, however long, scan safely.
#include <cstddef>
#include <cstdint>
#include <string>

#include "json/text_scan.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  ZOLVA::Text::ScanIntegerList(text.c_str());
  return 0;
}
