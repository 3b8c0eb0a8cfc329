// The snapshot of what preparing a render changes: item mutes, active takes
// and selection, and the lanes of fixed-lane tracks. Taken once before the
// first preparation and written back by the restore that consumes it.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

namespace ZOLVA_Cluster::State {

struct TrackLaneBackup {
  std::string track_guid;
  double all_lanes_play = 0.0;      // "C_ALLLANESPLAY"
  std::vector<double> lane_plays;   // "C_LANEPLAYS:<i>" of each fixed lane
};

struct RenderBackup {
  bool held = false;
  std::unordered_map<std::string, bool> item_mutes;      // item GUID -> muted
  std::unordered_map<std::string, int32_t> item_takes;   // item GUID -> active take
  std::vector<std::string> selected_items;               // in project order
  std::vector<TrackLaneBackup> lanes;
};

// Takes the snapshot unless one is held.
void BackupRenderState();
// Writes a held snapshot back and drops it; true when there was one.
bool RestoreRenderState();

}  // namespace ZOLVA_Cluster::State
