#include "tree/tree_validation.h"

#include <cstdint>
#include <functional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ZOLVA_Tree {
namespace {

void AddIssue(std::string& out, std::string_view kind, const std::string& guid, std::string_view message) {
  if (!out.empty()) out += ';';
  out += kind;
  out += '|';
  out += guid;
  out += '|';
  out += message;
}

// A node's ancestor chain either ends (at an empty or missing parent) or runs
// into a cycle. Each chain is followed only until it meets a node whose
// outcome is already known, so every node is settled once.
enum class Chain : uint8_t { Walking, Ends, Cycles };

std::unordered_map<const TreeNode*, Chain> SettleChains(const NodeMap& tree) {
  std::unordered_map<const TreeNode*, Chain> chains;
  chains.reserve(tree.size());
  std::vector<const TreeNode*> walk;
  for (const auto& entry : tree) {
    Chain outcome = Chain::Ends;
    for (const TreeNode* node = &entry.second; node;) {
      const auto known = chains.find(node);
      if (known != chains.end()) {
        // Meeting a node of this same walk again closes a cycle.
        outcome = known->second == Chain::Walking ? Chain::Cycles : known->second;
        break;
      }
      chains.emplace(node, Chain::Walking);
      walk.push_back(node);
      node = node->parentGuid.empty() ? nullptr : FindNode(tree, node->parentGuid);
    }
    for (const TreeNode* node : walk) chains[node] = outcome;
    walk.clear();
  }
  return chains;
}

struct SiblingNumber {
  std::string_view parent;
  int32_t idx;
  bool operator==(const SiblingNumber& other) const { return idx == other.idx && parent == other.parent; }
};

struct SiblingNumberHash {
  size_t operator()(const SiblingNumber& key) const {
    return std::hash<std::string_view>()(key.parent) ^ (std::hash<int32_t>()(key.idx) * 0x9E3779B97F4A7C15ull);
  }
};

}  // namespace

void WriteIssues(const NodeMap& tree, std::string& out) {
  out.clear();
  for (const auto& [guid, node] : tree) {
    if (!node.parentGuid.empty() && !FindNode(tree, node.parentGuid)) {
      AddIssue(out, "orphan", guid, "Parent " + node.parentGuid + " not found");
    }
  }

  const auto chains = SettleChains(tree);
  for (const auto& [guid, node] : tree) {
    if (chains.at(&node) == Chain::Cycles) AddIssue(out, "circular", guid, "Circular reference detected");
  }

  // One set of (parent, number) pairs serves all sibling groups; the empty
  // parent stands for the roots.
  std::unordered_set<SiblingNumber, SiblingNumberHash> seen;
  seen.reserve(tree.size());
  for (const auto& [guid, node] : tree) {
    if (!seen.insert({node.parentGuid, node.idx}).second) {
      AddIssue(out, "duplicate_idx", guid, "Duplicate index " + std::to_string(node.idx));
    }
  }
}

}  // namespace ZOLVA_Tree
