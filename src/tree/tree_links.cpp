#include "tree/tree_links.h"

#include <algorithm>

namespace ZOLVA_Tree {
namespace {

// Walks up from `start` through the parent links; true when the walk reaches
// `child`. It ends at an empty or missing parent or a node seen before: the
// walk marks the nodes it passes and clears the marks on a second pass.
bool AncestryReaches(Tree& tree, uint32_t start, uint32_t child) {
  bool reaches = false;
  for (uint32_t guid = start; tree.IsNode(guid) && !tree.nodes[guid].onWalkPath; guid = tree.nodes[guid].parent) {
    if (guid == child) {
      reaches = true;
      break;
    }
    tree.nodes[guid].onWalkPath = true;
  }
  for (uint32_t guid = start; guid != kNoGuid && tree.nodes[guid].onWalkPath; guid = tree.nodes[guid].parent) {
    tree.nodes[guid].onWalkPath = false;
  }
  return reaches;
}

void RemoveAll(std::vector<uint32_t>& list, uint32_t guid) {
  list.erase(std::remove(list.begin(), list.end(), guid), list.end());
}

}  // namespace

void BuildChildLists(Tree& tree) {
  std::vector<TreeNode>& nodes = tree.nodes;
  // The new lists are allocated before any node is touched.
  size_t linked = 0, present = 0;
  for (const TreeNode& node : nodes) {
    present += node.present;
    linked += node.present && tree.IsNode(node.parent);
  }
  std::vector<uint32_t> store(linked), roots;
  roots.reserve(present - linked);
  // Count each node's children, give each list its run, then fill the runs
  // in node order.
  for (TreeNode& node : nodes) node.children = {};
  for (const TreeNode& node : nodes) {
    if (node.present && tree.IsNode(node.parent)) ++nodes[node.parent].children.capacity;
  }
  uint32_t at = 0;
  for (TreeNode& node : nodes) {
    node.children.at = at;
    at += node.children.capacity;
  }
  for (uint32_t guid = 0; guid < nodes.size(); ++guid) {
    const TreeNode& node = nodes[guid];
    if (!node.present) continue;
    if (tree.IsNode(node.parent)) {
      ChildRun& run = nodes[node.parent].children;
      store[run.at + run.size++] = guid;
    } else {
      roots.push_back(guid);
    }
  }
  tree.childStore.swap(store);
  tree.roots.swap(roots);
  tree.SortByIdx(tree.roots.data(), tree.roots.data() + tree.roots.size());
  for (uint32_t guid = 0; guid < nodes.size(); ++guid) tree.SortByIdx(tree.ChildrenBegin(guid), tree.ChildrenEnd(guid));
}

bool Reparent(Tree& tree, uint32_t child, uint32_t newParent) {
  if (!tree.IsNode(child)) return false;
  if (newParent != kNoGuid && (newParent == child || AncestryReaches(tree, newParent, child))) return false;

  TreeNode& node = tree.nodes[child];
  if (node.parent == kNoGuid) {
    RemoveAll(tree.roots, child);
  } else if (tree.IsNode(node.parent)) {
    TreeNode& oldParent = tree.nodes[node.parent];
    uint32_t* first = tree.ChildrenBegin(node.parent);
    oldParent.children.size = static_cast<uint32_t>(std::remove(first, first + oldParent.children.size, child) - first);
  }
  node.parent = newParent;

  if (newParent == kNoGuid) {
    tree.roots.push_back(child);
    tree.SortByIdx(tree.roots.data(), tree.roots.data() + tree.roots.size());
  } else if (tree.IsNode(newParent)) {
    tree.AppendChild(newParent, child);
    tree.SortByIdx(tree.ChildrenBegin(newParent), tree.ChildrenEnd(newParent));
  }
  return true;
}

}  // namespace ZOLVA_Tree
