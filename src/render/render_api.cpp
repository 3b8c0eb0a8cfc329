#include "host/api_frame.h"
#include "host/version.h"
#include "render/item_cache.h"
#include "render/region_matrix.h"

namespace ZOLVA_Render {
namespace {

bool g_initialized = false;

// A second registration keeps the item cache; only the first start resets it.
void Start() {
  if (g_initialized) return;
  InvalidateItemCache();
  g_initialized = true;
}

void Stop() {
  InvalidateItemCache();
  ReleaseMatrixSnapshot();
  g_initialized = false;
}

const char* GetVersion() { return ZOLVA::kVersion; }

using ZOLVA::Api;
using ZOLVA::kEmptyText;
constexpr auto kNoFailure = ZOLVA::NoFailure::value;

constexpr ZOLVA::ApiSpec kApi[] = {
    Api<&BuildItemClusterCache, kNoFailure>("ZOLVA_Render_BuildItemCache", "",
                                            "Build item-cluster cache for fast lookups"),
    Api<&InvalidateItemCache, kNoFailure>("ZOLVA_Render_InvalidateItemCache", "",
                                          "Invalidate the item-cluster cache"),
    Api<&GetClusterItems, nullptr>("ZOLVA_Render_GetClusterItems", "cluster_guid",
                                   "Get items for a cluster as JSON array"),
    Api<&GetCacheStats, kEmptyText>("ZOLVA_Render_GetCacheStats", "", "Get cache statistics as JSON"),
    Api<&IsCacheValid, false>("ZOLVA_Render_IsCacheValid", "", "Check if item cache is valid"),
    Api<&CacheRegionRenderMatrix, kEmptyText>("ZOLVA_Render_CacheRegionMatrix", "",
                                              "Cache current region render matrix state"),
    Api<&RestoreRegionMatrix, kNoFailure>("ZOLVA_Render_RestoreRegionMatrix", "cache_json",
                                          "Restore region render matrix from cached state"),
    Api<&ClearRenderMatrix, kNoFailure>("ZOLVA_Render_ClearMatrix", "", "Clear all regions from render matrix"),
    Api<&AddRegionsByGuid, kNoFailure>("ZOLVA_Render_AddRegions", "json_guids",
                                       "Add regions to render matrix by GUIDs (JSON array)"),
    Api<&AddRegionIndices, kNoFailure>("ZOLVA_Render_AddRegionIndices", "json_indices",
                                       "Add regions to render matrix by marker numbers (JSON array)"),
    Api<&GetVersion, kEmptyText>("ZOLVA_Render_GetVersion", "", "Get render module version string"),
};

}  // namespace

extern const ZOLVA::Module kModule = ZOLVA::MakeModule(kApi, Start, Stop);

}  // namespace ZOLVA_Render
