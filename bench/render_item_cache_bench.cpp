// Building the item-cluster cache is one pass with a fixed number of host
// calls per item: the time grows linearly and the calls per item stay put.
#include <benchmark/benchmark.h>

#include <string>

#include "render/item_cache.h"
#include "render/region_matrix.h"
#include "sim_host.h"

namespace {

void BM_BuildItemCache(benchmark::State& state) {
  const int itemCount = static_cast<int>(state.range(0));
  sim::Host host;
  for (int t = 0; t < 10; ++t) host.AddTrack();
  for (int i = 0; i < itemCount; ++i) {
    // Added track by track, so the host's enumeration walks its own storage in order.
    MediaItem* item = host.AddItem(host.tracks[i * 10 / itemCount].get(), i * 0.5, 0.5);
    // Three items in four belong to a cluster, one in eight to two of them.
    if (i % 4 == 3) continue;
    std::string ext = R"({"cluster_guid":"{C)" + std::to_string(i % 100) + R"(}"})";
    if (i % 8 == 0) ext = "[" + ext + R"(,{"cluster_guid":"{D}"}])";
    item->ext["ZOLVA"] = ext;
  }
  ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
  uint64_t calls = 0;
  for (auto _ : state) {
    host.hostCalls = 0;
    ZOLVA_Render::BuildItemClusterCache();
    calls = host.hostCalls;
  }
  state.counters["host_calls_per_item"] = static_cast<double>(calls) / itemCount;
  state.counters["items_per_second"] =
      benchmark::Counter(static_cast<double>(itemCount), benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(BM_BuildItemCache)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_GetClusterItems(benchmark::State& state) {
  sim::Host host;
  MediaTrack* track = host.AddTrack();
  for (int i = 0; i < state.range(0); ++i) {
    host.AddItem(track, i, 1.0)->ext["ZOLVA"] = R"({"cluster_guid":"{C)" + std::to_string(i % 1000) + R"(}"})";
  }
  ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
  ZOLVA_Render::BuildItemClusterCache();
  for (auto _ : state) benchmark::DoNotOptimize(ZOLVA_Render::GetClusterItems("{C7}"));
}
BENCHMARK(BM_GetClusterItems)->Arg(10000)->Arg(100000);

}  // namespace
