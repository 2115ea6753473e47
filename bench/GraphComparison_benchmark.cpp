// The comparison of two states of a model at 10^4, 10^5 and 10^6 elements
// (about one edge per element), with 11-byte ids ("PRC-0001234") and with
// 40-byte GUID-shaped ids, each step against a reference doing the same job
// on flat sorted arrays, timed in the same iteration. The counter "ratio" is
// the step's processor time over the reference's; "reference_ms" is the
// reference per iteration.
//
// Steps and their references:
// - Build of both graphs, against a sort-based index of the same ids: the
//   object ids and the relation ids sorted and made unique (the first of an
//   id wins) and each relation's two ends linked by a merge with the sorted
//   object ids.
// - RunComparison(true), against the same six lists computed by merges
//   over sorted arrays of ids, (child, parent) id pairs, names and backup
//   names, with the ident paths handed from old to new.
// - The host calls alone that any comparison through the interface makes
//   (BM_HostCallsOnly), against the same reference as RunComparison: a
//   floor for its ratio.
// - GetRootsToAdd plus GetRootsToRemove, against the same four root lists
//   computed from the comparison's lists with sorted arrays.
// BM_Memory builds one state's graph and reports the heap it takes per
// vertex and per edge (glibc's allocator statistics, chunk overhead
// included), beyond the host's objects; it runs first, on a fresh heap.
//
// A quick run: --benchmark_filter='elements:10000/'. The run at 10^5 and
// 10^6 (the README's performance section) takes a few minutes.
//
// The model comes from the comparator's generator: processes, products and
// resources in trees of 1000 with 5% extra links; 2% of the elements
// removed, added, moved and renamed; objects and relations listed shuffled.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <ctime>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include <benchmark/benchmark.h>

#include <vekzol/VEKZOLBase.h>

#include "ComparisonModelGenerator.h"

namespace {

using vekzol::comparison_model::GeneratedModel;
using vekzol::comparison_model::ModelState;

// --- The flat form of a state ------------------------------------------------------------------

// One state as the references see it: every text once, in std::string, and
// arrays of views into them. Made outside the timing.
struct FlatState {
  // In the order of the host's lists (for the index reference).
  std::vector<std::string_view> objectIds;
  std::vector<std::string_view> relationIds;
  std::vector<std::pair<std::string_view, std::string_view>> relationEnds;  // source, target
  // Sorted by id (for the comparison references).
  std::vector<std::string_view> ids;
  std::vector<std::string_view> names;    // the vertex's name, by id
  std::vector<std::string_view> backups;  // its backup name, by id
  std::vector<std::string_view> edgeIds;
  std::vector<std::pair<std::string_view, std::string_view>> childParent;  // sorted
  // (edge id, (parent id, child id)), sorted by edge id.
  std::vector<std::pair<std::string_view, std::pair<std::string_view, std::string_view>>> edgeEnds;
};

struct Bench {
  std::unique_ptr<GeneratedModel> model;
  std::vector<std::string> oldIdentPaths;
  FlatState oldFlat;
  FlatState newFlat;
};

FlatState Flatten(const GeneratedModel& model, const ModelState& state, bool old) {
  FlatState flat;
  // Element numbers in list order: the objects were made in element order.
  std::map<const VEKIZOLObject*, int> elementOf;
  for (size_t i = 0; i < state.objects.size(); ++i) {
    elementOf[state.objects[i].get()] = state.elements[i];
  }
  for (VEKIZOLObject* object : state.objectList) {
    flat.objectIds.push_back(model.ids[elementOf[object]]);
  }
  std::map<const VEKIZOLRelation*, size_t> edgeOf;
  for (size_t i = 0; i < state.relations.size(); ++i) edgeOf[state.relations[i].get()] = i;
  for (VEKIZOLRelation* relation : state.relationList) {
    const auto& edge = state.edges[edgeOf[relation]];
    flat.relationIds.push_back(edge.id);
    flat.relationEnds.emplace_back(model.ids[edge.parent], model.ids[edge.child]);
  }
  std::vector<int> elements = state.elements;
  std::sort(elements.begin(), elements.end(),
            [&model](int a, int b) { return model.ids[a] < model.ids[b]; });
  for (int element : elements) {
    flat.ids.push_back(model.ids[element]);
    flat.names.push_back(model.oldNames[element]);
    flat.backups.push_back(old ? std::string_view(model.backupNames[element]) : std::string_view());
  }
  for (const auto& edge : state.edges) {
    flat.edgeIds.push_back(edge.id);
    flat.childParent.emplace_back(model.ids[edge.child], model.ids[edge.parent]);
    flat.edgeEnds.push_back({edge.id, {model.ids[edge.parent], model.ids[edge.child]}});
  }
  std::sort(flat.edgeEnds.begin(), flat.edgeEnds.end());
  std::sort(flat.edgeIds.begin(), flat.edgeIds.end());
  std::sort(flat.childParent.begin(), flat.childParent.end());
  return flat;
}

Bench& BenchOf(int n, bool guidIds) {
  static std::map<std::pair<int, bool>, std::unique_ptr<Bench>> benches;
  auto& bench = benches[{n, guidIds}];
  if (!bench) {
    VEKZOLLog::WriteMsg("Info:\t benchmark model", 0);  // the trace file, outside the timing
    bench = std::make_unique<Bench>();
    vekzol::comparison_model::GeneratorOptions options;
    options.elements = n;
    options.guidIds = guidIds;
    bench->model = vekzol::comparison_model::Generate(options);
    bench->oldFlat = Flatten(*bench->model, bench->model->oldState, true);
    bench->newFlat = Flatten(*bench->model, bench->model->newState, false);
  }
  return *bench;
}

Bench& BenchOf(const benchmark::State& state) {
  return BenchOf(static_cast<int>(state.range(0)), state.range(1) == 40);
}

// --- The references ----------------------------------------------------------------------------

// The sort-based index of one state: ids sorted and made unique (the first
// in list order wins), edges likewise, each edge's ends linked to vertex
// positions by merging the sorted ends with the sorted ids.
size_t SortedIndex(const FlatState& flat) {
  using Keyed = std::pair<std::string_view, uint32_t>;
  const auto byKey = [](const Keyed& a, const Keyed& b) { return a.first < b.first; };
  const auto sameKey = [](const Keyed& a, const Keyed& b) { return a.first == b.first; };
  std::vector<Keyed> vertices;
  vertices.reserve(flat.objectIds.size());
  for (uint32_t i = 0; i < flat.objectIds.size(); ++i) vertices.emplace_back(flat.objectIds[i], i);
  std::stable_sort(vertices.begin(), vertices.end(), byKey);
  vertices.erase(std::unique(vertices.begin(), vertices.end(), sameKey), vertices.end());
  std::vector<Keyed> edges;
  edges.reserve(flat.relationIds.size());
  for (uint32_t i = 0; i < flat.relationIds.size(); ++i) edges.emplace_back(flat.relationIds[i], i);
  std::stable_sort(edges.begin(), edges.end(), byKey);
  edges.erase(std::unique(edges.begin(), edges.end(), sameKey), edges.end());
  // Ends: (end id, edge position) sorted, then one merge with the vertices.
  std::vector<int32_t> parentOf(flat.relationIds.size(), -1);
  std::vector<int32_t> childOf(flat.relationIds.size(), -1);
  std::vector<Keyed> ends;
  ends.reserve(edges.size());
  for (int side = 0; side < 2; ++side) {
    ends.clear();
    for (const Keyed& edge : edges) {
      const auto& pair = flat.relationEnds[edge.second];
      ends.emplace_back(side == 0 ? pair.first : pair.second, edge.second);
    }
    std::sort(ends.begin(), ends.end(), byKey);
    auto vertex = vertices.begin();
    for (const Keyed& end : ends) {
      while (vertex != vertices.end() && vertex->first < end.first) ++vertex;
      if (vertex != vertices.end() && vertex->first == end.first) {
        (side == 0 ? parentOf : childOf)[end.second] = static_cast<int32_t>(vertex->second);
      }
    }
  }
  return vertices.size() + edges.size() + static_cast<size_t>(parentOf.back() + childOf.back());
}

// Ids of `left` not in `right`, both sorted.
void FlatDifference(const std::vector<std::string_view>& left,
                    const std::vector<std::string_view>& right,
                    std::vector<std::string_view>& out) {
  std::set_difference(left.begin(), left.end(), right.begin(), right.end(),
                      std::back_inserter(out));
}

struct FlatLists {
  std::vector<std::string_view> added, removed, moved, renamed, edgesAdded, edgesRemoved;
};

// The six lists on flat arrays, with the ident paths handed from old to new.
size_t FlatDiff(const FlatState& now, const FlatState& old, FlatLists& lists,
                std::vector<std::string_view>& newIdentPaths) {
  FlatDifference(now.ids, old.ids, lists.added);
  FlatDifference(old.ids, now.ids, lists.removed);
  newIdentPaths.assign(now.ids.size(), std::string_view());
  size_t n = 0;
  auto o = old.childParent.begin();
  auto p = now.childParent.begin();
  for (size_t i = 0; i < old.ids.size(); ++i) {
    const std::string_view id = old.ids[i];
    while (n < now.ids.size() && now.ids[n] < id) ++n;
    if (n == now.ids.size() || now.ids[n] != id) continue;
    newIdentPaths[n] = old.ids[i];  // the old vertex's ident path goes to the new one
    if (old.names[i] != old.backups[i]) lists.renamed.push_back(id);
    // Moved: the (child, parent) runs of both sides share no parent.
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
    if (!common) lists.moved.push_back(id);
    o = oEnd;
    p = pEnd;
  }
  FlatDifference(now.edgeIds, old.edgeIds, lists.edgesAdded);
  FlatDifference(old.edgeIds, now.edgeIds, lists.edgesRemoved);
  return lists.added.size() + lists.removed.size() + lists.moved.size() + lists.renamed.size() +
         lists.edgesAdded.size() + lists.edgesRemoved.size();
}

// The roots of the part made of the listed vertices and edges: vertices
// that no listed edge enters, edges whose parent is not listed.
size_t FlatRoots(const FlatState& state, const std::vector<std::string_view>& vertices,
                 const std::vector<std::string_view>& edges) {
  std::vector<std::string_view> entered;
  std::vector<std::string_view> rootEdges;
  for (std::string_view edge : edges) {
    const auto& ends =
        std::lower_bound(state.edgeEnds.begin(), state.edgeEnds.end(), edge,
                         [](const auto& entry, std::string_view id) { return entry.first < id; })
            ->second;
    if (std::binary_search(vertices.begin(), vertices.end(), ends.second)) {
      entered.push_back(ends.second);
    }
    if (!std::binary_search(vertices.begin(), vertices.end(), ends.first)) {
      rootEdges.push_back(edge);
    }
  }
  std::sort(entered.begin(), entered.end());
  std::vector<std::string_view> rootVertices;
  std::set_difference(vertices.begin(), vertices.end(), entered.begin(), entered.end(),
                      std::back_inserter(rootVertices));
  return rootVertices.size() + rootEdges.size();
}

// --- Timing ------------------------------------------------------------------------------------

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Runs `step` and `reference` once each per iteration, timing both, and
// reports their ratio. `setUp` runs before each, outside the timing.
template <typename SetUp, typename Step, typename Reference>
void Paired(benchmark::State& state, SetUp setUp, Step step, Reference reference) {
  double stepSeconds = 0;
  double referenceSeconds = 0;
  for (auto _ : state) {
    state.PauseTiming();
    setUp();
    state.ResumeTiming();
    double start = CpuSeconds();
    step();
    stepSeconds += CpuSeconds() - start;
    state.PauseTiming();
    start = CpuSeconds();
    reference();
    referenceSeconds += CpuSeconds() - start;
    state.ResumeTiming();
  }
  state.counters["ratio"] = referenceSeconds > 0 ? stepSeconds / referenceSeconds : 0;
  state.counters["reference_ms"] =
      1000 * referenceSeconds / static_cast<double>(state.iterations());
  state.counters["library_ms"] = 1000 * stepSeconds / static_cast<double>(state.iterations());
}

struct Graphs {
  void Build(GeneratedModel& model) {
    oldGraph = std::make_unique<VEKZOLGraph>("old");
    newGraph = std::make_unique<VEKZOLGraph>("new");
    oldGraph->Build(model.oldState.objectList, model.oldState.relationList);
    newGraph->Build(model.newState.objectList, model.newState.relationList);
  }
  std::unique_ptr<VEKZOLGraph> oldGraph;
  std::unique_ptr<VEKZOLGraph> newGraph;
};

void BM_Build(benchmark::State& state) {
  Bench& bench = BenchOf(state);
  Graphs graphs;
  Paired(
      state, [&graphs] { graphs = Graphs(); },  // the last iteration's graphs go untimed
      [&] { graphs.Build(*bench.model); },
      [&] { benchmark::DoNotOptimize(SortedIndex(bench.oldFlat) + SortedIndex(bench.newFlat)); });
}

void BM_RunComparison(benchmark::State& state) {
  Bench& bench = BenchOf(state);
  Graphs graphs;
  graphs.Build(*bench.model);
  vekzol::comparison_model::SetOldVertexTexts(*bench.model, *graphs.oldGraph);
  std::unique_ptr<VEKZOLGraphComparator> comparator;
  FlatLists lists;
  std::vector<std::string_view> identPaths;
  Paired(
      state,
      [&] {
        comparator =
            std::make_unique<VEKZOLGraphComparator>(graphs.newGraph.get(), graphs.oldGraph.get());
        lists = FlatLists();
      },
      [&] { benchmark::DoNotOptimize(comparator->RunComparison(true)); },
      [&] { benchmark::DoNotOptimize(FlatDiff(bench.newFlat, bench.oldFlat, lists, identPaths)); });
}

// The host calls alone that any comparison through the interface makes:
// the id of every vertex and edge of both graphs (an id may have changed
// since the build, so no key answers for it) and, for each vertex of the old
// graph, its name, each walked in id order, against the same flat merge as
// BM_RunComparison. Its ratio is a floor for RunComparison's.
void BM_HostCallsOnly(benchmark::State& state) {
  Bench& bench = BenchOf(state);
  Graphs graphs;
  graphs.Build(*bench.model);
  vekzol::comparison_model::SetOldVertexTexts(*bench.model, *graphs.oldGraph);
  std::deque<VEKZOLGraphVertex*> vertices[2];
  std::deque<VEKZOLGraphEdge*> edges[2];
  VEKZOLGraph* both[2] = {graphs.newGraph.get(), graphs.oldGraph.get()};
  for (int side = 0; side < 2; ++side) {
    both[side]->GetAllVertices(vertices[side]);
    both[side]->GetAllEdges(edges[side]);
  }
  FlatLists lists;
  std::vector<std::string_view> identPaths;
  Paired(
      state, [&] { lists = FlatLists(); },
      [&] {
        // Each walk asks memory ahead for the records of its next steps, as
        // the run does, so the floor is not raised by waiting on memory.
        size_t length = 0;
        for (int side = 0; side < 2; ++side) {
          const auto& sideVertices = vertices[side];
          for (size_t i = 0; i < sideVertices.size(); ++i) {
            if (i + 16 < sideVertices.size()) __builtin_prefetch(sideVertices[i + 16]);
            if (i + 8 < sideVertices.size()) __builtin_prefetch(sideVertices[i + 8]->GetObjectA());
            VEKZOLGraphVertex* vertex = sideVertices[i];
            length += static_cast<size_t>(vertex->GetID().GetLength());
            if (side == 1) length += static_cast<size_t>(vertex->GetName().GetLength());
          }
          const auto& sideEdges = edges[side];
          for (size_t i = 0; i < sideEdges.size(); ++i) {
            if (i + 16 < sideEdges.size()) __builtin_prefetch(sideEdges[i + 16]);
            if (i + 8 < sideEdges.size()) __builtin_prefetch(sideEdges[i + 8]->GetRelation());
            length += static_cast<size_t>(sideEdges[i]->GetID().GetLength());
          }
        }
        benchmark::DoNotOptimize(length);
      },
      [&] { benchmark::DoNotOptimize(FlatDiff(bench.newFlat, bench.oldFlat, lists, identPaths)); });
}

void BM_GetRoots(benchmark::State& state) {
  Bench& bench = BenchOf(state);
  Graphs graphs;
  graphs.Build(*bench.model);
  vekzol::comparison_model::SetOldVertexTexts(*bench.model, *graphs.oldGraph);
  VEKZOLGraphComparator comparator(graphs.newGraph.get(), graphs.oldGraph.get());
  comparator.RunComparison(true);
  FlatLists lists;
  std::vector<std::string_view> identPaths;
  FlatDiff(bench.newFlat, bench.oldFlat, lists, identPaths);
  std::deque<CString> vertices;
  std::deque<CString> edges;
  Paired(
      state,
      [&] {
        vertices.clear();
        edges.clear();
      },
      [&] {
        comparator.GetRootsToAdd(vertices, edges);
        comparator.GetRootsToRemove(vertices, edges);
        benchmark::DoNotOptimize(vertices.size() + edges.size());
      },
      [&] {
        benchmark::DoNotOptimize(FlatRoots(bench.newFlat, lists.added, lists.edgesAdded) +
                                 FlatRoots(bench.oldFlat, lists.removed, lists.edgesRemoved));
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
  Bench& bench = BenchOf(state);
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

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgNames({"elements", "id_bytes"});
  for (int64_t elements : {10000, 100000, 1000000}) {
    for (int64_t idBytes : {11, 40}) benchmark->Args({elements, idBytes});
  }
  benchmark->Unit(benchmark::kMillisecond);
}

// Memory first: on a heap that no earlier graph has left full of freed
// blocks of other sizes, which the allocator would hand out whole for
// smaller requests and so count against the graph.
BENCHMARK(BM_Memory)->Apply(Sizes)->Iterations(1);
BENCHMARK(BM_Build)->Apply(Sizes);
BENCHMARK(BM_RunComparison)->Apply(Sizes);
BENCHMARK(BM_HostCallsOnly)->Apply(Sizes);
BENCHMARK(BM_GetRoots)->Apply(Sizes);

}  // namespace

BENCHMARK_MAIN();
