// Any bytes, both as the stored text and as the container those bytes
// encode to, through the Base64 decoder and the container reader.
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "cluster/base64.h"
#include "cluster/binary_format.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace ZOLVA_Cluster::Serialize;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  std::vector<ZOLVA_Cluster::ClusterData> clusters;
  Base64Decode(text);
  DeserializeAllClusters(text, clusters);
  const std::string container = Base64Encode(std::vector<uint8_t>(data, data + size));
  if (DeserializeAllClusters(container, clusters)) {
    // Whatever was read back must survive its own round trip unchanged in number.
    std::vector<ZOLVA_Cluster::ClusterData> again;
    if (!DeserializeAllClusters(SerializeAllClusters(clusters), again) || again.size() != clusters.size()) {
      __builtin_trap();
    }
  }
  return 0;
}
