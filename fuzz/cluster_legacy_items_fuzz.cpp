// Any bytes as the script's legacy item text.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "cluster/legacy_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  ZOLVA_Cluster::Serialize::LegacyItemMap items;
  ZOLVA_Cluster::Serialize::ParseLegacyClusterItems(
      std::string_view(reinterpret_cast<const char*>(data), size), items);
  return 0;
}
