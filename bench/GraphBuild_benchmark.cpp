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
#include <deque>
#include <map>
#include <memory>
#include <random>
#include <string>
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

BENCHMARK(BM_GraphBuild)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReferenceOrderedMaps)
    ->RangeMultiplier(10)
    ->Range(10000, 1000000)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
