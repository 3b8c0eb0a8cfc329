// Tying the selected items to a cluster and untying them, and the queries
// over the association.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ZOLVA_Cluster::Activation {

struct AssociationOptions {
  bool update_existing = true;  // refresh an item that is already associated
  bool time_bounded = true;     // only items overlapping the cluster's range
};

struct AssociationResult {
  bool success = false;
  int32_t items_associated = 0;  // for a disassociation: the items removed
  int32_t items_skipped = 0;
  std::vector<std::string> item_guids;  // recorded or removed, in walk order
  std::string error;
};

// Reads the two flags by exact text ("\"update_existing\":false", ...).
AssociationOptions ParseAssociationOptions(const char* options_json);

// Records every selected item overlapping the cluster (unless not
// time-bounded) with its active take, position and length. A cluster that is
// not registered is taken from the legacy cluster table or created as
// "Auto-created" first.
AssociationResult AssociateSelectedItems(const std::string& cluster_guid, const AssociationOptions& options);

// Removes every selected item from the cluster. An unknown cluster is a
// success with nothing done.
AssociationResult DisassociateSelectedItems(const std::string& cluster_guid);

bool IsItemInCluster(const std::string& item_guid, const std::string& cluster_guid);

}  // namespace ZOLVA_Cluster::Activation

namespace ZOLVA_Cluster::Render {

// The keys of the cluster's item map, in the map's order; empty when unknown.
std::vector<std::string> GetClusterItemGuids(const std::string& cluster_guid);

}  // namespace ZOLVA_Cluster::Render
