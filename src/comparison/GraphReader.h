// File: GraphReader.h
// The comparison's direct reads of vertices and edges, a friend of both
// classes: the parent edges of a vertex as they stand (what GetParentEdges
// would copy into a deque), the ident path and backup name without a copy
// each, and SetIdentPath's assignment. Those getters and SetIdentPath are
// not virtual, so reading and assigning the fields is exactly what they do.
//
// It also asks memory ahead for what the walks read next: a pass walks
// sorted entries, but the edges behind them lie in the order the host
// listed its relations, and every id copied changes a count in the id's
// block. The addresses of the next entries' elements and id blocks lie in
// the entry array, so they can be asked for some steps ahead at no cost.
// Nothing here changes what a pass does.
#ifndef VEKZOL_SRC_COMPARISON_GRAPHREADER_H_
#define VEKZOL_SRC_COMPARISON_GRAPHREADER_H_

#include <cstddef>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/CString.h>

#include "graphs/IdMap.h"

namespace vekzol {
namespace comparison {

class GraphReader {
 public:
  // The edges that end at `vertex`, oldest first, null entries included.
  static const VEKZOLEdgeList& ParentEdges(const VEKZOLGraphVertex* vertex) {
    return vertex->m_ParentEdges;
  }
  static VEKZOLGraphVertex* ParentOf(const VEKZOLGraphEdge* edge) { return edge->m_Parent; }
  // The two texts of a vertex, as GetIdentPath and GetBackupName would copy
  // them, and SetIdentPath's assignment (it has nothing else to do).
  static const CString& IdentPath(const VEKZOLGraphVertex* vertex) { return vertex->m_IdentPath; }
  static const CString& BackupName(const VEKZOLGraphVertex* vertex) { return vertex->m_BackupName; }
  static void SetIdentPath(VEKZOLGraphVertex* vertex, const CString& identPath) {
    vertex->m_IdentPath = identPath;
  }

  using VertexEntry = graphs::IdMap<VEKZOLGraphVertex>::Entry;
  using EdgeEntry = graphs::IdMap<VEKZOLGraphEdge>::Entry;

  // Before the step at `index` of a walk over `count` vertex entries.
  static void Prefetch(const VertexEntry* entries, size_t index, size_t count) {
    PrefetchEntry(entries, index + 16, count);
    // Vertices lie in id order, so the one eight steps ahead is in cache:
    // its object and its first parent edge can be asked for.
    if (index + 8 < count) {
      if (const VEKZOLGraphVertex* vertex = entries[index + 8].second) {
        __builtin_prefetch(vertex->m_Object);
        if (!vertex->m_ParentEdges.empty()) __builtin_prefetch(vertex->m_ParentEdges.front());
      }
    }
  }

  // Before the step at `index` of a walk over `count` edge entries.
  static void Prefetch(const EdgeEntry* entries, size_t index, size_t count) {
    PrefetchEntry(entries, index + 16, count);
    if (index + 8 < count) {
      if (const VEKZOLGraphEdge* edge = entries[index + 8].second) {
        __builtin_prefetch(edge->m_Relation);
      }
    }
  }

 private:
  // The element of the entry at `index` and the block of its key, which
  // shares its text with the id the step will copy (and whose count the copy
  // changes).
  template <typename Entry>
  static void PrefetchEntry(const Entry* entries, size_t index, size_t count) {
    if (index < count) {
      __builtin_prefetch(entries[index].second);
      __builtin_prefetch(TextBlock(entries[index].first), 1);
    }
  }

  // The start of the block that holds a CString's text and its count.
  static const void* TextBlock(const CString& text) { return text.GetString() - 16; }
};

}  // namespace comparison
}  // namespace vekzol

#endif  // VEKZOL_SRC_COMPARISON_GRAPHREADER_H_
