// Integrity check of the parent links: orphans, cycles and duplicate sibling
// numbers, in time linear in the number of nodes.
#pragma once

#include <string>

#include "tree/tree_node.h"

namespace ZOLVA_Tree {

// Replaces `out` with the issues joined by ';' (empty when there are none):
// first "orphan|<guid>|Parent <parent> not found" for each node whose parent
// is missing, then "circular|<guid>|Circular reference detected" for each node
// whose chain of ancestors runs into a cycle, then
// "duplicate_idx|<guid>|Duplicate index <idx>" for each node whose number a
// sibling before it in node order already has. Each pass runs in node order.
void WriteIssues(const Tree& tree, std::string& out);

}  // namespace ZOLVA_Tree
