// Depth-first walks down the child lists: flattening and renumbering. Both run
// on an explicit stack, so a tree of any depth is walked in constant stack
// space, and neither enters a node that is already on its own current path,
// so a cycle of parent links ends the walk instead of running it forever.
#pragma once

#include <cstdint>
#include <string>

#include "tree/tree_node.h"

namespace ZOLVA_Tree {

// Replaces `out` with "guid:depth:idx" for every node reached from the starts in [first, last)
// (each at depth 0), in pre-order, entries joined by ';'.
void WriteFlattened(const Tree& tree, const uint32_t* first, const uint32_t* last, std::string& out);

// Renumbers each subtree started in [first, last), in list order: every node gets
// the counter and then has its child list sorted by the old numbers, so the
// numbering is a pre-order count from `next`. `owner`, when not kNoGuid, is
// the node that holds the starts as its child list; it is not renumbered and
// counts as already on the path. Returns the counter after the last node
// numbered.
int32_t RenumberSubtrees(Tree& tree, const uint32_t* first, const uint32_t* last, uint32_t owner, int32_t next);

}  // namespace ZOLVA_Tree
