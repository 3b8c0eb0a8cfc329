// Moving the registry to and from the current project, and the operations
// that read or edit one registered cluster. Results are JSON texts.
#pragma once

#include <string>

namespace ZOLVA_Cluster {

// Loads "CLUSTER_DATA_V2" into the registry; an absent, Lua-looking or
// undecodable value falls back to the legacy migration and its result.
std::string LoadFromProject();

// Stores the registry as "CLUSTER_DATA_V2" and "CLUSTER_ITEMS" and marks
// the project dirty.
std::string SaveToProject();

// Loads again and reports the cluster and association counts.
std::string RebuildCache();

// Marks the registry as no longer agreeing with the project.
void InvalidateCache();

// Makes the registry hold the current project's clusters, loading them
// (legacy migration included) unless the registry already agrees with this
// project and its stored text; a project with no clusters gives an empty
// registry. Empty on success, else the load's error message.
std::string SyncRegistryWithProject();

// One cluster as a JSON object; false for a null, empty or unknown GUID.
bool GetClusterData(const char* guid, std::string& json);

// Sets start and end, and entry and exit where they are 0 or more; renews
// the cluster's change time. Memory only until the next save.
std::string SetClusterBounds(const char* guid, double start_time, double end_time,
                             double entry_point, double exit_point);

}  // namespace ZOLVA_Cluster
