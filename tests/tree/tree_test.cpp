// Validation and the cycle guard, whose reports come in node order,
// and walks of a chain far deeper than a small stack could recurse through.
#include <gtest/gtest.h>

#include <pthread.h>

#include <algorithm>
#include <string>

#include "tree/tree_operations.h"

namespace {

using namespace ZOLVA_Tree;

// Every node on or below a cycle is reported once, and the later of two siblings with one number: the roots
// are siblings, and so are the orphans of one missing parent.
TEST(Tree, ValidateReportsEverythingOnOrBelowACycleAndDuplicates) {
  TreeClear();
  for (const char* link : {"{S}{S}0", "{T}{S}1", "{U}{T}0", "{R}0", "{R2}0", "{A}{B}0", "{B}{A}0", "{C}{A}1", "{O1}{gone}4",
                           "{O2}{gone}4", "{O3}{lost}4"}) {
    const std::string text = link, guid = text.substr(0, text.find('}') + 1);
    TreeAddCluster(guid.c_str(), "id", text.substr(guid.size(), text.size() - guid.size() - 1).c_str(), text.back() - '0');
  }
  std::string issues = std::string(TreeValidate(nullptr)) + ';';
  const auto take = [&](const std::string& issue) {
    const size_t at = issues.find(issue + ';');
    if (at != std::string::npos) issues.erase(at, issue.size() + 1);
    return at != std::string::npos;
  };
  for (const char* guid : {"{A}", "{B}", "{C}", "{S}", "{T}", "{U}"}) {
    EXPECT_TRUE(take(std::string("circular|") + guid + "|Circular reference detected")) << guid;
  }
  for (const char* orphan : {"{O1}|Parent {gone}", "{O2}|Parent {gone}", "{O3}|Parent {lost}"}) {
    EXPECT_TRUE(take(std::string("orphan|") + orphan + " not found")) << orphan;
  }
  const auto duplicate = [](const char* guid, int idx) {
    return "duplicate_idx|" + std::string(guid) + "|Duplicate index " + std::to_string(idx);
  };
  EXPECT_NE(take(duplicate("{R}", 0)), take(duplicate("{R2}", 0)));
  EXPECT_NE(take(duplicate("{O1}", 4)), take(duplicate("{O2}", 4)));
  EXPECT_EQ(issues, "");
  TreeBuildChildrenArrays();  // walks never re-enter a node on their own path
  EXPECT_EQ(TreeReindexChildren("{A}", 5), 7);
  EXPECT_EQ(std::string(TreeFlattenHierarchy("{B}")), "{B}:0:5;{A}:1:0;{C}:2:6");
  EXPECT_EQ(TreeReindexChildren("{A}", 2147483647), -2147483647);  // the counter wraps, it does not overflow
}

// A recursive walk would need far more than this thread's 256 KiB of stack.
TEST(Tree, WalksADeepChainOnASmallStack) {
  constexpr int kDepth = 1000000;
  auto guid = [](int i) { return "{" + std::to_string(i) + "}"; };
  std::string flat, issues, ring;
  int next = 0;
  auto body = [&] {
    TreeClear();
    for (int i = 0; i < kDepth; ++i) TreeAddCluster(guid(i).c_str(), "", i ? guid(i - 1).c_str() : "", 7);
    TreeBuildChildrenArrays();
    next = TreeReindexAll(3);
    flat = TreeFlattenHierarchy(nullptr);
    issues = TreeValidate(nullptr);
    TreeAddCluster("{0}", "", guid(kDepth - 1).c_str(), 3);  // closes the chain into a ring
    TreeBuildChildrenArrays();
    ring = TreeValidate(nullptr);
  };
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  pthread_attr_setstacksize(&attr, 256 * 1024);
  pthread_t thread;
  auto run = [](void* arg) -> void* { return (*static_cast<decltype(body)*>(arg))(), nullptr; };
  ASSERT_EQ(pthread_create(&thread, &attr, run, &body), 0);
  pthread_join(thread, nullptr);
  EXPECT_EQ(next, kDepth + 3);
  EXPECT_EQ(flat.substr(flat.rfind(';') + 1), guid(kDepth - 1) + ":" + std::to_string(kDepth - 1) + ":" + std::to_string(kDepth + 2));
  EXPECT_EQ(issues, "");
  EXPECT_EQ(std::count(ring.begin(), ring.end(), ';'), kDepth - 1);
}

}  // namespace
