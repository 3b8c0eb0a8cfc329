// Child lists and roots derived from the parent links, and moving a node
// under a new parent.
#pragma once

#include <string>
#include <vector>

#include "tree/tree_node.h"

namespace ZOLVA_Tree {

// Rebuilds every child list and `roots` from the parent links: a node whose
// parent is empty or missing is a root. All lists end sorted by idx.
void BuildChildLists(NodeMap& tree, std::vector<std::string>& roots);

// Makes `newParent` (empty for none) the parent of the node `child`, keeping
// the lists in step. Refuses (false, nothing changed) a missing child, the
// child itself as parent, and a parent whose ancestor chain reaches the child.
// A child whose old parent is missing is left in `roots`, where the last
// build put it; a missing new parent gets no list entry.
bool Reparent(NodeMap& tree, std::vector<std::string>& roots, const std::string& child,
              const std::string& newParent);

}  // namespace ZOLVA_Tree
