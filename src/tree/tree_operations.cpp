#include "tree/tree_operations.h"

#include <mutex>
#include <string>
#include <string_view>

#include "tree/tree_links.h"
#include "tree/tree_node.h"
#include "tree/tree_traversal.h"
#include "tree/tree_validation.h"

namespace ZOLVA_Tree {
namespace {

// Texts enter the tree here and are turned into GUID numbers once; every
// operation below works on the numbers.
Tree g_tree;
std::mutex g_treeMutex;
std::string g_resultBuffer;

using Lock = std::lock_guard<std::mutex>;

std::string_view Text(const char* text) { return text ? std::string_view(text) : std::string_view(); }

template <typename Predicate>
const char* ListGuids(Predicate include) {
  g_resultBuffer.clear();
  for (uint32_t guid = 0; guid < g_tree.nodes.size(); ++guid) {
    if (!g_tree.nodes[guid].present || !include(g_tree.nodes[guid])) continue;
    if (!g_resultBuffer.empty()) g_resultBuffer += ',';
    g_resultBuffer += g_tree.guids.Text(guid);
  }
  return g_resultBuffer.c_str();
}

}  // namespace

bool TreeAddCluster(const char* guid, const char* cluster_id, const char* parent_guid, int idx) {
  Lock lock(g_treeMutex);
  if (!guid || !*guid) return false;
  const uint32_t node = g_tree.Intern(guid);
  const std::string_view parent = Text(parent_guid);
  const uint32_t parentNumber = parent.empty() ? kNoGuid : g_tree.Intern(parent);
  g_tree.SetClusterId(node, Text(cluster_id));
  TreeNode& stored = g_tree.nodes[node];
  stored.parent = parentNumber;
  stored.idx = idx;
  stored.children.size = 0;  // a replaced node's old list is dropped
  stored.present = true;
  g_tree.childrenBuilt = false;
  return true;
}

void TreeClear() {
  Lock lock(g_treeMutex);
  g_tree = Tree();
}

void TreeBuildChildrenArrays() {
  Lock lock(g_treeMutex);
  BuildChildLists(g_tree);
  g_tree.childrenBuilt = true;
}

const char* TreeFlattenHierarchy(const char* root_guid) {
  Lock lock(g_treeMutex);
  if (!g_tree.childrenBuilt) {
    g_resultBuffer.clear();
  } else if (root_guid && *root_guid) {
    const uint32_t root = g_tree.FindNode(root_guid);
    WriteFlattened(g_tree, &root, &root + 1, g_resultBuffer);
  } else {
    WriteFlattened(g_tree, g_tree.roots.data(), g_tree.roots.data() + g_tree.roots.size(), g_resultBuffer);
  }
  return g_resultBuffer.c_str();
}

const char* TreeFindOrphans(const char* /*unused*/) {
  Lock lock(g_treeMutex);
  return ListGuids([](const TreeNode& node) { return node.parent != kNoGuid && !g_tree.IsNode(node.parent); });
}

const char* TreeGetLeaves(const char* /*unused*/) {
  Lock lock(g_treeMutex);
  if (!g_tree.childrenBuilt) {
    g_resultBuffer.clear();
    return g_resultBuffer.c_str();
  }
  return ListGuids([](const TreeNode& node) { return node.children.size == 0; });
}

int TreeReindexAll(int start_index) {
  Lock lock(g_treeMutex);
  if (!g_tree.childrenBuilt) return start_index;
  uint32_t* first = g_tree.roots.data();
  uint32_t* last = first + g_tree.roots.size();
  g_tree.SortByIdx(first, last);
  return RenumberSubtrees(g_tree, first, last, kNoGuid, start_index);
}

int TreeReindexChildren(const char* parent_guid, int start_index) {
  Lock lock(g_treeMutex);
  const uint32_t parent = g_tree.FindNode(Text(parent_guid));
  if (parent == kNoGuid) return start_index;
  g_tree.SortByIdx(g_tree.ChildrenBegin(parent), g_tree.ChildrenEnd(parent));
  return RenumberSubtrees(g_tree, g_tree.ChildrenBegin(parent), g_tree.ChildrenEnd(parent), parent, start_index);
}

bool TreeSetParent(const char* child_guid, const char* new_parent_guid) {
  Lock lock(g_treeMutex);
  const uint32_t child = g_tree.FindNode(Text(child_guid));
  if (child == kNoGuid) return false;
  // Only a call that can succeed gets this far with a new text, so a refused
  // call adds no GUID to the tree.
  const std::string_view parent = Text(new_parent_guid);
  return Reparent(g_tree, child, parent.empty() ? kNoGuid : g_tree.Intern(parent));
}

const char* TreeValidate(const char* /*unused*/) {
  Lock lock(g_treeMutex);
  WriteIssues(g_tree, g_resultBuffer);
  return g_resultBuffer.c_str();
}

}  // namespace ZOLVA_Tree
