#include "tree/tree_node.h"

#include <algorithm>
#include <utility>

namespace ZOLVA_Tree {

const TreeNode* FindNode(const NodeMap& tree, const std::string& guid) {
  const auto it = tree.find(guid);
  return it == tree.end() ? nullptr : &it->second;
}

TreeNode* FindNode(NodeMap& tree, const std::string& guid) {
  const auto it = tree.find(guid);
  return it == tree.end() ? nullptr : &it->second;
}

void SortByIdx(const NodeMap& tree, std::vector<std::string>& guids) {
  if (guids.size() < 2) return;
  // Each key is looked up once rather than once per comparison.
  std::vector<std::pair<int32_t, std::string>> keyed;
  keyed.reserve(guids.size());
  for (std::string& guid : guids) {
    const TreeNode* node = FindNode(tree, guid);
    keyed.emplace_back(node ? node->idx : 0, std::move(guid));
  }
  std::stable_sort(keyed.begin(), keyed.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  for (size_t i = 0; i < keyed.size(); ++i) guids[i] = std::move(keyed[i].second);
}

}  // namespace ZOLVA_Tree
