// The cluster tree's storage: one node per known GUID in one array, indexed
// by the GUID's number, with parent and children held as numbers, and the
// sibling order every list in the tree is kept in.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "tree/tree_guids.h"

namespace ZOLVA_Tree {

// A run of `size` GUID numbers at `at` in the tree's child store, with room
// for `capacity`.
struct ChildRun {
  uint32_t at = 0;
  uint32_t size = 0;
  uint32_t capacity = 0;
};

struct TreeNode {
  uint32_t parent = kNoGuid;        // kNoGuid for a root
  int32_t idx = 0;                  // sibling order number
  uint32_t clusterIdAt = 0;         // the caller's id text, stored as given,
  uint32_t clusterIdSize = 0;       // in the tree's cluster id store
  ChildRun children;                // kept sorted by the children's idx
  bool present = false;             // false for a GUID known only as a parent
  mutable bool onWalkPath = false;  // true while a walk is inside this node
};

// The whole tree. Every list holds GUID numbers of present nodes; a node may
// sit in more than one list, as the parent links can change after a build.
struct Tree {
  GuidTable guids;
  std::vector<TreeNode> nodes;       // by GUID number
  std::string clusterIds;            // every node's cluster id text
  std::vector<uint32_t> childStore;  // the child lists, each one contiguous
  std::vector<uint32_t> roots;       // parentless and orphaned nodes, by idx
  bool childrenBuilt = false;        // child lists and roots match the links
  std::vector<uint64_t> sortKeys;    // scratch for SortByIdx
  std::vector<uint32_t> sortGuids;   // scratch for SortByIdx

  // The number of the present node named `text`, or kNoGuid.
  uint32_t FindNode(std::string_view text) const;
  // The number of `text`, adding an absent node for it when it is new.
  uint32_t Intern(std::string_view text);
  // True when `guid` names a present node.
  bool IsNode(uint32_t guid) const { return guid != kNoGuid && nodes[guid].present; }

  uint32_t* ChildrenBegin(uint32_t guid) { return childStore.data() + nodes[guid].children.at; }
  uint32_t* ChildrenEnd(uint32_t guid) { return ChildrenBegin(guid) + nodes[guid].children.size; }
  uint32_t Child(uint32_t guid, uint32_t position) const {
    return childStore[nodes[guid].children.at + position];
  }
  // Appends `child` to the child list of `guid`, moving the list to the end
  // of the store with twice the room when it is full.
  void AppendChild(uint32_t guid, uint32_t child);
  // Stores the cluster id text of node `guid`, in place when it fits.
  void SetClusterId(uint32_t guid, std::string_view text);

  // Orders GUID numbers by the idx of their nodes, ascending; equal numbers
  // keep their order.
  void SortByIdx(uint32_t* first, uint32_t* last);
};

}  // namespace ZOLVA_Tree
