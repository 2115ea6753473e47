// File: ComparatorTestSupport.h
// Shared pieces of the comparator's tests: two states of a model (each its
// own objects, relations and graph, as a host makes them), a peer that
// reads the comparator's lists and graph pointers, and the ids of a list as
// standard strings so that failures print them.
#ifndef VEKZOL_SRC_COMPARISON_COMPARATORTESTSUPPORT_H_
#define VEKZOL_SRC_COMPARISON_COMPARATORTESTSUPPORT_H_

#include <deque>
#include <string>
#include <vector>

#include <vekzol/comparison/VEKZOLGraphComparator.h>
#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/platform/CString.h>

#include "graphs/GraphTestModel.h"

namespace comparator_test {

using Ids = std::vector<std::string>;

inline Ids IdsOf(const std::deque<CString>& list) {
  Ids ids;
  for (const CString& id : list) ids.push_back(id.GetString());
  return ids;
}

// One state of the model: objects and relations declared by id, and the
// graph built from them by Build().
struct State {
  graph_test::TestObject* Object(const char* id, const char* displayName = "") {
    return model.Object(id, displayName);
  }
  // A relation between two objects of this state, found by id.
  graph_test::TestRelation* Relation(const char* id, graph_test::TestObject* source,
                                     graph_test::TestObject* target) {
    return model.Relation(id, source, target);
  }
  VEKZOLGraph& Build() {
    graph.Build(model.objects, model.relations);
    return graph;
  }
  VEKZOLGraphVertex* Vertex(const char* id) {
    VEKZOLGraphVertex* vertex = nullptr;
    graph.GetVertex(id, vertex);
    return vertex;
  }

  graph_test::Model model;
  graph_test::GraphPeer graph{"state"};
};

// The six lists and both pointers of a comparator, as it holds them.
class ComparatorPeer : public VEKZOLGraphComparator {
 public:
  using VEKZOLGraphComparator::VEKZOLGraphComparator;
  Ids Added() const { return IdsOf(m_VerticesToBeAdded); }
  Ids Removed() const { return IdsOf(m_VerticesToBeRemoved); }
  Ids Moved() const { return IdsOf(m_VerticesToBeMoved); }
  Ids Renamed() const { return IdsOf(m_VerticesToChangeName); }
  Ids EdgesAdded() const { return IdsOf(m_EdgesToBeAdded); }
  Ids EdgesRemoved() const { return IdsOf(m_EdgesToBeRemoved); }
  VEKZOLGraph* NewGraph() const { return m_NewGraph; }
  VEKZOLGraph* OldGraph() const { return m_OldGraph; }
  // What no public operation can do: change the graphs of a comparator
  // that already holds lists.
  void SetGraphs(VEKZOLGraph* newGraph, VEKZOLGraph* oldGraph) {
    m_NewGraph = newGraph;
    m_OldGraph = oldGraph;
  }
};

// The roots that GetRootsToAdd / GetRootsToRemove append, with the status.
struct Roots {
  long status = 0;
  std::deque<CString> vertices;
  std::deque<CString> edges;
};

inline Roots RootsToAdd(VEKZOLGraphComparator& comparator) {
  Roots roots;
  roots.status = comparator.GetRootsToAdd(roots.vertices, roots.edges);
  return roots;
}

inline Roots RootsToRemove(VEKZOLGraphComparator& comparator) {
  Roots roots;
  roots.status = comparator.GetRootsToRemove(roots.vertices, roots.edges);
  return roots;
}

}  // namespace comparator_test

#endif  // VEKZOL_SRC_COMPARISON_COMPARATORTESTSUPPORT_H_
