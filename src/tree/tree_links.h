// Child lists and roots derived from the parent links, and moving a node
// under a new parent.
#pragma once

#include <cstdint>

#include "tree/tree_node.h"

namespace ZOLVA_Tree {

// Rebuilds every child list and the roots from the parent links, each list
// in node order before it is sorted by idx: a node whose parent is empty or
// missing is a root.
void BuildChildLists(Tree& tree);

// Makes `newParent` (kNoGuid for none) the parent of the node `child`,
// keeping the lists in step. Refuses (false, nothing changed) a missing
// child, the child itself as parent, and a parent whose ancestor chain
// reaches the child. A child whose old parent is missing is left in the
// roots, where the last build put it; a missing new parent gets no list entry.
bool Reparent(Tree& tree, uint32_t child, uint32_t newParent);

}  // namespace ZOLVA_Tree
