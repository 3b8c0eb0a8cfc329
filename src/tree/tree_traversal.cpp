#include "tree/tree_traversal.h"

#include <charconv>
#include <vector>

namespace ZOLVA_Tree {
namespace {

// Pre-order walk from each start in turn. `enter(guid, depth)` runs when a
// node is entered, before its child list is read, so it may reorder that list.
// A number that names no node is skipped, as is a node already on the path: a
// node's own list is therefore never reordered while it is being walked.
template <typename Enter>
void WalkPreOrder(const Tree& tree, const uint32_t* first, const uint32_t* last, uint32_t owner, Enter enter) {
  struct Frame {
    uint32_t guid;
    uint32_t nextChild;
  };
  std::vector<Frame> path;
  // Marks are cleared on every way out, so a failed walk leaves none behind.
  struct Marks {
    const Tree& tree;
    uint32_t owner;
    std::vector<Frame>& path;
    ~Marks() {
      if (owner != kNoGuid) tree.nodes[owner].onWalkPath = false;
      for (const Frame& frame : path) tree.nodes[frame.guid].onWalkPath = false;
    }
  } marks{tree, owner, path};
  if (owner != kNoGuid) tree.nodes[owner].onWalkPath = true;

  const auto tryEnter = [&](uint32_t guid) {
    if (!tree.IsNode(guid) || tree.nodes[guid].onWalkPath) return;
    enter(guid, path.size());
    tree.nodes[guid].onWalkPath = true;
    path.push_back({guid, 0});
  };

  for (const uint32_t* start = first; start != last; ++start) {
    tryEnter(*start);
    while (!path.empty()) {
      Frame& top = path.back();
      if (top.nextChild == tree.nodes[top.guid].children.size) {
        tree.nodes[top.guid].onWalkPath = false;
        path.pop_back();
        continue;
      }
      tryEnter(tree.Child(top.guid, top.nextChild++));  // may grow `path`; `top` is not used after this
    }
  }
}

void AppendInteger(std::string& out, long long value) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
  out.append(digits, end);
}

}  // namespace

void WriteFlattened(const Tree& tree, const uint32_t* first, const uint32_t* last, std::string& out) {
  out.clear();
  WalkPreOrder(tree, first, last, kNoGuid, [&](uint32_t guid, size_t depth) {
    if (!out.empty()) out += ';';
    out += tree.guids.Text(guid);
    out += ':';
    AppendInteger(out, static_cast<long long>(depth));
    out += ':';
    AppendInteger(out, tree.nodes[guid].idx);
  });
}

int32_t RenumberSubtrees(Tree& tree, const uint32_t* first, const uint32_t* last, uint32_t owner, int32_t next) {
  WalkPreOrder(tree, first, last, owner, [&](uint32_t guid, size_t) {
    tree.nodes[guid].idx = next;
    // The counter wraps like the 32-bit number it is instead of overflowing.
    next = static_cast<int32_t>(static_cast<uint32_t>(next) + 1u);
    tree.SortByIdx(tree.ChildrenBegin(guid), tree.ChildrenEnd(guid));
  });
  return next;
}

}  // namespace ZOLVA_Tree
