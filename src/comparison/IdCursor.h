// File: IdCursor.h
// A forward cursor over a graph's map (id to vertex or edge) that answers
// look-ups of ascending ids by walking on from where the last one stopped.
// The comparison asks for the ids of the other graph in that graph's id
// order, so one pass costs a merge of the two maps' sorted entries instead
// of a look-up per id. An id at or below the key before the cursor (a host
// changed an object's id after the build, so its vertex no longer answers
// its key) falls back to the map's own look-up; answers are those of the
// map in every case.
#ifndef VEKZOL_SRC_COMPARISON_IDCURSOR_H_
#define VEKZOL_SRC_COMPARISON_IDCURSOR_H_

#include <vekzol/platform/CString.h>

#include "graphs/IdMap.h"
#include "platform/TextOrder.h"

namespace vekzol {
namespace comparison {

template <typename Element>
class IdCursor {
 public:
  using Map = graphs::IdMap<Element>;
  using Entry = typename Map::Entry;

  explicit IdCursor(const Map& map)
      : m_Map(map), m_Begin(map.begin()), m_Next(m_Begin), m_End(map.end()) {}

  // Where the next look-up starts, and the end of the entries, for asking
  // memory ahead for the entries the cursor is about to reach.
  const Entry* Next() const { return m_Next; }
  const Entry* End() const { return m_End; }

  // The entry under `id` (null for a missing id or a null entry).
  Element* Find(const CString& id) {
    // One compare per step: walk on while the keys are below the id.
    while (m_Next != m_End) {
      const int order = platform::TextCompare(m_Next->first, id);
      if (order == 0) return m_Next->second;
      if (order > 0) break;
      ++m_Next;
    }
    // Not ahead of the cursor. Every key before it is below the ids asked
    // for so far; an id at or below the last of them may still be in the
    // map, behind the cursor.
    if (m_Next != m_Begin && platform::TextCompare(id, (m_Next - 1)->first) <= 0) {
      const Entry* found = m_Map.Find(id);
      return found == nullptr ? nullptr : found->second;
    }
    return nullptr;
  }

 private:
  const Map& m_Map;
  const Entry* m_Begin;
  const Entry* m_Next;
  const Entry* m_End;
};

}  // namespace comparison
}  // namespace vekzol

#endif  // VEKZOL_SRC_COMPARISON_IDCURSOR_H_
