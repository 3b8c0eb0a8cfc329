// The region render matrix over the simulated host: snapshot text, restore,
// clear, the two ways of adding, and the snapshot reader on broken texts.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "render/matrix_text.h"
#include "render/render_functions.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Render;

class Matrix : public ::testing::Test {
 protected:
  Matrix() {
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    for (int i = 0; i < 3; ++i) host.AddTrack();
    // Region numbers follow creation; the enumeration follows position.
    for (double start : {30.0, 10.0, 20.0}) AddProjectMarker2(nullptr, true, start, start + 5, "", -1, 0);
    AddProjectMarker2(nullptr, false, 15.0, 0, "marker", -1, 0);
  }
  MediaTrack* T(int number) { return number < 0 ? &host.masterTrack : host.tracks[number - 1].get(); }
  sim::Host host;
};

TEST_F(Matrix, SnapshotThenRestoreReproducesTheMatrix) {
  EXPECT_STREQ(API_CacheRegionMatrix(), "{\"regions\":[]}");
  host.renderMatrix[1] = {T(-1), T(3)};
  host.renderMatrix[3] = {T(2)};
  const auto before = host.renderMatrix;
  const std::string snapshot = API_CacheRegionMatrix();
  EXPECT_EQ(snapshot, R"({"regions":[{"idx":3,"tracks":[2]},{"idx":1,"tracks":[-1,3]}]})");
  API_ClearMatrix();
  EXPECT_TRUE(host.renderMatrix.empty());
  host.renderMatrix[2] = {T(1)};  // restore clears what is there first
  API_RestoreRegionMatrix(snapshot.c_str());
  EXPECT_EQ(host.renderMatrix, before);
  API_RestoreRegionMatrix(R"({"regions":[{"idx":2,"tracks":[0,9,-4]}]})");  // 0 is the master too
  EXPECT_EQ(host.renderMatrix, (decltype(before){{2, {T(-1)}}}));
}

TEST_F(Matrix, GarbageRestoreLeavesTheMatrixEmptyButNullOrEmptyTextChangesNothing) {
  host.renderMatrix[1] = {T(1)};
  API_RestoreRegionMatrix(nullptr);
  API_RestoreRegionMatrix("");
  EXPECT_EQ(host.renderMatrix.size(), 1u);
  API_RestoreRegionMatrix("}{garbage[");
  EXPECT_TRUE(host.renderMatrix.empty());
}

TEST_F(Matrix, AddsByNumberUncheckedAndByGuidOnlyForRegions) {
  API_AddRegionIndices("[3, -1, x, 7]");
  std::vector<int> regions;
  for (const sim::MatrixCall& call : host.matrixCalls) {
    EXPECT_EQ(call.track, &host.masterTrack);
    EXPECT_EQ(call.flag, 1);
    regions.push_back(call.region);
  }
  EXPECT_EQ(regions, (std::vector<int>{3, -1, 7}));
  host.renderMatrix.clear();
  const std::string json = "[\"" + host.markers[2].guid + "\",\"" + host.markers[1].guid + "\",\"{unknown}\",\"\"]";
  API_AddRegions(json.c_str());  // entry 2 is the region numbered 3, entry 1 the marker
  EXPECT_EQ(host.renderMatrix, (decltype(host.renderMatrix){{3, {&host.masterTrack}}}));
  host.markerIndexFromGuid = false;  // a REAPER without that key: nothing resolves
  API_ClearMatrix();
  API_AddRegions(json.c_str());
  EXPECT_TRUE(host.renderMatrix.empty());
}

TEST(MatrixText, ReadsRowsBySearchAndStopsAtTruncation) {
  using Rows = std::vector<std::pair<int, std::vector<int>>>;
  const struct {
    const char* text;
    Rows rows;
  } cases[] = {
      {R"({"regions":[{"idx":4,"tracks":[-1,3]},{"idx":5,"tracks":[]}]})", {{4, {-1, 3}}, {5, {}}}},
      {R"({"regions" : [ {"idx": 7 , "tracks" : [ 1 , 2 ] } ] })", {{7, {1, 2}}}},
      {R"({"regions":[{ "idx":7,"tracks":[1]}]})", {}},  // a blank inside "{\"idx\":" hides the row
      {R"({"regions":[{"idx":x,"tracks":[1]},{"idx":99999999999,"tracks":[2]},{"idx":6,"tracks":[3]}]})",
       {{6, {3}}}},
      {R"({"regions":[{"idx":2,"tracks":[1,2)", {}},
      {R"({"idx":2,"tracks":[1]})", {}},  // no "regions" member
      {"", {}},
  };
  for (const auto& c : cases) {
    Rows rows;
    for (const MatrixRow& row : ReadMatrixSnapshot(c.text)) rows.emplace_back(row.region, row.tracks);
    EXPECT_EQ(rows, c.rows) << c.text;
  }
  EXPECT_TRUE(ReadMatrixSnapshot(nullptr).empty());
  EXPECT_EQ(QuotedTexts(R"(["a", "", "b" "c)"), (std::vector<std::string>{"a", "", "b"}));
}

}  // namespace
