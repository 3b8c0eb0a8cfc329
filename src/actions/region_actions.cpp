#include "actions/region_actions.h"

#include <string>

#include "actions/action_support.h"
#include "actions/actions.h"
#include "cluster/cluster_edit.h"
#include "cluster/persistence.h"
#include "region/region_functions.h"

namespace ZOLVA_Actions {
namespace {

constexpr char kRegions[] = "ZOLVA: Create regions from clusters";

}  // namespace

RegionCounts KeepClusterRegions() {
  RegionCounts counts;
  for (const ZOLVA_Cluster::ClusterData& cluster : ZOLVA_Cluster::AllClusters()) {
    if (!cluster.region_guid.empty() &&
        ZOLVA_Region::UpdateRegionByGUID(cluster.region_guid, cluster.start_time, cluster.end_time, cluster.name)) {
      ++counts.updated;
      continue;
    }
    char guid[64] = {};
    if (!ZOLVA_Region::API_CreateRegionWithGUID(cluster.start_time, cluster.end_time, cluster.name.c_str(),
                                                cluster.color, guid, sizeof guid)) {
      continue;
    }
    ZOLVA_Cluster::LinkClusterRegion(cluster.guid, guid);
    ++counts.created;
  }
  return counts;
}

void CreateRegionsFromClusters() {
  if (!ReadyToChange(kRegions, {ZOLVA_HOST_FUNCTION(AddProjectMarker2), ZOLVA_HOST_FUNCTION(SetProjectMarkerByIndex2),
                                ZOLVA_HOST_FUNCTION(GetSetProjectInfo_String)}) ||
      !HasClusters(kRegions)) {
    return;
  }
  ProjectChange change(kRegions);
  const RegionCounts counts = KeepClusterRegions();
  ZOLVA_Cluster::SaveToProject();
  Console("ZOLVA: " + std::to_string(counts.created) + " region(s) created, " + std::to_string(counts.updated) +
          " updated.\n");
}

}  // namespace ZOLVA_Actions
