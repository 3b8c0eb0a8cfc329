#include "cluster/association.h"

#include <ctime>

#include "cluster/cluster_state.h"
#include "cluster/legacy_format.h"
#include "cluster/project_ext_state.h"
#include "cluster/project_items.h"
#include "json/json_text.h"

namespace ZOLVA_Cluster::Activation {
namespace {

constexpr size_t kClusterTableReadSize = 65536;

bool IsRegistered(const std::string& guid) {
  return State::WithCluster(guid, [](ClusterData&) {});
}

// The cluster as the script's legacy table has it, or a new one.
ClusterData ClusterToRegister(const std::string& guid) {
  const std::string table = ReadProjectValue(kClusterTableKey, kClusterTableReadSize);
  std::vector<ClusterData> legacy;
  if (!table.empty() && Serialize::ParseLegacyClusterTable(table, legacy)) {
    for (ClusterData& cluster : legacy) {
      if (cluster.guid == guid) return std::move(cluster);
    }
  }
  ClusterData created;
  created.guid = guid;
  created.name = "Auto-created";
  return created;
}

// Runs `edit` on the cluster and its registry index under the state lock.
template <typename Edit>
bool EditCluster(const std::string& guid, Edit&& edit) {
  bool found = false;
  State::WithRegistry([&](State::ClusterStateCache& cache) {
    const auto index = cache.guidIndex.find(guid);
    if (index == cache.guidIndex.end()) return;
    const auto cluster = cache.clusters.find(index->second);
    if (cluster == cache.clusters.end()) return;
    found = true;
    edit(cluster->second, index->second, cache);
  });
  return found;
}

}  // namespace

AssociationOptions ParseAssociationOptions(const char* options_json) {
  AssociationOptions options;
  options.update_existing = ZOLVA::Json::OptionEnabled(options_json, "update_existing", true);
  options.time_bounded = ZOLVA::Json::OptionEnabled(options_json, "time_bounded", true);
  return options;
}

AssociationResult AssociateSelectedItems(const std::string& cluster_guid, const AssociationOptions& options) {
  AssociationResult result;
  State::Initialize();
  if (!IsRegistered(cluster_guid)) State::AddCluster(ClusterToRegister(cluster_guid));
  const bool found = EditCluster(cluster_guid, [&](ClusterData& cluster, uint32_t index, State::ClusterStateCache& cache) {
    RefreshHold hold;
    for (MediaItem* item : SelectedItems()) {
      ItemAssociation record;
      record.item_guid = ItemGuid(item);
      record.position = ItemValue(item, "D_POSITION");
      record.length = ItemValue(item, "D_LENGTH");
      if (options.time_bounded && !Overlaps(cluster, record.position, record.length)) {
        ++result.items_skipped;
        continue;
      }
      const auto existing = cluster.items.find(record.item_guid);
      if (existing != cluster.items.end() && !options.update_existing) {
        ++result.items_skipped;
        continue;
      }
      const int take = static_cast<int>(ItemValue(item, "I_CURTAKE"));
      record.item_take_guid = GetTake ? TakeGuid(GetTake(item, take)) : std::string();
      record.time_modified = static_cast<int64_t>(std::time(nullptr));
      if (existing == cluster.items.end()) cache.itemIndex[record.item_guid].push_back(index);
      result.item_guids.push_back(record.item_guid);
      std::string key = record.item_guid;
      cluster.items.insert_or_assign(std::move(key), std::move(record));
      ++result.items_associated;
    }
    ProjectChanged();
  });
  if (!found) {
    result.error = "Failed to create cluster";
    return result;
  }
  result.success = true;
  return result;
}

AssociationResult DisassociateSelectedItems(const std::string& cluster_guid) {
  AssociationResult result;
  State::Initialize();
  result.success = true;
  EditCluster(cluster_guid, [&](ClusterData& cluster, uint32_t index, State::ClusterStateCache& cache) {
    RefreshHold hold;
    for (MediaItem* item : SelectedItems()) {
      const std::string guid = ItemGuid(item);
      if (cluster.items.erase(guid) == 0) {
        ++result.items_skipped;
        continue;
      }
      State::UnindexItem(cache, guid, index);
      result.item_guids.push_back(guid);
      ++result.items_associated;
    }
    ProjectChanged();
  });
  return result;
}

bool IsItemInCluster(const std::string& item_guid, const std::string& cluster_guid) {
  bool member = false;
  State::WithCluster(cluster_guid, [&](ClusterData& cluster) { member = cluster.items.count(item_guid) != 0; });
  return member;
}

}  // namespace ZOLVA_Cluster::Activation

namespace ZOLVA_Cluster::Render {

std::vector<std::string> GetClusterItemGuids(const std::string& cluster_guid) {
  std::vector<std::string> guids;
  State::WithCluster(cluster_guid, [&](ClusterData& cluster) {
    guids.reserve(cluster.items.size());
    for (const auto& entry : cluster.items) guids.push_back(entry.first);
  });
  return guids;
}

}  // namespace ZOLVA_Cluster::Render
