#include "cluster/legacy_format.h"

#include <gtest/gtest.h>

namespace {

using namespace ZOLVA_Cluster;
using namespace ZOLVA_Cluster::Serialize;

ClusterData WithItems(const std::string& guid, std::vector<ItemAssociation> items) {
  ClusterData c;
  c.guid = guid;
  for (auto& item : items) c.items.emplace(item.item_guid, item);
  return c;
}

TEST(LegacyItemsWriter, WritesTheNumberedFlatTables) {
  struct {
    const char* label;
    std::vector<ClusterData> clusters;
    const char* text;
  } const cases[] = {
      {"no clusters", {}, "{{,}}"},
      {"clusters without items", {WithItems("A", {}), WithItems("B", {})}, "{{,}}"},
      {"one cluster, one item",
       {WithItems("A", {{"I", "T", 1700000000, 1, 2}})},
       "{{[\"A\"]={2},},{[\"I\"]={3},},{[\"item_guid\"]=\"I\",[\"time_modified\"]=1700000000,"
       "[\"item_take_guid\"]=\"T\",}}"},
      {"empty take left out, item-less cluster skipped in numbering",
       {WithItems("E", {}), WithItems("A", {{"I", "", -5, 0, 0}}), WithItems("B", {{"J", "U", 7, 0, 0}})},
       "{{[\"A\"]={2},[\"B\"]={3},},{[\"I\"]={4},},{[\"J\"]={5},},"
       "{[\"item_guid\"]=\"I\",[\"time_modified\"]=-5,},"
       "{[\"item_guid\"]=\"J\",[\"time_modified\"]=7,[\"item_take_guid\"]=\"U\",}}"},
      {"Lua escaping",
       {WithItems("a\"b\nc\\d\te\rf", {{"x\xC3\xA9", "", 0, 0, 0}})},
       "{{[\"a\\\"b\\nc\\\\d\\te\\rf\"]={2},},{[\"x\xC3\xA9\"]={3},},"
       "{[\"item_guid\"]=\"x\xC3\xA9\",[\"time_modified\"]=0,}}"},
  };
  for (const auto& c : cases) EXPECT_EQ(SerializeLegacyClusterItems(c.clusters), c.text) << c.label;
}

TEST(LegacyTableReader, ReadsMembersByKeyWithinTheEntryWindow) {
  const std::string text =
      "{[1]={cluster_guid=\"{G1}\",cluster_id=42,name=\"Intro \\\"A\\\"\",color=-16777216,"
      "c_start=1.25,c_end=-3.5,region_guid=\"{R}\",is_loop=true},"
      "[2]={[\"cluster_guid\"]=\"{G2}\",[\"display_name\"]=\"no\",[\"is_loop\"]=false," +
      std::string(500, ' ') + "[\"name\"]=\"too far\"}}";
  std::vector<ClusterData> clusters;
  ASSERT_TRUE(ParseLegacyClusterTable(text, clusters));
  ASSERT_EQ(clusters.size(), 2u);
  const ClusterData& a = clusters[0];
  EXPECT_EQ(a.guid, "{G1}");
  EXPECT_EQ(a.cluster_id, 42u);
  EXPECT_EQ(a.name, "Intro \"A\"");
  EXPECT_EQ(a.color, -16777216);
  EXPECT_EQ(a.start_time, 1.25);
  EXPECT_EQ(a.end_time, -3.5);
  EXPECT_EQ(a.region_guid, "{R}");
  EXPECT_TRUE(a.is_loop);
  EXPECT_EQ(a.entry_point, 0.0);
  const ClusterData& b = clusters[1];
  EXPECT_EQ(b.guid, "{G2}");
  EXPECT_EQ(b.name, "");  // "display_name" is another key; "name" lies past the window
  EXPECT_FALSE(b.is_loop);
  EXPECT_EQ(b.cluster_id, 0u);
  for (const char* none : {"", "{name=\"x\"}", "cluster_gui", "{cluster_guid=}"}) {
    EXPECT_FALSE(ParseLegacyClusterTable(none, clusters)) << none;
  }
}

TEST(LegacyItemsReader, ReadsNestedItemTablesPerCluster) {
  const std::string text =
      "{[\"{C1}\"]={[\"{I1}\"]={item_guid=\"{I1}\",time_modified=1700000000,item_take_guid=\"{T}\"},"
      "[\"{I2}\"]={[\"item_take_guid\"]=\"{U}\",[\"item_guid\"]=\"{I2}\"}},"
      "[\"{C2}\"]={2},"
      "[\"{C3}\"]={{time_modified=-9,item_guid=\"{I3}\"},{item_guid=\"{I3}\",time_modified=4}}}";
  LegacyItemMap items;
  ASSERT_TRUE(ParseLegacyClusterItems(text, items));
  ASSERT_EQ(items["{C1}"].size(), 2u);
  EXPECT_EQ(items["{C1}"]["{I1}"].item_take_guid, "{T}");
  EXPECT_EQ(items["{C1}"]["{I1}"].time_modified, 1700000000);
  EXPECT_EQ(items["{C1}"]["{I2}"].item_take_guid, "{U}");
  EXPECT_EQ(items["{C1}"]["{I2}"].time_modified, 0);
  EXPECT_TRUE(items["{C2}"].empty());  // a reference, not an item table
  ASSERT_EQ(items["{C3}"].size(), 1u);
  EXPECT_EQ(items["{C3}"]["{I3}"].time_modified, -9);  // first table of a GUID wins
  EXPECT_FALSE(ParseLegacyClusterItems("{}", items));
}

}  // namespace
