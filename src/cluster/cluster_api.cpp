#include <mutex>
#include <string>

#include "cluster/cluster_state.h"
#include "cluster/legacy_migration.h"
#include "cluster/persistence.h"
#include "host/api_frame.h"
#include "host/version.h"

namespace ZOLVA_Cluster {
namespace {

// The module's result storage: a text returned to a script stays valid until
// the module's next call that writes it.
std::mutex g_resultMutex;
std::string g_resultBuffer;

// Answered when a JSON function fails unexpectedly (out of memory, say).
constexpr char kInternalErrorJson[] = "{\"success\":false,\"error\":\"Internal error\"}";
constexpr char kFalseText[] = "false";

const char* Publish(std::string text) {
  std::lock_guard<std::mutex> lock(g_resultMutex);
  g_resultBuffer = std::move(text);
  return g_resultBuffer.c_str();
}

// A function whose JSON result goes through the result storage.
template <std::string (*Body)()>
const char* Published() {
  return Publish(Body());
}

const char* GetVersion() { return ZOLVA::kVersion; }

// Deliberately answers every item with an empty list, without a lookup.
const char* GetItemClusters(const char* /*item_guid*/) { return Publish("[]"); }

const char* GetClusterDataText(const char* cluster_guid) {
  std::string json;
  return GetClusterData(cluster_guid, json) ? Publish(std::move(json)) : nullptr;
}

const char* SetClusterBoundsText(const char* cluster_guid, double start_time, double end_time, double entry_point,
                                 double exit_point) {
  return Publish(SetClusterBounds(cluster_guid, start_time, end_time, entry_point, exit_point));
}

const char* HasLegacyDataText() { return HasLegacyData() ? "true" : "false"; }

using ZOLVA::Api;
constexpr auto kNoFailure = ZOLVA::NoFailure::value;

constexpr ZOLVA::ApiSpec kApi[] = {
    Api<&GetVersion, ZOLVA::kEmptyText>("ZOLVA_Cluster_GetVersion", "", "Get cluster module version"),
    Api<&GetItemClusters, kInternalErrorJson>("ZOLVA_Cluster_GetItemClusters", "item_guid",
                                              "Get clusters containing item as JSON array"),
    Api<&GetClusterDataText, nullptr>("ZOLVA_Cluster_GetClusterData", "cluster_guid", "Get cluster data as JSON"),
    Api<&SetClusterBoundsText, kInternalErrorJson>("ZOLVA_Cluster_SetClusterBounds",
                                                   "cluster_guid,start_time,end_time,entry_point,exit_point",
                                                   "Set cluster time bounds"),
    Api<&Published<LoadFromProject>, kInternalErrorJson>("ZOLVA_Cluster_LoadFromProject", "",
                                                         "Load cluster data from project"),
    Api<&Published<SaveToProject>, kInternalErrorJson>("ZOLVA_Cluster_SaveToProject", "",
                                                       "Save cluster data to project"),
    Api<&InvalidateCache, kNoFailure>("ZOLVA_Cluster_InvalidateCache", "", "Invalidate cluster cache"),
    Api<&Published<RebuildCache>, kInternalErrorJson>("ZOLVA_Cluster_RebuildCache", "",
                                                      "Rebuild cluster cache from project"),
    Api<&HasLegacyDataText, kFalseText>("ZOLVA_Cluster_HasLegacyData", "", "Check if project has legacy data"),
    Api<&Published<MigrateLegacyData>, kInternalErrorJson>("ZOLVA_Cluster_MigrateLegacyData", "",
                                                           "Migrate legacy data to new format"),
};

}  // namespace

extern const ZOLVA::Module kModule = ZOLVA::MakeModule(kApi, State::Initialize, State::Shutdown);

}  // namespace ZOLVA_Cluster
