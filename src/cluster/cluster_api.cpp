#include "cluster/cluster_api.h"

#include <vector>

#include "host/api_frame.h"

namespace ZOLVA_Cluster {
namespace {

const std::vector<ZOLVA::ApiFunction>& ApiTable() {
  static const auto* table = new std::vector<ZOLVA::ApiFunction>{};
  return *table;
}

}  // namespace

namespace State {

void Initialize() {}
void Shutdown() {}

}  // namespace State

void RegisterAPI() { ZOLVA::RegisterApiTable(ApiTable()); }

void UnregisterAPI() { ZOLVA::UnregisterApiTable(ApiTable()); }

}  // namespace ZOLVA_Cluster
