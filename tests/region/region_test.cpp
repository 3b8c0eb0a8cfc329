// Region functions in the simulated host: the created region's GUID and the out-buffer copying rule.
#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "region/region_functions.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Region;

TEST(Regions, CreateFallsBackToTheLastEntryAndClearsTheBufferOnFailure) {
  sim::Host host;
  ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
  for (double start : {1.0, 3.0}) AddProjectMarker2(nullptr, true, start, start + 1, "", -1, 0);
  char guid[64];
  // A number no region shows: the last entry's GUID is taken instead.
  AddProjectMarker2 = [](ReaProject*, bool, double, double, const char*, int, int) { return 42; };
  EXPECT_TRUE(API_CreateRegionWithGUID(0, 1, "x", 0, guid, sizeof guid));
  EXPECT_EQ(guid, host.markers.at(1).guid);
  AddProjectMarker2 = [](ReaProject*, bool, double, double, const char*, int, int) { return -1; };
  EXPECT_FALSE(API_CreateRegionWithGUID(0, 1, "x", 0, guid, sizeof guid));
  EXPECT_STREQ(guid, "");
}

// Each out-buffer at sizes 0, 1, its text's length and one more: cut with a NUL, nothing written past the size.
TEST(Regions, OutBuffersNeverWritePastTheirSize) {
  sim::Host host;
  ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
  AddProjectMarker2(nullptr, true, 1.0, 2.0, "Verse", -1, 0);
  const std::string r = host.markers[0].guid;
  const struct {
    std::function<bool(char*, int)> write;
    std::string text;  // empty: the GUID of the region the call creates
    bool resultAtSizeZero;  // the lookups still answer; a buffer-only result fails
  } cases[] = {
      {[](char* b, int n) { return API_GetGUIDFromEnumIndex(0, b, n); }, r, false},
      {[&](char* b, int n) { return API_GetRegionByGUID(r.data(), nullptr, nullptr, b, n, nullptr, nullptr, nullptr); },
       "Verse", true},
      {[](char* b, int n) { return API_GetRegionByName("Verse", b, n, nullptr, nullptr, nullptr, nullptr); }, r, true},
      {[](char* b, int n) { return API_CreateRegionWithGUID(9, 10, "new", 0, b, n); }, "", false},
  };
  for (const auto& c : cases) {
    const int len = static_cast<int>((c.text.empty() ? r : c.text).size());  // all GUIDs are equally long
    for (int size : {0, 1, len, len + 1}) {
      std::string buffer(len + 8, '#');
      EXPECT_EQ(c.write(buffer.data(), size), size > 0 || c.resultAtSizeZero) << c.text << size;
      const std::string text = c.text.empty() ? host.markers.back().guid : c.text;
      const std::string expected = size == 0 ? "" : text.substr(0, size - 1) + '\0';
      EXPECT_EQ(buffer, expected + std::string(buffer.size() - expected.size(), '#')) << c.text << size;
    }
  }
}

}  // namespace
