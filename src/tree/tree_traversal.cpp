#include "tree/tree_traversal.h"

#include <charconv>

namespace ZOLVA_Tree {
namespace {

// Pre-order walk from each start in turn. `enter(node, depth)` runs when a
// node is entered, before its child list is read, so it may reorder that list.
// A GUID that names no node is skipped, as is a node already on the path: a
// node's own list is therefore never reordered while it is being walked.
template <typename Map, typename Node, typename Enter>
void WalkPreOrder(Map& tree, const std::vector<std::string>& starts, const TreeNode* owner, Enter enter) {
  struct Frame {
    Node* node;
    size_t nextChild;
  };
  std::vector<Frame> path;
  // Marks are cleared on every way out, so a failed walk leaves none behind.
  struct Marks {
    const TreeNode* owner;
    std::vector<Frame>& path;
    ~Marks() {
      if (owner) owner->onWalkPath = false;
      for (const Frame& frame : path) frame.node->onWalkPath = false;
    }
  } marks{owner, path};
  if (owner) owner->onWalkPath = true;

  const auto tryEnter = [&](const std::string& guid) {
    Node* node = FindNode(tree, guid);
    if (!node || node->onWalkPath) return;
    enter(*node, path.size());
    node->onWalkPath = true;
    path.push_back({node, 0});
  };

  for (const std::string& start : starts) {
    tryEnter(start);
    while (!path.empty()) {
      Frame& top = path.back();
      if (top.nextChild == top.node->children.size()) {
        top.node->onWalkPath = false;
        path.pop_back();
        continue;
      }
      const std::string& child = top.node->children[top.nextChild++];
      tryEnter(child);  // may grow `path`; `top` is not used after this
    }
  }
}

void AppendInteger(std::string& out, long long value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  out.append(digits, end);
}

}  // namespace

void WriteFlattened(const NodeMap& tree, const std::vector<std::string>& starts, std::string& out) {
  out.clear();
  WalkPreOrder<const NodeMap, const TreeNode>(tree, starts, nullptr, [&](const TreeNode& node, size_t depth) {
    if (!out.empty()) out += ';';
    out += node.guid;
    out += ':';
    AppendInteger(out, static_cast<long long>(depth));
    out += ':';
    AppendInteger(out, node.idx);
  });
}

int32_t RenumberSubtrees(NodeMap& tree, const std::vector<std::string>& starts, const TreeNode* owner,
                         int32_t next) {
  WalkPreOrder<NodeMap, TreeNode>(tree, starts, owner, [&](TreeNode& node, size_t) {
    node.idx = next;
    // The counter wraps like the 32-bit number it is instead of overflowing.
    next = static_cast<int32_t>(static_cast<uint32_t>(next) + 1u);
    SortByIdx(tree, node.children);
  });
  return next;
}

}  // namespace ZOLVA_Tree
