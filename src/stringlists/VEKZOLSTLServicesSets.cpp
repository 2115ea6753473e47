// File: VEKZOLSTLServicesSets.cpp
// Intersection, Difference and SymmetricDifference: the standard sorted-range
// algorithms over the two lists in `_mbscmp` order, which treat each list as
// a multiset. The comparison calls them once per vertex, mostly with one or
// two ids and now and then with a million, so a short list is sorted as
// pointers to its own elements in storage inside the call, with no
// allocation, and a long one as copies in one vector, in O(n log n), where
// the sort and the walk read memory in order. Only what goes into the result
// list is allocated for short lists.
#include <vekzol/services/VEKZOLSTLServices.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <iterator>
#include <vector>

#include <vekzol/platform/Status.h>

#include "platform/MbString.h"

namespace {

struct MbsLess {
  bool operator()(const CString* left, const CString* right) const {
    return vekzol::platform::Mbscmp(left->GetString(), right->GetString()) < 0;
  }
};

// The elements of one list in `_mbscmp` order, as a multiset built from the
// list iterates over them: equal elements stay in the order the list holds
// them, as a multiset keeps equal elements in the order of their insertion.
// Elements that compare equal may still differ after an embedded NUL, so
// that order decides which copy an algorithm hands on. Short lists are seen
// through pointers to the list's own elements, which stay valid while
// elements are appended to any deque, the listed one included; long ones
// through pointers into sorted copies.
class SortedElements {
 public:
  explicit SortedElements(const std::deque<CString>& list) : size_(list.size()) {
    if (size_ <= kInlineCapacity) {
      data_ = inline_;
      size_t count = 0;
      for (const CString& element : list) {
        // Insertion sort: stable, and the fastest for a handful.
        size_t position = count++;
        while (position > 0 && MbsLess()(&element, data_[position - 1])) {
          data_[position] = data_[position - 1];
          --position;
        }
        data_[position] = &element;
      }
    } else {
      copies_.assign(list.begin(), list.end());
      std::stable_sort(copies_.begin(), copies_.end(),
                       [](const CString& left, const CString& right) {
                         return vekzol::platform::Mbscmp(left.GetString(), right.GetString()) < 0;
                       });
      pointers_.reserve(size_);
      for (const CString& element : copies_) {
        pointers_.push_back(&element);
      }
      data_ = pointers_.data();
    }
  }
  SortedElements(const SortedElements&) = delete;
  SortedElements& operator=(const SortedElements&) = delete;

  const CString* const* begin() const { return data_; }
  const CString* const* end() const { return data_ + size_; }

 private:
  static constexpr size_t kInlineCapacity = 16;

  size_t size_;
  const CString** data_ = nullptr;
  const CString* inline_[kInlineCapacity];
  std::vector<CString> copies_;
  std::vector<const CString*> pointers_;
};

// The output of the algorithms: appends a copy of each non-empty element to
// the result list, so the produced range arrives in ascending order without
// empty elements.
class NonEmptyAppender {
 public:
  using iterator_category = std::output_iterator_tag;
  using value_type = void;
  using difference_type = std::ptrdiff_t;
  using pointer = void;
  using reference = void;

  explicit NonEmptyAppender(std::deque<CString>* result) : result_(result) {}
  NonEmptyAppender& operator=(const CString* element) {
    if (!element->IsEmpty()) {
      result_->push_back(*element);
    }
    return *this;
  }
  NonEmptyAppender& operator*() { return *this; }
  NonEmptyAppender& operator++() { return *this; }
  NonEmptyAppender& operator++(int) { return *this; }

 private:
  std::deque<CString>* result_;
};

long StatusOf(const std::deque<CString>& result) { return result.empty() ? E_FAIL : S_OK; }

}  // namespace

long VEKZOLSTLServices::Intersection(std::deque<CString>& first, std::deque<CString>& second,
                                     std::deque<CString>& result) {
  if (first.empty() || second.empty()) {
    return E_INVALIDARG;
  }
  _IntersectionTimer.StartTimer();
  {
    const SortedElements left(first);
    const SortedElements right(second);
    std::set_intersection(left.begin(), left.end(), right.begin(), right.end(),
                          NonEmptyAppender(&result), MbsLess());
  }
  const long status = StatusOf(result);
  _IntersectionTimer.StopTimer();
  return status;
}

long VEKZOLSTLServices::Difference(std::deque<CString>& first, std::deque<CString>& second,
                                   std::deque<CString>& result) {
  if (first.empty() && second.empty()) {
    return E_INVALIDARG;
  }
  _DifferenceTimer.StartTimer();
  if (second.empty()) {
    // Nothing to take away: the first list as it stands, unsorted, with its
    // duplicates and empty elements.
    result = first;
  } else if (!first.empty()) {
    const SortedElements left(first);
    const SortedElements right(second);
    std::set_difference(left.begin(), left.end(), right.begin(), right.end(),
                        NonEmptyAppender(&result), MbsLess());
  }
  const long status = StatusOf(result);
  _DifferenceTimer.StopTimer();
  return status;
}

long VEKZOLSTLServices::SymmetricDifference(std::deque<CString>& first, std::deque<CString>& second,
                                            std::deque<CString>& result) {
  if (first.empty() || second.empty()) {
    return E_INVALIDARG;
  }
  _SymmetricDifferenceTimer.StartTimer();
  {
    const SortedElements left(first);
    const SortedElements right(second);
    std::set_symmetric_difference(left.begin(), left.end(), right.begin(), right.end(),
                                  NonEmptyAppender(&result), MbsLess());
  }
  const long status = StatusOf(result);
  _SymmetricDifferenceTimer.StopTimer();
  return status;
}
