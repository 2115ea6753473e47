// Building a graph from flat lists, against a reference that does the same
// map work with plain standard containers: one ordered-map insert per object
// and per relation, and a look-up of each relation's two ends. The ratio of
// the two shows what the graph adds on top of the ordered maps it is made of.
//
// The model is a forest: every object but the first of each tree of 1000 has
// one parent among the objects before it, so there are n objects and about n
// relations. Ids are shaped like the host's ("PRC-0001234") and the lists are
// shuffled, as a host's export is in no particular order.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <deque>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include <vekzol/VEKZOLBase.h>

namespace {

struct Model {
  std::vector<std::unique_ptr<VEKZOLObjectImpl>> objects;
  std::vector<std::unique_ptr<VEKZOLRelationImpl>> relations;
  std::deque<VEKIZOLObject*> objectList;
  std::deque<VEKIZOLRelation*> relationList;
  // The same ids as standard strings, for the reference.
  std::vector<std::string> objectIds;
  std::vector<std::string> relationIds;
  std::vector<std::pair<std::string, std::string>> relationEnds;
};

std::unique_ptr<Model> MakeModel(int n) {
  VEKZOLLog::WriteMsg("Info:\t benchmark model", 0);  // create the trace file outside the timing
  auto model = std::make_unique<Model>();
  std::mt19937 random(12345);
  char id[32];
  for (int i = 0; i < n; ++i) {
    std::snprintf(id, sizeof id, "PRC-%07d", i);
    model->objectIds.push_back(id);
    model->objects.push_back(std::make_unique<VEKZOLObjectImpl>(CString(id)));
  }
  for (int i = 0; i < n; ++i) {
    if (i % 1000 == 0) continue;  // a root
    const int parent = (i / 1000) * 1000 + static_cast<int>(random() % (i % 1000));
    std::snprintf(id, sizeof id, "R-%07d", i);
    model->relationIds.push_back(id);
    model->relationEnds.emplace_back(model->objectIds[parent], model->objectIds[i]);
    model->relations.push_back(std::make_unique<VEKZOLRelationImpl>(
        model->objects[parent].get(), model->objects[i].get(), "precedes", CString(id)));
  }
  for (auto& object : model->objects) model->objectList.push_back(object.get());
  for (auto& relation : model->relations) model->relationList.push_back(relation.get());
  std::shuffle(model->objectList.begin(), model->objectList.end(), random);
  std::shuffle(model->relationList.begin(), model->relationList.end(), random);
  return model;
}

Model& ModelOf(int n) {
  static std::map<int, std::unique_ptr<Model>> models;
  auto& model = models[n];
  if (!model) model = MakeModel(n);
  return *model;
}

void BM_GraphBuild(benchmark::State& state) {
  Model& model = ModelOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    VEKZOLGraph graph("bench");
    graph.Build(model.objectList, model.relationList);
    benchmark::DoNotOptimize(&graph);
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<int64_t>(model.objects.size() + model.relations.size()));
}

void BM_ReferenceOrderedMaps(benchmark::State& state) {
  Model& model = ModelOf(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    std::map<std::string, std::unique_ptr<int>> vertices;
    std::map<std::string, std::unique_ptr<int>> edges;
    for (const std::string& id : model.objectIds) vertices.emplace(id, std::make_unique<int>(0));
    for (size_t i = 0; i < model.relationIds.size(); ++i) {
      edges.emplace(model.relationIds[i], std::make_unique<int>(0));
      benchmark::DoNotOptimize(vertices.find(model.relationEnds[i].first));
      benchmark::DoNotOptimize(vertices.find(model.relationEnds[i].second));
    }
    benchmark::DoNotOptimize(&vertices);
  }
  state.SetItemsProcessed(state.iterations() *
                          static_cast<int64_t>(model.objects.size() + model.relations.size()));
}

// --- One vertex at a time ----------------------------------------------------------------------
// A host that adds its objects one by one, in no order, and then looks each
// id up, against std::map<std::string, void*> doing the same in the same
// iteration: the counter "ratio" is the graph's processor time over the
// map's (below 1: the graph is faster).

struct Singles {
  std::vector<std::unique_ptr<VEKZOLObjectImpl>> objects;  // in random id order
  std::vector<CString> lookUps;                            // every id, in another order
  std::vector<std::string> lookUpStrings;
};

Singles& SinglesOf(int n, bool guidIds) {
  static std::map<std::pair<int, bool>, std::unique_ptr<Singles>> all;
  auto& singles = all[{n, guidIds}];
  if (!singles) {
    singles = std::make_unique<Singles>();
    std::mt19937_64 random(99);
    char id[64];
    for (int i = 0; i < n; ++i) {
      if (guidIds) {
        const unsigned long long bits = random();
        std::snprintf(id, sizeof id, "PRC-%08x-%04x-%04x-%04x-%012x",
                      static_cast<unsigned>(bits >> 32), static_cast<unsigned>(bits & 0xFFFF),
                      static_cast<unsigned>((bits >> 16) & 0xFFFF), 0x8000u,
                      static_cast<unsigned>(i));
      } else {
        std::snprintf(id, sizeof id, "PRC-%07d", i);
      }
      singles->objects.push_back(std::make_unique<VEKZOLObjectImpl>(CString(id)));
    }
    std::shuffle(singles->objects.begin(), singles->objects.end(), random);
    for (const auto& object : singles->objects) {
      CString objectId;
      object->GetID(objectId);
      singles->lookUps.push_back(objectId);
      singles->lookUpStrings.emplace_back(objectId.GetString());
    }
    std::vector<size_t> order(singles->lookUps.size());
    for (size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::shuffle(order.begin(), order.end(), random);
    std::vector<CString> ids;
    std::vector<std::string> strings;
    for (size_t i : order) {
      ids.push_back(singles->lookUps[i]);
      strings.push_back(singles->lookUpStrings[i]);
    }
    singles->lookUps.swap(ids);
    singles->lookUpStrings.swap(strings);
  }
  return *singles;
}

double CpuSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void BM_AddVertexOneByOne(benchmark::State& state) {
  Singles& singles = SinglesOf(static_cast<int>(state.range(0)), state.range(1) == 40);
  double graphSeconds = 0;
  double mapSeconds = 0;
  for (auto _ : state) {
    auto graph = std::make_unique<VEKZOLGraph>("singles");
    double start = CpuSeconds();
    for (const auto& object : singles.objects) {
      VEKZOLGraphVertex* vertex = nullptr;
      graph->AddVertex(object.get(), vertex);
    }
    graphSeconds += CpuSeconds() - start;
    state.PauseTiming();
    graph.reset();
    auto map = std::make_unique<std::map<std::string, void*>>();
    start = CpuSeconds();
    for (const auto& object : singles.objects) {
      CString id;
      object->GetID(id);
      map->emplace(std::string(id.GetString(), static_cast<size_t>(id.GetLength())), object.get());
    }
    mapSeconds += CpuSeconds() - start;
    map.reset();
    state.ResumeTiming();
  }
  state.counters["ratio"] = graphSeconds / mapSeconds;
}

void BM_GetVertex(benchmark::State& state) {
  Singles& singles = SinglesOf(static_cast<int>(state.range(0)), state.range(1) == 40);
  VEKZOLGraph graph("singles");
  std::map<std::string, void*> map;
  for (const auto& object : singles.objects) {
    VEKZOLGraphVertex* vertex = nullptr;
    graph.AddVertex(object.get(), vertex);
    CString id;
    object->GetID(id);
    map.emplace(id.GetString(), vertex);
  }
  double graphSeconds = 0;
  double mapSeconds = 0;
  for (auto _ : state) {
    double start = CpuSeconds();
    size_t found = 0;
    for (const CString& id : singles.lookUps) {
      VEKZOLGraphVertex* vertex = nullptr;
      found += graph.GetVertex(id, vertex) == S_OK;
    }
    graphSeconds += CpuSeconds() - start;
    state.PauseTiming();
    start = CpuSeconds();
    for (const std::string& id : singles.lookUpStrings) found += map.find(id) != map.end();
    mapSeconds += CpuSeconds() - start;
    benchmark::DoNotOptimize(found);
    state.ResumeTiming();
  }
  state.counters["ratio"] = graphSeconds / mapSeconds;
}

void SingleSizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->ArgNames({"vertices", "id_bytes"});
  for (int64_t n : {10000, 1000000}) {
    for (int64_t idBytes : {11, 40}) benchmark->Args({n, idBytes});
  }
  benchmark->Unit(benchmark::kMillisecond);
}

BENCHMARK(BM_AddVertexOneByOne)->Apply(SingleSizes);
BENCHMARK(BM_GetVertex)->Apply(SingleSizes);

BENCHMARK(BM_GraphBuild)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReferenceOrderedMaps)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
