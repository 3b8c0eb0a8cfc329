#include "tree/tree_links.h"

#include <algorithm>
#include <unordered_set>

namespace ZOLVA_Tree {
namespace {

void RemoveAll(std::vector<std::string>& list, const std::string& guid) {
  list.erase(std::remove(list.begin(), list.end(), guid), list.end());
}

// Walks up from `start` through the parent links; true when the walk reaches
// `child`. It ends at an empty or missing parent or a GUID seen before.
bool AncestryReaches(const NodeMap& tree, const std::string& start, const std::string& child) {
  std::unordered_set<std::string> visited;
  for (const std::string* guid = &start; !guid->empty();) {
    if (*guid == child) return true;
    const TreeNode* node = FindNode(tree, *guid);
    if (!node || !visited.insert(*guid).second) return false;
    guid = &node->parentGuid;
  }
  return false;
}

}  // namespace

void BuildChildLists(NodeMap& tree, std::vector<std::string>& roots) {
  roots.clear();
  for (auto& entry : tree) entry.second.children.clear();
  for (const auto& [guid, node] : tree) {
    TreeNode* parent = node.parentGuid.empty() ? nullptr : FindNode(tree, node.parentGuid);
    (parent ? parent->children : roots).push_back(guid);
  }
  SortByIdx(tree, roots);
  for (auto& entry : tree) SortByIdx(tree, entry.second.children);
}

bool Reparent(NodeMap& tree, std::vector<std::string>& roots, const std::string& child,
              const std::string& newParent) {
  TreeNode* node = FindNode(tree, child);
  if (!node) return false;
  if (!newParent.empty() && (newParent == child || AncestryReaches(tree, newParent, child))) return false;

  if (node->parentGuid.empty()) {
    RemoveAll(roots, child);
  } else if (TreeNode* oldParent = FindNode(tree, node->parentGuid)) {
    RemoveAll(oldParent->children, child);
  }
  node->parentGuid = newParent;

  if (newParent.empty()) {
    roots.push_back(child);
    SortByIdx(tree, roots);
  } else if (TreeNode* parent = FindNode(tree, newParent)) {
    parent->children.push_back(child);
    SortByIdx(tree, parent->children);
  }
  return true;
}

}  // namespace ZOLVA_Tree
