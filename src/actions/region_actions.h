// Keeping one region per cluster, shared by the region and render actions.
#pragma once

namespace ZOLVA_Actions {

struct RegionCounts {
  int created = 0;
  int updated = 0;
};

// Gives every cluster a region with its name and range: a cluster's linked
// region is updated, a cluster without one (or whose region is gone) gets a
// new one, linked to it. Changes the registry; the caller saves it.
RegionCounts KeepClusterRegions();

}  // namespace ZOLVA_Actions
