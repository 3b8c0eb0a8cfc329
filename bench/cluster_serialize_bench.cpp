// Serialising and reading the registry, and writing the legacy item text,
// for 1,000 and 10,000 clusters of 20 items: the time should grow linearly.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "cluster/binary_format.h"
#include "cluster/legacy_format.h"

namespace {

using ZOLVA_Cluster::ClusterData;

std::vector<ClusterData> Registry(int count) {
  std::vector<ClusterData> clusters(count);
  for (int i = 0; i < count; ++i) {
    ClusterData& c = clusters[i];
    c.guid = "{CLUSTER-" + std::to_string(i) + "-0000-0000-000000000000}";
    c.name = "Cluster \"" + std::to_string(i) + "\"";
    c.start_time = i * 4.0;
    c.end_time = i * 4.0 + 3.5;
    c.time_created = 1700000000 + i;
    for (int k = 0; k < 20; ++k) {
      const std::string item = "{ITEM-" + std::to_string(i) + "-" + std::to_string(k) + "-0000-00000000}";
      c.items[item] = {item, "{TAKE-" + std::to_string(k) + "}", 1700000000 + k, k * 0.5, 0.5};
    }
  }
  return clusters;
}

void BM_SerializeAllClusters(benchmark::State& state) {
  const auto clusters = Registry(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(ZOLVA_Cluster::Serialize::SerializeAllClusters(clusters));
}

void BM_DeserializeAllClusters(benchmark::State& state) {
  const std::string text = ZOLVA_Cluster::Serialize::SerializeAllClusters(Registry(static_cast<int>(state.range(0))));
  for (auto _ : state) {
    std::vector<ClusterData> out;
    benchmark::DoNotOptimize(ZOLVA_Cluster::Serialize::DeserializeAllClusters(text, out));
  }
}

void BM_SerializeLegacyClusterItems(benchmark::State& state) {
  const auto clusters = Registry(static_cast<int>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(ZOLVA_Cluster::Serialize::SerializeLegacyClusterItems(clusters));
}

}  // namespace

BENCHMARK(BM_SerializeAllClusters)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DeserializeAllClusters)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_SerializeLegacyClusterItems)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
