// Snapshot, clear and restore of the region render matrix make a fixed number
// of host calls per region and per matrix entry. (The simulated host checks a
// region number by scanning its markers, so its own time per call grows with
// the region count; the calls per entry are the product's share.)
#include <benchmark/benchmark.h>

#include <string>

#include "render/item_cache.h"
#include "render/region_matrix.h"
#include "sim_host.h"

namespace {

void BM_MatrixRoundTrip(benchmark::State& state) {
  const int regions = static_cast<int>(state.range(0));
  sim::Host host;
  for (int t = 0; t < 3; ++t) host.AddTrack();
  ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
  for (int r = 0; r < regions; ++r) {
    AddProjectMarker2(nullptr, true, r * 10.0, r * 10.0 + 5, "", -1, 0);
    AddProjectMarker2(nullptr, false, r * 10.0 + 1, 0, "m", -1, 0);
    host.renderMatrix[r + 1] = {&host.masterTrack, host.tracks[r % 3].get()};
  }
  const double entries = 2.0 * regions;
  uint64_t calls = 0;
  for (auto _ : state) {
    host.hostCalls = 0;
    const std::string snapshot = ZOLVA_Render::CacheRegionRenderMatrix();
    ZOLVA_Render::ClearRenderMatrix();
    ZOLVA_Render::RestoreRegionMatrix(snapshot.c_str());
    calls = host.hostCalls;
  }
  state.counters["host_calls_per_entry"] = static_cast<double>(calls) / entries;
}
BENCHMARK(BM_MatrixRoundTrip)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace
