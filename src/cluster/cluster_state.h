// The process-wide cluster registry: every cluster of the current project,
// indexed by registry index, by cluster GUID and by member item GUID, behind
// one non-recursive mutex. Nothing outside this file holds a pointer into the
// registry: callers read and change it inside the calls below, under the lock.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <vector>

#include "cluster/cluster_data.h"
#include "cluster/render_backup.h"

struct ReaProject;

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
  // What it agrees with: the project, and its stored registry text as the
  // last load or save left it (as far as a read sees it).
  ReaProject* syncedProject = nullptr;
  std::string syncedText;
  std::chrono::steady_clock::time_point lastUpdate;
  // Kept beside the registry, under the same lock; a load leaves it alone.
  RenderBackup renderBackup;
};

// The first call sets up an empty registry; later calls change nothing.
void Initialize();
// Empties the registry and the render snapshot and marks the module not
// initialised.
void Shutdown();
bool IsInitialized();

// Runs `use` on the registered cluster of that GUID under the lock; false
// (and `use` not run) when there is none. `use` must not call back in here.
bool WithCluster(const std::string& guid, const std::function<void(ClusterData&)>& use);

// Runs `use` on the whole registry under the lock. `use` must not call back
// in here; to add a cluster from inside it, use AddClusterLocked.
void WithRegistry(const std::function<void(ClusterStateCache&)>& use);

// Adds a copy of the cluster under the next index; false (and no change)
// when its GUID is already registered. Takes the lock itself.
bool AddCluster(const ClusterData& cluster);
bool AddClusterLocked(ClusterStateCache& cache, const ClusterData& cluster);

// For use inside WithRegistry, so that a load replaces the registry in one
// step: empties it, then adds every cluster in list order (a repeated GUID is
// skipped); indices carry on.
void ReplaceClusters(ClusterStateCache& cache, const std::vector<ClusterData>& clusters);

// Every cluster, copied, in registry order.
std::vector<ClusterData> CopyClusters(const ClusterStateCache& cache);

// For use inside WithRegistry: the item no longer counts as a member of the
// cluster at `index` in the item index (the cluster's own map is the caller's).
void UnindexItem(ClusterStateCache& cache, const std::string& item, uint32_t index);

}  // namespace ZOLVA_Cluster::State
