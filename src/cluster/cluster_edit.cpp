#include "cluster/cluster_edit.h"

#include <ctime>

#include "cluster/cluster_state.h"
#include "host/reaper_api.h"

namespace ZOLVA_Cluster {
namespace {

int64_t Now() { return static_cast<int64_t>(std::time(nullptr)); }

std::string NewHostGuid() {
  if (!genGuid || !guidToString) return std::string();
  HostGuid guid{};
  char text[64] = {};
  genGuid(&guid);
  guidToString(&guid, text);
  text[sizeof text - 1] = '\0';
  return text;
}

}  // namespace

std::string CreateNamedCluster(const std::string& name, double start, double end) {
  ClusterData cluster;
  cluster.guid = NewHostGuid();
  if (cluster.guid.empty()) return std::string();
  cluster.name = name;
  cluster.start_time = start;
  cluster.end_time = end;
  cluster.entry_point = start;
  cluster.exit_point = end;
  cluster.time_created = cluster.time_modified = Now();
  State::Initialize();
  return State::AddCluster(cluster) ? cluster.guid : std::string();
}

bool RenameCluster(const std::string& guid, const std::string& name) {
  return State::WithCluster(guid, [&](ClusterData& cluster) {
    cluster.name = name;
    cluster.time_modified = Now();
  });
}

bool DeleteCluster(const std::string& guid) {
  bool deleted = false;
  State::WithRegistry([&](State::ClusterStateCache& cache) {
    const auto index = cache.guidIndex.find(guid);
    if (index == cache.guidIndex.end()) return;
    const auto cluster = cache.clusters.find(index->second);
    if (cluster != cache.clusters.end()) {
      for (const auto& item : cluster->second.items) State::UnindexItem(cache, item.first, index->second);
      cache.clusters.erase(cluster);
    }
    cache.guidIndex.erase(index);
    deleted = true;
  });
  return deleted;
}

std::string ClusterAt(double position) {
  std::string found;
  double shortest = 0.0;
  State::WithRegistry([&](const State::ClusterStateCache& cache) {
    for (const auto& entry : cache.clusters) {
      const ClusterData& cluster = entry.second;
      if (position < cluster.start_time || position >= cluster.end_time) continue;
      const double length = cluster.end_time - cluster.start_time;
      if (found.empty() || length < shortest) found = cluster.guid, shortest = length;
    }
  });
  return found;
}

bool ClusterNameTaken(const std::string& name, const std::string& exceptGuid) {
  bool taken = false;
  State::WithRegistry([&](const State::ClusterStateCache& cache) {
    for (const auto& entry : cache.clusters) taken = taken || (entry.second.name == name && entry.second.guid != exceptGuid);
  });
  return taken;
}

std::optional<ClusterData> FindCluster(const std::string& guid) {
  std::optional<ClusterData> found;
  State::WithCluster(guid, [&](const ClusterData& cluster) { found = cluster; });
  return found;
}

std::vector<ClusterData> AllClusters() {
  std::vector<ClusterData> clusters;
  State::WithRegistry([&](const State::ClusterStateCache& cache) { clusters = State::CopyClusters(cache); });
  return clusters;
}

int RemoveItemsFromAllClusters(const std::vector<std::string>& itemGuids) {
  int removed = 0;
  State::WithRegistry([&](State::ClusterStateCache& cache) {
    for (const std::string& item : itemGuids) {
      const auto holders = cache.itemIndex.find(item);
      if (holders == cache.itemIndex.end()) continue;
      for (uint32_t index : holders->second) {
        const auto cluster = cache.clusters.find(index);
        if (cluster == cache.clusters.end() || cluster->second.items.erase(item) == 0) continue;
        cluster->second.time_modified = Now();
        ++removed;
      }
      cache.itemIndex.erase(holders);
    }
  });
  return removed;
}

bool LinkClusterRegion(const std::string& guid, const std::string& regionGuid) {
  return State::WithCluster(guid, [&](ClusterData& cluster) {
    cluster.region_guid = regionGuid;
    cluster.time_modified = Now();
  });
}

}  // namespace ZOLVA_Cluster
