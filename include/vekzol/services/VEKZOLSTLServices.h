// File: VEKZOLSTLServices.h
// VEKZOLSTLServices: static operations on deques of CString (membership,
// appending, multiset algebra, duplicate removal), the sorting of object
// lists, a string-to-number conversion that does not depend on the user's
// decimal separator, and a case-insensitive search.
//
// Contract:
// - Elements are compared as CString compares them (`_mbscmp`:
//   case-sensitive, up to the first NUL). An empty CString is no element:
//   every operation drops it from what it produces, except the copy that
//   Difference makes of its first list when the second is empty.
// - Results are appended to the result list, which is not cleared first
//   (Difference with an empty second list alone replaces it).
// - Statuses: S_OK for done or found; E_INVALIDARG for an empty input,
//   found before anything has changed; E_FAIL for nothing found or no
//   result. AppendToDeque and RemoveDuplicates answer E_FAIL after having
//   done their work, on success too: only their E_INVALIDARG tells
//   anything.
// - The six timers below run around the operation of the same name, started
//   behind the argument checks; PrintAndResetCummulativeTimes prints and
//   clears them.
// - Failures of memory pass through as exceptions; a timer stays started
//   then.
// - Not synchronised. The first successful String2Double switches the
//   process's numeric locale for the time of one conversion.
#ifndef VEKZOL_SERVICES_VEKZOLSTLSERVICES_H_
#define VEKZOL_SERVICES_VEKZOLSTLSERVICES_H_

#include <deque>

#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLSTLServices {
 public:
  VEKZOLSTLServices& operator=(const VEKZOLSTLServices& other);

  // S_OK when `value` is an element of `list`; E_FAIL when not;
  // E_INVALIDARG for an empty value or list.
  static long FindInDeque(const CString& value, const std::deque<CString>& list);

  // Appends the non-empty elements of `source` to `target`, in order,
  // without testing for duplicates. E_INVALIDARG for an empty source, else
  // E_FAIL.
  static long AppendToDeque(std::deque<CString>& target, std::deque<CString>& source);

  // Multiset algebra: an element held m times in the first list and n times
  // in the second comes out min(m, n) times (Intersection), max(m - n, 0)
  // times (Difference) or |m - n| times (SymmetricDifference), appended to
  // `result` in ascending order without empty elements. The inputs are not
  // changed. S_OK when `result` is then non-empty, else E_FAIL.
  // Intersection and SymmetricDifference answer E_INVALIDARG when either
  // input is empty. Difference answers E_INVALIDARG when both are; with
  // only the first empty it adds nothing; with only the second empty it
  // replaces `result` by a copy of the first list as it stands (its order,
  // duplicates and empty elements kept).
  static long Intersection(std::deque<CString>& first, std::deque<CString>& second,
                           std::deque<CString>& result);
  static long Difference(std::deque<CString>& first, std::deque<CString>& second,
                         std::deque<CString>& result);
  static long SymmetricDifference(std::deque<CString>& first, std::deque<CString>& second,
                                  std::deque<CString>& result);

  // Leaves `list` sorted ascending, each element once, without empty
  // elements (of equal elements the first one stays). E_INVALIDARG for an
  // empty list, else E_FAIL.
  static long RemoveDuplicates(std::deque<CString>& list);

  // Sorts `objects` in place by display name with an unstable sort: mode 0
  // alphabetically, mode 1 by the number String2Double reads from the name
  // (0.0 where it reads none); any other mode leaves the order. A null
  // pointer compares as neither less nor greater. Reports its time through a
  // timer of its own when timers are on. Returns S_OK.
  static long SortListObjects(std::deque<VEKIZOLObject*>& objects, int mode);

  // Reads a number from `text` whatever the user's decimal separator: the
  // separator's first byte becomes "." before the conversion, which reads
  // the longest number at the start of the text (0.0 when there is none,
  // S_OK all the same). The first call fetches the separator and converts
  // under the "C" numeric locale, switched for the conversion; later calls
  // convert under the numeric locale then in force. E_FAIL, with `number`
  // untouched, when the separator cannot be fetched or the locale cannot be
  // switched; E_FAIL, with `number` set, when the locale cannot be switched
  // back.
  static long String2Double(CString text, double& number);

  // The byte index of the first occurrence of `pattern` in `text` at or
  // after the byte index `start`, ASCII letters compared without case;
  // -1 when there is none or `start` lies outside 0 .. text length. An empty
  // pattern gives `start`.
  static int FindInStringNoCase(CString text, CString pattern, int start);

  // Prints the cumulative line of each of the six timers, in the order
  // below, and totally resets it.
  static void PrintAndResetCummulativeTimes();

  static VEKZOLTimer _FindInDequeTimer;
  static VEKZOLTimer _AppendToDequeTimer;
  static VEKZOLTimer _IntersectionTimer;
  static VEKZOLTimer _DifferenceTimer;
  static VEKZOLTimer _SymmetricDifferenceTimer;
  static VEKZOLTimer _RemoveDuplicatesTimer;

 private:
  friend class VEKZOLSTLServicesTestPeer;

  // The user's decimal separator has been fetched.
  static bool s_DecimalSeparatorKnown;
};

#endif  // VEKZOL_SERVICES_VEKZOLSTLSERVICES_H_
