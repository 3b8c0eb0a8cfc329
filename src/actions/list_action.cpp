// Listing the clusters in REAPER's console.
#include <map>
#include <string>

#include "actions/action_support.h"
#include "actions/actions.h"
#include "actions/cluster_outline.h"
#include "cluster/cluster_edit.h"

namespace ZOLVA_Actions {

void ListClusters() {
  if (!Ready("ZOLVA: List clusters", {ZOLVA_HOST_FUNCTION(ShowConsoleMsg)})) return;
  std::map<std::string, ZOLVA_Cluster::ClusterData> clusters;
  for (ZOLVA_Cluster::ClusterData& cluster : ZOLVA_Cluster::AllClusters()) clusters[cluster.guid] = std::move(cluster);
  if (clusters.empty()) {
    Console("ZOLVA: this project has no clusters. \"ZOLVA: Create cluster from time selection...\" makes one.\n");
    return;
  }
  std::string text = "ZOLVA: " + std::to_string(clusters.size()) + (clusters.size() == 1 ? " cluster" : " clusters") +
                     " (name, start to end, members)\n";
  for (const OutlineEntry& entry : ClusterOutline()) {
    text.append(2 * static_cast<size_t>(entry.depth) + 2, ' ');
    const auto found = clusters.find(entry.guid);
    if (found == clusters.end()) {
      text += "(group " + entry.guid + ")\n";
      continue;
    }
    const ZOLVA_Cluster::ClusterData& cluster = found->second;
    const size_t members = cluster.items.size();
    text += (cluster.name.empty() ? "(no name)" : cluster.name) + ", " + Seconds(cluster.start_time) + " to " +
            Seconds(cluster.end_time) + ", " + std::to_string(members) + (members == 1 ? " item" : " items") +
            (cluster.is_loop ? ", loops" : "") + "\n";
  }
  Console(text);
}

}  // namespace ZOLVA_Actions
