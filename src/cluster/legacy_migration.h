// Moving a project kept in the script's older Lua-table texts to the binary
// format, and keeping the script's item text up to date.
#pragma once

#include <string>

namespace ZOLVA_Cluster {

// Reads "CLUSTER_TABLE" (and the items of "CLUSTER_ITEMS"), replaces the
// registry with those clusters and stores them as "CLUSTER_DATA_V2". The
// legacy values stay in the project. Returns the JSON result text.
std::string MigrateLegacyData();

// Rewrites "CLUSTER_ITEMS" from the registry; nothing else is written.
void PersistLegacyClusterItems();

// True when the project's "CLUSTER_TABLE" begins with "{".
bool HasLegacyData();

}  // namespace ZOLVA_Cluster
