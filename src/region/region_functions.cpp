#include "region/region_functions.h"

#include <optional>
#include <string>

#include "json/out_buffer.h"
#include "region/region_lookup.h"

namespace ZOLVA_Region {
namespace {

using ZOLVA::CopyToBuffer;
using ZOLVA::IsUsableBuffer;

std::optional<RegionInfo> FindByGuidText(const char* guid) {
  if (!guid || !*guid) return std::nullopt;
  return GetRegionByGUID(guid);
}

int CountEntries() { return CountProjectMarkers ? CountProjectMarkers(nullptr, nullptr, nullptr) : 0; }

// Writes an entry back with new boundaries, colour and name, its number as it is.
bool Rewrite(const RegionInfo& entry, double position, double regionEnd, int color, const std::string& name) {
  if (!SetProjectMarkerByIndex2) return false;
  return SetProjectMarkerByIndex2(nullptr, entry.enumIndex, entry.isRegion, position, regionEnd, entry.displayIndex,
                                  name.c_str(), color, 0);
}

// The GUID of the region AddProjectMarker2 just numbered: the first region
// showing that number, or else the last entry of the enumeration.
std::string GuidOfNewRegion(int number, int count) {
  for (int i = 0; i < count; ++i) {
    const std::optional<RegionInfo> entry = EnumEntry(i);
    if (entry && entry->isRegion && entry->displayIndex == number) return GetGUIDFromEnumIndex(i);
  }
  return GetGUIDFromEnumIndex(count - 1);
}

}  // namespace

int API_GetEnumIndexFromGUID(const char* guid) {
  return guid ? GetEnumIndexFromGUID(guid) : -1;
}

int API_GetDisplayIndexFromEnum(int enumIndex) {
  const std::optional<RegionInfo> entry = EnumEntry(enumIndex);
  return entry ? entry->displayIndex : -1;
}

bool API_GetGUIDFromEnumIndex(int enumIndex, char* guidOut, int guidOut_sz) {
  if (!IsUsableBuffer(guidOut, guidOut_sz)) return false;
  const std::string guid = GetGUIDFromEnumIndex(enumIndex);
  CopyToBuffer(guid, guidOut, guidOut_sz);
  return !guid.empty();
}

bool API_CreateRegionWithGUID(double position, double regionEnd, const char* name, int color, char* guidOut,
                              int guidOut_sz) {
  if (!IsUsableBuffer(guidOut, guidOut_sz)) return false;
  CopyToBuffer(std::string(), guidOut, guidOut_sz);
  if (!name || !AddProjectMarker2) return false;
  const int number = AddProjectMarker2(nullptr, true, position, regionEnd, name, -1, color);
  if (number < 0) return false;
  const int count = CountEntries();
  if (count < 1) return false;
  const std::string guid = GuidOfNewRegion(number, count);
  CopyToBuffer(guid, guidOut, guidOut_sz);
  return !guid.empty();
}

bool API_ValidateRegionGUID(const char* guid) {
  return guid && *guid && GetEnumIndexFromGUID(guid) >= 0;
}

bool API_DeleteRegionByGUID(const char* guid) {
  if (!guid || !*guid || !DeleteProjectMarkerByIndex) return false;
  const int index = GetEnumIndexFromGUID(guid);
  return index >= 0 && DeleteProjectMarkerByIndex(nullptr, index);
}

bool API_UpdateRegionBoundaries(const char* guid, double newPosition, double newEnd) {
  const std::optional<RegionInfo> entry = FindByGuidText(guid);
  if (!entry) return false;
  // Any value that is not 0 or more (NaN included) keeps the current one.
  const double position = newPosition >= 0.0 ? newPosition : entry->position;
  const double regionEnd = newEnd >= 0.0 ? newEnd : entry->regionEnd;
  return Rewrite(*entry, position, regionEnd, entry->color, entry->name);
}

bool API_UpdateRegionColor(const char* guid, int newColor) {
  const std::optional<RegionInfo> entry = FindByGuidText(guid);
  return entry && Rewrite(*entry, entry->position, entry->regionEnd, newColor, entry->name);
}

bool UpdateRegionByGUID(const std::string& guid, double position, double regionEnd, const std::string& name) {
  const std::optional<RegionInfo> entry = FindByGuidText(guid.c_str());
  return entry && Rewrite(*entry, position, regionEnd, entry->color, name);
}

bool API_GetRegionByGUID(const char* guid, double* positionOut, double* regionEndOut, char* nameOut,
                         int nameOut_sz, int* colorOut, int* enumIndexOut, int* displayIndexOut) {
  if (!guid) return false;
  const std::optional<RegionInfo> entry = GetRegionByGUID(guid);
  if (!entry) return false;
  if (positionOut) *positionOut = entry->position;
  if (regionEndOut) *regionEndOut = entry->regionEnd;
  CopyToBuffer(entry->name, nameOut, nameOut_sz);
  if (colorOut) *colorOut = entry->color;
  if (enumIndexOut) *enumIndexOut = entry->enumIndex;
  if (displayIndexOut) *displayIndexOut = entry->displayIndex;
  return true;
}

bool API_GetRegionByName(const char* name, char* guidOut, int guidOut_sz, double* positionOut,
                         double* regionEndOut, int* colorOut, int* enumIndexOut) {
  if (name && *name) {
    const int count = CountEntries();
    for (int i = 0; i < count; ++i) {
      const std::optional<RegionInfo> entry = EnumEntry(i);
      if (!entry || entry->name != name) continue;
      CopyToBuffer(GetGUIDFromEnumIndex(i), guidOut, guidOut_sz);
      if (positionOut) *positionOut = entry->position;
      if (regionEndOut) *regionEndOut = entry->regionEnd;
      if (colorOut) *colorOut = entry->color;
      if (enumIndexOut) *enumIndexOut = entry->enumIndex;
      return true;
    }
  }
  CopyToBuffer(std::string(), guidOut, guidOut_sz);
  return false;
}

}  // namespace ZOLVA_Region
