// File: GraphReader.h
// Asks memory ahead for what the comparison's passes will read. A pass
// walks sorted entries, but the vertices and edges behind them lie in the
// order the host listed its objects, and each step goes from the element to
// its object or relation, its texts, its parent edges and their parent
// vertices: one cache miss after another, and the id copies, whose
// reference counts are atomic, cannot overlap them. Asked for in stages,
// each some steps ahead of the walk, those blocks are in cache when the
// step comes. Nothing here changes what a pass does.
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
  static const CString& BackupName(const VEKZOLGraphVertex* vertex) {
    return vertex->m_BackupName;
  }
  static void SetIdentPath(VEKZOLGraphVertex* vertex, const CString& identPath) {
    vertex->m_IdentPath = identPath;
  }

  using VertexEntry = graphs::IdMap<VEKZOLGraphVertex>::Entry;
  using EdgeEntry = graphs::IdMap<VEKZOLGraphEdge>::Entry;

  // Before the step at `index` of a walk over `count` vertex entries.
  static void PrefetchVertices(const VertexEntry* entries, size_t index, size_t count) {
    if (index + 16 < count) {
      __builtin_prefetch(entries[index + 16].second);
      // The key shares its text with the object's id, whose count the id
      // copy will change.
      __builtin_prefetch(TextBlock(entries[index + 16].first), 1);
    }
  }

  // Before the step at `index` of a walk over `count` edge entries.
  static void PrefetchEdges(const EdgeEntry* entries, size_t index, size_t count) {
    if (index + 16 < count) {
      __builtin_prefetch(entries[index + 16].second);
      __builtin_prefetch(TextBlock(entries[index + 16].first), 1);
    }
    if (index + 8 < count) {
      if (const VEKZOLGraphEdge* edge = entries[index + 8].second) {
        __builtin_prefetch(edge->m_Relation);
      }
    }
  }

 private:
  // The start of the block that holds a CString's text and its count.
  static const void* TextBlock(const CString& text) { return text.GetString() - 16; }
};

}  // namespace comparison
}  // namespace vekzol

#endif  // VEKZOL_SRC_COMPARISON_GRAPHREADER_H_
