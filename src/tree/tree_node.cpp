#include "tree/tree_node.h"

#include <algorithm>

namespace ZOLVA_Tree {

uint32_t Tree::FindNode(std::string_view text) const {
  const uint32_t guid = guids.Find(text);
  return IsNode(guid) ? guid : kNoGuid;
}

uint32_t Tree::Intern(std::string_view text) {
  MakeRoom(nodes, 1);
  const uint32_t guid = guids.Intern(text);
  if (guid == nodes.size()) nodes.emplace_back();
  return guid;
}

void Tree::AppendChild(uint32_t guid, uint32_t child) {
  ChildRun& run = nodes[guid].children;
  if (run.size == run.capacity) {
    const uint32_t capacity = std::max<uint32_t>(4, Narrow(2 * size_t{run.capacity}));
    const uint32_t at = Narrow(childStore.size() + capacity);
    childStore.resize(at);
    std::copy_n(childStore.begin() + run.at, run.size, childStore.end() - capacity);
    run.at = at - capacity;
    run.capacity = capacity;
  }
  childStore[run.at + run.size++] = child;
}

void Tree::SetClusterId(uint32_t guid, std::string_view text) {
  TreeNode& node = nodes[guid];
  if (text.size() <= node.clusterIdSize) {
    clusterIds.replace(node.clusterIdAt, text.size(), text);
  } else {
    const uint32_t at = Narrow(clusterIds.size());
    Narrow(at + text.size());
    clusterIds += text;
    node.clusterIdAt = at;
  }
  node.clusterIdSize = static_cast<uint32_t>(text.size());
}

void Tree::SortByIdx(uint32_t* first, uint32_t* last) {
  const auto byIdx = [&](uint32_t a, uint32_t b) { return nodes[a].idx < nodes[b].idx; };
  if (std::is_sorted(first, last, byIdx)) return;
  // Sorting (number, position) keys reads each node's idx once and keeps
  // equal numbers in list order.
  const size_t count = static_cast<size_t>(last - first);
  sortGuids.assign(first, last);
  sortKeys.resize(count);
  for (size_t i = 0; i < count; ++i) {
    const uint32_t biased = static_cast<uint32_t>(nodes[first[i]].idx) ^ 0x80000000u;
    sortKeys[i] = (uint64_t{biased} << 32) | i;
  }
  std::sort(sortKeys.begin(), sortKeys.end());
  for (size_t i = 0; i < count; ++i) first[i] = sortGuids[static_cast<uint32_t>(sortKeys[i])];
}

}  // namespace ZOLVA_Tree
