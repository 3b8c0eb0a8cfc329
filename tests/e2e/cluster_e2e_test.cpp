// The cluster registry's script functions, with the real module in the simulated host.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reascript.h"

namespace {

using namespace std::string_literals;
using e2e::Call;
using e2e::Values;

std::string Str(const Values& v) { return v.empty() ? "<none>" : std::get<std::string>(v[0]); }

TEST(ClusterE2E, RegistersTheFunctionsInTableOrderWithTheirDefinitions) {
  struct {
    const char* name;
    std::string definition;
  } const expected[] = {
      {"GetVersion", "const char*\0\0\0Get cluster module version\0"s},
      {"GetItemClusters",
       "const char*\0const char*\0item_guid\0Get clusters containing item as JSON array\0"s},
      {"GetClusterData", "const char*\0const char*\0cluster_guid\0Get cluster data as JSON\0"s},
      {"SetClusterBounds",
       "const char*\0const char*,double,double,double,double\0"
       "cluster_guid,start_time,end_time,entry_point,exit_point\0Set cluster time bounds\0"s},
      {"LoadFromProject", "const char*\0\0\0Load cluster data from project\0"s},
      {"SaveToProject", "const char*\0\0\0Save cluster data to project\0"s},
      {"InvalidateCache", "void\0\0\0Invalidate cluster cache\0"s},
      {"RebuildCache", "const char*\0\0\0Rebuild cluster cache from project\0"s},
      {"HasLegacyData", "const char*\0\0\0Check if project has legacy data\0"s},
      {"MigrateLegacyData", "const char*\0\0\0Migrate legacy data to new format\0"s},
  };
  sim::Host host;
  e2e::LoadedExtension ext(host);
  std::vector<std::string> order;
  for (const auto& r : host.registerLog) {
    if (r.name.rfind("API_ZOLVA_Cluster_", 0) == 0) order.push_back(r.name.substr(18));
  }
  ASSERT_EQ(order.size(), std::size(expected));
  for (size_t i = 0; i < order.size(); ++i) {
    EXPECT_EQ(order[i], expected[i].name);
    const std::string def = host.registered["APIdef_ZOLVA_Cluster_" + order[i]].definition;
    EXPECT_EQ(def, expected[i].definition) << order[i];
    EXPECT_TRUE(host.IsRegistered("APIvararg_ZOLVA_Cluster_" + order[i]));
  }
}

TEST(ClusterE2E, FixedAnswersAndGuards) {
  sim::Host host;
  e2e::LoadedExtension ext(host);
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_GetVersion")), "1.0.0");
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_GetItemClusters", {std::string("{X}")})), "[]");
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_HasLegacyData")), "false");
  EXPECT_EQ(Call(host, "ZOLVA_Cluster_GetClusterData", {std::string("{X}")}), Values{std::monostate()});
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_SetClusterBounds", {std::string("{X}"), 1.0, 2.0, 0.0, 0.0})),
            "{\"success\":false,\"error\":\"Cluster not found\"}");
  EXPECT_TRUE(Call(host, "ZOLVA_Cluster_InvalidateCache").empty());
}

TEST(ClusterE2E, MigratesALegacyProjectThenSavesAndReloadsIt) {
  sim::Host host;
  host.projExtState["ZOLVA"]["CLUSTER_TABLE"] =
      "{{cluster_guid=\"{C1}\",cluster_id=3,name=\"Verse\",color=-1,c_start=10.5,c_end=20,"
      "region_guid=\"{R1}\",is_loop=true},{cluster_guid=\"{C2}\",name=\"Bridge\"}}";
  host.projExtState["ZOLVA"]["CLUSTER_ITEMS"] =
      "{[\"{C1}\"]={[\"{I1}\"]={item_guid=\"{I1}\",item_take_guid=\"{T1}\",time_modified=1700000000},"
      "[\"{I2}\"]={item_guid=\"{I2}\",time_modified=1700000001}}}";
  {
    e2e::LoadedExtension ext(host);
    EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_HasLegacyData")), "true");
    EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_LoadFromProject")),
              "{\"success\":true,\"clusters_migrated\":2,\"format\":\"migrated_from_legacy\"}");
    EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_SetClusterBounds", {std::string("{C2}"), 1.0, 2.5, -1.0, 4.0})),
              "{\"success\":true}");
    EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_SaveToProject")), "{\"success\":true,\"clusters_saved\":2}");
  }
  const std::string items = host.projExtState["ZOLVA"]["CLUSTER_ITEMS"];
  EXPECT_EQ(items.rfind("{{[\"{C1}\"]={2},},{", 0), 0u) << items;
  e2e::LoadedExtension ext(host);
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_RebuildCache")),
            "{\"success\":true,\"cluster_count\":2,\"association_count\":2}");
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_LoadFromProject")),
            "{\"success\":true,\"clusters_loaded\":2,\"format\":\"binary\"}");
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_GetClusterData", {std::string("{C1}")})),
            "{\"guid\":\"{C1}\",\"name\":\"Verse\",\"color\":-1,\"start_time\":10.5,\"end_time\":20,"
            "\"entry_point\":0,\"exit_point\":0,\"is_loop\":true,\"region_guid\":\"{R1}\",\"item_count\":2}");
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_GetClusterData", {std::string("{C2}")})),
            "{\"guid\":\"{C2}\",\"name\":\"Bridge\",\"color\":0,\"start_time\":1,\"end_time\":2.5,"
            "\"entry_point\":0,\"exit_point\":4,\"is_loop\":false,\"region_guid\":\"\",\"item_count\":0}");
}

TEST(ClusterE2E, AStoredValueTooLongToLoadSurvivesTheNextSave) {
  sim::Host host;
  std::string original(40000, 'A');
  original[39999] = 'Z';
  host.projExtState["ZOLVA"]["CLUSTER_DATA_V2"] = original;
  e2e::LoadedExtension ext(host);
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_LoadFromProject")),
            "{\"success\":true,\"clusters_migrated\":0,\"message\":\"No legacy data found\"}");
  EXPECT_EQ(Str(Call(host, "ZOLVA_Cluster_SaveToProject")), "{\"success\":true,\"clusters_saved\":0}");
  EXPECT_EQ(host.projExtState["ZOLVA"]["CLUSTER_DATA_V2"], "VkxPWgEAAAAAAA==");
  EXPECT_EQ(host.projExtState["ZOLVA"]["CLUSTER_ITEMS"], "{{,}}");
  EXPECT_EQ(host.projExtState["ZOLVA"]["CLUSTER_DATA_V2_OVERFLOW"], original);
  // A later save finds a short value and leaves the kept one alone.
  Call(host, "ZOLVA_Cluster_SaveToProject");
  EXPECT_EQ(host.projExtState["ZOLVA"]["CLUSTER_DATA_V2_OVERFLOW"], original);
}

}  // namespace
