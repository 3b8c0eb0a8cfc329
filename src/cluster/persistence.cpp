#include "cluster/persistence.h"

#include <ctime>
#include <vector>

#include "cluster/binary_format.h"
#include "cluster/cluster_state.h"
#include "cluster/legacy_format.h"
#include "cluster/legacy_migration.h"
#include "cluster/project_ext_state.h"
#include "host/reaper_api.h"
#include "json/json_text.h"

namespace ZOLVA_Cluster {
namespace {

ReaProject* CurrentProject() { return EnumProjects ? EnumProjects(-1, nullptr, 0) : nullptr; }

// Under the lock: the registry now agrees with the current project as stored.
void NoteAgreement(State::ClusterStateCache& cache) {
  cache.valid = true;
  cache.syncedProject = CurrentProject();
  cache.syncedText = ReadProjectValue(kClusterDataKey, kClusterDataBufferSize);
}

}  // namespace

std::string LoadFromProject() {
  const std::string stored = ReadProjectValue(kClusterDataKey, kClusterDataBufferSize);
  if (stored.empty() || stored[0] == '{') return MigrateLegacyData();
  std::vector<ClusterData> clusters;
  if (!Serialize::DeserializeAllClusters(stored, clusters)) return MigrateLegacyData();

  State::WithRegistry([&](State::ClusterStateCache& cache) {
    State::ReplaceClusters(cache, clusters);
    NoteAgreement(cache);
    cache.lastUpdate = std::chrono::steady_clock::now();
  });
  return "{\"success\":true,\"clusters_loaded\":" + std::to_string(clusters.size()) +
         ",\"format\":\"binary\"}";
}

std::string SaveToProject() {
  size_t saved = 0;
  State::WithRegistry([&](State::ClusterStateCache& cache) {
    const std::vector<ClusterData> clusters = State::CopyClusters(cache);
    WriteClusterData(Serialize::SerializeAllClusters(clusters));
    WriteProjectValue(kClusterItemsKey, Serialize::SerializeLegacyClusterItems(clusters));
    MarkCurrentProjectDirty();
    NoteAgreement(cache);
    saved = clusters.size();
  });
  return "{\"success\":true,\"clusters_saved\":" + std::to_string(saved) + "}";
}

std::string RebuildCache() {
  LoadFromProject();
  size_t clusterCount = 0;
  size_t associationCount = 0;
  State::WithRegistry([&](const State::ClusterStateCache& cache) {
    clusterCount = cache.clusters.size();
    for (const auto& entry : cache.clusters) associationCount += entry.second.items.size();
  });
  return "{\"success\":true,\"cluster_count\":" + std::to_string(clusterCount) +
         ",\"association_count\":" + std::to_string(associationCount) + "}";
}

void InvalidateCache() {
  State::WithRegistry([](State::ClusterStateCache& cache) { cache.valid = false; });
}

std::string SyncRegistryWithProject() {
  const std::string stored = ReadProjectValue(kClusterDataKey, kClusterDataBufferSize);
  bool agrees = false;
  State::Initialize();
  State::WithRegistry([&](const State::ClusterStateCache& cache) {
    agrees = cache.valid && cache.syncedProject == CurrentProject() && cache.syncedText == stored;
  });
  if (agrees) return std::string();
  const std::string result = LoadFromProject();
  // The load fails only on a legacy cluster table it cannot read.
  if (result.find("\"success\":false") != std::string::npos) {
    return "The project's clusters could not be read: its legacy cluster table (CLUSTER_TABLE) is damaged.";
  }
  State::WithRegistry([&](State::ClusterStateCache& cache) {
    // A project without stored clusters leaves a load without effect; it
    // must not show the clusters of the project loaded before it.
    if (result.find("\"clusters_migrated\":0,\"message\"") != std::string::npos) State::ReplaceClusters(cache, {});
    NoteAgreement(cache);
  });
  return std::string();
}

bool GetClusterData(const char* guid, std::string& json) {
  if (!guid || !*guid) return false;
  using ZOLVA::Json::AppendNumber;
  using ZOLVA::Json::AppendString;
  return State::WithCluster(guid, [&](const ClusterData& cluster) {
    json = "{\"guid\":";
    AppendString(json, cluster.guid);
    json += ",\"name\":";
    AppendString(json, cluster.name);
    json += ",\"color\":" + std::to_string(cluster.color);
    json += ",\"start_time\":";
    AppendNumber(json, cluster.start_time);
    json += ",\"end_time\":";
    AppendNumber(json, cluster.end_time);
    json += ",\"entry_point\":";
    AppendNumber(json, cluster.entry_point);
    json += ",\"exit_point\":";
    AppendNumber(json, cluster.exit_point);
    json += cluster.is_loop ? ",\"is_loop\":true" : ",\"is_loop\":false";
    json += ",\"region_guid\":";
    AppendString(json, cluster.region_guid);
    json += ",\"item_count\":" + std::to_string(cluster.items.size()) + "}";
  });
}

std::string SetClusterBounds(const char* guid, double start_time, double end_time,
                             double entry_point, double exit_point) {
  if (!guid || !*guid) return ZOLVA::Json::BuildJsonError("Cluster GUID required");
  const bool found = State::WithCluster(guid, [&](ClusterData& cluster) {
    cluster.start_time = start_time;
    cluster.end_time = end_time;
    if (entry_point >= 0) cluster.entry_point = entry_point;
    if (exit_point >= 0) cluster.exit_point = exit_point;
    cluster.time_modified = static_cast<int64_t>(std::time(nullptr));
  });
  return found ? "{\"success\":true}" : ZOLVA::Json::BuildJsonError("Cluster not found");
}

}  // namespace ZOLVA_Cluster
