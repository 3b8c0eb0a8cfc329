// The tree's operations on small trees: exact texts and numbers, orphans,
// re-parenting and its refusals, validation and the cycle guard.
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "tree/tree_operations.h"

namespace {

using namespace ZOLVA_Tree;

struct Node {
  const char *guid, *parent;
  int idx;
};

void Load(const std::vector<Node>& nodes, bool build = true) {
  TreeClear();
  for (const Node& n : nodes) TreeAddCluster(n.guid, "id", n.parent, n.idx);
  if (build) TreeBuildChildrenArrays();
}

std::string Flatten(const char* root = "") { return TreeFlattenHierarchy(root); }

std::vector<std::string> Sorted(const std::string& list, char separator) {
  std::vector<std::string> items;
  std::stringstream in(list);
  for (std::string item; std::getline(in, item, separator);) items.push_back(item);
  std::sort(items.begin(), items.end());
  return items;
}

TEST(Tree, FlattensInPreOrderOnceBuilt) {
  Load({{"{S}", "", 1}, {"{R}", "{P}", 1}, {"{Q}", "{P}", 0}, {"{P}", "", 0}, {"{S}", "", 4}}, false);
  EXPECT_EQ(Flatten(), "");
  EXPECT_EQ(std::string(TreeGetLeaves("")), "");
  EXPECT_EQ(TreeReindexAll(10), 10);
  TreeBuildChildrenArrays();
  EXPECT_EQ(Flatten(), "{P}:0:0;{Q}:1:0;{R}:1:1;{S}:0:4");  // only the second {S} is kept
  EXPECT_EQ(Flatten("{R}"), "{R}:0:1");
  EXPECT_EQ(Flatten("{missing}"), "");
  EXPECT_EQ(Sorted(TreeGetLeaves(nullptr), ','), Sorted("{S},{R},{Q}", ','));
}

TEST(Tree, OrphanStaysAmongTheRootsWhenMoved) {
  Load({{"{O}", "{gone}", 3}, {"{P}", "", 0}});
  EXPECT_TRUE(TreeSetParent("{O}", "{P}"));
  EXPECT_EQ(Flatten(), "{P}:0:0;{O}:1:3;{O}:0:3");
  EXPECT_EQ(TreeReindexAll(0), 3);
  // Under a missing parent a node is in no list until the next build.
  EXPECT_TRUE(TreeSetParent("{P}", "{elsewhere}"));
  EXPECT_EQ(Flatten(), "{O}:0:2");
  EXPECT_TRUE(TreeSetParent("{O}", nullptr));  // appended beside the entry it kept
  EXPECT_EQ(Flatten(), "{O}:0:2;{O}:0:2");
}

TEST(Tree, SetParentRefusesCyclesAndLeavesTheTree) {
  Load({{"{A}", "", 0}, {"{B}", "{A}", 0}, {"{C}", "{B}", 0}, {"{D}", "", 1}});
  const std::string before = Flatten();
  for (const auto& [child, parent] : {std::pair{"{A}", "{A}"}, {"{A}", "{C}"}, {"{A}", "{B}"}, {"{Z}", ""}, {"", ""}}) {
    EXPECT_FALSE(TreeSetParent(child, parent)) << child << " under " << parent;
  }
  EXPECT_EQ(Flatten(), before);
  EXPECT_TRUE(TreeSetParent("{B}", "{D}"));
  EXPECT_TRUE(TreeSetParent("{C}", ""));
  EXPECT_EQ(Flatten(), "{A}:0:0;{C}:0:0;{D}:0:1;{B}:1:0");
}

TEST(Tree, ValidateReportsEverythingOnOrBelowACycleAndDuplicates) {
  Load({{"{S}", "{S}", 0}, {"{T}", "{S}", 1}, {"{U}", "{T}", 0}, {"{R}", "", 0}, {"{R2}", "", 0},
        {"{A}", "{B}", 0}, {"{B}", "{A}", 0}}, false);
  std::vector<std::string> issues = Sorted(TreeValidate(nullptr), ';');
  ASSERT_EQ(issues.size(), 6u);
  EXPECT_TRUE(issues.back() == "duplicate_idx|{R}|Duplicate index 0" || issues.back() == "duplicate_idx|{R2}|Duplicate index 0");
  issues.pop_back();
  const std::string tail = "|Circular reference detected";
  EXPECT_EQ(issues, (std::vector<std::string>{"circular|{A}" + tail, "circular|{B}" + tail, "circular|{S}" + tail,
                                              "circular|{T}" + tail, "circular|{U}" + tail}));
}

TEST(Tree, WalksNeverReenterANodeOnTheirPath) {
  Load({{"{A}", "{B}", 0}, {"{B}", "{A}", 0}, {"{C}", "{A}", 1}});
  EXPECT_EQ(Flatten(), "");  // no roots
  EXPECT_EQ(TreeReindexChildren("{A}", 5), 7);
  EXPECT_EQ(Flatten("{A}"), "{A}:0:0;{B}:1:5;{C}:1:6");
  EXPECT_EQ(Flatten("{B}"), "{B}:0:5;{A}:1:0;{C}:2:6");
}

}  // namespace
