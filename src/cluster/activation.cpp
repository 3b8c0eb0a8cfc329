#include "cluster/activation.h"

#include <set>
#include <unordered_set>

#include "cluster/cluster_state.h"
#include "cluster/project_items.h"
#include "json/json_text.h"

namespace ZOLVA_Cluster::Activation {
namespace {

constexpr int kAllNotesOff = 40345;
constexpr int kUnselectAllTracks = 40297;
constexpr char kNotesOffSelectedTracks[] = "_S&M_CC123_SEL_TRACKS";

void RunCommand(int command) {
  if (Main_OnCommand) Main_OnCommand(command, 0);
}

// Any item under the play head (both ends included) puts its track on the
// list of tracks that get a note-off, MIDI or not.
void NoteTrackUnderPlayHead(MediaItem* item, std::set<int>& tracks) {
  const double playPosition = GetPlayPosition ? GetPlayPosition() : 0.0;
  const double position = ItemValue(item, "D_POSITION");
  const double length = ItemValue(item, "D_LENGTH");
  if (playPosition < position || playPosition > position + length) return;
  MediaTrack* track = GetMediaItemTrack ? GetMediaItemTrack(item) : nullptr;
  if (track && GetMediaTrackInfo_Value) tracks.insert(static_cast<int>(GetMediaTrackInfo_Value(track, "IP_TRACKNUMBER")));
}

// Selects exactly the listed tracks (1-based numbers, ascending) and sends
// them the S&M note-off when SWS provides it. The selection stays.
void SendNotesOffTo(const std::set<int>& tracks) {
  RunCommand(kUnselectAllTracks);
  for (int number : tracks) {
    MediaTrack* track = number >= 1 && GetTrack ? GetTrack(nullptr, number - 1) : nullptr;
    if (track && SetMediaTrackInfo_Value) SetMediaTrackInfo_Value(track, "I_SELECTED", 1);
  }
  const int command = NamedCommandLookup ? NamedCommandLookup(kNotesOffSelectedTracks) : 0;
  if (command > 0) RunCommand(command);
}

}  // namespace

ActivationOptions ParseActivationOptions(const char* options_json) {
  ActivationOptions options;
  options.suspend_deactivation = ZOLVA::Json::OptionEnabled(options_json, "suspend_deactivation", false);
  options.selective_midi_off = ZOLVA::Json::OptionEnabled(options_json, "selective_midi_off", false);
  options.preserve_selection = ZOLVA::Json::OptionEnabled(options_json, "preserve_selection", true);
  return options;
}

ActivationResult ActivateCluster(const std::string& cluster_guid, const ActivationOptions& options) {
  ActivationResult result;
  if (!State::IsInitialized()) {
    result.error = "Cluster system not initialized";
    return result;
  }
  const bool found = State::WithCluster(cluster_guid, [&](const ClusterData& cluster) {
    RefreshHold hold;
    if (!options.selective_midi_off) RunCommand(kAllNotesOff);
    std::set<int> noteOffTracks;
    const std::vector<MediaItem*> selected = options.preserve_selection ? SelectedItems() : std::vector<MediaItem*>();
    std::vector<MediaTrack*> laneTracks;
    std::unordered_set<MediaTrack*> laneTrackSet;
    for (MediaItem* item : ProjectItems()) {
      const std::string guid = ItemGuid(item);
      if (!Overlaps(cluster, ItemValue(item, "D_POSITION"), ItemValue(item, "D_LENGTH"))) continue;
      const auto member = cluster.items.find(guid);
      if (member == cluster.items.end()) {
        if (options.suspend_deactivation) continue;
        if (options.selective_midi_off) NoteTrackUnderPlayHead(item, noteOffTracks);
        SetItemValue(item, "B_MUTE", 1);
        ++result.items_muted;
        continue;
      }
      SetItemValue(item, "B_MUTE", 0);
      SetItemValue(item, "C_LANEPLAYS", 2);
      SwitchToRecordedTake(item, member->second, [&] {
        if (options.selective_midi_off) NoteTrackUnderPlayHead(item, noteOffTracks);
      });
      MediaTrack* track = GetMediaItemTrack ? GetMediaItemTrack(item) : nullptr;
      if (track && GetMediaTrackInfo_Value && GetMediaTrackInfo_Value(track, "I_FREEMODE") == 2 &&
          laneTrackSet.insert(track).second) {
        laneTracks.push_back(track);
      }
      result.item_guids.push_back(guid);
      ++result.items_activated;
    }
    for (MediaTrack* track : laneTracks) {
      if (SetMediaTrackInfo_Value) SetMediaTrackInfo_Value(track, "C_ALLLANESPLAY", 2);
    }
    if (options.selective_midi_off && !noteOffTracks.empty()) SendNotesOffTo(noteOffTracks);
    for (MediaItem* item : selected) SetItemValue(item, "B_UISEL", 1);
    ProjectChanged();
  });
  if (!found) {
    result.error = "Cluster not found";
    return result;
  }
  result.success = true;
  return result;
}

ActivationResult DeactivateAllClusters() {
  ActivationResult result;
  {
    RefreshHold hold;
    for (MediaItem* item : ProjectItems()) {
      if (ItemValue(item, "B_MUTE") == 0) continue;
      SetItemValue(item, "B_MUTE", 0);
      ++result.items_activated;
    }
    ProjectChanged();
  }
  result.success = true;
  return result;
}

}  // namespace ZOLVA_Cluster::Activation
