// File: ParentIntersection.h
// Whether two lists of parent ids have an id in common, answered as the
// string-list service's Intersection answers it (its result holds
// something), without the sort and the list it builds.
//
// Intersection treats both lists as multisets in `_mbscmp` order and hands
// on the elements of the first list that find a partner, leaving out empty
// ones. Where no id holds an embedded NUL, equal ids are the same bytes and
// an empty id is only equal to an empty one, so the result holds something
// exactly when a non-empty id of the first list stands in the second. That
// is checked pair by pair for the short lists a vertex's parents make;
// longer lists, and ids with an embedded NUL (where `_mbscmp` calls texts
// equal that differ after it, and which of them is handed on decides), go
// to Intersection itself.
#ifndef VEKZOL_SRC_COMPARISON_PARENTINTERSECTION_H_
#define VEKZOL_SRC_COMPARISON_PARENTINTERSECTION_H_

#include <cstring>
#include <deque>
#include <vector>

#include <vekzol/platform/CString.h>
#include <vekzol/services/VEKZOLSTLServices.h>

#include "platform/TextOrder.h"

namespace vekzol {
namespace comparison {

// The lists come as ids or as pointers to ids held elsewhere.
inline const CString& IdOf(const CString& id) { return id; }
inline const CString& IdOf(const CString* id) { return *id; }

template <typename Ids>
bool HasEmbeddedNul(const Ids& ids) {
  for (const auto& element : ids) {
    const CString& id = IdOf(element);
    if (std::strlen(id.GetString()) != static_cast<size_t>(id.GetLength())) return true;
  }
  return false;
}

template <typename Ids>
bool AnswerIntersectionIsNotEmpty(const Ids& first, const Ids& second) {
  if (first.empty() || second.empty()) {
    return false;  // refused with E_INVALIDARG, nothing appended
  }
  constexpr size_t kPairwiseLimit = 64;
  if (first.size() * second.size() <= kPairwiseLimit && !HasEmbeddedNul(first) &&
      !HasEmbeddedNul(second)) {
    for (const auto& candidate : first) {
      if (IdOf(candidate).IsEmpty()) continue;
      for (const auto& other : second) {
        if (platform::TextEqual(IdOf(candidate), IdOf(other))) return true;
      }
    }
    return false;
  }
  std::deque<CString> firstList;
  std::deque<CString> secondList;
  for (const auto& element : first) firstList.push_back(IdOf(element));
  for (const auto& element : second) secondList.push_back(IdOf(element));
  std::deque<CString> common;
  VEKZOLSTLServices::Intersection(firstList, secondList, common);
  return !common.empty();
}

// Whether Intersection of lists holding `first` and `second` appends
// anything to an empty result.
inline bool IntersectionIsNotEmpty(const std::vector<CString>& first,
                                   const std::vector<CString>& second) {
  return AnswerIntersectionIsNotEmpty(first, second);
}
// The same for lists of pointers to ids held elsewhere.
inline bool IntersectionIsNotEmptyByReference(const std::vector<const CString*>& first,
                                              const std::vector<const CString*>& second) {
  return AnswerIntersectionIsNotEmpty(first, second);
}

}  // namespace comparison
}  // namespace vekzol

#endif  // VEKZOL_SRC_COMPARISON_PARENTINTERSECTION_H_
