// The cluster operations are one pass over the project's items: activation,
// preparation and deactivation at 10,000 and 100,000 items, the restore with
// every item selected at 2,000 and 20,000, and associating every selected
// item then storing the item text at 1,000 and 10,000. Time should grow
// linearly and the host calls per item stay the same at both sizes.
#include <benchmark/benchmark.h>

#include <string>

#include "cluster/activation.h"
#include "cluster/association.h"
#include "cluster/cluster_state.h"
#include "cluster/legacy_migration.h"
#include "cluster/render_backup.h"
#include "cluster/render_prep.h"
#include "sim_host.h"

namespace {

using namespace ZOLVA_Cluster;

// A project of `count` two-take items on ten tracks (one with fixed lanes),
// every item selected; one item in four belongs to cluster {B}, which spans
// the whole project.
struct Project {
  explicit Project(int count) {
    ZOLVA::ResolveHostApi(&sim::Host::GetFunc);
    State::Shutdown();
    State::Initialize();
    for (int t = 0; t < 10; ++t) host.AddTrack()->values["I_FREEMODE"] = t == 0 ? 2 : 0;
    ClusterData cluster;
    cluster.guid = "{B}";
    cluster.end_time = count;
    for (int i = 0; i < count; ++i) {
      MediaItem* item = host.AddItem(host.tracks[i * 10 / count].get(), i, 1.0);
      item->values["B_UISEL"] = 1;
      host.AddTake(item, "WAVE");
      const std::string take = host.AddTake(item, "WAVE")->guid;
      if (i % 4 == 0) cluster.items[item->guid] = {item->guid, take, 0, double(i), 1.0};
    }
    State::AddCluster(cluster);
  }
  sim::Host host;
};

template <typename Operation>
void Measure(benchmark::State& state, Operation operation) {
  Project project(static_cast<int>(state.range(0)));
  uint64_t calls = 0;
  for (auto _ : state) {
    project.host.hostCalls = 0;
    operation();
    calls = project.host.hostCalls;
  }
  state.counters["host_calls_per_item"] = static_cast<double>(calls) / static_cast<double>(state.range(0));
}

void BM_Activate(benchmark::State& state) {
  Measure(state, [] { Activation::ActivateCluster("{B}", Activation::ActivationOptions()); });
}
BENCHMARK(BM_Activate)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_Deactivate(benchmark::State& state) {
  Measure(state, [] { Activation::DeactivateAllClusters(); });
}
BENCHMARK(BM_Deactivate)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_PrepareForRender(benchmark::State& state) {
  Measure(state, [] {
    Render::PrepareClusterForRender("{B}", Render::RenderPrepOptions());
    State::WithRegistry([](State::ClusterStateCache& cache) { cache.renderBackup = State::RenderBackup(); });
  });
}
BENCHMARK(BM_PrepareForRender)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The snapshot is taken outside the timing; the restore puts every item's selection back.
void BM_RestoreAfterRender(benchmark::State& state) {
  Project project(static_cast<int>(state.range(0)));
  uint64_t calls = 0;
  for (auto _ : state) {
    state.PauseTiming();
    State::BackupRenderState();
    project.host.hostCalls = 0;
    state.ResumeTiming();
    State::RestoreRenderState();
    calls = project.host.hostCalls;
  }
  state.counters["host_calls_per_item"] = static_cast<double>(calls) / static_cast<double>(state.range(0));
}
BENCHMARK(BM_RestoreAfterRender)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

void BM_AssociateAndStore(benchmark::State& state) {
  Measure(state, [] {
    Activation::AssociateSelectedItems("{B}", Activation::AssociationOptions());
    PersistLegacyClusterItems();
  });
}
BENCHMARK(BM_AssociateAndStore)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The yardstick: reading each item's GUID, position, length and mute, what
// every pass above does at the least. What it makes of the step from the
// smaller to the larger project is the machine's own (caches, allocator).
void BM_ReadEveryItem(benchmark::State& state) {
  Measure(state, [] {
    char guid[64];
    for (int i = 0, n = CountMediaItems(nullptr); i < n; ++i) {
      MediaItem* item = GetMediaItem(nullptr, i);
      GetSetMediaItemInfo_String(item, "GUID", guid, false);
      benchmark::DoNotOptimize(GetMediaItemInfo_Value(item, "D_POSITION") + GetMediaItemInfo_Value(item, "D_LENGTH") +
                               GetMediaItemInfo_Value(item, "B_MUTE"));
    }
  });
}
BENCHMARK(BM_ReadEveryItem)->Arg(2000)->Arg(20000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
