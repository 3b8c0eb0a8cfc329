#include "cluster/render_prep.h"


#include "cluster/cluster_state.h"
#include "cluster/project_items.h"
#include "json/json_text.h"

namespace ZOLVA_Cluster::Render {
namespace {

constexpr int kAllNotesOff = 40345;
constexpr char kUnselectAll[] = "_SWS_UNSELALL";

std::string SourceType(PCM_source* source) {
  char type[64] = {};
  if (GetMediaSourceType) GetMediaSourceType(source, type, sizeof type);
  type[sizeof type - 1] = '\0';
  return type;
}

// A section (or reversed) source is judged by the source it cuts from.
bool IsVideo(MediaItem* item) {
  MediaItem_Take* take = GetActiveTake ? GetActiveTake(item) : nullptr;
  PCM_source* source = take && GetMediaItemTake_Source ? GetMediaItemTake_Source(take) : nullptr;
  if (!source) return false;
  std::string type = SourceType(source);
  if (type == "SECTION" && GetMediaSourceParent) {
    if (PCM_source* parent = GetMediaSourceParent(source)) type = SourceType(parent);
  }
  return type == "VIDEO";
}

}  // namespace

RenderPrepOptions ParseRenderPrepOptions(const char* options_json) {
  RenderPrepOptions options;
  options.solo_items = ZOLVA::Json::OptionEnabled(options_json, "solo_items", true);
  options.mute_others = ZOLVA::Json::OptionEnabled(options_json, "mute_others", true);
  options.exclude_video = ZOLVA::Json::OptionEnabled(options_json, "exclude_video", true);
  return options;
}

RenderPrepResult PrepareClusterForRender(const std::string& cluster_guid, const RenderPrepOptions& options) {
  RenderPrepResult result;
  if (!State::IsInitialized()) {
    result.error = "Cluster system not initialized";
    return result;
  }
  ClusterData cluster;
  if (!State::WithCluster(cluster_guid, [&](const ClusterData& found) { cluster = found; })) {
    result.error = "Cluster not found";
    return result;
  }
  State::BackupRenderState();
  {
    RefreshHold hold;
    if (Main_OnCommand) Main_OnCommand(kAllNotesOff, 0);
    const std::vector<MediaItem*> selected = SelectedItems();
    std::vector<MediaItem*> members, others;
    for (MediaItem* item : ProjectItems()) {
      if (options.exclude_video && IsVideo(item)) continue;
      const std::string guid = ItemGuid(item);
      if (!Overlaps(cluster, ItemValue(item, "D_POSITION"), ItemValue(item, "D_LENGTH"))) continue;
      const auto member = cluster.items.find(guid);
      if (member == cluster.items.end()) {
        others.push_back(item);
        continue;
      }
      members.push_back(item);
      result.item_guids.push_back(guid);
      SwitchToRecordedTake(item, member->second, [] {});
    }
    // Unmute first: writing the mute clears an item's solo.
    for (MediaItem* item : members) {
      SetItemValue(item, "B_MUTE", 0);
      SetItemValue(item, "C_MUTE_SOLO", -1);
      ++result.items_soloed;
    }
    if (options.mute_others) {
      for (MediaItem* item : others) SetItemValue(item, "B_MUTE", 1);
    }
    const int unselectAll = NamedCommandLookup ? NamedCommandLookup(kUnselectAll) : 0;
    if (unselectAll > 0 && Main_OnCommand) Main_OnCommand(unselectAll, 0);
    for (MediaItem* item : selected) SetItemValue(item, "B_UISEL", 1);
    ProjectChanged();
  }
  result.success = true;
  return result;
}

}  // namespace ZOLVA_Cluster::Render
