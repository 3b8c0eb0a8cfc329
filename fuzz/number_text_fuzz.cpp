// Numbers in option texts and saved data come from outside: any bytes are read
// without harm, never past the text, and what is read writes back with
// seventeen significant digits to a text that reads whole to the same double.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "json/number_text.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  size_t length = 0;
  const std::optional<double> value = ZOLVA::Json::ReadNumber(text, &length);
  if (!value) return 0;
  if (length == 0 || length > size || !std::isfinite(*value)) std::abort();
  std::string written;
  ZOLVA::Json::AppendGeneral(written, *value, 17);
  size_t again = 0;
  const std::optional<double> reread = ZOLVA::Json::ReadNumber(written, &again);
  if (!reread || again != written.size() || *reread != *value) std::abort();
  return 0;
}
