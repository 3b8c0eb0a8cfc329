#include "tree/tree_api.h"

#include <vector>

#include "host/api_frame.h"
#include "host/guard.h"
#include "tree/tree_operations.h"

namespace ZOLVA_Tree {
namespace {

// The script-facing twins: the same operations, with every failure turned
// into the operation's plain "nothing done" answer.
bool API_TreeAddCluster(const char* guid, const char* cluster_id, const char* parent_guid, int idx) {
  return ZOLVA::Guarded(false, [&] { return TreeAddCluster(guid, cluster_id, parent_guid, idx); });
}
void API_TreeClear() { ZOLVA::GuardedVoid([] { TreeClear(); }); }
void API_TreeBuildChildrenArrays() { ZOLVA::GuardedVoid([] { TreeBuildChildrenArrays(); }); }
const char* API_TreeFlattenHierarchy(const char* root_guid) {
  return ZOLVA::Guarded<const char*>("", [&] { return TreeFlattenHierarchy(root_guid); });
}
const char* API_TreeFindOrphans(const char* unused) {
  return ZOLVA::Guarded<const char*>("", [&] { return TreeFindOrphans(unused); });
}
const char* API_TreeGetLeaves(const char* unused) {
  return ZOLVA::Guarded<const char*>("", [&] { return TreeGetLeaves(unused); });
}
int API_TreeReindexAll(int start_index) {
  return ZOLVA::Guarded(start_index, [&] { return TreeReindexAll(start_index); });
}
int API_TreeReindexChildren(const char* parent_guid, int start_index) {
  return ZOLVA::Guarded(start_index, [&] { return TreeReindexChildren(parent_guid, start_index); });
}
bool API_TreeSetParent(const char* child_guid, const char* new_parent_guid) {
  return ZOLVA::Guarded(false, [&] { return TreeSetParent(child_guid, new_parent_guid); });
}
const char* API_TreeValidate(const char* unused) {
  return ZOLVA::Guarded<const char*>("", [&] { return TreeValidate(unused); });
}

// Static storage: the keys and definition texts stay put until the library
// itself is unloaded, long after the host's last look at them.
const std::vector<ZOLVA::ApiFunction>& ApiTable() {
  using ZOLVA::DefineApi;
  static const std::vector<ZOLVA::ApiFunction> table{
      DefineApi<&API_TreeAddCluster>("ZOLVA_TreeAddCluster", "guid,cluster_id,parent_guid,idx",
                                     "Add cluster to tree"),
      DefineApi<&API_TreeClear>("ZOLVA_TreeClear", "", "Clear the cluster tree"),
      DefineApi<&API_TreeBuildChildrenArrays>("ZOLVA_TreeBuildChildrenArrays", "",
                                              "Build children arrays from parent references"),
      DefineApi<&API_TreeFlattenHierarchy>("ZOLVA_TreeFlattenHierarchy", "root_guid",
                                           "Flatten tree hierarchy (returns guid:depth:idx;...)"),
      DefineApi<&API_TreeFindOrphans>("ZOLVA_TreeFindOrphans", "unused",
                                      "Find orphaned clusters (returns comma-separated GUIDs)"),
      DefineApi<&API_TreeGetLeaves>("ZOLVA_TreeGetLeaves", "unused",
                                    "Get leaf clusters (returns comma-separated GUIDs)"),
      DefineApi<&API_TreeReindexAll>("ZOLVA_TreeReindexAll", "start_index",
                                     "Reindex all clusters from start_index"),
      DefineApi<&API_TreeReindexChildren>("ZOLVA_TreeReindexChildren", "parent_guid,start_index",
                                          "Reindex children of parent"),
      DefineApi<&API_TreeSetParent>("ZOLVA_TreeSetParent", "child_guid,new_parent_guid",
                                    "Set cluster parent (with cycle prevention)"),
      DefineApi<&API_TreeValidate>("ZOLVA_TreeValidate", "unused",
                                   "Validate tree integrity (returns issues or empty)"),
  };
  return table;
}

}  // namespace

void Initialize() { TreeClear(); }
void Shutdown() { TreeClear(); }

void RegisterAPI() { ZOLVA::RegisterApiTable(ApiTable()); }

void UnregisterAPI() { ZOLVA::UnregisterApiTable(ApiTable()); }

}  // namespace ZOLVA_Tree
