// File: VEKZOLGraphComparatorRun.cpp
// RunComparison: five passes over the two graphs in id order. Both graphs
// keep their vertices and edges as sorted entries, so each pass walks one
// map and finds partners in the other with a cursor that moves forward with
// it (a merge of two ordered sequences), instead of a look-up per id. The
// lists, their order, the ident paths written, the statuses and the timer
// calls (the run's own timer and, through the intersection service, its
// timer for each vertex with parents on both sides) are those of a look-up
// per id.
//
// Each vertex is asked for its id once: pass 1 records the new graph's
// answers and a walk before passes 2 and 3 the old graph's, in a table per
// graph (RunIdTable.h), and the parents' ids of pass 3 are read from there.
// Ids are shared texts: taking one from an object, a vertex or a table
// copies no bytes, so the passes allocate nothing per vertex but what they
// append to the result lists.
#include <vekzol/comparison/VEKZOLGraphComparator.h>

#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLSTLServices.h>

#include <deque>
#include <vector>

#include "comparison/IdCursor.h"
#include "comparison/ParentIntersection.h"
#include "comparison/ReadAhead.h"
#include "comparison/RunIdTable.h"
#include "graphs/GraphAccess.h"
#include "graphs/IdMap.h"

namespace {

using vekzol::comparison::IdCursor;
using vekzol::comparison::ReadAhead;
using vekzol::comparison::RunIdTable;
using vekzol::graphs::GraphAccess;

// Appends the id of each parent vertex of `vertex`, one per incoming edge
// with a parent vertex, oldest edge first, as read from `recorded` (the ids
// the vertices of the graph answered in this run); a parent not recorded
// there is asked, and its answer kept in `asked`. Ids are not tested here.
// The edges are read where they stand, as GetParentEdges and GetParent give
// them.
void AppendParentIds(VEKZOLGraphVertex* vertex, const RunIdTable& recorded,
                     std::vector<const CString*>& ids, std::deque<CString>& asked) {
  for (VEKZOLGraphEdge* edge : GraphAccess::ParentEdges(vertex)) {
    if (edge == nullptr) continue;
    if (VEKZOLGraphVertex* parent = GraphAccess::Parent(edge)) {
      const CString* id = recorded.Find(parent);
      if (id == nullptr) {
        asked.push_back(parent->GetID());
        id = &asked.back();
      }
      ids.push_back(id);
    }
  }
}

// Walks `from` in id order and appends to `missing` the id of each entry
// that has no partner under its id in `in`: passes 4 and 5. Null entries
// and empty ids are skipped.
template <typename Element>
void AppendMissing(const vekzol::graphs::IdMap<Element>& from,
                   const vekzol::graphs::IdMap<Element>& in, std::deque<CString>& missing) {
  IdCursor<Element> partners(in);
  const auto* entries = from.begin();
  const size_t count = from.size();
  for (size_t i = 0; i < count; ++i) {
    ReadAhead::Prefetch(entries + i, entries + count);
    ReadAhead::PrefetchKeys(partners.Next(), partners.End());
    Element* element = entries[i].second;
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
  const auto& newVertices = GraphAccess::Vertices(*m_NewGraph);
  const auto& oldVertices = GraphAccess::Vertices(*m_OldGraph);

  // Pass 1: vertices of the new graph, whose ids are recorded; with names
  // checked, the ident path travels from old to new and the old vertex's
  // name meets its backup.
  RunIdTable newIds(newVertices.size());
  {
    IdCursor<VEKZOLGraphVertex> oldPartners(oldVertices);
    const auto* entries = newVertices.begin();
    const size_t count = newVertices.size();
    for (size_t i = 0; i < count; ++i) {
      ReadAhead::PrefetchForNames(entries + i, entries + count);
      ReadAhead::PrefetchForNames(oldPartners.Next(), oldPartners.End());
      VEKZOLGraphVertex* newVertex = entries[i].second;
      if (newVertex == nullptr) {
        continue;
      }
      const CString& id = newIds.Record(i, newVertex, newVertex->GetID());
      if (id.IsEmpty()) {
        continue;
      }
      VEKZOLGraphVertex* oldVertex = oldPartners.Find(id);
      if (oldVertex == nullptr) {
        m_VerticesToBeAdded.push_back(id);
      } else if (checkNames) {
        const CString& identPath = GraphAccess::IdentPath(oldVertex);
        if (!identPath.IsEmpty()) {
          GraphAccess::SetIdentPath(newVertex, identPath);
        }
        if (oldVertex->GetName() != GraphAccess::BackupName(oldVertex)) {
          m_VerticesToChangeName.push_back(id);
        }
      }
    }
  }

  // The ids of the old graph's vertices, asked in id order as pass 2 would
  // ask them.
  RunIdTable oldIds(oldVertices.size());
  {
    const auto* entries = oldVertices.begin();
    const size_t count = oldVertices.size();
    for (size_t i = 0; i < count; ++i) {
      ReadAhead::PrefetchForId(entries + i, entries + count);
      if (VEKZOLGraphVertex* oldVertex = entries[i].second) {
        oldIds.Record(i, oldVertex, oldVertex->GetID());
      }
    }
  }

  // Passes 2 and 3, over the vertices of the old graph in one walk, since
  // both take each vertex's id and look it up in the new graph the same
  // way: pass 2 lists the vertices the new graph lacks, pass 3 the vertices
  // in both graphs whose direct parents share no id. Each list still comes
  // out in id order, as from two walks. The work lists are emptied and
  // reused from vertex to vertex. While timers count, the intersection
  // service answers for each vertex, so its timer counts as it always has;
  // otherwise the same answer comes from a merge of the two short lists.
  {
    const bool timersCount = VEKZOLTimer::AreTimersEnabled();
    IdCursor<VEKZOLGraphVertex> newPartners(newVertices);
    std::vector<const CString*> newParents;
    std::vector<const CString*> oldParents;
    std::deque<CString> asked;
    std::deque<CString> newList;
    std::deque<CString> oldList;
    std::deque<CString> common;
    const auto* entries = oldVertices.begin();
    const size_t count = oldVertices.size();
    for (size_t i = 0; i < count; ++i) {
      ReadAhead::PrefetchForParents(entries + i, entries + count, oldIds);
      ReadAhead::PrefetchForParents(newPartners.Next(), newPartners.End(), newIds);
      VEKZOLGraphVertex* oldVertex = entries[i].second;
      if (oldVertex == nullptr) {
        continue;
      }
      const CString& id = oldIds.At(i);
      if (id.IsEmpty()) {
        continue;
      }
      VEKZOLGraphVertex* newVertex = newPartners.Find(id);
      if (newVertex == nullptr) {
        m_VerticesToBeRemoved.push_back(id);
        continue;
      }
      newParents.clear();
      oldParents.clear();
      if (!asked.empty()) asked.clear();
      AppendParentIds(newVertex, newIds, newParents, asked);
      AppendParentIds(oldVertex, oldIds, oldParents, asked);
      if (newParents.empty() && oldParents.empty()) {
        continue;  // a root on both sides
      }
      // An empty side is refused by Intersection and leaves `common` empty:
      // a root that got a parent, or a vertex that became a root, is moved.
      bool shareAParent = false;
      if (timersCount) {
        oldList.clear();
        newList.clear();
        for (const CString* parent : oldParents) oldList.push_back(*parent);
        for (const CString* parent : newParents) newList.push_back(*parent);
        common.clear();
        VEKZOLSTLServices::Intersection(oldList, newList, common);
        shareAParent = !common.empty();
      } else {
        shareAParent =
            vekzol::comparison::IntersectionIsNotEmptyByReference(oldParents, newParents);
      }
      if (!shareAParent) {
        m_VerticesToBeMoved.push_back(id);
      }
    }
  }

  // Passes 4 and 5: edges that only one of the graphs has.
  AppendMissing(GraphAccess::Edges(*m_NewGraph), GraphAccess::Edges(*m_OldGraph), m_EdgesToBeAdded);
  AppendMissing(GraphAccess::Edges(*m_OldGraph), GraphAccess::Edges(*m_NewGraph),
                m_EdgesToBeRemoved);

  // The outcome comes from the accumulated lists, so a run that follows one
  // with differences answers S_OK even over equal graphs.
  const bool nothing = m_VerticesToBeAdded.empty() && m_VerticesToBeRemoved.empty() &&
                       m_VerticesToBeMoved.empty() && m_VerticesToChangeName.empty() &&
                       m_EdgesToBeAdded.empty() && m_EdgesToBeRemoved.empty();
  const long outcome = nothing ? S_FALSE : S_OK;
  timer.StopAndPrintTimer();
  return outcome;
}
