#include "cluster/cluster_state.h"

namespace ZOLVA_Cluster::State {
namespace {

std::mutex g_stateMutex;
ClusterStateCache g_cache;
bool g_initialized = false;

}  // namespace

std::mutex& Mutex() { return g_stateMutex; }

ClusterStateCache& Cache() { return g_cache; }

void ClearClusters(ClusterStateCache& cache) {
  cache.clusters.clear();
  cache.guidIndex.clear();
  cache.itemIndex.clear();
}

std::vector<ClusterData> CopyClusters(const ClusterStateCache& cache) {
  std::vector<ClusterData> list;
  list.reserve(cache.clusters.size());
  for (const auto& entry : cache.clusters) list.push_back(entry.second);
  return list;
}

void Initialize() {
  std::lock_guard<std::mutex> lock(g_stateMutex);
  if (g_initialized) return;
  ClearClusters(g_cache);
  g_cache.nextIndex = 1;
  g_cache.valid = false;
  g_cache.lastUpdate = std::chrono::steady_clock::now();
  g_initialized = true;
}

void Shutdown() {
  std::lock_guard<std::mutex> lock(g_stateMutex);
  ClearClusters(g_cache);
  g_cache.valid = false;
  g_initialized = false;
}

ClusterData* GetClusterDataByGuid(const std::string& guid) {
  std::lock_guard<std::mutex> lock(g_stateMutex);
  const auto index = g_cache.guidIndex.find(guid);
  if (index == g_cache.guidIndex.end()) return nullptr;
  const auto cluster = g_cache.clusters.find(index->second);
  return cluster == g_cache.clusters.end() ? nullptr : &cluster->second;
}

bool AddCluster(const ClusterData& cluster) {
  std::lock_guard<std::mutex> lock(g_stateMutex);
  if (g_cache.guidIndex.count(cluster.guid) != 0) return false;
  const uint32_t index = g_cache.nextIndex++;
  g_cache.guidIndex.emplace(cluster.guid, index);
  const ClusterData& stored = g_cache.clusters.emplace(index, cluster).first->second;
  for (const auto& item : stored.items) g_cache.itemIndex[item.first].push_back(index);
  return true;
}

void ReplaceClusters(const std::vector<ClusterData>& clusters) {
  {
    std::lock_guard<std::mutex> lock(g_stateMutex);
    ClearClusters(g_cache);
  }
  for (const ClusterData& cluster : clusters) AddCluster(cluster);
}

}  // namespace ZOLVA_Cluster::State
