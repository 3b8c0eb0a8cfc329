#include "cluster/cluster_state.h"

#include <algorithm>
#include <mutex>

namespace ZOLVA_Cluster::State {
namespace {

std::mutex g_stateMutex;
ClusterStateCache g_cache;
bool g_initialized = false;

using Lock = std::lock_guard<std::mutex>;

void ClearClusters(ClusterStateCache& cache) {
  cache.clusters.clear();
  cache.guidIndex.clear();
  cache.itemIndex.clear();
}

}  // namespace

std::vector<ClusterData> CopyClusters(const ClusterStateCache& cache) {
  std::vector<ClusterData> list;
  list.reserve(cache.clusters.size());
  for (const auto& entry : cache.clusters) list.push_back(entry.second);
  return list;
}

void UnindexItem(ClusterStateCache& cache, const std::string& item, uint32_t index) {
  const auto entry = cache.itemIndex.find(item);
  if (entry == cache.itemIndex.end()) return;
  std::vector<uint32_t>& holders = entry->second;
  holders.erase(std::remove(holders.begin(), holders.end(), index), holders.end());
  if (holders.empty()) cache.itemIndex.erase(entry);
}

void Initialize() {
  Lock lock(g_stateMutex);
  if (g_initialized) return;
  ClearClusters(g_cache);
  g_cache.nextIndex = 1;
  g_cache.valid = false;
  g_cache.lastUpdate = std::chrono::steady_clock::now();
  g_cache.renderBackup = RenderBackup();
  g_initialized = true;
}

void Shutdown() {
  Lock lock(g_stateMutex);
  ClearClusters(g_cache);
  g_cache.valid = false;
  g_cache.renderBackup = RenderBackup();
  g_initialized = false;
}

bool IsInitialized() {
  Lock lock(g_stateMutex);
  return g_initialized;
}

bool WithCluster(const std::string& guid, const std::function<void(ClusterData&)>& use) {
  Lock lock(g_stateMutex);
  const auto index = g_cache.guidIndex.find(guid);
  if (index == g_cache.guidIndex.end()) return false;
  const auto cluster = g_cache.clusters.find(index->second);
  if (cluster == g_cache.clusters.end()) return false;
  use(cluster->second);
  return true;
}

void WithRegistry(const std::function<void(ClusterStateCache&)>& use) {
  Lock lock(g_stateMutex);
  use(g_cache);
}

bool AddClusterLocked(ClusterStateCache& cache, const ClusterData& cluster) {
  if (cache.guidIndex.count(cluster.guid) != 0) return false;
  const uint32_t index = cache.nextIndex++;
  cache.guidIndex.emplace(cluster.guid, index);
  const ClusterData& stored = cache.clusters.emplace(index, cluster).first->second;
  for (const auto& item : stored.items) cache.itemIndex[item.first].push_back(index);
  return true;
}

bool AddCluster(const ClusterData& cluster) {
  Lock lock(g_stateMutex);
  return AddClusterLocked(g_cache, cluster);
}

void ReplaceClusters(ClusterStateCache& cache, const std::vector<ClusterData>& clusters) {
  ClearClusters(cache);
  for (const ClusterData& cluster : clusters) AddClusterLocked(cache, cluster);
}

}  // namespace ZOLVA_Cluster::State
