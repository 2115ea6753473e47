// File: RunIdTable.h
// The ids that the vertices of one graph answered during one comparison
// run, by the position of their entries in the graph's sorted map. The run
// asks each vertex for its id once, in its walk, and records it here; the
// parents of a vertex are vertices of the same graph, so their ids are
// read from here afterwards instead of being asked for again.
//
// A vertex carries the position of its record as a hint, and the record
// names its vertex: a vertex that was not recorded, or whose hint another
// table wrote since (a vertex shared by two graphs), is not found, and the
// run asks it for its id as before.
#ifndef VEKZOL_SRC_COMPARISON_RUNIDTABLE_H_
#define VEKZOL_SRC_COMPARISON_RUNIDTABLE_H_

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/CString.h>

#include "graphs/GraphAccess.h"

namespace vekzol {
namespace comparison {

class RunIdTable {
 public:
  // Room for the entries of a map of `count` entries, each unrecorded.
  explicit RunIdTable(size_t count) : m_Records(count) {}

  // Records `id` as the answer of `vertex`, whose entry is at `position`,
  // and returns the recorded id.
  const CString& Record(size_t position, VEKZOLGraphVertex* vertex, CString&& id) {
    Entry& record = m_Records[position];
    record.vertex = vertex;
    record.id = std::move(id);
    if (position <= std::numeric_limits<std::uint32_t>::max()) {
      graphs::GraphAccess::SetRunPosition(vertex, static_cast<std::uint32_t>(position));
    }
    return record.id;
  }

  // The id recorded at `position`.
  const CString& At(size_t position) const { return m_Records[position].id; }

  // The id recorded for `vertex`, or null.
  const CString* Find(const VEKZOLGraphVertex* vertex) const {
    const size_t position = graphs::GraphAccess::RunPosition(vertex);
    if (position < m_Records.size() && m_Records[position].vertex == vertex) {
      return &m_Records[position].id;
    }
    return nullptr;
  }

  // The record that Find(vertex) reads first, to ask memory for it ahead.
  const void* PlaceOf(const VEKZOLGraphVertex* vertex) const {
    const size_t position = graphs::GraphAccess::RunPosition(vertex);
    return position < m_Records.size() ? &m_Records[position] : nullptr;
  }

 private:
  struct Entry {
    const VEKZOLGraphVertex* vertex = nullptr;
    CString id;
  };
  std::vector<Entry> m_Records;
};

}  // namespace comparison
}  // namespace vekzol

#endif  // VEKZOL_SRC_COMPARISON_RUNIDTABLE_H_
