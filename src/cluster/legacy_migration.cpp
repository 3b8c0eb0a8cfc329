#include "cluster/legacy_migration.h"

#include <vector>

#include "cluster/binary_format.h"
#include "cluster/cluster_state.h"
#include "cluster/legacy_format.h"
#include "cluster/project_ext_state.h"
#include "json/json_text.h"

namespace ZOLVA_Cluster {

std::string MigrateLegacyData() {
  const std::string table = ReadProjectValue(kClusterTableKey, kClusterTableBufferSize);
  if (table.empty()) {
    return "{\"success\":true,\"clusters_migrated\":0,\"message\":\"No legacy data found\"}";
  }
  std::vector<ClusterData> clusters;
  if (!Serialize::ParseLegacyClusterTable(table, clusters)) {
    return ZOLVA::Json::BuildJsonError("Failed to parse legacy cluster table");
  }

  const std::string itemsText = ReadProjectValue(kClusterItemsKey, kClusterItemsBufferSize);
  Serialize::LegacyItemMap items;
  if (!itemsText.empty() && Serialize::ParseLegacyClusterItems(itemsText, items)) {
    for (ClusterData& cluster : clusters) {
      const auto found = items.find(cluster.guid);
      if (found != items.end()) cluster.items = found->second;
    }
  }

  State::WithRegistry([&](State::ClusterStateCache& cache) { State::ReplaceClusters(cache, clusters); });
  WriteClusterData(Serialize::SerializeAllClusters(clusters));
  MarkCurrentProjectDirty();
  return "{\"success\":true,\"clusters_migrated\":" + std::to_string(clusters.size()) +
         ",\"format\":\"migrated_from_legacy\"}";
}

void PersistLegacyClusterItems() {
  State::WithRegistry([](State::ClusterStateCache& cache) {
    WriteProjectValue(kClusterItemsKey, Serialize::SerializeLegacyClusterItems(State::CopyClusters(cache)));
  });
}

bool HasLegacyData() {
  const std::string table = ReadProjectValue(kClusterTableKey, kLegacyProbeBufferSize);
  return !table.empty() && table[0] == '{';
}

}  // namespace ZOLVA_Cluster
