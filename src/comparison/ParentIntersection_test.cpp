// Tests that the merge the comparison uses while timers are off answers
// exactly as the intersection service would: over lists with duplicates,
// empty ids, ids that differ only by case, ids with embedded NULs (equal
// to `_mbscmp` up to the NUL, so which copy is handed on decides), and
// lists long enough to take the service's own way.
#include "comparison/ParentIntersection.h"

#include <deque>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/services/VEKZOLSTLServices.h>

namespace {

using vekzol::comparison::IntersectionIsNotEmpty;
using vekzol::comparison::IntersectionIsNotEmptyByReference;

std::vector<const CString*> References(const std::vector<CString>& ids) {
  std::vector<const CString*> references;
  for (const CString& id : ids) references.push_back(&id);
  return references;
}

CString Text(const std::string& bytes) {
  return CString(bytes.data(), static_cast<int>(bytes.size()));
}

bool ServiceAnswer(const std::vector<CString>& first, const std::vector<CString>& second) {
  std::deque<CString> a(first.begin(), first.end());
  std::deque<CString> b(second.begin(), second.end());
  std::deque<CString> common;
  VEKZOLSTLServices::Intersection(a, b, common);
  return !common.empty();
}

TEST(ParentIntersectionTest, AnswersAsTheIntersectionServiceOverEveryPairOfSmallLists) {
  const std::vector<CString> pool = {Text(""),         Text("P"),
                                     Text("p"),        Text("Q"),
                                     Text("P"),        Text(std::string("\0a", 2)),
                                     Text("PRC-0001"), Text(std::string("P\0x", 3))};
  // Every list of up to three elements of the pool, against every other.
  std::vector<std::vector<CString>> lists = {{}};
  for (size_t length = 1; length <= 3; ++length) {
    std::vector<std::vector<CString>> longer;
    for (const auto& list : lists) {
      if (list.size() != length - 1) continue;
      for (const CString& id : pool) {
        auto grown = list;
        grown.push_back(id);
        longer.push_back(grown);
      }
    }
    lists.insert(lists.end(), longer.begin(), longer.end());
  }
  size_t checked = 0;
  for (const auto& first : lists) {
    for (const auto& second : lists) {
      const bool answer = ServiceAnswer(first, second);
      ASSERT_EQ(answer, IntersectionIsNotEmpty(first, second))
          << "lists of " << first.size() << " and " << second.size();
      ASSERT_EQ(answer, IntersectionIsNotEmptyByReference(References(first), References(second)))
          << "lists of " << first.size() << " and " << second.size();
      ++checked;
    }
  }
  EXPECT_GT(checked, 300000u);
}

TEST(ParentIntersectionTest, EmptyListsShareNothing) {
  EXPECT_FALSE(IntersectionIsNotEmpty({}, {Text("P")}));
  EXPECT_FALSE(IntersectionIsNotEmpty({Text("P")}, {}));
  EXPECT_FALSE(IntersectionIsNotEmpty({}, {}));
}

TEST(ParentIntersectionTest, OnlyEmptyIdsInCommonShareNothing) {
  EXPECT_FALSE(IntersectionIsNotEmpty({Text(""), Text("A")}, {Text(""), Text("B")}));
  EXPECT_TRUE(IntersectionIsNotEmpty({Text(""), Text("A")}, {Text("A")}));
}

TEST(ParentIntersectionTest, LongListsTakeTheServiceWayWithTheSameAnswer) {
  std::vector<CString> first;
  std::vector<CString> second;
  for (int i = 0; i < 40; ++i) {
    first.push_back(Text("A" + std::to_string(i)));
    second.push_back(Text("B" + std::to_string(i)));
  }
  EXPECT_FALSE(IntersectionIsNotEmpty(first, second));
  second.push_back(Text("A17"));
  EXPECT_TRUE(IntersectionIsNotEmpty(first, second));
  EXPECT_EQ(ServiceAnswer(first, second), IntersectionIsNotEmpty(first, second));
  EXPECT_TRUE(IntersectionIsNotEmptyByReference(References(first), References(second)));
}

}  // namespace
