// The cluster record and its member-item record. Both are plain values:
// copying a ClusterData copies its whole item map.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>

namespace ZOLVA_Cluster {

// One media item that belongs to a cluster, as it was when associated.
struct ItemAssociation {
  std::string item_guid;       // equal to its key in ClusterData::items
  std::string item_take_guid;  // active take at association time; may be empty
  int64_t time_modified = 0;   // seconds since the Unix epoch
  double position = 0.0;       // item position in seconds
  double length = 0.0;         // item length in seconds
};

// One cluster: a named group of items with bounds, entry/exit points and an
// optional region link. cluster_id, region_aux and link_guid are carried for
// their owners and never interpreted by the registry or its formats.
struct ClusterData {
  std::string guid;
  uint32_t cluster_id = 0;
  std::string name;
  int32_t color = 0;
  double start_time = 0.0;
  double end_time = 0.0;
  double entry_point = 0.0;
  double exit_point = 0.0;
  bool is_loop = false;
  std::string region_guid;
  uint32_t region_aux = 0;
  std::string link_guid;
  std::unordered_map<std::string, ItemAssociation> items;  // keyed by item GUID
  int64_t time_created = 0;   // seconds since the Unix epoch
  int64_t time_modified = 0;  // seconds since the Unix epoch
};

}  // namespace ZOLVA_Cluster
