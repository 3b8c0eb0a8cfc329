// Schema intake and transform at scale, each timed as one parse plus one
// transform of a text built beforehand:
//  - 10,000 groups nested as one chain, root first and leaf last (the group
//    order's worst case: one group per pass of its rule), against 10,000
//    groups side by side in a text of the same size; the chain should cost
//    about what the flat list costs;
//  - 1,000 and 10,000 clusters with groups and connections in proportion;
//    the cost should grow about linearly.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "wwise/schema.h"
#include "wwise/transform.h"

namespace {

using namespace ZOLVA_Wwise;

std::string Guid(char kind, int i) {
  char text[40];
  std::snprintf(text, sizeof text, "{%08X-0000-4000-8000-%c%011X}", static_cast<unsigned>(i) * 2654435761u, kind, i);
  return text;
}

std::string Cluster(int i, const std::string& parent) {
  return "{\"guid\":\"" + Guid('C', i) + "\",\"name\":\"Cluster " + std::to_string(i) + "\",\"parentGuid\":\"" + parent +
         "\",\"startTime\":" + std::to_string(i * 4) + ".5,\"endTime\":" + std::to_string(i * 4 + 4) +
         ".25,\"entryPoint\":0.5,\"exitPoint\":3.75,\"isLoop\":true,\"color\":16777471,\"audioFile\":\"/audio/c" +
         std::to_string(i) + ".wav\"}";
}

std::string Group(int i, const char* type, const std::string& children) {
  return "{\"guid\":\"" + Guid('G', i) + "\",\"name\":\"Group " + std::to_string(i) + "\",\"type\":\"" + type +
         "\",\"childGuids\":[" + children + "],\"color\":255}";
}

// Group i holds cluster i and, in the chain, group i + 1 (an unknown guid of
// the same length in the flat list).
std::string Groups(int count, bool chain) {
  std::string clusters, groups;
  for (int i = 0; i < count; ++i) {
    clusters += (i ? "," : "") + Cluster(i, Guid('G', i));
    groups += (i ? "," : "") + Group(i, "horizontal", "\"" + Guid('C', i) + "\",\"" + Guid(chain ? 'G' : 'X', i + 1) + "\"");
  }
  return "{\"projectName\":\"Bench\",\"clusters\":[" + clusters + "],\"groups\":[" + groups + "],\"connections\":[]}";
}

// Playlists of 10 clusters, switch containers over 10 playlists each, a
// transition from every cluster to the next and a stinger every 10 clusters.
std::string Clusters(int count) {
  std::string clusters, groups, connections;
  for (int i = 0; i < count; ++i) clusters += (i ? "," : "") + Cluster(i, Guid('G', i / 10));
  for (int g = 0; g < count / 10; ++g) {
    std::string children;
    for (int i = g * 10; i < g * 10 + 10; ++i) children += (i > g * 10 ? ",\"" : "\"") + Guid('C', i) + "\"";
    groups += (g ? "," : "") + Group(g, "horizontal", children);
  }
  for (int s = 0; s < count / 100; ++s) {
    std::string children;
    for (int g = s * 10; g < s * 10 + 10; ++g) children += (g > s * 10 ? ",\"" : "\"") + Guid('G', g) + "\"";
    groups += "," + Group(count + s, "switch", children);
  }
  for (int i = 0; i < count; ++i) {
    const bool stinger = i % 10 == 9;
    connections += (i ? "," : "") + std::string("{\"guid\":\"") + Guid('X', i) + "\",\"sourceGuid\":\"" + Guid('C', i) +
                   "\",\"targetGuid\":\"" + Guid('C', (i + 1) % count) + "\",\"type\":\"" +
                   (stinger ? "stinger" : "transition") + "\",\"transitionType\":\"exitCue\",\"fadeTime\":0.5}";
  }
  return "{\"projectName\":\"Bench\",\"clusters\":[" + clusters + "],\"groups\":[" + groups + "],\"connections\":[" +
         connections + "]}";
}

void ParseAndTransform(benchmark::State& state, const std::string& json) {
  const ExportOptions options;
  for (auto _ : state) {
    V2Schema schema;
    benchmark::DoNotOptimize(Schema::ParseV2Schema(json, schema));
    benchmark::DoNotOptimize(Schema::TransformToWwise(schema, options));
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * json.size()));
}

void BM_GroupChainLeafLast(benchmark::State& state) { ParseAndTransform(state, Groups(static_cast<int>(state.range(0)), true)); }
BENCHMARK(BM_GroupChainLeafLast)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_GroupsFlat(benchmark::State& state) { ParseAndTransform(state, Groups(static_cast<int>(state.range(0)), false)); }
BENCHMARK(BM_GroupsFlat)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_ClustersGroupsConnections(benchmark::State& state) {
  ParseAndTransform(state, Clusters(static_cast<int>(state.range(0))));
}
BENCHMARK(BM_ClustersGroupsConnections)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
