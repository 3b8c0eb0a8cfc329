// Markers and regions as the host enumerates them, found by their GUIDs.
// Nothing is cached: every call asks the host afresh, in the current project.
#pragma once

#include <optional>
#include <string>

#include "host/reaper_api.h"

namespace ZOLVA_Region {

struct RegionInfo {
  int enumIndex = -1;     // position in the host's enumeration, from 0
  int displayIndex = -1;  // the number shown to the user
  double position = 0.0;
  double regionEnd = 0.0;
  std::string name;
  std::string guid;
  int color = 0;
  bool isRegion = false;
};

// The entry at an enumeration index, GUID left empty; nothing past the end.
std::optional<RegionInfo> EnumEntry(int enumIndex);

// The project argument is accepted for the callers' sake; the current
// project is always the one asked.
std::string GetGUIDFromEnumIndex(int enumIndex, ReaProject* project = nullptr);
// Markers count too: a marker's GUID is accepted wherever a region's is.
int GetEnumIndexFromGUID(const std::string& guid, ReaProject* project = nullptr);
std::optional<RegionInfo> GetRegionByGUID(const std::string& guid, ReaProject* project = nullptr);

}  // namespace ZOLVA_Region
