// File: IdCursor.h
// A forward cursor over a graph's map (id to vertex or edge) that answers
// look-ups of ascending ids by walking on from where the last one stopped.
// The comparison asks for the ids of the other graph in that graph's id
// order, so one pass costs a merge of the two maps instead of a descent
// per id. An id below the previous one (a host changed an object's id after
// the build, so its vertex no longer answers its key) falls back to an
// ordinary look-up; answers are those of the map in every case.
#ifndef VEKZOL_SRC_COMPARISON_IDCURSOR_H_
#define VEKZOL_SRC_COMPARISON_IDCURSOR_H_

#include <map>

#include <vekzol/platform/CString.h>

namespace vekzol {
namespace comparison {

template <typename Element>
class IdCursor {
 public:
  using Map = std::map<CString, Element*>;

  explicit IdCursor(const Map& map) : m_Map(map), m_Next(map.begin()) {}

  // The entry under `id` (null for a missing id or a null entry).
  Element* Find(const CString& id) {
    const auto less = m_Map.key_comp();
    // Every key before m_Next is below the last id asked for; an id at or
    // above that one is found by walking on.
    if (m_HasLast && less(id, m_Last)) {
      const auto found = m_Map.find(id);
      return found == m_Map.end() ? nullptr : found->second;
    }
    while (m_Next != m_Map.end() && less(m_Next->first, id)) {
      ++m_Next;
    }
    m_Last = id;
    m_HasLast = true;
    if (m_Next != m_Map.end() && !less(id, m_Next->first)) {
      return m_Next->second;
    }
    return nullptr;
  }

 private:
  const Map& m_Map;
  typename Map::const_iterator m_Next;
  CString m_Last;
  bool m_HasLast = false;
};

}  // namespace comparison
}  // namespace vekzol

#endif  // VEKZOL_SRC_COMPARISON_IDCURSOR_H_
