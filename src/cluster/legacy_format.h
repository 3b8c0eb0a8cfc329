// The Lua-table texts the user interface script kept before the binary
// format: "CLUSTER_TABLE" (the clusters, only read) and "CLUSTER_ITEMS" (the
// member items, read once for migration and still written on every save so
// the script finds its item lists).
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "cluster/cluster_data.h"

namespace ZOLVA_Cluster::Serialize {

// Cluster GUID to that cluster's items, keyed by item GUID.
using LegacyItemMap =
    std::unordered_map<std::string, std::unordered_map<std::string, ItemAssociation>>;

// The flat "CLUSTER_ITEMS" text: table 1 is the root, clusters with items get
// the next numbers in list order, then their items; nested tables are written
// as "{<number>}" references. Clusters without items are left out; with none
// left the root is "{,}".
std::string SerializeLegacyClusterItems(const std::vector<ClusterData>& clusters);

// Reads the script's cluster table by key search, not by Lua syntax: every
// "cluster_guid" starts an entry and its members are looked for within the
// 500 characters from there. False when no cluster was read.
bool ParseLegacyClusterTable(std::string_view text, std::vector<ClusterData>& clusters);

// Reads the script's nested item text: ["<cluster guid>"]={...} spans, and in
// each the tables that name an "item_guid". False when no cluster span was read.
bool ParseLegacyClusterItems(std::string_view text, LegacyItemMap& items);

}  // namespace ZOLVA_Cluster::Serialize
