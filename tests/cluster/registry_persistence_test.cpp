#include <gtest/gtest.h>

#include "cluster/binary_format.h"
#include "cluster/cluster_state.h"
#include "cluster/legacy_migration.h"
#include "cluster/persistence.h"
#include "cluster_samples.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Cluster;

// A fresh simulated project and an empty, initialised registry.
class ClusterProject : public ::testing::Test {
 protected:
  void SetUp() override {
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    State::Shutdown();
    State::Initialize();
  }
  std::string& Value(const char* key) { return host.projExtState["ZOLVA"][key]; }
  bool Has(const char* key) { return host.projExtState["ZOLVA"].count(key) != 0; }
  uint32_t IndexOf(const std::string& guid) {
    std::lock_guard<std::mutex> lock(State::Mutex());
    return State::Cache().guidIndex.at(guid);
  }
  static ClusterData Cluster(const std::string& guid, std::vector<std::string> items = {}) {
    ClusterData c;
    c.guid = guid;
    for (const auto& i : items) c.items[i] = {i, "", 0, 0, 0};
    return c;
  }
  sim::Host host;
};

TEST_F(ClusterProject, IndicesAreNeverReusedAcrossReloads) {
  State::Initialize();  // a second call keeps what is there
  EXPECT_TRUE(State::AddCluster(Cluster("A", {"I"})));
  State::Initialize();
  EXPECT_TRUE(State::AddCluster(Cluster("B", {"I"})));
  EXPECT_FALSE(State::AddCluster(Cluster("B", {"J"})));
  EXPECT_EQ(IndexOf("A"), 1u);
  EXPECT_EQ(IndexOf("B"), 2u);
  {
    std::lock_guard<std::mutex> lock(State::Mutex());
    EXPECT_EQ(State::Cache().clusters.size(), 2u);
    EXPECT_EQ(State::Cache().itemIndex.at("I"), (std::vector<uint32_t>{1, 2}));
    EXPECT_EQ(State::Cache().itemIndex.count("J"), 0u);
  }
  Value("CLUSTER_DATA_V2") = Serialize::SerializeAllClusters({Cluster("C"), Cluster("D"), Cluster("E")});
  EXPECT_EQ(LoadFromProject(), "{\"success\":true,\"clusters_loaded\":3,\"format\":\"binary\"}");
  EXPECT_EQ(State::GetClusterDataByGuid("A"), nullptr);
  EXPECT_EQ(IndexOf("C"), 3u);
  EXPECT_EQ(IndexOf("E"), 5u);
}

TEST_F(ClusterProject, SavesAndLoadsTheSameRecords) {
  std::mt19937_64 rng(77);
  std::vector<ClusterData> clusters;
  for (int i = 0; i < 12; ++i) {
    clusters.push_back(cluster_samples::RandomCluster(rng, 4));
    State::AddCluster(clusters.back());
  }
  EXPECT_EQ(SaveToProject(), "{\"success\":true,\"clusters_saved\":12}");
  ASSERT_LT(Value("CLUSTER_DATA_V2").size(), 32768u);
  EXPECT_EQ(host.dirtyMarks, 1);
  State::Shutdown();
  State::Initialize();
  EXPECT_EQ(LoadFromProject(), "{\"success\":true,\"clusters_loaded\":12,\"format\":\"binary\"}");
  for (const ClusterData& c : clusters) {
    const ClusterData* back = State::GetClusterDataByGuid(c.guid);
    ASSERT_NE(back, nullptr);
    EXPECT_TRUE(cluster_samples::SameCluster(*back, c));
  }
}

TEST_F(ClusterProject, UnloadableStoredValuesFallBackToMigration) {
  EXPECT_EQ(RebuildCache(), "{\"success\":true,\"cluster_count\":0,\"association_count\":0}");
  Value("CLUSTER_TABLE") = "{{cluster_guid=\"{A}\",name=\"A\"},{cluster_guid=\"{B}\"}}";
  Value("CLUSTER_ITEMS") = "{[\"{A}\"]={[\"{I}\"]={item_guid=\"{I}\",time_modified=3}}}";
  const std::string migrated = "{\"success\":true,\"clusters_migrated\":2,\"format\":\"migrated_from_legacy\"}";
  for (const std::string& stored : {std::string("{VkxPWgEAAAAAAA=="), std::string("VkxPWgEAAAAAAA="),
                                   std::string("WExPWgEAAAAAAA=="), std::string(40000, 'Q')}) {
    Value("CLUSTER_DATA_V2") = stored;
    EXPECT_EQ(LoadFromProject(), migrated) << stored.substr(0, 20);
    ASSERT_NE(State::GetClusterDataByGuid("{A}"), nullptr);
    EXPECT_EQ(State::GetClusterDataByGuid("{A}")->items.size(), 1u);
    EXPECT_EQ(RebuildCache(), "{\"success\":true,\"cluster_count\":2,\"association_count\":1}");
  }
  // A stored value too long to load was kept before migration replaced it.
  EXPECT_EQ(Value("CLUSTER_DATA_V2_OVERFLOW"), std::string(40000, 'Q'));
}

TEST_F(ClusterProject, MigrationOutcomes) {
  Value("CLUSTER_TABLE") = "{garbage}";
  EXPECT_EQ(MigrateLegacyData(),
            "{\"success\":false,\"error\":\"Failed to parse legacy cluster table\"}");
  EXPECT_FALSE(Has("CLUSTER_DATA_V2"));
  EXPECT_EQ(host.dirtyMarks, 0);
  Value("CLUSTER_TABLE") = " {cluster_guid=\"{A}\"}";
  EXPECT_FALSE(HasLegacyData());  // only a leading "{" counts
  EXPECT_EQ(MigrateLegacyData(),
            "{\"success\":true,\"clusters_migrated\":1,\"format\":\"migrated_from_legacy\"}");
  EXPECT_EQ(host.dirtyMarks, 1);
  EXPECT_TRUE(State::GetClusterDataByGuid("{A}")->items.empty());
  EXPECT_EQ(Value("CLUSTER_DATA_V2"), Serialize::SerializeAllClusters({Cluster("{A}")}));
  EXPECT_FALSE(Has("CLUSTER_ITEMS"));  // migration writes only the binary value
  EXPECT_FALSE(Has("CLUSTER_DATA_V2_OVERFLOW"));
}

TEST_F(ClusterProject, OverflowKeepsOnlyLongDifferingValues) {
  struct {
    std::string stored;
    bool kept;
  } const cases[] = {{std::string(32767, 'Q'), false}, {std::string(32768, 'Q'), true},
                     {std::string(100000, 'Q'), true}, {"VkxPWgEAAAAAAA==", false}};
  for (const auto& c : cases) {
    host.projExtState.clear();
    Value("CLUSTER_DATA_V2") = c.stored;
    SaveToProject();
    EXPECT_EQ(Has("CLUSTER_DATA_V2_OVERFLOW"), c.kept) << c.stored.size();
    if (c.kept) {
      EXPECT_EQ(Value("CLUSTER_DATA_V2_OVERFLOW"), c.stored);
    }
  }
  // A long value equal to the text being written is not copied.
  for (int i = 0; i < 400; ++i) State::AddCluster(Cluster("{G" + std::to_string(i) + "}", {"a", "b"}));
  host.projExtState.clear();
  SaveToProject();
  SaveToProject();
  EXPECT_GT(Value("CLUSTER_DATA_V2").size(), 32767u);
  EXPECT_FALSE(Has("CLUSTER_DATA_V2_OVERFLOW"));
}

TEST_F(ClusterProject, BoundsAndClusterJson) {
  ClusterData c = Cluster("{A}", {"x", "y"});
  c.name = "n\"1\n";
  c.color = -5;
  c.entry_point = 7;
  c.exit_point = 8;
  c.is_loop = true;
  State::AddCluster(c);
  EXPECT_EQ(SetClusterBounds("{A}", 1234.5678, 0.5, 0, 1e-7), "{\"success\":true}");
  std::string json;
  ASSERT_TRUE(GetClusterData("{A}", json));
  EXPECT_EQ(json,
            "{\"guid\":\"{A}\",\"name\":\"n\\\"1\\n\",\"color\":-5,\"start_time\":1234.57,\"end_time\":0.5,"
            "\"entry_point\":0,\"exit_point\":1e-07,\"is_loop\":true,\"region_guid\":\"\",\"item_count\":2}");
  EXPECT_GT(State::GetClusterDataByGuid("{A}")->time_modified, 1600000000);
  EXPECT_EQ(SetClusterBounds("", 1, 2, 3, 4), "{\"success\":false,\"error\":\"Cluster GUID required\"}");
  EXPECT_EQ(SetClusterBounds(nullptr, 1, 2, 3, 4), "{\"success\":false,\"error\":\"Cluster GUID required\"}");
  EXPECT_EQ(SetClusterBounds("{B}", 1, 2, 3, 4), "{\"success\":false,\"error\":\"Cluster not found\"}");
  EXPECT_FALSE(GetClusterData("{B}", json));
  EXPECT_FALSE(GetClusterData(nullptr, json));
}

TEST_F(ClusterProject, PersistLegacyItemsWritesOnlyTheItemText) {
  State::AddCluster(Cluster("A", {"I"}));
  PersistLegacyClusterItems();
  EXPECT_EQ(Value("CLUSTER_ITEMS"),
            "{{[\"A\"]={2},},{[\"I\"]={3},},{[\"item_guid\"]=\"I\",[\"time_modified\"]=0,}}");
  EXPECT_FALSE(Has("CLUSTER_DATA_V2"));
  EXPECT_EQ(host.dirtyMarks, 0);
}

}  // namespace
