#include "tree/tree_operations.h"

#include <mutex>
#include <string>
#include <vector>

#include "tree/tree_links.h"
#include "tree/tree_node.h"
#include "tree/tree_traversal.h"
#include "tree/tree_validation.h"

namespace ZOLVA_Tree {
namespace {

NodeMap g_tree;
std::vector<std::string> g_roots;  // parentless and orphaned nodes, by idx
bool g_childrenBuilt = false;      // child lists and roots match the links
std::mutex g_treeMutex;
std::string g_resultBuffer;

using Lock = std::lock_guard<std::mutex>;

std::string Text(const char* text) { return text ? std::string(text) : std::string(); }

template <typename Predicate>
const char* ListGuids(Predicate include) {
  g_resultBuffer.clear();
  for (const auto& [guid, node] : g_tree) {
    if (!include(node)) continue;
    if (!g_resultBuffer.empty()) g_resultBuffer += ',';
    g_resultBuffer += guid;
  }
  return g_resultBuffer.c_str();
}

}  // namespace

bool TreeAddCluster(const char* guid, const char* cluster_id, const char* parent_guid, int idx) {
  Lock lock(g_treeMutex);
  if (!guid || !*guid) return false;
  g_tree.insert_or_assign(guid, TreeNode{guid, Text(cluster_id), Text(parent_guid), idx, {}});
  g_childrenBuilt = false;
  return true;
}

void TreeClear() {
  Lock lock(g_treeMutex);
  g_tree.clear();
  g_roots.clear();
  g_childrenBuilt = false;
}

void TreeBuildChildrenArrays() {
  Lock lock(g_treeMutex);
  BuildChildLists(g_tree, g_roots);
  g_childrenBuilt = true;
}

const char* TreeFlattenHierarchy(const char* root_guid) {
  Lock lock(g_treeMutex);
  if (!g_childrenBuilt) {
    g_resultBuffer.clear();
  } else if (root_guid && *root_guid) {
    WriteFlattened(g_tree, {root_guid}, g_resultBuffer);
  } else {
    WriteFlattened(g_tree, g_roots, g_resultBuffer);
  }
  return g_resultBuffer.c_str();
}

const char* TreeFindOrphans(const char* /*unused*/) {
  Lock lock(g_treeMutex);
  return ListGuids([](const TreeNode& node) {
    return !node.parentGuid.empty() && !FindNode(g_tree, node.parentGuid);
  });
}

const char* TreeGetLeaves(const char* /*unused*/) {
  Lock lock(g_treeMutex);
  if (!g_childrenBuilt) {
    g_resultBuffer.clear();
    return g_resultBuffer.c_str();
  }
  return ListGuids([](const TreeNode& node) { return node.children.empty(); });
}

int TreeReindexAll(int start_index) {
  Lock lock(g_treeMutex);
  if (!g_childrenBuilt) return start_index;
  SortByIdx(g_tree, g_roots);
  return RenumberSubtrees(g_tree, g_roots, nullptr, start_index);
}

int TreeReindexChildren(const char* parent_guid, int start_index) {
  Lock lock(g_treeMutex);
  TreeNode* parent = FindNode(g_tree, Text(parent_guid));
  if (!parent) return start_index;
  SortByIdx(g_tree, parent->children);
  return RenumberSubtrees(g_tree, parent->children, parent, start_index);
}

bool TreeSetParent(const char* child_guid, const char* new_parent_guid) {
  Lock lock(g_treeMutex);
  return Reparent(g_tree, g_roots, Text(child_guid), Text(new_parent_guid));
}

const char* TreeValidate(const char* /*unused*/) {
  Lock lock(g_treeMutex);
  WriteIssues(g_tree, g_resultBuffer);
  return g_resultBuffer.c_str();
}

}  // namespace ZOLVA_Tree
