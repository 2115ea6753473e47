// Build adds its edges a batch of relations at a time. These tests hold it
// to what adding each relation with AddEdge gives: the same edges linked
// to the same vertices, every vertex's edges in the same order, each end
// read once, and, when a host's relation throws or memory runs out half
// way, a graph as AddEdge one by one leaves it: nothing half added beyond
// the relation that failed.
#include <deque>
#include <memory>
#include <new>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphs/GraphTestModel.h"
#include "platform/CountingAllocatorTesting.h"

namespace {

using graph_test::Model;
using graph_test::TestObject;
using graph_test::TestRelation;

// Everything a graph's edges say: for each edge in id order its parent and
// child ids, and for each vertex in id order its parent and child edges in
// list order and its root and leaf marks.
std::vector<std::string> Links(VEKZOLGraph& graph) {
  std::vector<std::string> lines;
  const auto idOf = [](auto* element) {
    return element == nullptr ? std::string("-") : std::string(element->GetID().GetString());
  };
  std::deque<VEKZOLGraphEdge*> edges;
  graph.GetAllEdges(edges);
  for (VEKZOLGraphEdge* edge : edges) {
    lines.push_back("edge " + idOf(edge) + ": " + idOf(edge->GetParent()) + " -> " +
                    idOf(edge->GetChild()));
  }
  std::deque<VEKZOLGraphVertex*> vertices;
  graph.GetAllVertices(vertices);
  for (VEKZOLGraphVertex* vertex : vertices) {
    std::string line = "vertex " + idOf(vertex) + (vertex->IsRoot() ? " root" : "") +
                       (vertex->IsLeaf() ? " leaf" : "") + " in:";
    std::deque<VEKZOLGraphEdge*> parents;
    vertex->GetParentEdges(parents);
    for (VEKZOLGraphEdge* edge : parents) line += " " + idOf(edge);
    line += " out:";
    std::deque<VEKZOLGraphEdge*> children;
    vertex->GetChildEdges(children);
    for (VEKZOLGraphEdge* edge : children) line += " " + idOf(edge);
    lines.push_back(line);
  }
  return lines;
}

// A model of several batches of relations: duplicate object and relation
// ids, null entries, ends that name no vertex, null ends, self-loops and
// parallel edges, in random order.
void FillModel(Model& model, std::vector<TestRelation*>& relations, unsigned seed) {
  std::mt19937 random(seed);
  std::vector<TestObject*> objects;
  for (int i = 0; i < 120; ++i) {
    objects.push_back(model.Object(CString(("V-" + std::to_string(i % 100)).c_str())));
  }
  model.objects.push_back(nullptr);
  TestObject* outside = model.Outside("Nowhere");
  for (int i = 0; i < 400; ++i) {
    const auto pick = [&]() -> VEKIZOLObject* {
      const unsigned roll = random() % 40;
      if (roll == 0) return nullptr;
      if (roll == 1) return outside;
      return objects[random() % objects.size()];
    };
    VEKIZOLObject* source = pick();
    VEKIZOLObject* target = i % 50 == 7 ? source : pick();
    relations.push_back(
        model.Relation(CString(("E-" + std::to_string(random() % 350)).c_str()), source, target));
    if (i % 97 == 0) model.relations.push_back(nullptr);
  }
}

TEST(VEKZOLGraphBuildEdgesTest, BuildLinksEveryEdgeAsAddEdgeDoesOneByOne) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    Model model;
    std::vector<TestRelation*> relations;
    FillModel(model, relations, seed);

    VEKZOLGraph built;
    built.Build(model.objects, model.relations);
    std::vector<int> buildReads;
    for (TestRelation* relation : relations) {
      buildReads.push_back(relation->SourceReads() * 10 + relation->TargetReads());
    }

    VEKZOLGraph oneByOne;
    for (VEKIZOLObject* object : model.objects) {
      VEKZOLGraphVertex* vertex = nullptr;
      if (object != nullptr) oneByOne.AddVertex(object, vertex);
    }
    for (VEKIZOLRelation* relation : model.relations) {
      VEKZOLGraphEdge* edge = nullptr;
      if (relation != nullptr) oneByOne.AddEdge(relation, edge);
    }
    EXPECT_EQ(Links(oneByOne), Links(built)) << "seed " << seed;
    // Each relation of a new id had each end read once, in both graphs.
    for (size_t i = 0; i < relations.size(); ++i) {
      EXPECT_EQ(buildReads[i] * 2, relations[i]->SourceReads() * 10 + relations[i]->TargetReads())
          << relations[i]->GetID().GetString();
      EXPECT_TRUE(buildReads[i] == 0 || buildReads[i] == 11);
    }
  }
}

TEST(VEKZOLGraphBuildEdgesTest, ARelationThatThrowsLeavesTheGraphAsAddEdgeOneByOne) {
  Model model;
  std::vector<TestRelation*> relations;
  FillModel(model, relations, 9);
  // In the middle of a batch: the relations before it are linked, its own
  // edge keeps its source, and none after it is added.
  TestRelation throwing("E-throws", model.objects[3], model.objects[4]);
  throwing.SetTargetRaises();
  model.relations.insert(model.relations.begin() + 150, &throwing);

  VEKZOLGraph built;
  EXPECT_EQ(E_FAIL, graph_test::RaisedStatus([&] { built.Build(model.objects, model.relations); }));

  VEKZOLGraph oneByOne;
  for (VEKIZOLObject* object : model.objects) {
    VEKZOLGraphVertex* vertex = nullptr;
    if (object != nullptr) oneByOne.AddVertex(object, vertex);
  }
  EXPECT_EQ(E_FAIL, graph_test::RaisedStatus([&] {
              for (VEKIZOLRelation* relation : model.relations) {
                VEKZOLGraphEdge* edge = nullptr;
                if (relation != nullptr) oneByOne.AddEdge(relation, edge);
              }
            }));
  const std::vector<std::string> links = Links(built);
  EXPECT_EQ(Links(oneByOne), links);
  VEKZOLGraphEdge* edge = nullptr;
  ASSERT_EQ(S_OK, built.GetEdge("E-throws", edge));
  EXPECT_STREQ("V-3", edge->GetParent()->GetID().GetString());
  EXPECT_EQ(nullptr, edge->GetChild());
}

TEST(VEKZOLGraphBuildEdgesTest, MemoryRunningOutWhileLinkingLeavesNoEdgeUnlinkedBehindTheFailure) {
  Model model;
  std::vector<TestRelation*> relations;
  FillModel(model, relations, 13);
  VEKZOLGraph complete;
  complete.Build(model.objects, model.relations);
  const std::vector<std::string> completeLinks = Links(complete);

  // Memory runs out at each allocation of a build in turn; the graph then
  // holds the edges of a prefix of the relations, each linked as in the
  // complete graph but perhaps the last one, and is destroyed cleanly.
  size_t failures = 0;
  for (size_t allowed = 0;; ++allowed) {
    auto graph = std::make_unique<VEKZOLGraph>();
    bool failed = false;
    g_failBeyond = g_allocations + allowed;
    try {
      graph->Build(model.objects, model.relations);
    } catch (const CAtlException& raised) {
      EXPECT_EQ(E_OUTOFMEMORY, raised.m_hr);
      failed = true;
    } catch (const std::bad_alloc&) {
      failed = true;  // a new vertex or edge object that could not be made
    }
    g_failBeyond = kNoLimit;
    if (!failed) {
      EXPECT_EQ(completeLinks, Links(*graph));
      break;
    }
    ++failures;
    std::deque<VEKZOLGraphEdge*> edges;
    graph->GetAllEdges(edges);
    int unlike = 0;
    for (VEKZOLGraphEdge* edge : edges) {
      VEKZOLGraphEdge* expected = nullptr;
      ASSERT_EQ(S_OK, complete.GetEdge(edge->GetID(), expected));
      const auto idOf = [](VEKZOLGraphVertex* vertex) {
        return vertex == nullptr ? std::string("-") : std::string(vertex->GetID().GetString());
      };
      if (idOf(edge->GetParent()) != idOf(expected->GetParent()) ||
          idOf(edge->GetChild()) != idOf(expected->GetChild())) {
        ++unlike;
      }
    }
    EXPECT_LE(unlike, 1) << "after " << allowed << " allocations";
  }
  EXPECT_GT(failures, 10u);
}

}  // namespace
