#include "host/api_frame.h"
#include "region/region_functions.h"

namespace ZOLVA_Region {
namespace {

bool g_initialized = false;

void Start() { g_initialized = true; }
void Stop() { g_initialized = false; }

using ZOLVA::Api;
using ZOLVA::NullDoubleIsMinusOne;
using ZOLVA::NullDoubleIsZero;

constexpr ZOLVA::ApiSpec kApi[] = {
    Api<&API_GetEnumIndexFromGUID, -1>(
        "ZOLVA_GetEnumIndexFromGUID", "guid",
        "Convert a region GUID to its enumeration index. Returns -1 if not found."),
    Api<&API_GetDisplayIndexFromEnum, -1>(
        "ZOLVA_GetDisplayIndexFromEnum", "enumIndex",
        "Convert enumeration index to user-visible display index. Returns -1 if not found."),
    Api<&API_GetGUIDFromEnumIndex, false>("ZOLVA_GetGUIDFromEnumIndex", "enumIndex,guidOut,guidOut_sz",
                                          "Get the GUID for a region at a given enumeration index."),
    Api<&API_CreateRegionWithGUID, false, NullDoubleIsZero>(
        "ZOLVA_CreateRegionWithGUID", "position,regionEnd,name,color,guidOut,guidOut_sz",
        "Create a new region and return its GUID."),
    Api<&API_ValidateRegionGUID, false>("ZOLVA_ValidateRegionGUID", "guid",
                                        "Check if a region with the given GUID still exists."),
    Api<&API_DeleteRegionByGUID, false>("ZOLVA_DeleteRegionByGUID", "guid", "Delete a region by its GUID."),
    Api<&API_UpdateRegionBoundaries, false, NullDoubleIsMinusOne>(
        "ZOLVA_UpdateRegionBoundaries", "guid,newPosition,newEnd",
        "Update region boundaries by GUID. Use -1 to keep current value."),
    Api<&API_UpdateRegionColor, false>("ZOLVA_UpdateRegionColor", "guid,newColor", "Update region color by GUID."),
    Api<&API_GetRegionByGUID, false>(
        "ZOLVA_GetRegionByGUID",
        "guid,positionOut,regionEndOut,nameOut,nameOut_sz,colorOut,enumIndexOut,displayIndexOut",
        "Get full region information by GUID."),
    Api<&API_GetRegionByName, false>(
        "ZOLVA_GetRegionByName", "name,guidOut,guidOut_sz,positionOut,regionEndOut,colorOut,enumIndexOut",
        "Get full region information by name."),
};

}  // namespace

extern const ZOLVA::Module kModule = ZOLVA::MakeModule(kApi, Start, Stop);

}  // namespace ZOLVA_Region
