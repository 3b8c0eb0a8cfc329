// The tree's operations on the module's one tree. Each holds the tree mutex
// for its whole run. Text results live in the module's result string and
// stay valid until the next operation that writes it. Null C strings count
// as empty.
#pragma once

namespace ZOLVA_Tree {

// Stores a node under `guid`, replacing any node of that GUID whole; false
// for an empty GUID. Invalidates the child lists.
bool TreeAddCluster(const char* guid, const char* cluster_id, const char* parent_guid, int idx);
// Empties the tree.
void TreeClear();
// Builds the child lists and roots from the parent links.
void TreeBuildChildrenArrays();
// "guid:depth:idx;..." in pre-order from every root, or from `root_guid`
// alone when given; empty until the child lists are built.
const char* TreeFlattenHierarchy(const char* root_guid);
// Nodes whose parent is missing, comma-separated.
const char* TreeFindOrphans(const char* unused);
// Nodes without children, comma-separated; empty until built.
const char* TreeGetLeaves(const char* unused);
// Renumbers all root subtrees in pre-order from `start_index`; returns the
// next free number (`start_index` itself until built).
int TreeReindexAll(int start_index);
// Renumbers the subtrees under `parent_guid`, leaving the parent's own number.
int TreeReindexChildren(const char* parent_guid, int start_index);
// Moves a node under a new parent (empty for a root), refusing cycles.
bool TreeSetParent(const char* child_guid, const char* new_parent_guid);
// The integrity issues joined by ';', empty when there are none.
const char* TreeValidate(const char* unused);

}  // namespace ZOLVA_Tree
