// The region functions loaded into the simulated host and called as ReaScript calls them.
#include <gtest/gtest.h>

#include "reascript.h"

namespace {

using e2e::Call, e2e::Value, e2e::Values;

const std::vector<e2e::Signature> kRegionFunctions = {
    {"ZOLVA_GetEnumIndexFromGUID",
     "int|const char*|guid|Convert a region GUID to its enumeration index. Returns -1 if not found."},
    {"ZOLVA_GetDisplayIndexFromEnum",
     "int|int|enumIndex|Convert enumeration index to user-visible display index. Returns -1 if not found."},
    {"ZOLVA_GetGUIDFromEnumIndex",
     "bool|int,char*,int|enumIndex,guidOut,guidOut_sz|Get the GUID for a region at a given enumeration index."},
    {"ZOLVA_CreateRegionWithGUID", "bool|double,double,const char*,int,char*,int|position,regionEnd,name,color,"
                                   "guidOut,guidOut_sz|Create a new region and return its GUID."},
    {"ZOLVA_ValidateRegionGUID", "bool|const char*|guid|Check if a region with the given GUID still exists."},
    {"ZOLVA_DeleteRegionByGUID", "bool|const char*|guid|Delete a region by its GUID."},
    {"ZOLVA_UpdateRegionBoundaries", "bool|const char*,double,double|guid,newPosition,newEnd|"
                                     "Update region boundaries by GUID. Use -1 to keep current value."},
    {"ZOLVA_UpdateRegionColor", "bool|const char*,int|guid,newColor|Update region color by GUID."},
    {"ZOLVA_GetRegionByGUID",
     "bool|const char*,double*,double*,char*,int,int*,int*,int*|guid,positionOut,regionEndOut,nameOut,nameOut_sz,"
     "colorOut,enumIndexOut,displayIndexOut|Get full region information by GUID."},
    {"ZOLVA_GetRegionByName", "bool|const char*,char*,int,double*,double*,int*,int*|name,guidOut,guidOut_sz,"
                              "positionOut,regionEndOut,colorOut,enumIndexOut|Get full region information by name."},
};

TEST(RegionE2E, Registration) { e2e::ExpectRegistersInOrder(kRegionFunctions); }

// A region keeps its GUID while a region and a marker come in before it and go again; the
// marker's GUID works like a region's. nil doubles read as 0 in a create and as "keep" in an update.
TEST(RegionE2E, ScriptKeepsHoldOfARegionByGuid) {
  sim::Host host;
  e2e::LoadedExtension ext(host);
  const Value verse = Call(host, "ZOLVA_CreateRegionWithGUID", {8.0, 9.0, "verse", 0}).at(1);
  const Value intro = Call(host, "ZOLVA_CreateRegionWithGUID", {std::monostate{}, std::monostate{}, "intro", 0}).at(1);
  host.markers.insert(host.markers.begin() + 1, {false, 3.0, 3.0, "cue", 1, 0, host.NewGuid()});
  const Value cue = host.markers[1].guid;
  EXPECT_EQ(Call(host, "ZOLVA_UpdateRegionBoundaries", {verse, std::monostate{}, 12.0}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_UpdateRegionColor", {verse, 0x1000007}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_GetRegionByGUID", {verse}), (Values{true, 8.0, 12.0, "verse", 0x1000007, 2, 1}));
  EXPECT_EQ(Call(host, "ZOLVA_GetRegionByName", {"intro"}), (Values{true, intro, 0.0, 0.0, 0, 0}));
  EXPECT_EQ(Call(host, "ZOLVA_UpdateRegionBoundaries", {cue, 4.5, std::monostate{}}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_GetRegionByName", {"cue"}), (Values{true, cue, 4.5, 0.0, 0, 1}));
  EXPECT_EQ(Call(host, "ZOLVA_DeleteRegionByGUID", {cue}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_DeleteRegionByGUID", {intro}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_GetEnumIndexFromGUID", {verse}), Values{0});
  EXPECT_EQ(Call(host, "ZOLVA_GetGUIDFromEnumIndex", {0}), (Values{true, verse}));
  EXPECT_EQ(Call(host, "ZOLVA_GetDisplayIndexFromEnum", {0}), Values{1});
  EXPECT_EQ(Call(host, "ZOLVA_DeleteRegionByGUID", {verse}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_ValidateRegionGUID", {verse}), Values{false});
}

}  // namespace
