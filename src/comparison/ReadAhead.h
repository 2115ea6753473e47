// File: ReadAhead.h
// The comparison's requests for memory ahead of its walks. A pass walks
// sorted entries, but the edges behind them lie in the order the host
// listed its relations, and every id copied changes a count in the id's
// block. The
// addresses of the next entries' elements and id blocks lie in the entry
// array, so they can be asked for some steps ahead at no cost. Nothing here
// changes what a pass does: the fields are read through the graph's
// read-only view (graphs/GraphAccess.h), and only to form addresses.
//
// The asking functions are forced inline: GCC takes a function whose only
// effect is a prefetch for one without effect and drops the calls to it,
// prefetches and all (a test looks for them in the built library).
#ifndef VEKZOL_SRC_COMPARISON_READAHEAD_H_
#define VEKZOL_SRC_COMPARISON_READAHEAD_H_

#include <cstddef>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/CString.h>

#include "graphs/GraphAccess.h"

namespace vekzol {
namespace comparison {

class ReadAhead {
 public:
  using VertexEntry = graphs::GraphAccess::VertexEntry;
  using EdgeEntry = graphs::GraphAccess::EdgeEntry;

  // Before a walk's step at `next`, the entry it reads, in an array ending
  // at `end`. A step reads a chain of records that lie far apart, and each
  // is asked for some steps ahead, the next one in the chain a few steps
  // later, once the record holding its address has arrived: the records of
  // several steps are then on their way at once instead of one after the
  // other. The walks differ in what they read. Steps ahead are told from
  // the distance to `end`, never by a pointer formed past it: the entries
  // of an empty map are a null pointer, which takes no offset.

  // For a step that asks the vertex for its id: the vertex and its key's
  // block (the id's text), then its object.
  [[gnu::always_inline]] static void PrefetchForId(const VertexEntry* next,
                                                   const VertexEntry* end) {
    PrefetchEntry(next, end, kFar);
    if (kMiddle < end - next) {
      if (const VEKZOLGraphVertex* vertex = next[kMiddle].second) {
        __builtin_prefetch(Access::Object(vertex));
      }
    }
  }

  // For a step that asks the vertex for its id and name and reads its
  // ident path and backup name: the vertex and its key's block (the id's
  // text), then its object and the blocks of both names.
  [[gnu::always_inline]] static void PrefetchForNames(const VertexEntry* next,
                                                      const VertexEntry* end) {
    PrefetchEntry(next, end, kFar);
    if (kMiddle < end - next) {
      if (const VEKZOLGraphVertex* vertex = next[kMiddle].second) {
        __builtin_prefetch(Access::Object(vertex));
        PrefetchText(Access::IdentPath(vertex));
        PrefetchText(Access::BackupName(vertex));
      }
    }
  }

  // For a step that reads the vertex's key and the ids of its parents,
  // recorded in `parentIds` (RunIdTable.h): the vertex and its key's block,
  // its first parent edge, that edge's parent, then the parent's record
  // and the block of its id.
  template <typename ParentIds>
  [[gnu::always_inline]] static void PrefetchForParents(const VertexEntry* next,
                                                        const VertexEntry* end,
                                                        const ParentIds& parentIds) {
    PrefetchEntry(next, end, kFar);
    if (kMiddle < end - next) {
      if (const VEKZOLGraphEdge* edge = FirstParentEdge(next[kMiddle].second)) {
        PrefetchRecord(edge);
      }
    }
    if (kNear < end - next) {
      if (const VEKZOLGraphEdge* edge = FirstParentEdge(next[kNear].second)) {
        if (Access::Parent(edge) != nullptr) PrefetchRecord(Access::Parent(edge));
      }
    }
    if (kNearest < end - next) {
      if (const VEKZOLGraphEdge* edge = FirstParentEdge(next[kNearest].second)) {
        if (const VEKZOLGraphVertex* parent = Access::Parent(edge)) {
          if (const void* place = parentIds.PlaceOf(parent)) __builtin_prefetch(place);
        }
        // The text of the parent's id, which the step compares.
        if (Access::ParentIdHint(edge) != nullptr) PrefetchBlock(Access::ParentIdHint(edge));
      }
    }
  }

  // For a step that asks the edge for its id: the edge and its key's
  // block, then its relation.
  [[gnu::always_inline]] static void Prefetch(const EdgeEntry* next, const EdgeEntry* end) {
    PrefetchEntry(next, end, kFar);
    if (kMiddle < end - next) {
      if (const VEKZOLGraphEdge* edge = next[kMiddle].second) {
        __builtin_prefetch(Access::Relation(edge));
      }
    }
  }

  // For a cursor that only compares keys: their blocks.
  template <typename Entry>
  [[gnu::always_inline]] static void PrefetchKeys(const Entry* next, const Entry* end) {
    if (kFar < end - next) PrefetchText(next[kFar].first);
  }

 private:
  using Access = graphs::GraphAccess;

  // Steps ahead of the walk at which each link of the chain is asked for.
  static constexpr ptrdiff_t kFar = 24;
  static constexpr ptrdiff_t kMiddle = 12;
  static constexpr ptrdiff_t kNear = 6;
  static constexpr ptrdiff_t kNearest = 3;

  // Both cache lines that a record may straddle: heap blocks are aligned to
  // 16 bytes, not to the 64 of a line.
  template <typename Record>
  [[gnu::always_inline]] static void PrefetchRecord(const Record* record) {
    __builtin_prefetch(record);
    __builtin_prefetch(reinterpret_cast<const char*>(record) + sizeof(Record) - 1);
  }

  // The element of the entry `ahead` steps after `next` and the block of
  // its key, which shares its text with the id the step will copy (and
  // whose count the copy changes).
  template <typename Entry>
  [[gnu::always_inline]] static void PrefetchEntry(const Entry* next, const Entry* end,
                                                   ptrdiff_t ahead) {
    if (ahead < end - next) {
      PrefetchRecord(next[ahead].second);
      PrefetchText(next[ahead].first);
    }
  }

  [[gnu::always_inline]] static const VEKZOLGraphEdge* FirstParentEdge(
      const VEKZOLGraphVertex* vertex) {
    if (vertex == nullptr || Access::ParentEdges(vertex).empty()) return nullptr;
    return Access::ParentEdges(vertex).front();
  }

  // The block that holds a CString's count, length and text: its first 64
  // bytes, which hold ids of up to 40 bytes whole, wherever the block starts
  // within a cache line.
  [[gnu::always_inline]] static void PrefetchText(const CString& text) {
    PrefetchBlock(text.GetString());
  }
  [[gnu::always_inline]] static void PrefetchBlock(const void* text) {
    constexpr ptrdiff_t kHeaderBytes = 16;  // count, length, capacity: see CString.cpp
    const char* block = static_cast<const char*>(text) - kHeaderBytes;
    __builtin_prefetch(block, 1);
    __builtin_prefetch(block + 63);
  }
};

}  // namespace comparison
}  // namespace vekzol

#endif  // VEKZOL_SRC_COMPARISON_READAHEAD_H_
