// The cluster registry's script functions, with the real module in the simulated host.
#include <gtest/gtest.h>

#include <tuple>

#include "reascript.h"

namespace {

using namespace e2e;

const std::vector<Signature> kClusterFunctions = {
    {"ZOLVA_Cluster_GetVersion", "const char*|||Get cluster module version"},
    {"ZOLVA_Cluster_GetItemClusters", "const char*|const char*|item_guid|Get clusters containing item as JSON array"},
    {"ZOLVA_Cluster_GetClusterData", "const char*|const char*|cluster_guid|Get cluster data as JSON"},
    {"ZOLVA_Cluster_SetClusterBounds", "const char*|const char*,double,double,double,double|"
                                       "cluster_guid,start_time,end_time,entry_point,exit_point|Set cluster time bounds"},
    {"ZOLVA_Cluster_LoadFromProject", "const char*|||Load cluster data from project"},
    {"ZOLVA_Cluster_SaveToProject", "const char*|||Save cluster data to project"},
    {"ZOLVA_Cluster_InvalidateCache", "void|||Invalidate cluster cache"},
    {"ZOLVA_Cluster_RebuildCache", "const char*|||Rebuild cluster cache from project"},
    {"ZOLVA_Cluster_HasLegacyData", "const char*|||Check if project has legacy data"},
    {"ZOLVA_Cluster_MigrateLegacyData", "const char*|||Migrate legacy data to new format"},
};

TEST(ClusterE2E, Registration) { ExpectRegistersInOrder(kClusterFunctions); }

// Fixed answers and refusals; none of them marks the project dirty.
TEST(ClusterE2E, FixedAnswersAndRefusals) {
  sim::Host host;
  LoadedExtension ext(host);
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

TEST(ClusterE2E, MigratesSavesAndReloadsAProjectKeepingAValueTooLongToLoad) {
  sim::Host host;
  auto& stored = host.projExtState["ZOLVA"];
  const std::string tooLong = stored["CLUSTER_DATA_V2"] = std::string(39999, 'A') + 'Z';
  stored["CLUSTER_TABLE"] = "{{cluster_guid=\"{C1}\",cluster_id=3,name=\"Verse\",color=-1,c_start=10.5,c_end=20,"
                            "region_guid=\"{R1}\",is_loop=true},{cluster_guid=\"{C2}\",name=\"Bridge\"}}";
  stored["CLUSTER_ITEMS"] = "{[\"{C1}\"]={[\"{I}\"]={item_guid=\"{I}\",item_take_guid=\"{T}\",time_modified=1700000000}}}";
  {
    LoadedExtension ext(host);
    EXPECT_EQ(Call(host, "ZOLVA_Cluster_LoadFromProject"),
              Values{"{\"success\":true,\"clusters_migrated\":2,\"format\":\"migrated_from_legacy\"}"});
    EXPECT_EQ(Call(host, "ZOLVA_Cluster_SetClusterBounds", {"{C2}", 1.0, 2.5, -1.0, 4.0}), Values{"{\"success\":true}"});
    EXPECT_EQ(Call(host, "ZOLVA_Cluster_SaveToProject"), Values{"{\"success\":true,\"clusters_saved\":2}"});
  }
  EXPECT_EQ(stored["CLUSTER_DATA_V2_OVERFLOW"], tooLong);
  EXPECT_EQ(stored["CLUSTER_ITEMS"], "{{[\"{C1}\"]={2},},{[\"{I}\"]={3},},{[\"item_guid\"]=\"{I}\","
                                     "[\"time_modified\"]=1700000000,[\"item_take_guid\"]=\"{T}\",}}");
  LoadedExtension ext(host);
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_RebuildCache"),
            Values{"{\"success\":true,\"cluster_count\":2,\"association_count\":1}"});
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_GetClusterData", {"{C1}"}),
            Values{"{\"guid\":\"{C1}\",\"name\":\"Verse\",\"color\":-1,\"start_time\":10.5,\"end_time\":20,"
                   "\"entry_point\":0,\"exit_point\":0,\"is_loop\":true,\"region_guid\":\"{R1}\",\"item_count\":1}"});
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_GetClusterData", {"{C2}"}),
            Values{"{\"guid\":\"{C2}\",\"name\":\"Bridge\",\"color\":0,\"start_time\":1,\"end_time\":2.5,"
                   "\"entry_point\":0,\"exit_point\":4,\"is_loop\":false,\"region_guid\":\"\",\"item_count\":0}"});
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_GetClusterData", {"{X}"}), Values{std::monostate()});
}

}  // namespace
