#include "cluster/cluster_api.h"

#include <string>
#include <vector>

#include "cluster/legacy_migration.h"
#include "cluster/persistence.h"
#include "host/api_frame.h"
#include "host/guard.h"

namespace ZOLVA_Cluster {
namespace {

// The module's result storage: a text returned to a script stays valid until
// the module's next call that writes it.
std::string g_resultBuffer;

// Answered when a JSON function fails unexpectedly (out of memory, say).
constexpr char kInternalErrorJson[] = "{\"success\":false,\"error\":\"Internal error\"}";

const char* Publish(std::string text) {
  g_resultBuffer = std::move(text);
  return g_resultBuffer.c_str();
}

// Runs a function whose JSON result goes through the result storage.
template <typename Body>
const char* JsonResult(Body&& body) {
  return ZOLVA::Guarded<const char*>(kInternalErrorJson, [&] { return Publish(body()); });
}

const char* API_GetVersion() { return "1.0.0"; }

// Deliberately answers every item with an empty list, without a lookup.
const char* API_GetItemClusters(const char* /*item_guid*/) {
  return JsonResult([] { return std::string("[]"); });
}

const char* API_GetClusterData(const char* cluster_guid) {
  return ZOLVA::Guarded<const char*>(nullptr, [&]() -> const char* {
    std::string json;
    return GetClusterData(cluster_guid, json) ? Publish(std::move(json)) : nullptr;
  });
}

const char* API_SetClusterBounds(const char* cluster_guid, double start_time, double end_time,
                                 double entry_point, double exit_point) {
  return JsonResult(
      [&] { return SetClusterBounds(cluster_guid, start_time, end_time, entry_point, exit_point); });
}

const char* API_LoadFromProject() { return JsonResult(LoadFromProject); }

const char* API_SaveToProject() { return JsonResult(SaveToProject); }

void API_InvalidateCache() { ZOLVA::GuardedVoid(InvalidateCache); }

const char* API_RebuildCache() { return JsonResult(RebuildCache); }

const char* API_HasLegacyData() {
  return ZOLVA::Guarded<const char*>("false", [] { return HasLegacyData() ? "true" : "false"; });
}

const char* API_MigrateLegacyData() { return JsonResult(MigrateLegacyData); }

// Static storage: the keys and definition texts stay put until the library
// itself is unloaded, long after the host's last look at them.
const std::vector<ZOLVA::ApiFunction>& ApiTable() {
  using ZOLVA::DefineApi;
  static const std::vector<ZOLVA::ApiFunction> table{
      DefineApi<&API_GetVersion>("ZOLVA_Cluster_GetVersion", "", "Get cluster module version"),
      DefineApi<&API_GetItemClusters>("ZOLVA_Cluster_GetItemClusters", "item_guid",
                                      "Get clusters containing item as JSON array"),
      DefineApi<&API_GetClusterData>("ZOLVA_Cluster_GetClusterData", "cluster_guid",
                                     "Get cluster data as JSON"),
      DefineApi<&API_SetClusterBounds>("ZOLVA_Cluster_SetClusterBounds",
                                       "cluster_guid,start_time,end_time,entry_point,exit_point",
                                       "Set cluster time bounds"),
      DefineApi<&API_LoadFromProject>("ZOLVA_Cluster_LoadFromProject", "",
                                      "Load cluster data from project"),
      DefineApi<&API_SaveToProject>("ZOLVA_Cluster_SaveToProject", "", "Save cluster data to project"),
      DefineApi<&API_InvalidateCache>("ZOLVA_Cluster_InvalidateCache", "", "Invalidate cluster cache"),
      DefineApi<&API_RebuildCache>("ZOLVA_Cluster_RebuildCache", "",
                                   "Rebuild cluster cache from project"),
      DefineApi<&API_HasLegacyData>("ZOLVA_Cluster_HasLegacyData", "",
                                    "Check if project has legacy data"),
      DefineApi<&API_MigrateLegacyData>("ZOLVA_Cluster_MigrateLegacyData", "",
                                        "Migrate legacy data to new format"),
  };
  return table;
}

}  // namespace

void RegisterAPI() { ZOLVA::RegisterApiTable(ApiTable()); }

void UnregisterAPI() { ZOLVA::UnregisterApiTable(ApiTable()); }

}  // namespace ZOLVA_Cluster
