// The project's items as the cluster operations see them: GUIDs, takes,
// the overlap test, and a bracket that holds off UI refresh for a batch of
// changes.
#pragma once

#include <string>
#include <vector>

#include "cluster/cluster_data.h"
#include "host/reaper_api.h"

namespace ZOLVA_Cluster {

// Holds UI refresh off from construction to destruction, so the count is
// given back on every path out of the batch.
class RefreshHold {
 public:
  RefreshHold();
  ~RefreshHold();
  RefreshHold(const RefreshHold&) = delete;
  RefreshHold& operator=(const RefreshHold&) = delete;
};

// MarkProjectDirty and UpdateArrange, the end of every change to items.
void ProjectChanged();

std::string ItemGuid(MediaItem* item);
std::string TakeGuid(MediaItem_Take* take);
double ItemValue(MediaItem* item, const char* name);
void SetItemValue(MediaItem* item, const char* name, double value);

// Strict on both ends: an item that only touches a bound does not overlap.
bool Overlaps(const ClusterData& cluster, double position, double length);

// The index of the first take whose GUID is `takeGuid`, or -1.
int FindTake(MediaItem* item, const std::string& takeGuid);

// Switches a multi-take item to its recorded take; true when it switched.
// `beforeSwitch` runs just before the switch.
template <typename BeforeSwitch>
bool SwitchToRecordedTake(MediaItem* item, const ItemAssociation& association, BeforeSwitch&& beforeSwitch) {
  if (association.item_take_guid.empty() || !GetMediaItemNumTakes || GetMediaItemNumTakes(item) <= 1) return false;
  const int take = FindTake(item, association.item_take_guid);
  if (take < 0) return false;
  beforeSwitch();
  SetItemValue(item, "I_CURTAKE", take);
  return true;
}

// The selected items, in selection order, null handles left out.
std::vector<MediaItem*> SelectedItems();
// Every item of the project, in project order, null handles left out.
std::vector<MediaItem*> ProjectItems();

}  // namespace ZOLVA_Cluster
