#include "region/region_lookup.h"

#include <string>

namespace ZOLVA_Region {

std::optional<RegionInfo> EnumEntry(int enumIndex) {
  if (!EnumProjectMarkers3) return std::nullopt;
  RegionInfo info;
  const char* name = nullptr;
  if (EnumProjectMarkers3(nullptr, enumIndex, &info.isRegion, &info.position, &info.regionEnd, &name,
                          &info.displayIndex, &info.color) < 1) {
    return std::nullopt;
  }
  info.enumIndex = enumIndex;
  info.name = name ? name : "";
  return info;
}

std::string GetGUIDFromEnumIndex(int enumIndex, ReaProject* /*project*/) {
  if (!GetSetProjectInfo_String) return std::string();
  const std::string key = "MARKER_GUID:" + std::to_string(enumIndex);
  char buffer[128] = {};
  if (!GetSetProjectInfo_String(nullptr, key.c_str(), buffer, false)) return std::string();
  buffer[sizeof buffer - 1] = '\0';
  return buffer;
}

int GetEnumIndexFromGUID(const std::string& guid, ReaProject* project) {
  if (guid.empty() || !CountProjectMarkers) return -1;
  const int count = CountProjectMarkers(nullptr, nullptr, nullptr);
  for (int i = 0; i < count; ++i) {
    if (GetGUIDFromEnumIndex(i, project) == guid) return i;
  }
  return -1;
}

std::optional<RegionInfo> GetRegionByGUID(const std::string& guid, ReaProject* project) {
  if (guid.empty()) return std::nullopt;
  const int index = GetEnumIndexFromGUID(guid, project);
  if (index < 0) return std::nullopt;
  std::optional<RegionInfo> info = EnumEntry(index);
  if (info) info->guid = guid;
  return info;
}

}  // namespace ZOLVA_Region
