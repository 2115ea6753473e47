// File: VEKZOLSTLServicesSort.cpp
// Sorting of object lists by display name, alphabetically or by the number
// in the name, timed by a timer of the call's own.
#include <vekzol/services/VEKZOLSTLServices.h>

#include <algorithm>
#include <deque>

#include <vekzol/platform/Status.h>

#include "platform/MbString.h"

namespace {

// Both comparisons answer false when either object is missing, so a null
// pointer is neither less nor greater than anything. They stay irreflexive
// and asymmetric, which is what keeps the standard sort inside the range.
bool NameLess(VEKIZOLObject* left, VEKIZOLObject* right) {
  if (left == nullptr || right == nullptr) {
    return false;
  }
  return vekzol::platform::Mbscmp(left->GetDisplayName().GetString(),
                                  right->GetDisplayName().GetString()) < 0;
}

// A name that holds no number counts as 0.0; the status of the conversion
// is not read.
bool NumberLess(VEKIZOLObject* left, VEKIZOLObject* right) {
  if (left == nullptr || right == nullptr) {
    return false;
  }
  double leftNumber = 0.0;
  double rightNumber = 0.0;
  VEKZOLSTLServices::String2Double(left->GetDisplayName(), leftNumber);
  VEKZOLSTLServices::String2Double(right->GetDisplayName(), rightNumber);
  return leftNumber < rightNumber;
}

}  // namespace

long VEKZOLSTLServices::SortListObjects(std::deque<VEKIZOLObject*>& objects, int mode) {
  VEKZOLTimer timer("STLServices - Sort List Objects Timer");
  timer.StartTimer();
  if (mode == 0) {
    std::sort(objects.begin(), objects.end(), NameLess);
  } else if (mode == 1) {
    std::sort(objects.begin(), objects.end(), NumberLess);
  }
  timer.StopAndPrintTimer();
  return S_OK;
}
