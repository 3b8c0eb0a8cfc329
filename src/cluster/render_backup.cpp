#include "cluster/render_backup.h"

#include "cluster/cluster_state.h"
#include "cluster/project_items.h"
#include "host/host_values.h"

namespace ZOLVA_Cluster::State {
namespace {

std::string TrackGuid(MediaTrack* track) { return ZOLVA::GuidOf(GetSetMediaTrackInfo_String, track); }

double TrackValue(MediaTrack* track, const char* name) {
  return GetMediaTrackInfo_Value ? GetMediaTrackInfo_Value(track, name) : 0.0;
}

void SetTrackValue(MediaTrack* track, const char* name, double value) {
  if (SetMediaTrackInfo_Value) SetMediaTrackInfo_Value(track, name, value);
}

// "C_LANEPLAYS:<lane>", the play state of one fixed lane.
std::string LaneValueName(size_t lane) { return "C_LANEPLAYS:" + std::to_string(lane); }

std::vector<MediaTrack*> ProjectTracks() {
  std::vector<MediaTrack*> tracks;
  const int count = CountTracks && GetTrack ? CountTracks(nullptr) : 0;
  for (int i = 0; i < count; ++i) {
    if (MediaTrack* track = GetTrack(nullptr, i)) tracks.push_back(track);
  }
  return tracks;
}

void Take(RenderBackup& backup) {
  backup = RenderBackup();
  for (MediaItem* item : ProjectItems()) {
    const std::string guid = ItemGuid(item);
    backup.item_mutes[guid] = ItemValue(item, "B_MUTE") != 0;
    backup.item_takes[guid] = static_cast<int32_t>(ItemValue(item, "I_CURTAKE"));
    if (IsMediaItemSelected && IsMediaItemSelected(item)) backup.selected_items.push_back(guid);
  }
  for (MediaTrack* track : ProjectTracks()) {
    if (TrackValue(track, "I_FREEMODE") != 2) continue;
    TrackLaneBackup lanes{TrackGuid(track), TrackValue(track, "C_ALLLANESPLAY"), {}};
    const int count = static_cast<int>(TrackValue(track, "I_NUMFIXEDLANES"));
    for (int i = 0; i < count; ++i) lanes.lane_plays.push_back(TrackValue(track, LaneValueName(i).c_str()));
    backup.lanes.push_back(std::move(lanes));
  }
  backup.held = true;
}

void WriteBack(const RenderBackup& backup) {
  // One pass over the items; the selection is put back through a map of the
  // first item with each GUID, so an all-selected project stays linear.
  std::unordered_map<std::string, MediaItem*> byGuid;
  for (MediaItem* item : ProjectItems()) {
    const std::string guid = ItemGuid(item);
    const auto mute = backup.item_mutes.find(guid);
    if (mute != backup.item_mutes.end()) SetItemValue(item, "B_MUTE", mute->second ? 1 : 0);
    const auto take = backup.item_takes.find(guid);
    if (take != backup.item_takes.end()) SetItemValue(item, "I_CURTAKE", take->second);
    SetItemValue(item, "B_UISEL", 0);
    byGuid.emplace(guid, item);
  }
  for (const std::string& guid : backup.selected_items) {
    const auto item = byGuid.find(guid);
    if (item != byGuid.end()) SetItemValue(item->second, "B_UISEL", 1);
  }
  const std::vector<MediaTrack*> tracks = backup.lanes.empty() ? std::vector<MediaTrack*>() : ProjectTracks();
  std::unordered_map<std::string, MediaTrack*> tracksByGuid;
  for (MediaTrack* track : tracks) tracksByGuid.emplace(TrackGuid(track), track);
  for (const TrackLaneBackup& lanes : backup.lanes) {
    const auto track = tracksByGuid.find(lanes.track_guid);
    if (track == tracksByGuid.end()) continue;
    SetTrackValue(track->second, "C_ALLLANESPLAY", lanes.all_lanes_play);
    for (size_t i = 0; i < lanes.lane_plays.size(); ++i) {
      SetTrackValue(track->second, LaneValueName(i).c_str(), lanes.lane_plays[i]);
    }
  }
}

}  // namespace

void BackupRenderState() {
  WithRegistry([](ClusterStateCache& cache) {
    if (!cache.renderBackup.held) Take(cache.renderBackup);
  });
}

bool RestoreRenderState() {
  bool restored = false;
  WithRegistry([&](ClusterStateCache& cache) {
    if (!cache.renderBackup.held) return;
    {
      RefreshHold hold;
      WriteBack(cache.renderBackup);
    }
    if (UpdateArrange) UpdateArrange();
    cache.renderBackup = RenderBackup();
    restored = true;
  });
  return restored;
}

}  // namespace ZOLVA_Cluster::State
