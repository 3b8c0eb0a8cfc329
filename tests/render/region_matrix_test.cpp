// The region render matrix over the simulated host: restoring snapshot texts and adding regions.
#include <gtest/gtest.h>

#include <string>

#include "render/region_matrix.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Render;

class Matrix : public ::testing::Test {
 protected:
  Matrix() {
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    for (int i = 0; i < 3; ++i) host.AddTrack();
    // Numbers follow creation, the enumeration follows position: regions 2, 3, 1, a marker between 2 and 3.
    for (double start : {30.0, 10.0, 20.0}) AddProjectMarker2(nullptr, true, start, start + 5, "", -1, 0);
    AddProjectMarker2(nullptr, false, 15.0, 0, "marker", -1, 0);
  }
  MediaTrack* T(int number) { return number < 0 ? &host.masterTrack : host.tracks[number - 1].get(); }
  sim::Host host;
};

TEST_F(Matrix, RestoresSnapshotTextsAndAddsTheMasterTrackByGuidOrNumber) {
  const std::string region3 = '"' + host.markers[2].guid + '"', marker = '"' + host.markers[1].guid + '"';
  const struct {
    void (*apply)(const char*);
    std::string text;
    decltype(host.renderMatrix) after;
  } cases[] = {
      {RestoreRegionMatrix, R"({"regions":[{"idx":3,"tracks":[2]},{"idx":1,"tracks":[-1,3]}]})",
       {{1, {T(-1), T(3)}}, {3, {T(2)}}}},
      {RestoreRegionMatrix, R"({"regions": [{"idx": 2 ,"tracks": [0, 9, -4]}]})", {{2, {T(-1)}}}},  // 0: master
      {RestoreRegionMatrix, R"({"regions":[{"idx":1,"tracks":[-2147483648,2147483647,2]}]})", {{1, {T(2)}}}},
      {RestoreRegionMatrix, R"({"regions":[{"idx":x,"tracks":[1]},{"idx":3,"tracks":[3]}]})", {{3, {T(3)}}}},
      {RestoreRegionMatrix, R"({"regions":[{"idx":3,"tracks":[1]},{"idx":1,"tracks":[1,2)", {{3, {T(1)}}}},
      {RestoreRegionMatrix, "}{garbage[", {}},
      {RestoreRegionMatrix, "", {{2, {T(1)}}}},  // no text changes nothing
      {AddRegionIndices, "[3, x, 2]", {{2, {T(1), T(-1)}}, {3, {T(-1)}}}},
      {AddRegionsByGuid, "[" + region3 + "," + marker + ",\"{unknown}\",\"\"]", {{2, {T(1)}}, {3, {T(-1)}}}},
  };
  for (const auto& c : cases) {
    host.renderMatrix = {{2, {T(1)}}};
    c.apply(c.text.c_str());
    EXPECT_EQ(host.renderMatrix, c.after) << c.text;
  }
}

}  // namespace
