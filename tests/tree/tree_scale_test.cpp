// A chain of a million nodes, far deeper than any stack, is flattened,
// renumbered and validated on a thread with a small stack; closed into a ring
// it is still walked to an end and reported node by node.
#include <gtest/gtest.h>

#include <pthread.h>

#include <string>

#include "tree/tree_operations.h"

namespace {

using namespace ZOLVA_Tree;

// Runs `body` with a stack far too small for a walk that recurses per level.
template <typename Body>
void OnSmallStack(Body body) {
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  pthread_attr_setstacksize(&attr, 512 * 1024);
  pthread_t thread;
  auto run = [](void* arg) -> void* { return (*static_cast<Body*>(arg))(), nullptr; };
  ASSERT_EQ(pthread_create(&thread, &attr, run, &body), 0);
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attr);
}

std::string Guid(int i) { return "{" + std::to_string(i) + "}"; }

bool EndsWith(const std::string& text, const std::string& tail) {
  return text.size() >= tail.size() && text.compare(text.size() - tail.size(), tail.size(), tail) == 0;
}

TEST(TreeScale, MillionDeepChainAndItsRing) {
  constexpr int kDepth = 1000000;
  std::string flat, issues, ring, ringIssues;
  int next = 0, ringNext = 0;
  OnSmallStack([&] {
    TreeClear();
    for (int i = 0; i < kDepth; ++i) TreeAddCluster(Guid(i).c_str(), "", i ? Guid(i - 1).c_str() : "", 7);
    TreeBuildChildrenArrays();
    next = TreeReindexAll(3);
    flat = TreeFlattenHierarchy(nullptr);
    issues = TreeValidate(nullptr);
    TreeAddCluster("{0}", "", Guid(kDepth - 1).c_str(), 3);  // the end becomes the start's parent
    TreeBuildChildrenArrays();
    ring = TreeFlattenHierarchy("{5}");
    ringNext = TreeReindexChildren("{0}", 0);
    ringIssues = TreeValidate(nullptr);
  });
  EXPECT_EQ(next, kDepth + 3);
  EXPECT_EQ(flat.compare(0, 15, "{0}:0:3;{1}:1:4"), 0);
  EXPECT_TRUE(EndsWith(flat, ";" + Guid(kDepth - 1) + ":" + std::to_string(kDepth - 1) + ":" + std::to_string(kDepth + 2)));
  EXPECT_EQ(issues, "");
  EXPECT_TRUE(EndsWith(ring, ";{4}:" + std::to_string(kDepth - 1) + ":7"));  // stops short of {5}
  EXPECT_EQ(ringNext, kDepth - 1);
  size_t reported = 0;
  for (size_t at = ringIssues.find("circular|"); at != std::string::npos; at = ringIssues.find("circular|", at + 1)) {
    ++reported;
  }
  EXPECT_EQ(reported, static_cast<size_t>(kDepth));
  EXPECT_EQ(ringIssues.find("duplicate_idx"), std::string::npos);
}

}  // namespace
