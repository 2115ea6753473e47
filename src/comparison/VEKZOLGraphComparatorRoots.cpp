// File: VEKZOLGraphComparatorRoots.cpp
// GetRootsToAdd and GetRootsToRemove: the listed vertices and edges are
// built into a temporary graph of their own, over the objects and relations
// of the graph that holds them, and that graph is asked for its roots. So a
// vertex is reported when no listed edge leads to it, and an edge when its
// parent end is not among the listed vertices: a part hanging under
// something that stays is reported by its connecting edge.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/Status.h>

#include <cstddef>

#include "graphs/GraphAccess.h"
#include "graphs/IdMap.h"

long VEKZOLGraphComparator::GetRootsToAdd(std::deque<CString>& rootVertexIds,
                                          std::deque<CString>& rootEdgeIds) {
  return ExtractRoots(m_VerticesToBeAdded, m_EdgesToBeAdded, m_NewGraph,
                      "Graph - Get Roots To Add Timer", "Graph To Add", rootVertexIds, rootEdgeIds);
}

long VEKZOLGraphComparator::GetRootsToRemove(std::deque<CString>& rootVertexIds,
                                             std::deque<CString>& rootEdgeIds) {
  return ExtractRoots(m_VerticesToBeRemoved, m_EdgesToBeRemoved, m_OldGraph,
                      "Graph - Get Roots To Remove Timer", "Graph To Remove", rootVertexIds,
                      rootEdgeIds);
}

long VEKZOLGraphComparator::ExtractRoots(const std::deque<CString>& vertexIds,
                                         const std::deque<CString>& edgeIds, VEKZOLGraph* graph,
                                         const char* timerName, const char* graphName,
                                         std::deque<CString>& rootVertexIds,
                                         std::deque<CString>& rootEdgeIds) {
  // Nothing listed is the one success-shaped answer: nothing to do.
  if (edgeIds.empty() && vertexIds.empty()) {
    return S_FALSE;
  }
  if (graph == nullptr) {
    return E_FAIL;
  }
  VEKZOLTimer timer(timerName);
  timer.StartTimer();
  {
    // Ids that no longer resolve (the graph changed since the run), and
    // elements without object or relation, are left out silently.
    std::deque<VEKIZOLObject*> objects;
    for (const CString& id : vertexIds) {
      if (id.IsEmpty()) {
        continue;
      }
      VEKZOLGraphVertex* vertex = nullptr;
      graph->GetVertex(id, vertex);
      if (vertex != nullptr && vertex->GetObjectA() != nullptr) {
        objects.push_back(vertex->GetObjectA());
      }
    }
    // The edge ids come in id order from the run, so each is searched for
    // forward from the last one found, as GetEdge would find it.
    std::deque<VEKIZOLRelation*> relations;
    size_t hint = 0;
    for (const CString& id : edgeIds) {
      if (id.IsEmpty()) {
        continue;
      }
      const auto* found = vekzol::graphs::GraphAccess::Edges(*graph).FindForward(id, hint);
      VEKZOLGraphEdge* edge = found == nullptr ? nullptr : found->second;
      if (edge != nullptr && edge->GetRelation() != nullptr) {
        relations.push_back(edge->GetRelation());
      }
    }
    // The temporary graph shares the objects and relations and frees only
    // its own vertices and edges. Ids listed twice (after a second run) are
    // settled by Build: the first stays. Its status says nothing.
    VEKZOLGraph part(graphName);
    part.Build(objects, relations);
    std::deque<VEKZOLGraphVertex*> roots;
    std::deque<VEKZOLGraphEdge*> rootEdges;
    part.GetRoots(roots, rootEdges);
    for (VEKZOLGraphVertex* root : roots) {
      if (root == nullptr) {
        continue;
      }
      CString id = root->GetID();
      if (!id.IsEmpty()) {
        rootVertexIds.push_back(id);
      }
    }
    for (VEKZOLGraphEdge* rootEdge : rootEdges) {
      if (rootEdge == nullptr) {
        continue;
      }
      CString id = rootEdge->GetID();
      if (!id.IsEmpty()) {
        rootEdgeIds.push_back(id);
      }
    }
    // The build of the temporary graph is measured, its destruction is not.
    timer.StopAndPrintTimer();
  }
  // Every completed extraction answers E_FAIL, found or not: callers read
  // the deques.
  return E_FAIL;
}
