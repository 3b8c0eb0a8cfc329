#include "cluster/project_items.h"

#include "host/host_values.h"

namespace ZOLVA_Cluster {

RefreshHold::RefreshHold() {
  if (PreventUIRefresh) PreventUIRefresh(1);
}

RefreshHold::~RefreshHold() {
  if (PreventUIRefresh) PreventUIRefresh(-1);
}

void ProjectChanged() {
  if (MarkProjectDirty) MarkProjectDirty(nullptr);
  if (UpdateArrange) UpdateArrange();
}

std::string ItemGuid(MediaItem* item) { return ZOLVA::GuidOf(GetSetMediaItemInfo_String, item); }

std::string TakeGuid(MediaItem_Take* take) { return ZOLVA::GuidOf(GetSetMediaItemTakeInfo_String, take); }

double ItemValue(MediaItem* item, const char* name) {
  return GetMediaItemInfo_Value ? GetMediaItemInfo_Value(item, name) : 0.0;
}

void SetItemValue(MediaItem* item, const char* name, double value) {
  if (SetMediaItemInfo_Value) SetMediaItemInfo_Value(item, name, value);
}

bool Overlaps(const ClusterData& cluster, double position, double length) {
  return cluster.start_time < position + length && position < cluster.end_time;
}

int FindTake(MediaItem* item, const std::string& takeGuid) {
  const int count = GetMediaItemNumTakes && GetTake ? GetMediaItemNumTakes(item) : 0;
  for (int i = 0; i < count; ++i) {
    if (TakeGuid(GetTake(item, i)) == takeGuid) return i;
  }
  return -1;
}

std::vector<MediaItem*> SelectedItems() {
  std::vector<MediaItem*> items;
  if (!CountSelectedMediaItems || !GetSelectedMediaItem) return items;
  const int count = CountSelectedMediaItems(nullptr);
  for (int i = 0; i < count; ++i) {
    if (MediaItem* item = GetSelectedMediaItem(nullptr, i)) items.push_back(item);
  }
  return items;
}

std::vector<MediaItem*> ProjectItems() {
  std::vector<MediaItem*> items;
  if (!CountMediaItems || !GetMediaItem) return items;
  const int count = CountMediaItems(nullptr);
  items.reserve(static_cast<size_t>(count > 0 ? count : 0));
  for (int i = 0; i < count; ++i) {
    if (MediaItem* item = GetMediaItem(nullptr, i)) items.push_back(item);
  }
  return items;
}

}  // namespace ZOLVA_Cluster
