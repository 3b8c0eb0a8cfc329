// The cluster tree's script functions, loaded into the simulated host and
// called as ReaScript calls them.
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "reascript.h"

namespace {

using e2e::Call;
using e2e::Values;

const std::vector<e2e::Signature> kTreeFunctions = {
    {"ZOLVA_TreeAddCluster", "bool|const char*,const char*,const char*,int|guid,cluster_id,parent_guid,idx|Add cluster to tree"},
    {"ZOLVA_TreeClear", "void|||Clear the cluster tree"},
    {"ZOLVA_TreeBuildChildrenArrays", "void|||Build children arrays from parent references"},
    {"ZOLVA_TreeFlattenHierarchy", "const char*|const char*|root_guid|Flatten tree hierarchy (returns guid:depth:idx;...)"},
    {"ZOLVA_TreeFindOrphans", "const char*|const char*|unused|Find orphaned clusters (returns comma-separated GUIDs)"},
    {"ZOLVA_TreeGetLeaves", "const char*|const char*|unused|Get leaf clusters (returns comma-separated GUIDs)"},
    {"ZOLVA_TreeReindexAll", "int|int|start_index|Reindex all clusters from start_index"},
    {"ZOLVA_TreeReindexChildren", "int|const char*,int|parent_guid,start_index|Reindex children of parent"},
    {"ZOLVA_TreeSetParent", "bool|const char*,const char*|child_guid,new_parent_guid|Set cluster parent (with cycle prevention)"},
    {"ZOLVA_TreeValidate", "const char*|const char*|unused|Validate tree integrity (returns issues or empty)"},
};

TEST(TreeE2E, Registration) { e2e::ExpectRegistersInOrder(kTreeFunctions); }

TEST(TreeE2E, ScriptBuildsQueriesRenumbersAndRepairsATree) {
  sim::Host host;
  e2e::LoadedExtension ext(host);
  for (const auto& [guid, parent, idx] : {std::tuple{"{R1}", "", 5}, {"{C1}", "{R1}", 2}, {"{C2}", "{R1}", 1},
                                          {"{R2}", "", 7}, {"{O}", "{gone}", 9}}) {
    EXPECT_EQ(Call(host, "ZOLVA_TreeAddCluster", {guid, "7", parent, idx}), Values{true});
  }
  EXPECT_EQ(Call(host, "ZOLVA_TreeAddCluster", {"", "7", "", 0}), Values{false});
  EXPECT_EQ(Call(host, "ZOLVA_TreeReindexAll", {10}), Values{10});
  EXPECT_EQ(Call(host, "ZOLVA_TreeBuildChildrenArrays"), Values{});
  EXPECT_EQ(Call(host, "ZOLVA_TreeFlattenHierarchy", {std::monostate{}}),
            Values{"{R1}:0:5;{C2}:1:1;{C1}:1:2;{R2}:0:7;{O}:0:9"});
  EXPECT_EQ(Call(host, "ZOLVA_TreeFindOrphans", {""}), Values{"{O}"});
  EXPECT_EQ(Call(host, "ZOLVA_TreeValidate", {""}), Values{"orphan|{O}|Parent {gone} not found"});
  EXPECT_EQ(Call(host, "ZOLVA_TreeSetParent", {"{R1}", "{C2}"}), Values{false});
  EXPECT_EQ(Call(host, "ZOLVA_TreeSetParent", {"{R1}", "{R1}"}), Values{false});
  EXPECT_EQ(Call(host, "ZOLVA_TreeReindexAll", {1}), Values{6});
  EXPECT_EQ(Call(host, "ZOLVA_TreeFlattenHierarchy", {""}), Values{"{R1}:0:1;{C2}:1:2;{C1}:1:3;{R2}:0:4;{O}:0:5"});
  EXPECT_EQ(Call(host, "ZOLVA_TreeReindexChildren", {"{R1}", 20}), Values{22});
  EXPECT_EQ(Call(host, "ZOLVA_TreeClear"), Values{});
  EXPECT_EQ(Call(host, "ZOLVA_TreeValidate", {""}), Values{""});
}

}  // namespace
