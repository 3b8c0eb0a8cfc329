// Cluster tree at scale, through the registered script functions: building
// (loading every node and linking the child lists), flattening, renumbering
// and validating at two sizes, alone and as one cycle (the cost should grow
// about linearly), the memory a loaded tree holds per node, and validation of
// a deep chain against a flat tree of the same size (depth should not matter).
// A plain map built over the same GUIDs at both sizes is the yardstick: what
// the hardware alone makes of the jump from 10,000 to 100,000 keys (the map
// falls out of the CPU caches).
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/api_frame.h"

namespace ZOLVA_Tree {
extern const ZOLVA::Module kModule;
}

namespace {

// Bytes held by live allocations of this program; every allocation carries
// its size in a header in front of it.
size_t g_liveBytes = 0;
constexpr size_t kHeader = alignof(std::max_align_t);

void* Allocate(size_t size) {
  auto* block = static_cast<unsigned char*>(std::malloc(size + kHeader));
  if (!block) return nullptr;
  std::memcpy(block, &size, sizeof size);
  g_liveBytes += size;
  return block + kHeader;
}

void Release(void* pointer) {
  if (!pointer) return;
  auto* block = static_cast<unsigned char*>(pointer) - kHeader;
  size_t size;
  std::memcpy(&size, block, sizeof size);
  g_liveBytes -= size;
  std::free(block);
}

}  // namespace

void* operator new(size_t size) {
  if (void* pointer = Allocate(size)) return pointer;
  throw std::bad_alloc();
}
void* operator new[](size_t size) { return operator new(size); }
void* operator new(size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void* operator new[](size_t size, const std::nothrow_t&) noexcept { return Allocate(size); }
void operator delete(void* pointer) noexcept { Release(pointer); }
void operator delete[](void* pointer) noexcept { Release(pointer); }
void operator delete(void* pointer, size_t) noexcept { Release(pointer); }
void operator delete[](void* pointer, size_t) noexcept { Release(pointer); }
void operator delete(void* pointer, const std::nothrow_t&) noexcept { Release(pointer); }
void operator delete[](void* pointer, const std::nothrow_t&) noexcept { Release(pointer); }

namespace {

// The guarded function the module registers under `name`.
template <typename Function>
Function* Registered(const char* name) {
  const ZOLVA::Module& module = ZOLVA_Tree::kModule;
  for (size_t i = 0; i < module.apiCount; ++i) {
    if (std::strcmp(module.api[i].publicName, name) == 0) {
      return reinterpret_cast<Function*>(module.api[i].typedAddress());
    }
  }
  std::abort();
}

const auto AddCluster = Registered<bool(const char*, const char*, const char*, int)>("ZOLVA_TreeAddCluster");
const auto Clear = Registered<void()>("ZOLVA_TreeClear");
const auto Build = Registered<void()>("ZOLVA_TreeBuildChildrenArrays");
const auto Flatten = Registered<const char*(const char*)>("ZOLVA_TreeFlattenHierarchy");
const auto ReindexAll = Registered<int(int)>("ZOLVA_TreeReindexAll");
const auto Validate = Registered<const char*(const char*)>("ZOLVA_TreeValidate");

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
  Clear();
  for (int i = 0; i < static_cast<int>(guids.size()); ++i) {
    const int parent = parentOf(i);
    AddCluster(guids[i].c_str(), "id", parent < 0 ? "" : guids[parent].c_str(), static_cast<int>(guids.size()) - i);
  }
}

// Eight children under every inner node.
int Bushy(int i) { return i == 0 ? -1 : (i - 1) / 8; }

// Runs first, while the tree has never held more than this benchmark puts in.
void BM_MemoryPerNode(benchmark::State& state) {
  const auto guids = Guids(static_cast<int>(state.range(0)));
  size_t held = 0;
  for (auto _ : state) {
    Clear();
    const size_t before = g_liveBytes;
    Load(guids, Bushy);
    Build();
    held = g_liveBytes - before;
  }
  Clear();
  state.counters["bytes_per_node"] = static_cast<double>(held) / static_cast<double>(guids.size());
}
BENCHMARK(BM_MemoryPerNode)->Arg(10000)->Arg(100000)->Iterations(1);

void BM_Build(benchmark::State& state) {
  const auto guids = Guids(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Load(guids, Bushy);
    Build();
  }
}
BENCHMARK(BM_Build)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// Flattening, renumbering or validating a tree built once.
template <typename Operation>
void RunOnBuiltTree(benchmark::State& state, Operation operation) {
  Load(Guids(static_cast<int>(state.range(0))), Bushy);
  Build();
  for (auto _ : state) operation();
}

void BM_Flatten(benchmark::State& state) {
  RunOnBuiltTree(state, [] { benchmark::DoNotOptimize(Flatten("")); });
}
BENCHMARK(BM_Flatten)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_Reindex(benchmark::State& state) {
  RunOnBuiltTree(state, [] { benchmark::DoNotOptimize(ReindexAll(0)); });
}
BENCHMARK(BM_Reindex)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_Validate(benchmark::State& state) {
  RunOnBuiltTree(state, [] { benchmark::DoNotOptimize(Validate("")); });
}
BENCHMARK(BM_Validate)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_BuildFlattenReindexValidate(benchmark::State& state) {
  const auto guids = Guids(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    Load(guids, Bushy);
    Build();
    benchmark::DoNotOptimize(Flatten(""));
    benchmark::DoNotOptimize(ReindexAll(0));
    benchmark::DoNotOptimize(Validate(""));
  }
}
BENCHMARK(BM_BuildFlattenReindexValidate)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_GuidMapYardstick(benchmark::State& state) {
  const auto guids = Guids(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::unordered_map<std::string, int> map;
    for (size_t i = 0; i < guids.size(); ++i) map.emplace(guids[i], static_cast<int>(i));
    benchmark::DoNotOptimize(map.size());
  }
}
BENCHMARK(BM_GuidMapYardstick)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ValidateChain(benchmark::State& state) {
  Load(Guids(static_cast<int>(state.range(0))), [](int i) { return i - 1; });
  for (auto _ : state) benchmark::DoNotOptimize(Validate(""));
}
BENCHMARK(BM_ValidateChain)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_ValidateFlat(benchmark::State& state) {
  Load(Guids(static_cast<int>(state.range(0))), [](int i) { return i == 0 ? -1 : 0; });
  for (auto _ : state) benchmark::DoNotOptimize(Validate(""));
}
BENCHMARK(BM_ValidateFlat)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
