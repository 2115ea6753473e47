// File: VEKZOLSTLServices.cpp
// Membership, appending and duplicate removal on deques of CString, and the
// report of the six service timers. The timers themselves are defined with
// the library's other static objects, in load order (LibraryState.cpp).
#include <vekzol/services/VEKZOLSTLServices.h>

#include <algorithm>
#include <cstddef>
#include <deque>
#include <utility>
#include <vector>

#include <vekzol/platform/Status.h>

#include "platform/MbString.h"

// Not fetched yet: constant initialisation.
bool VEKZOLSTLServices::s_DecimalSeparatorKnown = false;

namespace {

bool Equal(const CString& left, const CString& right) {
  return vekzol::platform::Mbscmp(left.GetString(), right.GetString()) == 0;
}

bool Less(const CString& left, const CString& right) {
  return vekzol::platform::Mbscmp(left.GetString(), right.GetString()) < 0;
}

}  // namespace

VEKZOLSTLServices& VEKZOLSTLServices::operator=(const VEKZOLSTLServices&) { return *this; }

long VEKZOLSTLServices::FindInDeque(const CString& value, const std::deque<CString>& list) {
  if (value.IsEmpty() || list.empty()) {
    return E_INVALIDARG;
  }
  _FindInDequeTimer.StartTimer();
  long status = E_FAIL;
  for (const CString& element : list) {
    if (!element.IsEmpty() && Equal(element, value)) {
      status = S_OK;
      break;
    }
  }
  _FindInDequeTimer.StopTimer();
  return status;
}

long VEKZOLSTLServices::AppendToDeque(std::deque<CString>& target, std::deque<CString>& source) {
  if (source.empty()) {
    return E_INVALIDARG;
  }
  _AppendToDequeTimer.StartTimer();
  // By index up to the size at the call: the target may be the source
  // itself, and appending to a deque invalidates its iterators but not
  // references to its elements.
  const size_t count = source.size();
  for (size_t i = 0; i < count; ++i) {
    if (!source[i].IsEmpty()) {
      target.push_back(source[i]);
    }
  }
  _AppendToDequeTimer.StopTimer();
  // The status says nothing here, by design; callers read the target.
  return E_FAIL;
}

long VEKZOLSTLServices::RemoveDuplicates(std::deque<CString>& list) {
  if (list.empty()) {
    return E_INVALIDARG;
  }
  _RemoveDuplicatesTimer.StartTimer();
  // What a map keyed by the elements gives: ascending, each element once,
  // and of equal elements the first one (a stable sort keeps it in front,
  // and unique keeps the front one). The list is only cleared once the
  // copies are made, so a failed allocation leaves it as it was.
  std::vector<CString> kept;
  kept.reserve(list.size());
  for (const CString& element : list) {
    if (!element.IsEmpty()) {
      kept.push_back(element);
    }
  }
  std::stable_sort(kept.begin(), kept.end(), Less);
  kept.erase(std::unique(kept.begin(), kept.end(), Equal), kept.end());
  list.clear();
  for (CString& element : kept) {
    list.push_back(std::move(element));
  }
  _RemoveDuplicatesTimer.StopTimer();
  // The status says nothing here, by design; callers read the list.
  return E_FAIL;
}

void VEKZOLSTLServices::PrintAndResetCummulativeTimes() {
  VEKZOLTimer* const timers[] = {&_FindInDequeTimer,         &_AppendToDequeTimer,
                                 &_IntersectionTimer,        &_DifferenceTimer,
                                 &_SymmetricDifferenceTimer, &_RemoveDuplicatesTimer};
  for (VEKZOLTimer* timer : timers) {
    timer->PrintCummulativeTimes();
    timer->TotalReset();
  }
}
