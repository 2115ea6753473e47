// Queries and the tree text of a graph of a million vertices, each against
// a plain loop over a std::vector holding the same vertex pointers, timed in
// the same iteration. The counter "ratio" is the library's time over the
// loop's, summed over all iterations; "loop_ms" is the loop's time per
// iteration.
//
// The loops:
// - GetAllChildren, GetAllVertices: append every pointer of the vector (the
//   walk's order, the id order) to a std::deque, which is the result the
//   operation gives without the graph around it.
// - GetRoots, GetLeaves: append those whose IsRoot()/IsLeaf() is true.
// - Dump: append each vertex's name and a line feed to a CString, in the
//   order of the tree: the part of the text that needs no walk and no
//   indentation.
//
// The model is one random tree: every object but the first has its parent
// drawn uniformly among the objects before it (depth about 14 on average, a
// few dozen at most). Ids are shaped like the host's ("PRC-0001234") and the
// relations are shuffled, so children come in no particular id order.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <ctime>
#include <deque>
#include <memory>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include <vekzol/VEKZOLBase.h>

namespace {

constexpr int kVertices = 1000000;

struct TreeModel {
  std::vector<std::unique_ptr<VEKZOLObjectImpl>> objects;
  std::vector<std::unique_ptr<VEKZOLRelationImpl>> relations;
  std::unique_ptr<VEKZOLGraph> graph;
  VEKZOLGraphVertex* root = nullptr;
  // The same vertex pointers as the graph, for the loops.
  std::vector<VEKZOLGraphVertex*> inIdOrder;
  std::vector<VEKZOLGraphVertex*> inWalkOrder;  // the root, then GetAllChildren's order
};

TreeModel& Tree() {
  static TreeModel* tree = [] {
    VEKZOLLog::WriteMsg("Info:\t benchmark model", 0);  // the trace file, outside the timing
    auto* model = new TreeModel;
    std::mt19937 random(12345);
    char id[32];
    for (int i = 0; i < kVertices; ++i) {
      std::snprintf(id, sizeof id, "PRC-%07d", i);
      model->objects.push_back(std::make_unique<VEKZOLObjectImpl>(CString(id)));
    }
    for (int i = 1; i < kVertices; ++i) {
      const int parent = static_cast<int>(random() % static_cast<unsigned>(i));
      std::snprintf(id, sizeof id, "R-%07d", i);
      model->relations.push_back(std::make_unique<VEKZOLRelationImpl>(
          model->objects[parent].get(), model->objects[i].get(), "precedes", CString(id)));
    }
    std::deque<VEKIZOLObject*> objects;
    std::deque<VEKIZOLRelation*> relations;
    for (auto& object : model->objects) objects.push_back(object.get());
    for (auto& relation : model->relations) relations.push_back(relation.get());
    std::shuffle(relations.begin(), relations.end(), random);
    model->graph = std::make_unique<VEKZOLGraph>("bench");
    model->graph->Build(objects, relations);
    model->graph->GetVertex("PRC-0000000", model->root);
    std::deque<VEKZOLGraphVertex*> all;
    model->graph->GetAllVertices(all);
    model->inIdOrder.assign(all.begin(), all.end());
    std::deque<VEKZOLGraphVertex*> below;
    model->graph->GetAllChildren(model->root, below);
    model->inWalkOrder.push_back(model->root);
    model->inWalkOrder.insert(model->inWalkOrder.end(), below.begin(), below.end());
    return model;
  }();
  return *tree;
}

// Processor time of this process: the machines that run these are shared,
// and wall time would count the time other processes hold the processor.
double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

// Runs `library` and `loop` once per iteration, each timed apart; the
// benchmark's time is the library's.
template <typename Library, typename Loop>
void Compare(benchmark::State& state, Library library, Loop loop) {
  double libraryTotal = 0;
  double loopTotal = 0;
  for (auto _ : state) {
    const double libraryStart = ProcessorSeconds();
    library();
    const double loopStart = ProcessorSeconds();
    loop();
    const double loopEnd = ProcessorSeconds();
    libraryTotal += loopStart - libraryStart;
    loopTotal += loopEnd - loopStart;
    state.SetIterationTime(loopStart - libraryStart);
  }
  state.counters["ratio"] = libraryTotal / loopTotal;
  state.counters["loop_ms"] = 1000 * loopTotal / static_cast<double>(state.iterations());
  state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(kVertices));
}

void BM_GetAllChildren(benchmark::State& state) {
  TreeModel& tree = Tree();
  Compare(
      state,
      [&] {
        std::deque<VEKZOLGraphVertex*> children;
        tree.graph->GetAllChildren(tree.root, children);
        benchmark::DoNotOptimize(children.size());
      },
      [&] {
        std::deque<VEKZOLGraphVertex*> children;
        for (std::size_t i = 1; i < tree.inWalkOrder.size(); ++i) {
          children.push_back(tree.inWalkOrder[i]);
        }
        benchmark::DoNotOptimize(children.size());
      });
}

void BM_Dump(benchmark::State& state) {
  TreeModel& tree = Tree();
  Compare(
      state,
      [&] {
        CString text = tree.graph->Dump();
        benchmark::DoNotOptimize(text.GetLength());
      },
      [&] {
        CString text;
        for (VEKZOLGraphVertex* vertex : tree.inWalkOrder) {
          text += vertex->GetName();
          text += "\n";
        }
        benchmark::DoNotOptimize(text.GetLength());
      });
}

void BM_GetRoots(benchmark::State& state) {
  TreeModel& tree = Tree();
  Compare(
      state,
      [&] {
        std::deque<VEKZOLGraphVertex*> roots;
        tree.graph->GetRoots(roots);
        benchmark::DoNotOptimize(roots.size());
      },
      [&] {
        std::deque<VEKZOLGraphVertex*> roots;
        for (VEKZOLGraphVertex* vertex : tree.inIdOrder) {
          if (vertex->IsRoot()) roots.push_back(vertex);
        }
        benchmark::DoNotOptimize(roots.size());
      });
}

void BM_GetLeaves(benchmark::State& state) {
  TreeModel& tree = Tree();
  Compare(
      state,
      [&] {
        std::deque<VEKZOLGraphVertex*> leaves;
        tree.graph->GetLeaves(leaves);
        benchmark::DoNotOptimize(leaves.size());
      },
      [&] {
        std::deque<VEKZOLGraphVertex*> leaves;
        for (VEKZOLGraphVertex* vertex : tree.inIdOrder) {
          if (vertex->IsLeaf()) leaves.push_back(vertex);
        }
        benchmark::DoNotOptimize(leaves.size());
      });
}

void BM_GetAllVertices(benchmark::State& state) {
  TreeModel& tree = Tree();
  Compare(
      state,
      [&] {
        std::deque<VEKZOLGraphVertex*> vertices;
        tree.graph->GetAllVertices(vertices);
        benchmark::DoNotOptimize(vertices.size());
      },
      [&] {
        std::deque<VEKZOLGraphVertex*> vertices;
        for (VEKZOLGraphVertex* vertex : tree.inIdOrder) vertices.push_back(vertex);
        benchmark::DoNotOptimize(vertices.size());
      });
}

BENCHMARK(BM_GetAllChildren)->UseManualTime()->MinTime(2.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Dump)->UseManualTime()->MinTime(2.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetRoots)->UseManualTime()->MinTime(2.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetLeaves)->UseManualTime()->MinTime(2.0)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_GetAllVertices)->UseManualTime()->MinTime(2.0)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
