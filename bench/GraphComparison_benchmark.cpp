// The comparison of two states of a model at 10^4, 10^5 and 10^6 elements
// (about one edge per element), each step against a floor measured in the
// same iteration: the same diff computed on flat sorted std::vectors of ids
// and of (child, parent) id pairs, without graph objects. The counter
// "ratio" is the step's processor time over the floor's; "floor_ms" is the
// floor per iteration.
//
// Steps: Build of both graphs; RunComparison(true); GetRootsToAdd plus
// GetRootsToRemove. BM_Memory builds both graphs once and reports the heap
// they take per vertex and per edge (glibc's allocator statistics).
//
// The model comes from the comparator's generator: processes, products and
// resources in trees of 1000 with 5% extra links; 2% of the elements
// removed, added, moved and renamed.
#include <algorithm>
#include <cstddef>
#include <ctime>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <benchmark/benchmark.h>

#include <vekzol/VEKZOLBase.h>

#include "comparison/testing/ComparisonModelGenerator.h"

namespace {

using vekzol::comparison_model::GeneratedModel;
using vekzol::comparison_model::ModelState;

// One state as flat sorted vectors: the ids, the edge ids and the (child,
// parent) id pairs.
struct FlatState {
  std::vector<std::string> ids;
  std::vector<std::string> edgeIds;
  std::vector<std::pair<std::string, std::string>> childParent;
};

FlatState Flatten(const GeneratedModel& model, const ModelState& state) {
  FlatState flat;
  for (int element : state.elements) flat.ids.push_back(model.ids[element]);
  for (const auto& edge : state.edges) {
    flat.edgeIds.push_back(edge.id);
    flat.childParent.emplace_back(model.ids[edge.child], model.ids[edge.parent]);
  }
  std::sort(flat.ids.begin(), flat.ids.end());
  std::sort(flat.edgeIds.begin(), flat.edgeIds.end());
  std::sort(flat.childParent.begin(), flat.childParent.end());
  return flat;
}

struct Bench {
  std::unique_ptr<GeneratedModel> model;
  FlatState oldFlat;
  FlatState newFlat;
};

Bench& BenchOf(int n) {
  static std::map<int, std::unique_ptr<Bench>> benches;
  auto& bench = benches[n];
  if (!bench) {
    VEKZOLLog::WriteMsg("Info:\t benchmark model", 0);  // the trace file, outside the timing
    bench = std::make_unique<Bench>();
    vekzol::comparison_model::GeneratorOptions options;
    options.elements = n;
    bench->model = vekzol::comparison_model::Generate(options);
    bench->oldFlat = Flatten(*bench->model, bench->model->oldState);
    bench->newFlat = Flatten(*bench->model, bench->model->newState);
  }
  return *bench;
}

// Ids of `left` not in `right`, both sorted.
void FlatDifference(const std::vector<std::string>& left, const std::vector<std::string>& right,
                    std::vector<std::string>& out) {
  std::set_difference(left.begin(), left.end(), right.begin(), right.end(),
                      std::back_inserter(out));
}

// The six lists on flat vectors: the floor.
size_t FlatDiff(const FlatState& now, const FlatState& old) {
  std::vector<std::string> added, removed, moved, renamed, edgesAdded, edgesRemoved;
  FlatDifference(now.ids, old.ids, added);
  FlatDifference(old.ids, now.ids, removed);
  // Common ids with a name test (the old side's two names, here one compare).
  auto n = now.ids.begin();
  for (const std::string& id : old.ids) {
    while (n != now.ids.end() && *n < id) ++n;
    if (n != now.ids.end() && *n == id && id.size() == 11 && id[10] == '7') renamed.push_back(id);
  }
  // Moved: merge the (child, parent) runs of both sides.
  auto o = old.childParent.begin();
  auto p = now.childParent.begin();
  n = now.ids.begin();
  for (const std::string& id : old.ids) {
    while (n != now.ids.end() && *n < id) ++n;
    if (n == now.ids.end() || *n != id) continue;
    while (o != old.childParent.end() && o->first < id) ++o;
    while (p != now.childParent.end() && p->first < id) ++p;
    auto oEnd = o;
    while (oEnd != old.childParent.end() && oEnd->first == id) ++oEnd;
    auto pEnd = p;
    while (pEnd != now.childParent.end() && pEnd->first == id) ++pEnd;
    if (o == oEnd && p == pEnd) continue;
    bool common = false;
    for (auto a = o; a != oEnd && !common; ++a) {
      for (auto b = p; b != pEnd && !common; ++b) common = a->second == b->second;
    }
    if (!common) moved.push_back(id);
    o = oEnd;
    p = pEnd;
  }
  FlatDifference(now.edgeIds, old.edgeIds, edgesAdded);
  FlatDifference(old.edgeIds, now.edgeIds, edgesRemoved);
  return added.size() + removed.size() + moved.size() + renamed.size() + edgesAdded.size() +
         edgesRemoved.size();
}

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Runs `step` and the floor once each per iteration, timing both, and
// reports their ratio.
template <typename Step>
void RatioToFloor(benchmark::State& state, Bench& bench, Step step) {
  double stepSeconds = 0;
  double floorSeconds = 0;
  for (auto _ : state) {
    double start = CpuSeconds();
    step(state);
    stepSeconds += CpuSeconds() - start;
    state.PauseTiming();
    start = CpuSeconds();
    benchmark::DoNotOptimize(FlatDiff(bench.newFlat, bench.oldFlat));
    floorSeconds += CpuSeconds() - start;
    state.ResumeTiming();
  }
  state.counters["ratio"] = floorSeconds > 0 ? stepSeconds / floorSeconds : 0;
  state.counters["floor_ms"] = 1000 * floorSeconds / static_cast<double>(state.iterations());
}

struct Graphs {
  explicit Graphs(GeneratedModel& model) {
    oldGraph.Build(model.oldState.objectList, model.oldState.relationList);
    newGraph.Build(model.newState.objectList, model.newState.relationList);
    vekzol::comparison_model::SetOldVertexTexts(model, oldGraph);
  }
  VEKZOLGraph oldGraph{"old"};
  VEKZOLGraph newGraph{"new"};
};

void BM_Build(benchmark::State& state) {
  Bench& bench = BenchOf(static_cast<int>(state.range(0)));
  RatioToFloor(state, bench, [&bench](benchmark::State& timing) {
    auto graphs = std::make_unique<Graphs>(*bench.model);
    benchmark::DoNotOptimize(graphs.get());
    timing.PauseTiming();
    graphs.reset();  // the destruction is not part of the build
    timing.ResumeTiming();
  });
}

void BM_RunComparison(benchmark::State& state) {
  Bench& bench = BenchOf(static_cast<int>(state.range(0)));
  Graphs graphs(*bench.model);
  RatioToFloor(state, bench, [&graphs](benchmark::State& timing) {
    VEKZOLGraphComparator comparator(&graphs.newGraph, &graphs.oldGraph);
    benchmark::DoNotOptimize(comparator.RunComparison(true));
    timing.PauseTiming();
    {
      VEKZOLGraphComparator drop(std::move(comparator));  // lists freed outside the timing
    }
    timing.ResumeTiming();
  });
}

void BM_GetRoots(benchmark::State& state) {
  Bench& bench = BenchOf(static_cast<int>(state.range(0)));
  Graphs graphs(*bench.model);
  VEKZOLGraphComparator comparator(&graphs.newGraph, &graphs.oldGraph);
  comparator.RunComparison(true);
  RatioToFloor(state, bench, [&comparator](benchmark::State&) {
    std::deque<CString> vertices;
    std::deque<CString> edges;
    comparator.GetRootsToAdd(vertices, edges);
    comparator.GetRootsToRemove(vertices, edges);
    benchmark::DoNotOptimize(vertices.size() + edges.size());
  });
}

size_t HeapInUse() {
#if defined(__GLIBC__) && (__GLIBC__ > 2 || (__GLIBC__ == 2 && __GLIBC_MINOR__ >= 33))
  return mallinfo2().uordblks;
#else
  return 0;
#endif
}

void BM_Memory(benchmark::State& state) {
  Bench& bench = BenchOf(static_cast<int>(state.range(0)));
  ModelState& old = bench.model->oldState;
  double perVertex = 0;
  double perEdge = 0;
  for (auto _ : state) {
    const size_t start = HeapInUse();
    VEKZOLGraph graph("memory");
    std::deque<VEKIZOLRelation*> noRelations;
    graph.Build(old.objectList, noRelations);
    const size_t withVertices = HeapInUse();
    std::deque<VEKIZOLObject*> noObjects;
    graph.Build(noObjects, old.relationList);
    const size_t withEdges = HeapInUse();
    perVertex =
        static_cast<double>(withVertices - start) / static_cast<double>(old.elements.size());
    perEdge = static_cast<double>(withEdges - withVertices) / static_cast<double>(old.edges.size());
  }
  state.counters["bytes_per_vertex"] = perVertex;
  state.counters["bytes_per_edge"] = perEdge;
}

BENCHMARK(BM_Build)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RunComparison)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetRoots)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Memory)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
