// The render module's script functions, as the host calls them. They fail
// silently: no exception leaves them, and a failed text result is empty
// (null for GetClusterItems).
#pragma once

namespace ZOLVA_Render {

void API_BuildItemCache();
void API_InvalidateItemCache();
const char* API_GetClusterItems(const char* cluster_guid);
const char* API_GetCacheStats();
bool API_IsCacheValid();
const char* API_CacheRegionMatrix();
void API_RestoreRegionMatrix(const char* cache_json);
void API_ClearMatrix();
void API_AddRegions(const char* json_guids);
void API_AddRegionIndices(const char* json_indices);
const char* API_GetVersion();

}  // namespace ZOLVA_Render
