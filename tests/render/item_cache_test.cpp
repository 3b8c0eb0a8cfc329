// The item-cluster cache over the simulated host: the reference reader, the
// JSON and statistics texts, and the cache's lifecycle.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "render/cluster_refs.h"
#include "render/render_api.h"
#include "render/render_functions.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Render;
using Guids = std::vector<std::string>;

TEST(ClusterRefs, OneGuidPerOccurrenceOfTheWord) {
  const struct {
    const char* text;
    Guids guids;
  } cases[] = {
      {R"({"cluster_guid":"{A}"})", {"{A}"}},
      {R"([{"cluster_guid":"{A}","x":1},{"cluster_guid": "{B}"},{"cluster_guid":"{A}"}])", {"{A}", "{B}", "{A}"}},
      {R"(cluster_guid = "{A}" cluster_guid "{B}")", {"{A}", "{B}"}},
      {R"({"cluster_guid":""} {"cluster_guid":"{C}"})", {"{C}"}},  // empty GUIDs dropped
      {R"({"cluster_guid":"{A})", {}},                              // unterminated
      {R"({"cluster_guid")", {}},
      {"no clusters here", {}},
  };
  for (const auto& c : cases) EXPECT_EQ(ExtractClusterGuids(c.text), c.guids) << c.text;
}

class ItemCache : public ::testing::Test {
 protected:
  ItemCache() {
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    Shutdown();
    Initialize();
  }
  MediaItem* Item(double pos, const char* ext, int takes = 1) {
    MediaItem* item = host.AddItem(track, pos, 2.5);
    for (int i = 0; i < takes; ++i) host.AddTake(item, nullptr);
    item->curTake = takes - 1;
    if (ext) item->ext["ZOLVA"] = ext;
    return item;
  }
  static std::string Text(const char* text) { return text ? text : "<null>"; }
  // The build time varies: compare the statistics up to it.
  static void ExpectStatsStart(const std::string& start) {
    const std::string stats = API_GetCacheStats();
    EXPECT_EQ(stats.substr(0, start.size()), start);
    EXPECT_EQ(stats.back(), '}');
  }
  sim::Host host;
  MediaTrack* track = host.AddTrack();
};

const char* const kInvalidStats = R"({"valid":false,"cluster_count":0,"item_count":0,"build_time_ms":0})";

TEST_F(ItemCache, ListsItemsPerClusterOnlyWhileValid) {
  MediaItem* both = Item(1234567.0, R"([{"cluster_guid":"{A}"},{"cluster_guid":"{B}"}])", 3);
  MediaItem* onlyA = Item(12.5, R"({"cluster_guid":"{A}"})");
  Item(0.0, R"({"name":"none"})");
  Item(0.5, nullptr);
  EXPECT_EQ(Text(API_GetClusterItems("{A}")), "<null>");
  EXPECT_EQ(Text(API_GetCacheStats()), kInvalidStats);
  API_BuildItemCache();
  EXPECT_TRUE(API_IsCacheValid());
  EXPECT_EQ(Text(API_GetClusterItems("{A}")),
            "[{\"item_guid\":\"" + onlyA->guid + "\",\"position\":12.5,\"length\":2.5,\"take_index\":0}," +
                "{\"item_guid\":\"" + both->guid + "\",\"position\":1.23457e+06,\"length\":2.5,\"take_index\":2}]");
  for (const char* none : {"{C}", "", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(Text(API_GetClusterItems(none)), "<null>");
  }
  ExpectStatsStart(R"({"valid":true,"cluster_count":2,"item_count":3,"build_time_ms":)");
  onlyA->ext.clear();  // not seen until the next build
  EXPECT_NE(API_GetClusterItems("{A}"), nullptr);
  API_InvalidateItemCache();
  EXPECT_FALSE(API_IsCacheValid());
  EXPECT_EQ(Text(API_GetClusterItems("{B}")), "<null>");
  EXPECT_EQ(Text(API_GetCacheStats()), kInvalidStats);
}

TEST_F(ItemCache, EmptyProjectBuildsAValidEmptyCache) {
  API_BuildItemCache();
  ExpectStatsStart(R"({"valid":true,"cluster_count":0,"item_count":0,"build_time_ms":)");
}

TEST_F(ItemCache, SecondInitializeKeepsTheCacheAndShutdownDropsIt) {
  Item(1.0, R"({"cluster_guid":"{A}"})");
  API_BuildItemCache();
  Initialize();
  EXPECT_TRUE(API_IsCacheValid());
  Shutdown();
  EXPECT_EQ(Text(API_GetCacheStats()), kInvalidStats);
}

TEST_F(ItemCache, BuildMakesABoundedNumberOfHostCallsPerItem) {
  for (int i = 0; i < 100; ++i) Item(i, i % 2 ? R"({"cluster_guid":"{A}"})" : "");
  host.hostCalls = 0;
  API_BuildItemCache();
  // Count, then per item: fetch and ext read; members add 3 values and the GUID.
  EXPECT_EQ(host.hostCalls, 1u + 100 * 2 + 50 * 4);
}

}  // namespace
