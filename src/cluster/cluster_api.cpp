#include <string>

#include "cluster/activation.h"
#include "cluster/association.h"
#include "cluster/cluster_state.h"
#include "cluster/legacy_migration.h"
#include "cluster/persistence.h"
#include "cluster/render_backup.h"
#include "cluster/render_prep.h"
#include "cluster/result_text.h"
#include "host/api_frame.h"
#include "host/version.h"
#include "json/json_text.h"

namespace ZOLVA_Cluster {
namespace {

// Answered when a JSON function fails unexpectedly (out of memory, say).
constexpr char kInternalErrorJson[] = "{\"success\":false,\"error\":\"Internal error\"}";
constexpr char kFalseText[] = "false";

bool Given(const char* guid) { return guid && *guid; }
const char* GuidRequired() { return Publish(ZOLVA::Json::BuildJsonError("Cluster GUID required")); }

// A function whose JSON result goes through the result storage.
template <std::string (*Body)()>
const char* Published() {
  return Publish(Body());
}

const char* GetVersion() { return ZOLVA::kVersion; }

const char* AssociateSelectedItems(const char* cluster_guid, const char* options_json) {
  if (!Given(cluster_guid)) return GuidRequired();
  const Activation::AssociationResult r =
      Activation::AssociateSelectedItems(cluster_guid, Activation::ParseAssociationOptions(options_json));
  if (r.success && r.items_associated >= 1) PersistLegacyClusterItems();
  return Publish(OperationJson(r.success, r.error,
                               {{"items_associated", r.items_associated}, {"items_skipped", r.items_skipped}}));
}

const char* DisassociateSelectedItems(const char* cluster_guid) {
  if (!Given(cluster_guid)) return GuidRequired();
  const Activation::AssociationResult r = Activation::DisassociateSelectedItems(cluster_guid);
  if (r.success && r.items_associated >= 1) PersistLegacyClusterItems();
  return Publish(OperationJson(r.success, r.error,
                               {{"items_disassociated", r.items_associated}, {"items_skipped", r.items_skipped}}));
}

// The bare words, not a JSON object.
const char* IsItemInCluster(const char* item_guid, const char* cluster_guid) {
  return item_guid && cluster_guid && Activation::IsItemInCluster(item_guid, cluster_guid) ? "true" : "false";
}

const char* GetClusterItems(const char* cluster_guid) {
  if (!Given(cluster_guid)) return Publish("[]");
  return Publish(JsonStringArray(Render::GetClusterItemGuids(cluster_guid)));
}

// Deliberately answers every item with an empty list, without a lookup.
const char* GetItemClusters(const char* /*item_guid*/) { return Publish("[]"); }

const char* ActivateCluster(const char* cluster_guid, const char* options_json) {
  if (!Given(cluster_guid)) return GuidRequired();
  const Activation::ActivationResult r =
      Activation::ActivateCluster(cluster_guid, Activation::ParseActivationOptions(options_json));
  return Publish(OperationJson(r.success, r.error,
                               {{"items_activated", r.items_activated}, {"items_muted", r.items_muted}}));
}

const char* DeactivateAllClusters() {
  const Activation::ActivationResult r = Activation::DeactivateAllClusters();
  return Publish(OperationJson(r.success, r.error, {{"items_unmuted", r.items_activated}}));
}

const char* PrepareClusterForRender(const char* cluster_guid, const char* options_json) {
  if (!Given(cluster_guid)) return GuidRequired();
  const Render::RenderPrepResult r =
      Render::PrepareClusterForRender(cluster_guid, Render::ParseRenderPrepOptions(options_json));
  return Publish(OperationJson(r.success, r.error, {{"items_soloed", r.items_soloed}}));
}

const char* RestoreAfterRender() {
  const bool restored = State::RestoreRenderState();
  return Publish(OperationJson(restored, restored ? "" : "No render state to restore", {}));
}

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
    Api<&AssociateSelectedItems, kInternalErrorJson>("ZOLVA_Cluster_AssociateSelectedItems",
                                                     "cluster_guid,options_json",
                                                     "Associate selected items with cluster"),
    Api<&DisassociateSelectedItems, kInternalErrorJson>("ZOLVA_Cluster_DisassociateSelectedItems", "cluster_guid",
                                                        "Disassociate selected items from cluster"),
    Api<&IsItemInCluster, kFalseText>("ZOLVA_Cluster_IsItemInCluster", "item_guid,cluster_guid",
                                      "Check if item is in cluster"),
    Api<&GetClusterItems, kInternalErrorJson>("ZOLVA_Cluster_GetClusterItems", "cluster_guid",
                                              "Get items in cluster as JSON array"),
    Api<&GetItemClusters, kInternalErrorJson>("ZOLVA_Cluster_GetItemClusters", "item_guid",
                                              "Get clusters containing item as JSON array"),
    Api<&ActivateCluster, kInternalErrorJson>("ZOLVA_Cluster_ActivateCluster", "cluster_guid,options_json",
                                              "Activate cluster (mute non-cluster items)"),
    Api<&DeactivateAllClusters, kInternalErrorJson>("ZOLVA_Cluster_DeactivateAllClusters", "",
                                                    "Deactivate all clusters (unmute all)"),
    Api<&PrepareClusterForRender, kInternalErrorJson>("ZOLVA_Cluster_PrepareClusterForRender",
                                                      "cluster_guid,options_json", "Prepare cluster for rendering"),
    Api<&RestoreAfterRender, kInternalErrorJson>("ZOLVA_Cluster_RestoreAfterRender", "",
                                                 "Restore state after render"),
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
