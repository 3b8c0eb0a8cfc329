// Depth-first walks down the child lists: flattening and renumbering. Both run
// on an explicit stack, so a tree of any depth is walked in constant stack
// space, and neither enters a node that is already on its own current path,
// so a cycle of parent links ends the walk instead of running it forever.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tree/tree_node.h"

namespace ZOLVA_Tree {

// Replaces `out` with "guid:depth:idx" for every node reached from `starts`
// (each at depth 0), in pre-order, entries joined by ';'.
void WriteFlattened(const NodeMap& tree, const std::vector<std::string>& starts, std::string& out);

// Renumbers each subtree named in `starts`, in list order: every node gets
// the counter and then has its child list sorted by the old numbers, so the
// numbering is a pre-order count from `next`. `owner`, when given, is the node
// that holds `starts` as its child list; it is not renumbered and counts as
// already on the path. Returns the counter after the last node numbered.
int32_t RenumberSubtrees(NodeMap& tree, const std::vector<std::string>& starts, const TreeNode* owner,
                         int32_t next);

}  // namespace ZOLVA_Tree
