#include "actions/cluster_outline.h"

#include <string_view>
#include <unordered_set>

#include "cluster/cluster_edit.h"
#include "json/text_scan.h"
#include "tree/tree_operations.h"

namespace ZOLVA_Actions {

std::vector<OutlineEntry> ClusterOutline() {
  // The tree lists its nodes as "guid:depth:idx;" from every root down.
  std::string flat = ZOLVA_Tree::TreeFlattenHierarchy("");
  if (flat.empty()) {
    ZOLVA_Tree::TreeBuildChildrenArrays();
    flat = ZOLVA_Tree::TreeFlattenHierarchy("");
  }
  std::vector<OutlineEntry> outline;
  std::vector<std::string> path;  // the open ancestors, by depth
  std::unordered_set<std::string> listed;
  for (size_t at = 0; at < flat.size();) {
    const size_t end = std::min(flat.find(';', at), flat.size());
    const std::string_view node(flat.data() + at, end - at);
    at = end + 1;
    const size_t colon = node.find(':');
    if (colon == std::string_view::npos) continue;
    const int depth = ZOLVA::Text::ParseInteger<int>(node.substr(colon + 1)).value_or(0);
    if (depth < 0 || static_cast<size_t>(depth) > path.size()) continue;
    path.resize(static_cast<size_t>(depth));
    OutlineEntry entry{std::string(node.substr(0, colon)), path.empty() ? std::string() : path.back(), depth};
    path.push_back(entry.guid);
    listed.insert(entry.guid);
    outline.push_back(std::move(entry));
  }
  for (const ZOLVA_Cluster::ClusterData& cluster : ZOLVA_Cluster::AllClusters()) {
    if (!listed.count(cluster.guid)) outline.push_back({cluster.guid, std::string(), 0});
  }
  return outline;
}

}  // namespace ZOLVA_Actions
