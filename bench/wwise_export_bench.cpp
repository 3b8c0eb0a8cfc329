// The Work Unit writers and the export to disk at two sizes (1,000 and
// 10,000 segments, containers, transitions and events in proportion): the
// cost should grow about linearly, so the ratio should stay near 10. Then a
// chain of containers, each holding the next, at depths 100 and 1,000: the
// objects are written one after another and children only referenced, so
// the time per output byte should not depend on the depth.
#include <benchmark/benchmark.h>
#include <stdlib.h>  // mkdtemp

#include <filesystem>
#include <string>

#include "wwise/export.h"
#include "wwise/model.h"
#include "wwise/work_units.h"

namespace {

using namespace ZOLVA_Wwise;

std::string Guid(char kind, size_t i) { return std::string("{") + kind + std::to_string(i) + "-0000-4000-8000-0000}"; }

WwiseMusicSegment Segment(size_t i) {
  WwiseMusicSegment segment;
  segment.guid = Guid('S', i);
  segment.shortId = std::to_string(1000000 + i);
  segment.name = "Segment " + std::to_string(i) + " & \"Co\"";
  segment.duration = 4000.0 + static_cast<double>(i % 97) * 12.5;
  segment.cues = {{"Entry", 250.0}, {"Exit", 3750.25}};
  segment.tracks = {{Guid('T', i), segment.name + "_Track", "/Audio/Segment " + std::to_string(i) + ".wav"}};
  return segment;
}

// Ten segments per group container, with ten transitions and a stinger each;
// ten groups per top container, which gets an event; one bank for all.
WwiseProjectData Project(size_t segments) {
  WwiseProjectData project;
  project.projectName = "Bench";
  for (size_t i = 0; i < segments; ++i) project.segments.push_back(Segment(i));
  const size_t groups = segments / 10;
  for (size_t g = 0; g < groups; ++g) {
    WwiseMusicContainer container;
    container.guid = Guid('C', g);
    container.shortId = std::to_string(g);
    container.name = "Group <" + std::to_string(g) + ">";
    container.type = static_cast<ContainerType>(g % 4 == 1 ? 0 : g % 4);
    for (size_t s = 0; s < 10; ++s) {
      container.children.push_back(Guid('S', g * 10 + s));
      WwiseTransition transition;
      transition.sourceId = container.children.back();
      transition.destinationId = s == 9 ? std::string() : Guid('S', g * 10 + s + 1);
      transition.fadeOutTime = transition.fadeInTime = 500.0;
      if (s % 2) transition.sourceCue = "Exit";
      container.transitions.push_back(transition);
    }
    container.stingers.push_back({Guid('S', g * 10), "Stinger_" + std::to_string(g), 0.0});
    project.containers.push_back(std::move(container));
  }
  WwiseSoundBank bank{Guid('B', 0), "Bench_SoundBank", {}, {}};
  for (size_t t = 0; t * 10 < groups; ++t) {
    WwiseMusicContainer top;
    top.guid = Guid('M', t);
    top.shortId = std::to_string(t);
    top.name = "Top " + std::to_string(t);
    top.type = SwitchContainer;
    top.switchGroup = "Intensity";
    for (size_t g = t * 10; g < groups && g < t * 10 + 10; ++g) top.children.push_back(Guid('C', g));
    project.events.push_back({Guid('E', t), std::to_string(t), "Play_" + top.name, top.guid, 0});
    bank.events.push_back(project.events.back().name);
    project.containers.push_back(std::move(top));
  }
  for (const auto& segment : project.segments) bank.mediaFiles.push_back(segment.tracks[0].audioFile);
  project.soundBanks.push_back(std::move(bank));
  return project;
}

size_t WriteAll(const WwiseProjectData& project) {
  return Export::MusicWorkUnit(project).size() + Export::EventsWorkUnit(project).size() +
         Export::SoundBanksWorkUnit(project).size();
}

void BM_Writers(benchmark::State& state) {
  const WwiseProjectData project = Project(static_cast<size_t>(state.range(0)));
  size_t bytes = 0;
  for (auto _ : state) benchmark::DoNotOptimize(bytes = WriteAll(project));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
  state.counters["doc_bytes"] = static_cast<double>(bytes);
}
BENCHMARK(BM_Writers)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The whole export into a fresh temp folder, audio copies left out (their
// cost is the audio's size, not the model's).
void BM_GenerateWWU(benchmark::State& state) {
  const WwiseProjectData project = Project(static_cast<size_t>(state.range(0)));
  std::string folder = (std::filesystem::temp_directory_path() / "zolva bench XXXXXX").string();
  if (!::mkdtemp(folder.data())) {
    state.SkipWithError("no temp folder");
    return;
  }
  ExportOptions options;
  options.outputPath = folder + "/Export \xc3\xa9";
  options.copyAudioFiles = false;
  for (auto _ : state) {
    if (!Export::GenerateWWU(project, options).success) state.SkipWithError("export failed");
  }
  std::filesystem::remove_all(folder);
}
BENCHMARK(BM_GenerateWWU)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

// Container i holds container i + 1 and segment i.
void BM_DeepChain(benchmark::State& state) {
  const size_t depth = static_cast<size_t>(state.range(0));
  WwiseProjectData project;
  project.projectName = "Deep";
  for (size_t i = 0; i < depth; ++i) {
    project.segments.push_back(Segment(i));
    WwiseMusicContainer container;
    container.guid = Guid('C', i);
    container.name = "Level " + std::to_string(i);
    container.type = PlaylistContainer;
    if (i + 1 < depth) container.children.push_back(Guid('C', i + 1));
    container.children.push_back(Guid('S', i));
    project.containers.push_back(std::move(container));
  }
  size_t bytes = 0;
  for (auto _ : state) benchmark::DoNotOptimize(bytes = Export::MusicWorkUnit(project).size());
  const double total = static_cast<double>(state.iterations() * bytes);
  state.counters["doc_bytes"] = static_cast<double>(bytes);
  state.counters["s_per_byte"] = benchmark::Counter(total, benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_DeepChain)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

}  // namespace
