#include "host/api_frame.h"
#include "tree/tree_operations.h"

namespace ZOLVA_Tree {
namespace {

// The tree starts and ends every load empty.
void Reset() { TreeClear(); }

using ZOLVA::Api;
using ZOLVA::kEmptyText;
constexpr auto kNoFailure = ZOLVA::NoFailure::value;

// A failed renumbering answers the start index unchanged, as a tree with
// nothing to renumber does. Both are constexpr so that the frame can tell
// which argument they answer.
constexpr int UnchangedStart(int start_index) { return start_index; }
constexpr int UnchangedStartOfChildren(const char*, int start_index) { return start_index; }

constexpr ZOLVA::ApiSpec kApi[] = {
    Api<&TreeAddCluster, false>("ZOLVA_TreeAddCluster", "guid,cluster_id,parent_guid,idx", "Add cluster to tree"),
    Api<&TreeClear, kNoFailure>("ZOLVA_TreeClear", "", "Clear the cluster tree"),
    Api<&TreeBuildChildrenArrays, kNoFailure>("ZOLVA_TreeBuildChildrenArrays", "",
                                              "Build children arrays from parent references"),
    Api<&TreeFlattenHierarchy, kEmptyText>("ZOLVA_TreeFlattenHierarchy", "root_guid",
                                           "Flatten tree hierarchy (returns guid:depth:idx;...)"),
    Api<&TreeFindOrphans, kEmptyText>("ZOLVA_TreeFindOrphans", "unused",
                                      "Find orphaned clusters (returns comma-separated GUIDs)"),
    Api<&TreeGetLeaves, kEmptyText>("ZOLVA_TreeGetLeaves", "unused",
                                    "Get leaf clusters (returns comma-separated GUIDs)"),
    Api<&TreeReindexAll, &UnchangedStart>("ZOLVA_TreeReindexAll", "start_index", "Reindex all clusters from start_index"),
    Api<&TreeReindexChildren, &UnchangedStartOfChildren>("ZOLVA_TreeReindexChildren", "parent_guid,start_index",
                                  "Reindex children of parent"),
    Api<&TreeSetParent, false>("ZOLVA_TreeSetParent", "child_guid,new_parent_guid",
                               "Set cluster parent (with cycle prevention)"),
    Api<&TreeValidate, kEmptyText>("ZOLVA_TreeValidate", "unused",
                                   "Validate tree integrity (returns issues or empty)"),
};

}  // namespace

extern const ZOLVA::Module kModule = ZOLVA::MakeModule(kApi, Reset, Reset);

}  // namespace ZOLVA_Tree
