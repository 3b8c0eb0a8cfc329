// Any bytes as the script's legacy cluster table.
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "cluster/legacy_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<ZOLVA_Cluster::ClusterData> clusters;
  ZOLVA_Cluster::Serialize::ParseLegacyClusterTable(
      std::string_view(reinterpret_cast<const char*>(data), size), clusters);
  return 0;
}
