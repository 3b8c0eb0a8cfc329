// The region functions loaded into the simulated host and called as
// ReaScript calls them, through their vararg entries.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reascript.h"

namespace {

using e2e::Call;
using e2e::Values;

std::string Def(const char* ret, const char* types, const char* names, const char* help) {
  return std::string(ret) + '\0' + types + '\0' + names + '\0' + help + '\0';
}

const std::vector<std::pair<std::string, std::string>> kRegionFunctions = {
    {"ZOLVA_GetEnumIndexFromGUID",
     Def("int", "const char*", "guid", "Convert a region GUID to its enumeration index. Returns -1 if not found.")},
    {"ZOLVA_GetDisplayIndexFromEnum",
     Def("int", "int", "enumIndex", "Convert enumeration index to user-visible display index. Returns -1 if not found.")},
    {"ZOLVA_GetGUIDFromEnumIndex", Def("bool", "int,char*,int", "enumIndex,guidOut,guidOut_sz",
                                       "Get the GUID for a region at a given enumeration index.")},
    {"ZOLVA_CreateRegionWithGUID",
     Def("bool", "double,double,const char*,int,char*,int", "position,regionEnd,name,color,guidOut,guidOut_sz",
         "Create a new region and return its GUID.")},
    {"ZOLVA_ValidateRegionGUID",
     Def("bool", "const char*", "guid", "Check if a region with the given GUID still exists.")},
    {"ZOLVA_DeleteRegionByGUID", Def("bool", "const char*", "guid", "Delete a region by its GUID.")},
    {"ZOLVA_UpdateRegionBoundaries", Def("bool", "const char*,double,double", "guid,newPosition,newEnd",
                                         "Update region boundaries by GUID. Use -1 to keep current value.")},
    {"ZOLVA_UpdateRegionColor", Def("bool", "const char*,int", "guid,newColor", "Update region color by GUID.")},
    {"ZOLVA_GetRegionByGUID",
     Def("bool", "const char*,double*,double*,char*,int,int*,int*,int*",
         "guid,positionOut,regionEndOut,nameOut,nameOut_sz,colorOut,enumIndexOut,displayIndexOut",
         "Get full region information by GUID.")},
    {"ZOLVA_GetRegionByName",
     Def("bool", "const char*,char*,int,double*,double*,int*,int*",
         "name,guidOut,guidOut_sz,positionOut,regionEndOut,colorOut,enumIndexOut",
         "Get full region information by name.")},
};

TEST(RegionE2E, RegistersTheTenFunctionsInOrderWithExactDefinitions) {
  sim::Host host;
  e2e::LoadedExtension ext(host);
  size_t first = 0;
  while (first < host.registerLog.size() && host.registerLog[first].name != "API_" + kRegionFunctions[0].first) ++first;
  ASSERT_LE(first + 3 * kRegionFunctions.size(), host.registerLog.size());
  EXPECT_EQ(host.registerLog[first - 1].name, "APIdef_ZOLVA_TreeValidate");  // regions come after the tree
  for (size_t i = 0; i < kRegionFunctions.size(); ++i) {
    const std::string& name = kRegionFunctions[i].first;
    EXPECT_EQ(host.registerLog[first + 3 * i].name, "API_" + name);
    EXPECT_EQ(host.registerLog[first + 3 * i + 1].name, "APIvararg_" + name);
    EXPECT_EQ(host.registerLog[first + 3 * i + 2].name, "APIdef_" + name);
    EXPECT_EQ(host.registerLog[first + 3 * i + 2].definition, kRegionFunctions[i].second) << name;
  }
  ext.Unload();
  for (const auto& f : kRegionFunctions) EXPECT_FALSE(host.IsRegistered("API_" + f.first)) << f.first;
}

TEST(RegionE2E, ScriptKeepsHoldOfARegionByGuid) {
  sim::Host host;
  e2e::LoadedExtension ext(host);
  const Values made = Call(host, "ZOLVA_CreateRegionWithGUID", {8.0, 9.0, "verse", 0x1000000});
  ASSERT_EQ(made.size(), 2u);
  ASSERT_EQ(made[0], e2e::Value(true));
  const std::string guid = std::get<std::string>(made[1]);
  EXPECT_EQ(guid, host.markers[0].guid);
  // nil doubles: 0.0 when creating, "keep" when updating
  EXPECT_EQ(Call(host, "ZOLVA_CreateRegionWithGUID", {std::monostate{}, std::monostate{}, "intro", 0})[0],
            e2e::Value(true));
  EXPECT_EQ(Call(host, "ZOLVA_UpdateRegionBoundaries", {guid, std::monostate{}, 12.0}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_GetRegionByGUID", {guid}), (Values{true, 8.0, 12.0, "verse", 0x1000000, 1, 1}));
  EXPECT_EQ(Call(host, "ZOLVA_GetRegionByName", {"intro"}),
            (Values{true, host.markers[0].guid, 0.0, 0.0, 0, 0}));
  EXPECT_EQ(Call(host, "ZOLVA_GetEnumIndexFromGUID", {guid}), Values{1});
  EXPECT_EQ(Call(host, "ZOLVA_GetDisplayIndexFromEnum", {1}), Values{1});
  EXPECT_EQ(Call(host, "ZOLVA_GetGUIDFromEnumIndex", {1}), (Values{true, guid}));
  EXPECT_EQ(Call(host, "ZOLVA_UpdateRegionColor", {guid, 0x1000000 | 7}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_DeleteRegionByGUID", {guid}), Values{true});
  EXPECT_EQ(Call(host, "ZOLVA_ValidateRegionGUID", {guid}), Values{false});
  EXPECT_EQ(Call(host, "ZOLVA_GetRegionByGUID", {guid}), (Values{false, 0.0, 0.0, "", 0, 0, 0}));
}

}  // namespace
