#include "region/region_api.h"

#include <vector>

#include "host/api_frame.h"
#include "region/region_functions.h"

namespace ZOLVA_Region {
namespace {

bool g_initialized = false;

// Static storage: the keys and definition texts stay put until the library
// itself is unloaded, long after the host's last look at them.
const std::vector<ZOLVA::ApiFunction>& ApiTable() {
  using ZOLVA::DefineApi;
  static const std::vector<ZOLVA::ApiFunction> table{
      DefineApi<&API_GetEnumIndexFromGUID>(
          "ZOLVA_GetEnumIndexFromGUID", "guid",
          "Convert a region GUID to its enumeration index. Returns -1 if not found."),
      DefineApi<&API_GetDisplayIndexFromEnum>(
          "ZOLVA_GetDisplayIndexFromEnum", "enumIndex",
          "Convert enumeration index to user-visible display index. Returns -1 if not found."),
      DefineApi<&API_GetGUIDFromEnumIndex>("ZOLVA_GetGUIDFromEnumIndex", "enumIndex,guidOut,guidOut_sz",
                                           "Get the GUID for a region at a given enumeration index."),
      DefineApi<&API_CreateRegionWithGUID, ZOLVA::NullDoubleIsZero>(
          "ZOLVA_CreateRegionWithGUID", "position,regionEnd,name,color,guidOut,guidOut_sz",
          "Create a new region and return its GUID."),
      DefineApi<&API_ValidateRegionGUID>("ZOLVA_ValidateRegionGUID", "guid",
                                         "Check if a region with the given GUID still exists."),
      DefineApi<&API_DeleteRegionByGUID>("ZOLVA_DeleteRegionByGUID", "guid", "Delete a region by its GUID."),
      DefineApi<&API_UpdateRegionBoundaries, ZOLVA::NullDoubleIsMinusOne>(
          "ZOLVA_UpdateRegionBoundaries", "guid,newPosition,newEnd",
          "Update region boundaries by GUID. Use -1 to keep current value."),
      DefineApi<&API_UpdateRegionColor>("ZOLVA_UpdateRegionColor", "guid,newColor",
                                        "Update region color by GUID."),
      DefineApi<&API_GetRegionByGUID>(
          "ZOLVA_GetRegionByGUID",
          "guid,positionOut,regionEndOut,nameOut,nameOut_sz,colorOut,enumIndexOut,displayIndexOut",
          "Get full region information by GUID."),
      DefineApi<&API_GetRegionByName>(
          "ZOLVA_GetRegionByName", "name,guidOut,guidOut_sz,positionOut,regionEndOut,colorOut,enumIndexOut",
          "Get full region information by name."),
  };
  return table;
}

}  // namespace

void Initialize() { g_initialized = true; }
void Shutdown() { g_initialized = false; }

void RegisterAPI() { ZOLVA::RegisterApiTable(ApiTable()); }

void UnregisterAPI() { ZOLVA::UnregisterApiTable(ApiTable()); }

}  // namespace ZOLVA_Region
