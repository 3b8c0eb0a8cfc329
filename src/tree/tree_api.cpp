#include "tree/tree_api.h"

#include <vector>

#include "host/api_frame.h"

namespace ZOLVA_Tree {
namespace {

const std::vector<ZOLVA::ApiFunction>& ApiTable() {
  static const auto* table = new std::vector<ZOLVA::ApiFunction>{};
  return *table;
}

}  // namespace

void Initialize() {}
void Shutdown() {}

void RegisterAPI() { ZOLVA::RegisterApiTable(ApiTable()); }

void UnregisterAPI() { ZOLVA::UnregisterApiTable(ApiTable()); }

}  // namespace ZOLVA_Tree
