// The item-cluster cache: one pass over the project's items builds an index
// from cluster GUID to the items whose "P_EXT:ZOLVA" text names it. It is
// answered from until invalidated or rebuilt; project edits are not seen.
#pragma once

#include <cstdint>
#include <string>

#include "host/reaper_api.h"

namespace ZOLVA_Render {

struct ClusterItemInfo {
  MediaItem* item = nullptr;
  double position = 0.0;
  double length = 0.0;
  int32_t take_index = 0;
  std::string item_guid;
};

// Replaces the whole index and times the build.
void BuildItemClusterCache();
// Empties the index and marks it invalid.
void InvalidateItemCache();
bool IsCacheValid();

// The items of one cluster as a JSON array, or null when the cache is
// invalid, the GUID is null, empty or unknown. Valid until the next call.
const char* GetClusterItems(const char* cluster_guid);
// {"valid":…,"cluster_count":…,"item_count":…,"build_time_ms":…}
const char* GetCacheStats();

}  // namespace ZOLVA_Render
