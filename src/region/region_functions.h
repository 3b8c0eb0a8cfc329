// The region module's script functions, as the host calls them. Every one
// answers false or -1 on failure and never lets an exception out.
#pragma once

#include <string>

namespace ZOLVA_Region {

int API_GetEnumIndexFromGUID(const char* guid);
int API_GetDisplayIndexFromEnum(int enumIndex);
bool API_GetGUIDFromEnumIndex(int enumIndex, char* guidOut, int guidOut_sz);
bool API_CreateRegionWithGUID(double position, double regionEnd, const char* name, int color, char* guidOut,
                              int guidOut_sz);
bool API_ValidateRegionGUID(const char* guid);
bool API_DeleteRegionByGUID(const char* guid);
bool API_UpdateRegionBoundaries(const char* guid, double newPosition, double newEnd);
bool API_UpdateRegionColor(const char* guid, int newColor);
bool API_GetRegionByGUID(const char* guid, double* positionOut, double* regionEndOut, char* nameOut,
                         int nameOut_sz, int* colorOut, int* enumIndexOut, int* displayIndexOut);
bool API_GetRegionByName(const char* name, char* guidOut, int guidOut_sz, double* positionOut,
                         double* regionEndOut, int* colorOut, int* enumIndexOut);

// Not published to scripts: a region's bounds and name at once, its colour
// and number kept; false for an unknown GUID.
bool UpdateRegionByGUID(const std::string& guid, double position, double regionEnd, const std::string& name);

}  // namespace ZOLVA_Region
