#include "render/render_api.h"

#include <vector>

#include "host/api_frame.h"
#include "render/item_cache.h"
#include "render/region_matrix.h"
#include "render/render_functions.h"

namespace ZOLVA_Render {
namespace {

bool g_initialized = false;

// Static storage: the keys and definition texts stay put until the library
// itself is unloaded, long after the host's last look at them.
const std::vector<ZOLVA::ApiFunction>& ApiTable() {
  using ZOLVA::DefineApi;
  static const std::vector<ZOLVA::ApiFunction> table{
      DefineApi<&API_BuildItemCache>("ZOLVA_Render_BuildItemCache", "",
                                     "Build item-cluster cache for fast lookups"),
      DefineApi<&API_InvalidateItemCache>("ZOLVA_Render_InvalidateItemCache", "",
                                          "Invalidate the item-cluster cache"),
      DefineApi<&API_GetClusterItems>("ZOLVA_Render_GetClusterItems", "cluster_guid",
                                      "Get items for a cluster as JSON array"),
      DefineApi<&API_GetCacheStats>("ZOLVA_Render_GetCacheStats", "", "Get cache statistics as JSON"),
      DefineApi<&API_IsCacheValid>("ZOLVA_Render_IsCacheValid", "", "Check if item cache is valid"),
      DefineApi<&API_CacheRegionMatrix>("ZOLVA_Render_CacheRegionMatrix", "",
                                        "Cache current region render matrix state"),
      DefineApi<&API_RestoreRegionMatrix>("ZOLVA_Render_RestoreRegionMatrix", "cache_json",
                                          "Restore region render matrix from cached state"),
      DefineApi<&API_ClearMatrix>("ZOLVA_Render_ClearMatrix", "", "Clear all regions from render matrix"),
      DefineApi<&API_AddRegions>("ZOLVA_Render_AddRegions", "json_guids",
                                 "Add regions to render matrix by GUIDs (JSON array)"),
      DefineApi<&API_AddRegionIndices>("ZOLVA_Render_AddRegionIndices", "json_indices",
                                       "Add regions to render matrix by marker numbers (JSON array)"),
      DefineApi<&API_GetVersion>("ZOLVA_Render_GetVersion", "", "Get render module version string"),
  };
  return table;
}

}  // namespace

void Initialize() {
  if (g_initialized) return;
  InvalidateItemCache();
  g_initialized = true;
}

void Shutdown() {
  InvalidateItemCache();
  ReleaseMatrixSnapshot();
  g_initialized = false;
}

void RegisterAPI() { ZOLVA::RegisterApiTable(ApiTable()); }

void UnregisterAPI() { ZOLVA::UnregisterApiTable(ApiTable()); }

}  // namespace ZOLVA_Render
