// The render functions loaded into the simulated host and called as
// ReaScript calls them, through their vararg entries.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reascript.h"

namespace {

using e2e::Call;
using e2e::Values;

std::string Def(const char* ret, const char* types, const char* names, const char* help) {
  return std::string(ret) + '\0' + types + '\0' + names + '\0' + help + '\0';
}

const std::vector<std::pair<std::string, std::string>> kRenderFunctions = {
    {"ZOLVA_Render_BuildItemCache", Def("void", "", "", "Build item-cluster cache for fast lookups")},
    {"ZOLVA_Render_InvalidateItemCache", Def("void", "", "", "Invalidate the item-cluster cache")},
    {"ZOLVA_Render_GetClusterItems",
     Def("const char*", "const char*", "cluster_guid", "Get items for a cluster as JSON array")},
    {"ZOLVA_Render_GetCacheStats", Def("const char*", "", "", "Get cache statistics as JSON")},
    {"ZOLVA_Render_IsCacheValid", Def("bool", "", "", "Check if item cache is valid")},
    {"ZOLVA_Render_CacheRegionMatrix", Def("const char*", "", "", "Cache current region render matrix state")},
    {"ZOLVA_Render_RestoreRegionMatrix",
     Def("void", "const char*", "cache_json", "Restore region render matrix from cached state")},
    {"ZOLVA_Render_ClearMatrix", Def("void", "", "", "Clear all regions from render matrix")},
    {"ZOLVA_Render_AddRegions",
     Def("void", "const char*", "json_guids", "Add regions to render matrix by GUIDs (JSON array)")},
    {"ZOLVA_Render_AddRegionIndices",
     Def("void", "const char*", "json_indices", "Add regions to render matrix by marker numbers (JSON array)")},
    {"ZOLVA_Render_GetVersion", Def("const char*", "", "", "Get render module version string")},
};

TEST(RenderE2E, RegistersTheElevenFunctionsFirstInOrderWithExactDefinitions) {
  sim::Host host;
  e2e::LoadedExtension ext(host);
  const size_t first = 2;  // right after the action and its hook
  ASSERT_LE(first + 3 * kRenderFunctions.size(), host.registerLog.size());
  for (size_t i = 0; i < kRenderFunctions.size(); ++i) {
    const std::string& name = kRenderFunctions[i].first;
    EXPECT_EQ(host.registerLog[first + 3 * i].name, "API_" + name);
    EXPECT_EQ(host.registerLog[first + 3 * i + 1].name, "APIvararg_" + name);
    EXPECT_EQ(host.registerLog[first + 3 * i + 2].name, "APIdef_" + name);
    EXPECT_EQ(host.registerLog[first + 3 * i + 2].definition, kRenderFunctions[i].second) << name;
  }
  ext.Unload();
  for (const auto& f : kRenderFunctions) EXPECT_FALSE(host.IsRegistered("API_" + f.first)) << f.first;
}

TEST(RenderE2E, ScriptCachesItemsAndRoundTripsTheMatrix) {
  sim::Host host;
  MediaTrack* track = host.AddTrack();
  MediaItem* item = host.AddItem(track, 4.0, 1.5);
  item->ext["ZOLVA"] = R"({"cluster_guid":"{C}"})";
  e2e::LoadedExtension ext(host);
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetVersion"), Values{"1.0.0"});
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetClusterItems", {"{C}"}), Values{std::monostate{}});
  EXPECT_EQ(Call(host, "ZOLVA_Render_BuildItemCache"), Values{});
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetClusterItems", {"{C}"}),
            Values{"[{\"item_guid\":\"" + item->guid + "\",\"position\":4,\"length\":1.5,\"take_index\":0}]"});
  EXPECT_EQ(Call(host, "ZOLVA_Render_IsCacheValid"), Values{true});
  Call(host, "ZOLVA_Render_InvalidateItemCache");
  EXPECT_EQ(Call(host, "ZOLVA_Render_GetCacheStats"),
            Values{R"({"valid":false,"cluster_count":0,"item_count":0,"build_time_ms":0})"});

  Call(host, "ZOLVA_CreateRegionWithGUID", {0.0, 2.0, "a", 0});
  const std::string guid = std::get<std::string>(Call(host, "ZOLVA_CreateRegionWithGUID", {2.0, 4.0, "b", 0})[1]);
  Call(host, "ZOLVA_Render_AddRegions", {"[\"" + guid + "\"]"});
  Call(host, "ZOLVA_Render_AddRegionIndices", {"[1]"});
  host.renderMatrix[1].push_back(track);
  const Values snapshot = Call(host, "ZOLVA_Render_CacheRegionMatrix");
  EXPECT_EQ(snapshot, Values{R"({"regions":[{"idx":1,"tracks":[-1,1]},{"idx":2,"tracks":[-1]}]})"});
  const auto before = host.renderMatrix;
  Call(host, "ZOLVA_Render_ClearMatrix");
  EXPECT_TRUE(host.renderMatrix.empty());
  Call(host, "ZOLVA_Render_RestoreRegionMatrix", {snapshot[0]});
  EXPECT_EQ(host.renderMatrix, before);
  Call(host, "ZOLVA_Render_RestoreRegionMatrix", {"not a snapshot"});
  EXPECT_TRUE(host.renderMatrix.empty());
}

}  // namespace
