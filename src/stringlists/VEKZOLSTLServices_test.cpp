// File: VEKZOLSTLServices_test.cpp
// Membership, appending, the three set operations, duplicate removal, the
// case-insensitive search and the cumulative report of the service timers,
// with timers off (both switches are empty in this program's environment).
#include <vekzol/services/VEKZOLSTLServices.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "platform/MbString.h"
#include "stringlists/VEKZOLSTLServicesTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_stl_test::Bytes;
using vekzol_stl_test::List;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TimerClockSystem;
using vekzol_timer_test::TraceBody;
using Strings = std::vector<std::string>;

// Equal elements that differ after an embedded NUL: they compare equal, so
// which of them an operation hands on shows the order it keeps.
const std::string kA1(
    "a\0"
    "1",
    3);
const std::string kA2(
    "a\0"
    "2",
    3);
const std::string kA3(
    "a\0"
    "3",
    3);

// ---------------------------------------------------------------- FindInDeque

TEST(VEKZOLSTLServicesFindInDequeTest, FindsAnElementAndMissesAnother) {
  const std::deque<CString> list = List({"b", "", "a"});
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("a", list), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("b", list), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("c", list), E_FAIL);
}

TEST(VEKZOLSTLServicesFindInDequeTest, EmptyValueIsInvalidEvenWhenTheListHoldsAnEmptyElement) {
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("", List({"a", ""})), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("", List({""})), E_INVALIDARG);
}

TEST(VEKZOLSTLServicesFindInDequeTest, EmptyListIsInvalid) {
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("a", std::deque<CString>()), E_INVALIDARG);
}

TEST(VEKZOLSTLServicesFindInDequeTest, ComparesWithCaseUpToTheFirstNul) {
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque("A", List({"a"})), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque(CString(kA1), List({kA2})), S_OK);
  // An element that is only a NUL and more compares equal to the empty
  // text, but is not empty itself, so it is compared and found.
  const std::string nulFirst("\0x", 2);
  const std::string nulOther("\0y", 2);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque(CString(nulFirst), List({""})), E_FAIL);
  EXPECT_EQ(VEKZOLSTLServices::FindInDeque(CString(nulFirst), List({nulOther})), S_OK);
}

// -------------------------------------------------------------- AppendToDeque

TEST(VEKZOLSTLServicesAppendToDequeTest, AppendsNonEmptyElementsInOrderAndAnswersEFail) {
  std::deque<CString> target = List({"x"});
  std::deque<CString> source = List({"b", "", "a", "b"});
  EXPECT_EQ(VEKZOLSTLServices::AppendToDeque(target, source), E_FAIL);
  EXPECT_EQ(Bytes(target), (Strings{"x", "b", "a", "b"}));
  EXPECT_EQ(Bytes(source), (Strings{"b", "", "a", "b"}));
}

TEST(VEKZOLSTLServicesAppendToDequeTest, EmptySourceIsInvalidAndChangesNothing) {
  std::deque<CString> target = List({"x"});
  std::deque<CString> source;
  EXPECT_EQ(VEKZOLSTLServices::AppendToDeque(target, source), E_INVALIDARG);
  EXPECT_EQ(Bytes(target), (Strings{"x"}));
}

TEST(VEKZOLSTLServicesAppendToDequeTest, SourceOfEmptyElementsOnlyAppendsNothing) {
  std::deque<CString> target;
  std::deque<CString> source = List({"", ""});
  EXPECT_EQ(VEKZOLSTLServices::AppendToDeque(target, source), E_FAIL);
  EXPECT_TRUE(target.empty());
}

TEST(VEKZOLSTLServicesAppendToDequeTest, ListAppendedToItselfGetsItsElementsOnceMore) {
  std::deque<CString> list = List({"a", "", "b"});
  EXPECT_EQ(VEKZOLSTLServices::AppendToDeque(list, list), E_FAIL);
  EXPECT_EQ(Bytes(list), (Strings{"a", "", "b", "a", "b"}));
}

// --------------------------------------------------------------- Intersection

TEST(VEKZOLSTLServicesIntersectionTest, KeepsTheSmallerMultiplicity) {
  std::deque<CString> first = List({"a", "a", "b"});
  std::deque<CString> second = List({"a", "a", "a"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"a", "a"}));
  EXPECT_EQ(Bytes(first), (Strings{"a", "a", "b"}));
  EXPECT_EQ(Bytes(second), (Strings{"a", "a", "a"}));
}

TEST(VEKZOLSTLServicesIntersectionTest, ResultIsAscendingWhateverTheInputOrder) {
  std::deque<CString> first = List({"c", "B", "a", "d", "b"});
  std::deque<CString> second = List({"d", "a", "c", "b"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"a", "b", "c", "d"}));
}

TEST(VEKZOLSTLServicesIntersectionTest, EmptyElementsGiveNothing) {
  std::deque<CString> first = List({"", "a"});
  std::deque<CString> second = List({""});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), E_FAIL);
  EXPECT_TRUE(result.empty());
}

TEST(VEKZOLSTLServicesIntersectionTest, EitherInputEmptyIsInvalid) {
  std::deque<CString> some = List({"a"});
  std::deque<CString> none;
  std::deque<CString> result = List({"z"});
  EXPECT_EQ(VEKZOLSTLServices::Intersection(none, none, result), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::Intersection(none, some, result), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::Intersection(some, none, result), E_INVALIDARG);
  EXPECT_EQ(Bytes(result), (Strings{"z"}));
}

TEST(VEKZOLSTLServicesIntersectionTest, AppendsToTheResultAndJudgesTheWholeResult) {
  std::deque<CString> first = List({"a"});
  std::deque<CString> second = List({"b"});
  std::deque<CString> result = List({"z"});
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"z"}));
  second = List({"a"});
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"z", "a"}));
}

TEST(VEKZOLSTLServicesIntersectionTest, ComparesWithCase) {
  std::deque<CString> first = List({"A"});
  std::deque<CString> second = List({"a"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), E_FAIL);
}

TEST(VEKZOLSTLServicesIntersectionTest, EqualElementsComeFromTheFirstListInItsOrder) {
  std::deque<CString> first = List({kA2, kA1});
  std::deque<CString> second = List({kA3});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Intersection(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{kA2}));
}

TEST(VEKZOLSTLServicesIntersectionTest, ResultMayBeOneOfTheInputs) {
  std::deque<CString> list = List({"b", "a"});
  std::deque<CString> other = List({"a", "b", "c"});
  EXPECT_EQ(VEKZOLSTLServices::Intersection(list, other, list), S_OK);
  EXPECT_EQ(Bytes(list), (Strings{"b", "a", "a", "b"}));
  EXPECT_EQ(VEKZOLSTLServices::Intersection(other, other, other), S_OK);
  EXPECT_EQ(Bytes(other), (Strings{"a", "b", "c", "a", "b", "c"}));
}

// ----------------------------------------------------------------- Difference

TEST(VEKZOLSTLServicesDifferenceTest, TakesAwayOneForOneAndSorts) {
  std::deque<CString> first = List({"c", "a", "a"});
  std::deque<CString> second = List({"a"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"a", "c"}));
}

TEST(VEKZOLSTLServicesDifferenceTest, EmptySecondListReplacesTheResultByTheFirstAsItStands) {
  std::deque<CString> first = List({"c", "a", "a"});
  std::deque<CString> second;
  std::deque<CString> result = List({"z", "y"});
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"c", "a", "a"}));
  first = List({"c", "a", "", "a"});
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"c", "a", "", "a"}));
  first = List({""});
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{""}));
}

TEST(VEKZOLSTLServicesDifferenceTest, EmptyFirstListAddsNothingAndTheResultDecides) {
  std::deque<CString> first;
  std::deque<CString> second = List({"a"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), E_FAIL);
  EXPECT_TRUE(result.empty());
  result = List({"z"});
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"z"}));
}

TEST(VEKZOLSTLServicesDifferenceTest, BothListsEmptyIsInvalid) {
  std::deque<CString> first;
  std::deque<CString> second;
  std::deque<CString> result = List({"z"});
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), E_INVALIDARG);
  EXPECT_EQ(Bytes(result), (Strings{"z"}));
}

TEST(VEKZOLSTLServicesDifferenceTest, NothingLeftIsEFail) {
  std::deque<CString> first = List({"a", ""});
  std::deque<CString> second = List({"a", "a"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), E_FAIL);
  EXPECT_TRUE(result.empty());
}

TEST(VEKZOLSTLServicesDifferenceTest, EqualElementsLeftAreTheLastOfTheFirstList) {
  std::deque<CString> first = List({kA1, kA2});
  std::deque<CString> second = List({kA3});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::Difference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{kA2}));
}

// -------------------------------------------------------- SymmetricDifference

TEST(VEKZOLSTLServicesSymmetricDifferenceTest, KeepsTheDifferenceOfTheMultiplicities) {
  std::deque<CString> first = List({"a", "a"});
  std::deque<CString> second = List({"a", "b"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"a", "b"}));
}

TEST(VEKZOLSTLServicesSymmetricDifferenceTest, EitherInputEmptyIsInvalidWhereDifferenceAnswers) {
  std::deque<CString> some = List({"a"});
  std::deque<CString> none;
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(some, none, result), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(none, some, result), E_INVALIDARG);
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(none, none, result), E_INVALIDARG);
  EXPECT_TRUE(result.empty());
  EXPECT_EQ(VEKZOLSTLServices::Difference(some, none, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{"a"}));
}

TEST(VEKZOLSTLServicesSymmetricDifferenceTest, EqualListsGiveNothing) {
  std::deque<CString> first = List({"b", "a", ""});
  std::deque<CString> second = List({"a", "b"});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(first, second, result), E_FAIL);
  EXPECT_TRUE(result.empty());
}

TEST(VEKZOLSTLServicesSymmetricDifferenceTest, EqualElementsLeftComeFromTheLongerRun) {
  std::deque<CString> first = List({kA1});
  std::deque<CString> second = List({kA2, kA3});
  std::deque<CString> result;
  EXPECT_EQ(VEKZOLSTLServices::SymmetricDifference(first, second, result), S_OK);
  EXPECT_EQ(Bytes(result), (Strings{kA3}));
}

// ------------------------------------------ The set operations against multisets

// The plain construction: a multiset of each list, the standard algorithm
// into a work list of empty strings, then the non-empty elements.
struct MbsLess {
  bool operator()(const CString& left, const CString& right) const {
    return vekzol::platform::Mbscmp(left.GetString(), right.GetString()) < 0;
  }
};
enum class Operation { kIntersection, kDifference, kSymmetricDifference };

Strings ByMultisets(Operation operation, const std::deque<CString>& first,
                    const std::deque<CString>& second) {
  std::multiset<CString, MbsLess> left;
  for (const CString& element : first) left.insert(element);
  std::multiset<CString, MbsLess> right;
  for (const CString& element : second) right.insert(element);
  std::vector<CString> work(first.size() + second.size() + 1);
  std::vector<CString>::iterator end;
  switch (operation) {
    case Operation::kIntersection:
      end = std::set_intersection(left.begin(), left.end(), right.begin(), right.end(),
                                  work.begin(), MbsLess());
      break;
    case Operation::kDifference:
      end = std::set_difference(left.begin(), left.end(), right.begin(), right.end(), work.begin(),
                                MbsLess());
      break;
    case Operation::kSymmetricDifference:
      end = std::set_symmetric_difference(left.begin(), left.end(), right.begin(), right.end(),
                                          work.begin(), MbsLess());
      break;
  }
  Strings produced;
  for (auto it = work.begin(); it != end; ++it) {
    if (!it->IsEmpty()) produced.push_back(it->str());
  }
  return produced;
}

std::deque<CString> RandomList(std::mt19937& random, size_t size) {
  // Few distinct values, so duplicates are common; some compare equal
  // without being the same bytes.
  static const std::string kValues[] = {"",   "a",        "b",        "B",
                                        "ab", "PRC-0001", "PRC-0002", "\xC3\xA9",
                                        kA1,  kA2,        kA3,        std::string("\0z", 2)};
  std::deque<CString> list;
  for (size_t i = 0; i < size; ++i) {
    list.emplace_back(kValues[random() % (sizeof kValues / sizeof kValues[0])]);
  }
  return list;
}

TEST(VEKZOLSTLServicesSetsTest, ShortAndLongListsGiveWhatMultisetsGive) {
  std::mt19937 random(20240611);
  const size_t sizes[] = {1, 2, 3, 5, 15, 16, 17, 40, 300};
  for (size_t firstSize : sizes) {
    for (size_t secondSize : sizes) {
      for (int round = 0; round < 3; ++round) {
        std::deque<CString> first = RandomList(random, firstSize);
        std::deque<CString> second = RandomList(random, secondSize);
        std::deque<CString> result;
        VEKZOLSTLServices::Intersection(first, second, result);
        EXPECT_EQ(Bytes(result), ByMultisets(Operation::kIntersection, first, second))
            << firstSize << " x " << secondSize;
        result.clear();
        VEKZOLSTLServices::Difference(first, second, result);
        EXPECT_EQ(Bytes(result), ByMultisets(Operation::kDifference, first, second))
            << firstSize << " x " << secondSize;
        result.clear();
        VEKZOLSTLServices::SymmetricDifference(first, second, result);
        EXPECT_EQ(Bytes(result), ByMultisets(Operation::kSymmetricDifference, first, second))
            << firstSize << " x " << secondSize;
      }
    }
  }
}

// ------------------------------------------------------------ RemoveDuplicates

TEST(VEKZOLSTLServicesRemoveDuplicatesTest, LeavesEachElementOnceSortedAndAnswersEFail) {
  std::deque<CString> list = List({"b", "a", "b", ""});
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(list), E_FAIL);
  EXPECT_EQ(Bytes(list), (Strings{"a", "b"}));
}

TEST(VEKZOLSTLServicesRemoveDuplicatesTest, ListOfEmptyElementsOnlyIsLeftEmpty) {
  std::deque<CString> list = List({"", "", ""});
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(list), E_FAIL);
  EXPECT_TRUE(list.empty());
}

TEST(VEKZOLSTLServicesRemoveDuplicatesTest, EmptyListIsInvalid) {
  std::deque<CString> list;
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(list), E_INVALIDARG);
}

TEST(VEKZOLSTLServicesRemoveDuplicatesTest, OrderIsThatOfUnsignedBytes) {
  std::deque<CString> list = List({"\xC3\xA9", "z", "Z", "a", "z", "10", "9"});
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(list), E_FAIL);
  EXPECT_EQ(Bytes(list), (Strings{"10", "9", "Z", "a", "z", "\xC3\xA9"}));
}

TEST(VEKZOLSTLServicesRemoveDuplicatesTest, OfEqualElementsTheFirstStays) {
  std::deque<CString> list = List({"b", kA2, kA1, kA3, "b"});
  EXPECT_EQ(VEKZOLSTLServices::RemoveDuplicates(list), E_FAIL);
  EXPECT_EQ(Bytes(list), (Strings{kA2, "b"}));
}

// ---------------------------------------------------------- FindInStringNoCase

TEST(VEKZOLSTLServicesFindInStringNoCaseTest, FindsFromTheStartOnWithoutCase) {
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "bc", 0), 1);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "bc", 1), 1);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "bc", 2), -1);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "bc", 4), -1);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("abcABC", "ABC", 1), 3);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "x", 0), -1);
}

TEST(VEKZOLSTLServicesFindInStringNoCaseTest, StartOutsideTheTextIsMinusOne) {
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "", -1), -1);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "", 4), -1);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "c", 3), -1);
}

TEST(VEKZOLSTLServicesFindInStringNoCaseTest, EmptyPatternGivesTheStart) {
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "", 0), 0);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "", 2), 2);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("AbC", "", 3), 3);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("", "", 0), 0);
}

TEST(VEKZOLSTLServicesFindInStringNoCaseTest, IndexesCountBytesAndOnlyAsciiLettersFold) {
  // "é" is two bytes, so "cole" starts at byte 2.
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("\xC3\xA9"
                                                  "COLE",
                                                  "cole", 0),
            2);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("\xC3\x89"
                                                  "cole",
                                                  "\xC3\xA9", 0),
            -1);
  EXPECT_EQ(VEKZOLSTLServices::FindInStringNoCase("x\xC3\xA9y\xC3\xA9", "\xC3\xA9", 2), 4);
}

// ----------------------------------------------------------- The timer report

TEST(VEKZOLSTLServicesReportTest, PrintAndResetWritesTheSixTimersInOrderWithTimersOff) {
  FreshTrace();
  TimerClockSystem system;
  ScopedSystem scoped(&system);
  std::deque<CString> list = List({"a"});
  std::deque<CString> result;
  VEKZOLSTLServices::Intersection(list, list, result);
  VEKZOLSTLServices::PrintAndResetCummulativeTimes();
  const char* const names[] = {"Find In Deque", "Append To Deque",      "Intersection",
                               "Difference",    "Symmetric Difference", "Remove Duplicates"};
  std::string expected;
  for (const char* name : names) {
    expected += Line(std::string("Timer:\t STL Services - ") + name +
                     " Timer\tCummulative CPU Time:\t0\tCummulative Elapsed Time:\t0"
                     "\tNb Calls:\t0");
  }
  EXPECT_EQ(TraceBody(), expected);
}

}  // namespace
