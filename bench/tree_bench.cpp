// Cluster tree at scale: a full load-build-flatten-renumber-validate cycle
// at two sizes (the cost should grow about linearly), and validation of a
// deep chain against a flat tree of the same size (depth should not matter).
// A plain map of the same GUIDs is timed beside them at both sizes: what the
// hardware alone makes of the jump from 10,000 to 100,000 keys (the map falls
// out of the CPU caches) is the yardstick for the tree's own ratio.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>
#include <unordered_map>
#include <vector>

#include "tree/tree_operations.h"

namespace {

using namespace ZOLVA_Tree;

std::vector<std::string> Guids(int count) {
  std::vector<std::string> guids;
  char text[40];
  for (int i = 0; i < count; ++i) {
    std::snprintf(text, sizeof text, "{%08X-0000-4000-8000-%012X}", i * 2654435761u, i);
    guids.emplace_back(text);
  }
  return guids;
}

// Node i hangs under `parentOf(i)` (negative for a root), numbered against
// the order of adding so that every list has to be sorted.
template <typename ParentOf>
void Load(const std::vector<std::string>& guids, ParentOf parentOf) {
  TreeClear();
  for (int i = 0; i < static_cast<int>(guids.size()); ++i) {
    const int parent = parentOf(i);
    TreeAddCluster(guids[i].c_str(), "id", parent < 0 ? "" : guids[parent].c_str(),
                   static_cast<int>(guids.size()) - i);
  }
}

void BM_BuildFlattenReindexValidate(benchmark::State& state) {
  const auto guids = Guids(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Load(guids, [](int i) { return i == 0 ? -1 : (i - 1) / 8; });
    TreeBuildChildrenArrays();
    benchmark::DoNotOptimize(TreeFlattenHierarchy(""));
    benchmark::DoNotOptimize(TreeReindexAll(0));
    benchmark::DoNotOptimize(TreeValidate(""));
  }
}
BENCHMARK(BM_BuildFlattenReindexValidate)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Insert every GUID, then look each up as often as the cycle above does.
void BM_GuidMapBaseline(benchmark::State& state) {
  const auto guids = Guids(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::unordered_map<std::string, std::string> map;
    for (const std::string& guid : guids) map.emplace(guid, guid);
    size_t found = 0;
    for (int pass = 0; pass < 6; ++pass) {
      for (size_t i = 0; i < guids.size(); ++i) found += map.count(guids[(i * 7919) % guids.size()]);
    }
    benchmark::DoNotOptimize(found);
  }
}
BENCHMARK(BM_GuidMapBaseline)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ValidateChain(benchmark::State& state) {
  Load(Guids(static_cast<int>(state.range(0))), [](int i) { return i - 1; });
  for (auto _ : state) benchmark::DoNotOptimize(TreeValidate(""));
}
BENCHMARK(BM_ValidateChain)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ValidateFlat(benchmark::State& state) {
  Load(Guids(static_cast<int>(state.range(0))), [](int i) { return i == 0 ? -1 : 0; });
  for (auto _ : state) benchmark::DoNotOptimize(TreeValidate(""));
}
BENCHMARK(BM_ValidateFlat)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
