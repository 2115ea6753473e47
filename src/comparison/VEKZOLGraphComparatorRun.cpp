// File: VEKZOLGraphComparatorRun.cpp
// RunComparison: five passes over the two graphs in id order. Both graphs
// keep their vertices and edges in maps ordered by id, so each pass walks
// one map and finds partners in the other with a cursor that moves forward
// with it (a merge of two ordered sequences), instead of a descent per id.
// The lists, their order, the ident paths written, the statuses and the
// timer calls (the run's own timer and, through the intersection service,
// its timer for each vertex with parents on both sides) are those of a
// look-up per id.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLSTLServices.h>

#include "comparison/IdCursor.h"

namespace {

using vekzol::comparison::IdCursor;

// Appends the id of each parent vertex of `vertex`, one per incoming edge
// with a parent vertex, oldest edge first; ids are not tested here.
void AppendParentIds(VEKZOLGraphVertex* vertex, std::deque<VEKZOLGraphEdge*>& edges,
                     std::deque<CString>& ids) {
  edges.clear();
  vertex->GetParentEdges(edges);
  for (VEKZOLGraphEdge* edge : edges) {
    if (edge != nullptr && edge->GetParent() != nullptr) {
      ids.push_back(edge->GetParent()->GetID());
    }
  }
}

// Walks `from` in id order and appends to `missing` the id of each entry
// that has no partner under its id in `in`: passes 2, 4 and 5. Null entries
// and empty ids are skipped.
template <typename Element>
void AppendMissing(const std::map<CString, Element*>& from, const std::map<CString, Element*>& in,
                   std::deque<CString>& missing) {
  IdCursor<Element> partners(in);
  for (const auto& entry : from) {
    Element* element = entry.second;
    if (element == nullptr) {
      continue;
    }
    CString id = element->GetID();
    if (!id.IsEmpty() && partners.Find(id) == nullptr) {
      missing.push_back(id);
    }
  }
}

}  // namespace

long VEKZOLGraphComparator::RunComparison(bool checkNames) {
  if (m_NewGraph == nullptr || m_OldGraph == nullptr) {
    return E_INVALIDARG;
  }
  VEKZOLTimer timer("Graph - Run Comparison Timer");
  timer.StartTimer();
  const auto& newVertices = m_NewGraph->m_Vertices;
  const auto& oldVertices = m_OldGraph->m_Vertices;

  // Pass 1: vertices of the new graph; with names checked, the ident path
  // travels from old to new and the old vertex's name meets its backup.
  {
    IdCursor<VEKZOLGraphVertex> oldPartners(oldVertices);
    for (const auto& entry : newVertices) {
      VEKZOLGraphVertex* newVertex = entry.second;
      if (newVertex == nullptr) {
        continue;
      }
      CString id = newVertex->GetID();
      if (id.IsEmpty()) {
        continue;
      }
      VEKZOLGraphVertex* oldVertex = oldPartners.Find(id);
      if (oldVertex == nullptr) {
        m_VerticesToBeAdded.push_back(id);
      } else if (checkNames) {
        const CString identPath = oldVertex->GetIdentPath();
        if (!identPath.IsEmpty()) {
          newVertex->SetIdentPath(identPath);
        }
        if (oldVertex->GetName() != oldVertex->GetBackupName()) {
          m_VerticesToChangeName.push_back(id);
        }
      }
    }
  }

  // Pass 2: vertices of the old graph that the new graph lacks.
  AppendMissing(oldVertices, newVertices, m_VerticesToBeRemoved);

  // Pass 3: vertices in both graphs whose direct parents share no id. The
  // work lists are emptied and reused from vertex to vertex.
  {
    IdCursor<VEKZOLGraphVertex> newPartners(newVertices);
    std::deque<VEKZOLGraphEdge*> parentEdges;
    std::deque<CString> newParents;
    std::deque<CString> oldParents;
    std::deque<CString> common;
    for (const auto& entry : oldVertices) {
      VEKZOLGraphVertex* oldVertex = entry.second;
      if (oldVertex == nullptr) {
        continue;
      }
      CString id = oldVertex->GetID();
      if (id.IsEmpty()) {
        continue;
      }
      VEKZOLGraphVertex* newVertex = newPartners.Find(id);
      if (newVertex == nullptr) {
        continue;
      }
      newParents.clear();
      oldParents.clear();
      AppendParentIds(newVertex, parentEdges, newParents);
      AppendParentIds(oldVertex, parentEdges, oldParents);
      if (newParents.empty() && oldParents.empty()) {
        continue;  // a root on both sides
      }
      // An empty side is refused by Intersection and leaves `common` empty:
      // a root that got a parent, or a vertex that became a root, is moved.
      common.clear();
      VEKZOLSTLServices::Intersection(oldParents, newParents, common);
      if (common.empty()) {
        m_VerticesToBeMoved.push_back(id);
      }
    }
  }

  // Passes 4 and 5: edges that only one of the graphs has.
  AppendMissing(m_NewGraph->m_Edges, m_OldGraph->m_Edges, m_EdgesToBeAdded);
  AppendMissing(m_OldGraph->m_Edges, m_NewGraph->m_Edges, m_EdgesToBeRemoved);

  // The outcome comes from the accumulated lists, so a run that follows one
  // with differences answers S_OK even over equal graphs.
  const bool nothing = m_VerticesToBeAdded.empty() && m_VerticesToBeRemoved.empty() &&
                       m_VerticesToBeMoved.empty() && m_VerticesToChangeName.empty() &&
                       m_EdgesToBeAdded.empty() && m_EdgesToBeRemoved.empty();
  const long outcome = nothing ? S_FALSE : S_OK;
  timer.StopAndPrintTimer();
  return outcome;
}
