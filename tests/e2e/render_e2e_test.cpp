// The render functions in the simulated host, called as ReaScript calls them.
#include <gtest/gtest.h>

#include "reascript.h"

namespace {

using e2e::Call, e2e::nil, e2e::Values;

// An item's "P_EXT:ZOLVA" text names a cluster by the word "cluster_guid" and the next quoted text.
TEST(RenderE2E, ScriptCachesItemsAndRoundTripsTheMatrix) {
  sim::Host host;
  MediaTrack* track = host.AddTrack();
  MediaItem* onlyA = host.AddItem(track, 12.5, 2.5);
  MediaItem* both = host.AddItem(track, 1234567.0, 2.5);
  both->ext["ZOLVA"] = R"([{"cluster_guid":"{A}"},{"cluster_guid": "{B}"}, {"cluster_guid":""}])";
  both->values["I_CURTAKE"] = 2;
  onlyA->ext["ZOLVA"] = R"(cluster_guid = "{A}" {"cluster_guid":"{C})";  // the second GUID is unterminated
  e2e::Extension ext(host);
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetVersion"), Values{"1.0.0"});
  const Values invalid{R"({"valid":false,"cluster_count":0,"item_count":0,"build_time_ms":0})"};
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetClusterItems", {"{A}"}), Values{nil});
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetCacheStats"), invalid);
  EXPECT_EQ(Call(host, "ZOLVA_Render_BuildItemCache"), Values{});
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetClusterItems", {"{A}"}),
            Values{"[{\"item_guid\":\"" + onlyA->guid + "\",\"position\":12.5,\"length\":2.5,\"take_index\":0}," +
                   "{\"item_guid\":\"" + both->guid + "\",\"position\":1.23457e+06,\"length\":2.5,\"take_index\":2}]"});
  const std::string stats = std::get<std::string>(Call(host, "ZOLVA_Render_GetCacheStats").at(0));
  const std::string head = R"({"valid":true,"cluster_count":2,"item_count":3,"build_time_ms":)";
  ASSERT_EQ(stats.compare(0, head.size(), head), 0) << stats;  // the time varies; it is a number
  EXPECT_EQ(stats.find_first_not_of("0123456789.e+-", head.size()), stats.size() - 1) << stats;
  EXPECT_EQ(stats.back(), '}');
  Call(host, "ZOLVA_Render_InvalidateItemCache");
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetClusterItems", {"{B}"}), Values{nil});
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetCacheStats"), invalid);

  host.markers = {{true, 0.0, 2.0, "a", 2, 0, "{a}"}, {true, 2.0, 4.0, "b", 1, 0, "{b}"}};  // region 2 listed first
  host.renderMatrix = {{1, {&host.masterTrack, track}}, {2, {&host.masterTrack}}};
  const auto before = host.renderMatrix;
  const Values snapshot = Call(host, "ZOLVA_Render_CacheRegionMatrix");
  EXPECT_EQ(snapshot, Values{R"({"regions":[{"idx":2,"tracks":[-1]},{"idx":1,"tracks":[-1,1]}]})"});
  Call(host, "ZOLVA_Render_ClearMatrix");
  EXPECT_TRUE(host.renderMatrix.empty());
  Call(host, "ZOLVA_Render_RestoreRegionMatrix", {snapshot[0]});
  EXPECT_EQ(host.renderMatrix, before);
}

}  // namespace
