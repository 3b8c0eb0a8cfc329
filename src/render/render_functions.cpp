#include "render/render_functions.h"

#include "host/guard.h"
#include "render/item_cache.h"
#include "render/region_matrix.h"

namespace ZOLVA_Render {

void API_BuildItemCache() { ZOLVA::GuardedVoid([] { BuildItemClusterCache(); }); }

void API_InvalidateItemCache() { ZOLVA::GuardedVoid([] { InvalidateItemCache(); }); }

const char* API_GetClusterItems(const char* cluster_guid) {
  return ZOLVA::Guarded<const char*>(nullptr, [&] { return GetClusterItems(cluster_guid); });
}

const char* API_GetCacheStats() {
  return ZOLVA::Guarded<const char*>("", [] { return GetCacheStats(); });
}

bool API_IsCacheValid() {
  return ZOLVA::Guarded(false, [] { return IsCacheValid(); });
}

const char* API_CacheRegionMatrix() {
  return ZOLVA::Guarded<const char*>("", [] { return CacheRegionRenderMatrix(); });
}

void API_RestoreRegionMatrix(const char* cache_json) {
  ZOLVA::GuardedVoid([&] { RestoreRegionMatrix(cache_json); });
}

void API_ClearMatrix() { ZOLVA::GuardedVoid([] { ClearRenderMatrix(); }); }

void API_AddRegions(const char* json_guids) {
  ZOLVA::GuardedVoid([&] { AddRegionsByGuid(json_guids); });
}

void API_AddRegionIndices(const char* json_indices) {
  ZOLVA::GuardedVoid([&] { AddRegionIndices(json_indices); });
}

const char* API_GetVersion() { return "1.0.0"; }

}  // namespace ZOLVA_Render
