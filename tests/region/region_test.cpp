// Regions by GUID in the simulated host: handles that survive re-sorting and
// deletion, markers accepted as regions, and the out-buffer copying rule.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "region/region_functions.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Region;

class Regions : public ::testing::Test {
 protected:
  Regions() { ZOLVA::ResolveHostApi(&sim::Host::GetFunc); }
  std::string Create(double start, double end, const char* name, int color = 0) {
    char guid[64];
    EXPECT_TRUE(API_CreateRegionWithGUID(start, end, name, color, guid, sizeof guid));
    return guid;
  }
  std::string GuidAt(int enumIndex) { return host.markers.at(enumIndex).guid; }
  sim::Host host;
};

TEST_F(Regions, GuidFollowsItsRegionThroughInsertsMovesAndDeletes) {
  const std::string a = Create(10, 12, "A"), b = Create(20, 22, "B");
  EXPECT_EQ(API_GetEnumIndexFromGUID(a.c_str()), 0);
  const std::string early = Create(1, 2, "early");  // sorts in before both
  EXPECT_EQ(API_GetEnumIndexFromGUID(a.c_str()), 1);
  EXPECT_EQ(API_GetEnumIndexFromGUID(b.c_str()), 2);
  ASSERT_TRUE(API_UpdateRegionBoundaries(b.c_str(), 5, -1));  // moves before A, keeps its end
  EXPECT_EQ(API_GetEnumIndexFromGUID(b.c_str()), 1);
  EXPECT_EQ(API_GetDisplayIndexFromEnum(1), 2);  // B keeps the number it was given
  EXPECT_TRUE(API_DeleteRegionByGUID(early.c_str()));
  double pos = 0, end = 0;
  char name[8];
  int color = -1, enumIndex = -1, display = -1;
  ASSERT_TRUE(API_GetRegionByGUID(a.c_str(), &pos, &end, name, sizeof name, &color, &enumIndex, &display));
  EXPECT_EQ(std::vector<double>({pos, end}), std::vector<double>({10, 12}));
  EXPECT_EQ(std::string(name) + ":" + std::to_string(enumIndex) + ":" + std::to_string(display), "A:1:1");
  EXPECT_TRUE(API_DeleteRegionByGUID(a.c_str()));
  for (const char* gone : {a.c_str(), early.c_str(), "", static_cast<const char*>(nullptr)}) {
    EXPECT_FALSE(API_ValidateRegionGUID(gone));
    EXPECT_FALSE(API_DeleteRegionByGUID(gone));
    EXPECT_FALSE(API_UpdateRegionColor(gone, 5));
    EXPECT_FALSE(API_GetRegionByGUID(gone, &pos, nullptr, nullptr, 0, nullptr, nullptr, nullptr));
  }
  EXPECT_EQ(API_GetEnumIndexFromGUID(nullptr), -1);
  EXPECT_EQ(API_GetEnumIndexFromGUID(b.c_str()), 0);
  EXPECT_TRUE(API_UpdateRegionBoundaries(b.c_str(), -5, 30));  // any negative start keeps it
  EXPECT_EQ(std::vector<double>({host.markers[0].position, host.markers[0].end}), std::vector<double>({5, 30}));
}

TEST_F(Regions, MarkerGuidWorksLikeARegionGuid) {
  AddProjectMarker2(nullptr, false, 3.0, 0.0, "cue", -1, 0);
  const std::string marker = GuidAt(0);
  EXPECT_TRUE(API_ValidateRegionGUID(marker.c_str()));
  EXPECT_TRUE(API_UpdateRegionBoundaries(marker.c_str(), 4.5, NAN));  // NaN, like negatives, keeps
  EXPECT_TRUE(API_UpdateRegionColor(marker.c_str(), 0x1000000 | 255));
  EXPECT_EQ(host.markers[0].position, 4.5);
  EXPECT_EQ(host.markers[0].color, 0x1000000 | 255);
  double pos = 0;
  char guid[64];
  EXPECT_TRUE(API_GetRegionByName("cue", guid, sizeof guid, &pos, nullptr, nullptr, nullptr));
  EXPECT_EQ(guid, marker);
  EXPECT_TRUE(API_DeleteRegionByGUID(marker.c_str()));
  EXPECT_TRUE(host.markers.empty());
}

TEST_F(Regions, NameLookupTakesTheFirstInEnumerationAndLeavesOutputsOnMiss) {
  Create(8, 9, "dup");
  Create(2, 3, "dup");
  char guid[64] = "junk";
  double pos = -7;
  int enumIndex = -7;
  EXPECT_TRUE(API_GetRegionByName("dup", guid, sizeof guid, &pos, nullptr, nullptr, &enumIndex));
  EXPECT_EQ(guid, GuidAt(0));
  EXPECT_EQ(pos, 2);
  for (const char* miss : {"Dup", "", static_cast<const char*>(nullptr)}) {
    std::snprintf(guid, sizeof guid, "junk");
    pos = -7;
    EXPECT_FALSE(API_GetRegionByName(miss, guid, sizeof guid, &pos, nullptr, nullptr, &enumIndex));
    EXPECT_EQ(std::string(guid) + std::to_string(pos), "-7.000000");
  }
}

TEST_F(Regions, CreateFallsBackToTheLastEntryAndReportsHostRefusal) {
  Create(1, 2, "first");
  char guid[64] = "junk";
  EXPECT_FALSE(API_CreateRegionWithGUID(0, 1, nullptr, 0, guid, sizeof guid));
  EXPECT_STREQ(guid, "");
  // A number no region shows: the last entry's GUID is taken instead.
  AddProjectMarker2 = [](ReaProject*, bool, double, double, const char*, int, int) { return 42; };
  EXPECT_TRUE(API_CreateRegionWithGUID(0, 1, "x", 0, guid, sizeof guid));
  EXPECT_EQ(guid, GuidAt(0));
  AddProjectMarker2 = [](ReaProject*, bool, double, double, const char*, int, int) { return -1; };
  EXPECT_FALSE(API_CreateRegionWithGUID(0, 1, "x", 0, guid, sizeof guid));
  EXPECT_STREQ(guid, "");
  EXPECT_EQ(API_GetDisplayIndexFromEnum(1), -1);
  EXPECT_FALSE(API_GetGUIDFromEnumIndex(1, guid, sizeof guid));
  EXPECT_STREQ(guid, "");
}

// Each out-buffer at sizes 0, 1, the text's length and one more: the bytes
// past the given size stay untouched and the copy is cut with a NUL.
TEST_F(Regions, OutBuffersNeverWritePastTheirSize) {
  const std::string r = Create(1, 2, "RegionName");
  using Writer = bool (*)(const std::string& guid, char* buf, int size);
  const struct {
    const char* what;
    Writer write;
    std::string text;
    bool resultWhenUnusable;
  } cases[] = {
      {"GetGUIDFromEnumIndex", [](const std::string&, char* b, int n) { return API_GetGUIDFromEnumIndex(0, b, n); }, r,
       false},
      {"GetRegionByGUID",
       [](const std::string& g, char* b, int n) {
         return API_GetRegionByGUID(g.c_str(), nullptr, nullptr, b, n, nullptr, nullptr, nullptr);
       },
       "RegionName", true},
      {"GetRegionByName",
       [](const std::string&, char* b, int n) {
         return API_GetRegionByName("RegionName", b, n, nullptr, nullptr, nullptr, nullptr);
       },
       r, true},
  };
  for (const auto& c : cases) {
    const int len = static_cast<int>(c.text.size());
    for (int size : {0, 1, len, len + 1}) {
      std::string buffer(len + 8, '#');
      EXPECT_EQ(c.write(r, buffer.data(), size), size > 0 || c.resultWhenUnusable) << c.what << size;
      const std::string expected = size == 0 ? "" : c.text.substr(0, size - 1) + '\0';
      EXPECT_EQ(buffer, expected + std::string(buffer.size() - expected.size(), '#')) << c.what << size;
    }
  }
  const int len = static_cast<int>(r.size());
  for (int size : {0, 1, len, len + 1}) {  // a new GUID is as long as any other
    std::string buffer(len + 8, '#');
    EXPECT_EQ(API_CreateRegionWithGUID(5, 6, "n", 0, buffer.data(), size), size > 0) << size;
    EXPECT_EQ(buffer.substr(std::max(size, 1)), std::string(buffer.size() - std::max(size, 1), '#')) << size;
  }
}

}  // namespace
