// The process-wide cluster registry: every cluster of the current project,
// indexed by registry index, by cluster GUID and by member item GUID, behind
// one non-recursive mutex.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

#include "cluster/cluster_data.h"

namespace ZOLVA_Cluster::State {

struct ClusterStateCache {
  // By registry index. Ordered, so that iterating the registry visits the
  // clusters in the order they were added and a save is reproducible.
  std::map<uint32_t, ClusterData> clusters;
  std::unordered_map<std::string, uint32_t> guidIndex;
  // Item GUID to the indices of every cluster holding it, in adding order.
  std::unordered_map<std::string, std::vector<uint32_t>> itemIndex;
  // Never reset by clearing: an index seen once never names another cluster.
  uint32_t nextIndex = 1;
  bool valid = false;  // the cache agrees with the project
  std::chrono::steady_clock::time_point lastUpdate;
};

// The first call sets up an empty registry; later calls change nothing.
void Initialize();
// Empties the registry and marks the module not initialised.
void Shutdown();

// The registry's own record (not a copy) for a cluster GUID, or null. Valid
// until the registry is next cleared or rebuilt; use it at once.
ClusterData* GetClusterDataByGuid(const std::string& guid);

// Adds a copy of the cluster under the next index; false (and no change)
// when its GUID is already registered. Takes the state mutex itself.
bool AddCluster(const ClusterData& cluster);

// Empties the registry under the mutex, then adds every cluster in list
// order with AddCluster (a repeated GUID is skipped); indices carry on.
void ReplaceClusters(const std::vector<ClusterData>& clusters);

// For code that reads or replaces the cache as a whole: Cache() may only be
// touched while Mutex() is held. The mutex is not recursive, so release it
// before calling AddCluster or GetClusterDataByGuid.
std::mutex& Mutex();
ClusterStateCache& Cache();

// Empties the three maps; the next index and the flags stay.
void ClearClusters(ClusterStateCache& cache);
// Every cluster, copied, in registry order.
std::vector<ClusterData> CopyClusters(const ClusterStateCache& cache);

}  // namespace ZOLVA_Cluster::State
