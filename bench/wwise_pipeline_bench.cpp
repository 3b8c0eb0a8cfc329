// The Wwise export end to end: a schema text read, transformed and written
// to disk as Work Units, at 1,000 and 10,000 clusters with groups and
// connections in proportion. The work should grow about linearly: ten times
// the clusters should cost at most about twelve times as long. Reading and
// transforming, and writing, are also timed on their own, to show which one
// drifts when the ratio does. The music Work Unit is one text of about 2 KB a
// cluster, some 20 MB at 10,000 clusters, grown in memory and then written:
// the writing is sensitive to other load on the machine, so compare figures
// taken on a quiet one.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "wwise/export.h"
#include "wwise/schema.h"
#include "wwise/transform.h"

namespace {

using namespace ZOLVA_Wwise;

constexpr int kClustersPerGroup = 10;
constexpr int kGroupsPerRoot = 10;  // a root group and nine groups nested in it

std::string Guid(char kind, int index) {
  char text[40];
  std::snprintf(text, sizeof text, "{%c%07X-0000-4000-8000-%012X}", kind, index, index * 7919);
  return text;
}

// Groups of ten clusters; every tenth group is a root holding the nine after
// it as well, so that containers nest and only the roots get events. Within a
// group, each cluster leads on to the next, by exit cue every third time, and
// every group's first cluster carries a stinger onto its second.
std::string Schema(int clusters) {
  const int groups = clusters / kClustersPerGroup;
  const char* kTypes[] = {"horizontal", "random", "switch", "vertical", "oneshot"};
  std::string json = "{\"projectName\":\"Bench\",\"clusters\":[";
  for (int c = 0; c < clusters; ++c) {
    char text[400];
    std::snprintf(text, sizeof text,
                  "%s{\"guid\":\"%s\",\"name\":\"Cluster %d\",\"parentGuid\":\"%s\",\"startTime\":%d.25,"
                  "\"endTime\":%d.75,\"entryPoint\":%d.5,\"exitPoint\":%d.5,\"isLoop\":true,\"color\":%d,"
                  "\"audioFile\":\"/media/cluster%d.wav\"}",
                  c ? "," : "", Guid('C', c).c_str(), c, Guid('G', c / kClustersPerGroup).c_str(), c * 4, c * 4 + 3,
                  c * 4, c * 4 + 2, c * 97, c);
    json += text;
  }
  json += "],\"groups\":[";
  for (int g = 0; g < groups; ++g) {
    const bool root = g % kGroupsPerRoot == 0;
    json += std::string(g ? "," : "") + "{\"guid\":\"" + Guid('G', g) + "\",\"name\":\"Group " + std::to_string(g) +
            "\",\"type\":\"" + kTypes[g % 5] + "\",\"parentGuid\":\"" +
            (root ? std::string() : Guid('G', g - g % kGroupsPerRoot)) + "\",\"switchGroup\":\"Mood\",\"childGuids\":[";
    for (int c = 0; c < kClustersPerGroup; ++c) json += (c ? ",\"" : "\"") + Guid('C', g * kClustersPerGroup + c) + '"';
    for (int child = g + 1; root && child < g + kGroupsPerRoot && child < groups; ++child) {
      json += ",\"" + Guid('G', child) + '"';
    }
    json += "]}";
  }
  json += "],\"connections\":[";
  for (int c = 0; c < clusters; ++c) {
    if (c % kClustersPerGroup == kClustersPerGroup - 1) continue;
    const bool stinger = c % kClustersPerGroup == 0;
    json += std::string(c ? "," : "") + "{\"guid\":\"" + Guid('T', c) + "\",\"sourceGuid\":\"" + Guid('C', c) +
            "\",\"targetGuid\":\"" + Guid('C', c + 1) + "\",\"type\":\"" + (stinger ? "stinger" : "transition") +
            "\",\"transitionType\":\"" + (c % 3 ? "nextBar" : "exitCue") +
            "\",\"fadeTime\":0.5,\"fadeCurve\":\"sCurve\"}";
  }
  return json + "]}";
}

// A fresh folder for the Work Units, removed again when the benchmark ends.
struct OutputFolder {
  std::string path;
  OutputFolder() {
    char pattern[] = "/tmp/zolva-wwise-bench-XXXXXX";
    path = ::mkdtemp(pattern) ? pattern : "";
  }
  ~OutputFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
};

ExportOptions Options(const OutputFolder& folder) {
  ExportOptions options;
  options.outputPath = folder.path + "/export";
  options.copyAudioFiles = false;  // the sources do not exist; writing the Work Units is what is timed
  return options;
}

WwiseProjectData Transform(const std::string& text, const ExportOptions& options) {
  V2Schema schema;
  if (!Schema::ParseV2Schema(text, schema)) std::abort();
  return Schema::TransformToWwise(schema, options);
}

void BM_SchemaToWorkUnits(benchmark::State& state) {
  const std::string text = Schema(static_cast<int>(state.range(0)));
  const OutputFolder folder;
  const ExportOptions options = Options(folder);
  for (auto _ : state) {
    const Export::ExportResult result = Export::GenerateWWU(Transform(text, options), options);
    if (!result.success) state.SkipWithError(result.error.c_str());
  }
  state.counters["schema_bytes"] = static_cast<double>(text.size());
}
BENCHMARK(BM_SchemaToWorkUnits)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_ReadAndTransform(benchmark::State& state) {
  const std::string text = Schema(static_cast<int>(state.range(0)));
  const ExportOptions options;
  for (auto _ : state) benchmark::DoNotOptimize(Transform(text, options));
}
BENCHMARK(BM_ReadAndTransform)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_WriteWorkUnits(benchmark::State& state) {
  const OutputFolder folder;
  const ExportOptions options = Options(folder);
  const WwiseProjectData project = Transform(Schema(static_cast<int>(state.range(0))), options);
  for (auto _ : state) {
    const Export::ExportResult result = Export::GenerateWWU(project, options);
    if (!result.success) state.SkipWithError(result.error.c_str());
  }
  state.counters["music_bytes"] =
      static_cast<double>(std::filesystem::file_size(options.outputPath + "/Interactive Music Hierarchy/Bench.wwu"));
}
BENCHMARK(BM_WriteWorkUnits)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace
