// The node record of the cluster tree and the sibling order every list of
// GUIDs in the tree is kept in.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZOLVA_Tree {

struct TreeNode {
  std::string guid;       // the cluster's GUID text, also the node's key
  std::string clusterId;  // the caller's id text, stored as given
  std::string parentGuid; // empty for a root
  int32_t idx = 0;        // sibling order number
  std::vector<std::string> children;  // kept sorted by the children's idx
  mutable bool onWalkPath = false;    // true while a walk is inside this node
};

// All nodes by GUID. Its iteration order is the order of every pass over all
// nodes; nodes keep their addresses while the map is only read or has nodes
// edited in place.
using NodeMap = std::unordered_map<std::string, TreeNode>;

// Looks a GUID up; null when it names no node.
const TreeNode* FindNode(const NodeMap& tree, const std::string& guid);
TreeNode* FindNode(NodeMap& tree, const std::string& guid);

// Orders GUIDs by the idx of the node each names, ascending; a GUID that
// names no node counts as 0. Equal numbers keep no promised order.
void SortByIdx(const NodeMap& tree, std::vector<std::string>& guids);

}  // namespace ZOLVA_Tree
