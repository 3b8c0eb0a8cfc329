#include "cluster/cluster_api.h"

#include <vector>

#include "host/api_frame.h"

namespace ZOLVA_Cluster {
namespace {

// Static storage: the keys and definition texts stay put until the library
// itself is unloaded, long after the host's last look at them.
const std::vector<ZOLVA::ApiFunction>& ApiTable() {
  static const std::vector<ZOLVA::ApiFunction> table{};
  return table;
}

}  // namespace

namespace State {

void Initialize() {}
void Shutdown() {}

}  // namespace State

void RegisterAPI() { ZOLVA::RegisterApiTable(ApiTable()); }

void UnregisterAPI() { ZOLVA::UnregisterApiTable(ApiTable()); }

}  // namespace ZOLVA_Cluster
