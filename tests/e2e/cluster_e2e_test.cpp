// The cluster registry's functions in the simulated host, called as ReaScript calls them.
#include <gtest/gtest.h>

#include <tuple>

#include "reascript.h"

namespace {

using e2e::Call, e2e::nil, e2e::Values;

// Fixed answers and refusals; none of them marks the project dirty.
TEST(ClusterE2E, FixedAnswersAndRefusals) {
  sim::Host host;
  e2e::Extension ext(host);
  auto& table = host.projExtState["ZOLVA"]["CLUSTER_TABLE"];
  const std::string kFailed = "{\"success\":false,\"error\":";
  const std::tuple<std::string, std::string, Values, Values> cases[] = {
      {"", "GetVersion", {}, {"1.0.0"}},
      {"", "GetItemClusters", {"{I}"}, {"[]"}},
      {"", "HasLegacyData", {}, {"false"}},
      {"", "MigrateLegacyData", {}, {"{\"success\":true,\"clusters_migrated\":0,\"message\":\"No legacy data found\"}"}},
      {" {x}", "HasLegacyData", {}, {"false"}},  // only a text that starts with "{" counts
      {"{garbage", "HasLegacyData", {}, {"true"}},
      {"{garbage", "MigrateLegacyData", {}, {kFailed + "\"Failed to parse legacy cluster table\"}"}},
      {"", "SetClusterBounds", {"", 1.0, 2.0, 0.0, 0.0}, {kFailed + "\"Cluster GUID required\"}"}},
      {"", "SetClusterBounds", {"{none}", 1.0, 2.0, 0.0, 0.0}, {kFailed + "\"Cluster not found\"}"}},
  };
  for (const auto& [stored, name, args, expected] : cases) {
    table = stored;
    EXPECT_EQ(Call(host, "ZOLVA_Cluster_" + name, args), expected) << name << " with " << stored;
  }
  EXPECT_EQ(host.dirtyMarks, 0);
}

// The binary value is read through a 32 KiB buffer; a longer one is moved aside on save, not lost.
TEST(ClusterE2E, MigratesSavesAndReloadsAProjectKeepingAValueTooLongToLoad) {
  sim::Host host;
  auto& stored = host.projExtState["ZOLVA"];
  const std::string tooLong = stored["CLUSTER_DATA_V2"] = std::string(39999, 'A') + 'Z';
  stored["CLUSTER_TABLE"] = "{{cluster_guid=\"{C1}\",cluster_id=3,name=\"Verse\",color=-1,c_start=10.5,c_end=20,"
                            "region_guid=\"{R1}\",is_loop=true},{cluster_guid=\"{C2}\",name=\"Bridge\"}}";
  stored["CLUSTER_ITEMS"] = "{[\"{C1}\"]={[\"{I}\"]={item_guid=\"{I}\",item_take_guid=\"{T}\",time_modified=1700000000}}}";
  {
    e2e::Extension ext(host);
    EXPECT_EQ(Call(host, "ZOLVA_Cluster_LoadFromProject"),
              Values{"{\"success\":true,\"clusters_migrated\":2,\"format\":\"migrated_from_legacy\"}"});
    EXPECT_EQ(Call(host, "ZOLVA_Cluster_SetClusterBounds", {"{C2}", 1.0, 2.5, -1.0, 4.0}), Values{"{\"success\":true}"});
    EXPECT_EQ(Call(host, "ZOLVA_Cluster_SaveToProject"), Values{"{\"success\":true,\"clusters_saved\":2}"});
  }
  EXPECT_EQ(stored["CLUSTER_DATA_V2_OVERFLOW"], tooLong);
  EXPECT_EQ(stored["CLUSTER_ITEMS"], "{{[\"{C1}\"]={2},},{[\"{I}\"]={3},},{[\"item_guid\"]=\"{I}\","
                                     "[\"time_modified\"]=1700000000,[\"item_take_guid\"]=\"{T}\",}}");
  e2e::Extension ext(host);
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_RebuildCache"),
            Values{"{\"success\":true,\"cluster_count\":2,\"association_count\":1}"});
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_GetClusterData", {"{C1}"}),
            Values{"{\"guid\":\"{C1}\",\"name\":\"Verse\",\"color\":-1,\"start_time\":10.5,\"end_time\":20,"
                   "\"entry_point\":0,\"exit_point\":0,\"is_loop\":true,\"region_guid\":\"{R1}\",\"item_count\":1}"});
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_GetClusterData", {"{C2}"}),
            Values{"{\"guid\":\"{C2}\",\"name\":\"Bridge\",\"color\":0,\"start_time\":1,\"end_time\":2.5,"
                   "\"entry_point\":0,\"exit_point\":4,\"is_loop\":false,\"region_guid\":\"\",\"item_count\":0}"});
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_GetClusterData", {"{X}"}), Values{nil});
}

}  // namespace
