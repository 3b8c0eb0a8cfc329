#include "tree/tree_validation.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ZOLVA_Tree {
namespace {

void AddIssue(std::string& out, std::string_view kind, std::string_view guid, std::string_view message,
              std::string_view detail = {}, std::string_view tail = {}) {
  if (!out.empty()) out += ';';
  out += kind;
  out += '|';
  out += guid;
  out += '|';
  out += message;
  out += detail;
  out += tail;
}

// A node's ancestor chain either ends (at an empty or missing parent) or runs
// into a cycle. Each chain is followed only until it meets a node whose
// outcome is already known, so every node is settled once.
enum class Chain : uint8_t { Unknown, Walking, Ends, Cycles };

std::vector<Chain> SettleChains(const Tree& tree) {
  std::vector<Chain> chains(tree.nodes.size(), Chain::Unknown);
  std::vector<uint32_t> walk;
  for (uint32_t start = 0; start < tree.nodes.size(); ++start) {
    Chain outcome = Chain::Ends;
    for (uint32_t guid = start; tree.IsNode(guid); guid = tree.nodes[guid].parent) {
      if (chains[guid] != Chain::Unknown) {
        // Meeting a node of this same walk again closes a cycle.
        outcome = chains[guid] == Chain::Walking ? Chain::Cycles : chains[guid];
        break;
      }
      chains[guid] = Chain::Walking;
      walk.push_back(guid);
    }
    for (const uint32_t guid : walk) chains[guid] = outcome;
    walk.clear();
  }
  return chains;
}

// Marks every node whose idx a sibling earlier in node order already has.
// Nodes are grouped by parent (kNoGuid, the roots, last) keeping node order,
// and each group is sorted by (idx, GUID number).
std::vector<bool> LaterDuplicates(const Tree& tree) {
  const size_t count = tree.nodes.size();
  const auto group = [&](const TreeNode& node) { return node.parent == kNoGuid ? count : node.parent; };
  std::vector<uint32_t> groupEnd(count + 2, 0);
  for (const TreeNode& node : tree.nodes) groupEnd[group(node) + 1] += node.present;
  for (size_t g = 1; g < groupEnd.size(); ++g) groupEnd[g] += groupEnd[g - 1];
  std::vector<uint64_t> keys(groupEnd.back());
  for (uint32_t guid = 0; guid < count; ++guid) {
    const TreeNode& node = tree.nodes[guid];
    if (!node.present) continue;
    const uint32_t biased = static_cast<uint32_t>(node.idx) ^ 0x80000000u;
    keys[groupEnd[group(node)]++] = (uint64_t{biased} << 32) | guid;
  }
  // Each group now ends where the next one began.
  std::vector<bool> later(count, false);
  uint32_t begin = 0;
  for (size_t g = 0; g <= count; ++g) {
    const auto first = keys.begin() + begin, last = keys.begin() + groupEnd[g];
    std::sort(first, last);
    for (auto key = first; key != last && key + 1 != last; ++key) {
      if ((key[0] >> 32) == (key[1] >> 32)) later[static_cast<uint32_t>(key[1])] = true;
    }
    begin = groupEnd[g];
  }
  return later;
}

}  // namespace

void WriteIssues(const Tree& tree, std::string& out) {
  out.clear();
  const auto text = [&](uint32_t guid) { return tree.guids.Text(guid); };
  for (uint32_t guid = 0; guid < tree.nodes.size(); ++guid) {
    const TreeNode& node = tree.nodes[guid];
    if (node.present && node.parent != kNoGuid && !tree.IsNode(node.parent)) {
      AddIssue(out, "orphan", text(guid), "Parent ", text(node.parent), " not found");
    }
  }

  const auto chains = SettleChains(tree);
  for (uint32_t guid = 0; guid < tree.nodes.size(); ++guid) {
    if (chains[guid] == Chain::Cycles) AddIssue(out, "circular", text(guid), "Circular reference detected");
  }

  const auto later = LaterDuplicates(tree);
  for (uint32_t guid = 0; guid < tree.nodes.size(); ++guid) {
    if (later[guid]) {
      AddIssue(out, "duplicate_idx", text(guid), "Duplicate index ", std::to_string(tree.nodes[guid].idx));
    }
  }
}

}  // namespace ZOLVA_Tree
