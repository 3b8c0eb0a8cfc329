// Scripts may call the tree's operations in any order with any GUIDs,
// cycles included. Bytes drive a sequence of operations over a few GUIDs;
// every walk must end, and validation must agree with a plain walk up the
// parent links of each node.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "tree/tree_operations.h"

namespace {

using namespace ZOLVA_Tree;

// The operations' limit keeps the count of paths through stale child lists,
// which can multiply per operation, small enough for a quick run.
constexpr size_t kMaxOperations = 64;

class Bytes {
 public:
  Bytes(const uint8_t* data, size_t size) : data_(data), size_(size) {}
  bool empty() const { return at_ >= size_; }
  uint8_t Next() { return at_ < size_ ? data_[at_++] : 0; }
  // One of 12 GUIDs, or the empty text.
  std::string Guid() {
    const int n = Next() % 13;
    return n == 12 ? std::string() : "{g" + std::to_string(n) + "}";
  }
  int Number() {
    const uint8_t b = Next();
    // Small numbers, and the ends of the range where a counter could overflow.
    if (b >= 250) return 2147483647 - (b - 250);
    if (b < 6) return -2147483647 - 1 + b;
    return static_cast<int8_t>(b);
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
};

// The orphan and cycle issues as a walk from each node up its parent links
// finds them, sorted.
std::vector<std::string> ExpectedLinkIssues(const std::map<std::string, std::string>& parents) {
  std::vector<std::string> issues;
  for (const auto& [guid, parent] : parents) {
    if (!parent.empty() && !parents.count(parent)) issues.push_back("orphan|" + guid + "|Parent " + parent + " not found");
    std::set<std::string> visited;
    for (std::string at = guid; !at.empty() && parents.count(at); at = parents.at(at)) {
      if (!visited.insert(at).second) {
        issues.push_back("circular|" + guid + "|Circular reference detected");
        break;
      }
    }
  }
  std::sort(issues.begin(), issues.end());
  return issues;
}

std::vector<std::string> LinkIssues(const std::string& text) {
  std::vector<std::string> issues;
  std::stringstream in(text);
  for (std::string issue; std::getline(in, issue, ';');) {
    if (issue.rfind("duplicate_idx|", 0) != 0) issues.push_back(issue);
  }
  std::sort(issues.begin(), issues.end());
  return issues;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Bytes in(data, size);
  std::map<std::string, std::string> parents;  // the links as the operations set them
  TreeClear();
  for (size_t op = 0; op < kMaxOperations && !in.empty(); ++op) {
    switch (in.Next() % 9) {
      case 0: {
        const std::string guid = in.Guid(), parent = in.Guid();
        if (TreeAddCluster(guid.c_str(), "id", parent.c_str(), in.Number())) parents[guid] = parent;
        break;
      }
      case 1: TreeBuildChildrenArrays(); break;
      case 2: TreeFlattenHierarchy(in.Guid().c_str()); break;
      case 3: TreeFindOrphans(nullptr), TreeGetLeaves(nullptr); break;
      case 4: TreeReindexAll(in.Number()); break;
      case 5: {
        const std::string parent = in.Guid();
        TreeReindexChildren(parent.c_str(), in.Number());
        break;
      }
      case 6: {
        const std::string child = in.Guid(), parent = in.Guid();
        if (TreeSetParent(child.c_str(), parent.c_str())) parents[child] = parent;
        break;
      }
      case 7:
        if (LinkIssues(TreeValidate(nullptr)) != ExpectedLinkIssues(parents)) std::abort();
        break;
      default: TreeClear(), parents.clear(); break;
    }
  }
  return 0;
}
