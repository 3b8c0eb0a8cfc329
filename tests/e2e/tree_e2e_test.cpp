// The cluster tree's functions in the simulated host, called as ReaScript calls them.
#include <gtest/gtest.h>

#include <tuple>

#include "reascript.h"

namespace {

using e2e::Call, e2e::nil, e2e::Values;

TEST(TreeE2E, ScriptBuildsQueriesRenumbersAndRepairsATree) {
  sim::Host host;
  e2e::Extension ext(host);
  const std::tuple<const char*, Values, Values> steps[] = {
      {"AddCluster", {"{R1}", "7", "", 5}, {true}},
      {"AddCluster", {"{C1}", "7", "{R1}", 2}, {true}},
      {"AddCluster", {"{C2}", "7", "{R1}", 1}, {true}},
      {"AddCluster", {"{R2}", "7", "", 7}, {true}},
      {"AddCluster", {"{O}", "7", "{gone}", 9}, {true}},
      {"AddCluster", {"", "7", "", 0}, {false}},
      {"ReindexAll", {10}, {10}},  // nothing built yet
      {"BuildChildrenArrays", {}, {}},
      {"FlattenHierarchy", {nil}, {"{R1}:0:5;{C2}:1:1;{C1}:1:2;{R2}:0:7;{O}:0:9"}},
      {"FindOrphans", {""}, {"{O}"}},
      {"Validate", {""}, {"orphan|{O}|Parent {gone} not found"}},
      {"SetParent", {"{R1}", "{C2}"}, {false}},
      {"SetParent", {"{R1}", "{R1}"}, {false}},
      {"ReindexAll", {1}, {6}},
      {"FlattenHierarchy", {""}, {"{R1}:0:1;{C2}:1:2;{C1}:1:3;{R2}:0:4;{O}:0:5"}},
      {"ReindexChildren", {"{R1}", 20}, {22}},
      {"Clear", {}, {}},
      {"Validate", {""}, {""}},
  };
  for (const auto& [name, args, expected] : steps) {
    EXPECT_EQ(Call(host, std::string("ZOLVA_Tree") + name, args), expected) << name;
  }
}

}  // namespace
