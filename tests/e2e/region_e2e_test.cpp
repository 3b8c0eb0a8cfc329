// The region functions in the simulated host, called as ReaScript calls them.
#include <gtest/gtest.h>

#include <tuple>

#include "reascript.h"

namespace {

using e2e::Call, e2e::nil, e2e::Value, e2e::Values;

// A region keeps its GUID while a region and a marker come in before it and go
// again; a marker's GUID works like a region's. nil doubles read as 0 in a
// create and as "keep" in an update.
TEST(RegionE2E, ScriptKeepsHoldOfARegionByGuid) {
  sim::Host host;
  e2e::Extension ext(host);
  const Value verse = Call(host, "ZOLVA_CreateRegionWithGUID", {8.0, 9.0, "verse", 0}).at(1);
  const Value intro = Call(host, "ZOLVA_CreateRegionWithGUID", {nil, nil, "intro", 0}).at(1);
  const Value cue = host.AddMarker({false, 3.0, 0.0, "cue", 1, 0, ""});
  const std::tuple<const char*, Values, Values> steps[] = {
      {"UpdateRegionBoundaries", {verse, nil, 12.0}, {true}},
      {"UpdateRegionColor", {verse, 0x1000007}, {true}},
      {"GetRegionByGUID", {verse}, {true, 8.0, 12.0, "verse", 0x1000007, 2, 1}},
      {"GetRegionByName", {"intro"}, {true, intro, 0.0, 0.0, 0, 0}},
      {"UpdateRegionBoundaries", {cue, 4.5, nil}, {true}},
      {"GetRegionByName", {"cue"}, {true, cue, 4.5, 0.0, 0, 1}},
      {"DeleteRegionByGUID", {cue}, {true}},
      {"DeleteRegionByGUID", {intro}, {true}},
      {"GetEnumIndexFromGUID", {verse}, {0}},
      {"GetGUIDFromEnumIndex", {0}, {true, verse}},
      {"GetDisplayIndexFromEnum", {0}, {1}},
      {"DeleteRegionByGUID", {verse}, {true}},
      {"ValidateRegionGUID", {verse}, {false}},
  };
  for (const auto& [name, args, expected] : steps) {
    EXPECT_EQ(Call(host, std::string("ZOLVA_") + name, args), expected) << name;
  }
}

}  // namespace
