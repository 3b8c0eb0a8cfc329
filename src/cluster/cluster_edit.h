// Whole-cluster edits for callers that name clusters themselves (the native
// actions): creating a named cluster, renaming, deleting, finding one by
// position or name, and taking items out of every cluster that holds them.
// Each runs under the registry's lock; none writes the project.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cluster/cluster_data.h"

namespace ZOLVA_Cluster {

// A new cluster with a fresh host GUID over [start, end), entry and exit at
// its bounds; its GUID, or empty when the host cannot make one.
std::string CreateNamedCluster(const std::string& name, double start, double end);

bool RenameCluster(const std::string& guid, const std::string& name);

// Takes the cluster and its item memberships out of the registry.
bool DeleteCluster(const std::string& guid);

// The innermost cluster whose range holds `position` (start included, end
// excluded): the shortest such range, the earlier cluster on a tie; empty
// when none does.
std::string ClusterAt(double position);

// True when another cluster than `exceptGuid` already has the name.
bool ClusterNameTaken(const std::string& name, const std::string& exceptGuid = std::string());

// A copy of the one cluster of that GUID; nothing when none has it.
std::optional<ClusterData> FindCluster(const std::string& guid);

// Every cluster, copied, in registry order.
std::vector<ClusterData> AllClusters();

// Removes each of the items from every cluster that holds it; the number of
// memberships removed.
int RemoveItemsFromAllClusters(const std::vector<std::string>& itemGuids);

// Records the region a cluster is linked to.
bool LinkClusterRegion(const std::string& guid, const std::string& regionGuid);

}  // namespace ZOLVA_Cluster
