// Tests of a vertex's edge list: empty, one edge held in place, growth into
// a block, null entries, order, copies and assignment, and that one edge
// costs no allocation.
#include <vekzol/graphs/VEKZOLEdgeList.h>

#include <vector>

#include <gtest/gtest.h>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/platform/Status.h>

#include "platform/CountingAllocatorTesting.h"

namespace {

std::vector<VEKZOLGraphEdge*> Items(const VEKZOLEdgeList& list) {
  return std::vector<VEKZOLGraphEdge*>(list.begin(), list.end());
}

class VEKZOLEdgeListTest : public ::testing::Test {
 protected:
  VEKZOLEdgeListTest() {
    for (int i = 0; i < 40; ++i) edges.push_back(reinterpret_cast<VEKZOLGraphEdge*>(&storage[i]));
  }
  long long storage[40] = {};
  std::vector<VEKZOLGraphEdge*> edges;
};

TEST_F(VEKZOLEdgeListTest, StartsEmpty) {
  VEKZOLEdgeList list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(0u, list.size());
  EXPECT_EQ(list.begin(), list.end());
}

TEST_F(VEKZOLEdgeListTest, OneEdgeIsHeldWithoutAllocating) {
  VEKZOLEdgeList list;
  const std::size_t before = g_allocations;
  list.push_back(edges[0]);
  EXPECT_EQ(before, g_allocations);
  EXPECT_EQ(1u, list.size());
  EXPECT_EQ(edges[0], list.front());
  EXPECT_EQ(edges[0], list[0]);
  EXPECT_EQ(std::vector<VEKZOLGraphEdge*>{edges[0]}, Items(list));
}

TEST_F(VEKZOLEdgeListTest, KeepsEveryEdgeInOrderAsItGrows) {
  VEKZOLEdgeList list;
  std::vector<VEKZOLGraphEdge*> expected;
  for (VEKZOLGraphEdge* edge : edges) {
    list.push_back(edge);
    expected.push_back(edge);
    ASSERT_EQ(expected, Items(list));
  }
  EXPECT_EQ(40u, list.size());
}

TEST_F(VEKZOLEdgeListTest, KeepsNullEntriesFirstAndLater) {
  VEKZOLEdgeList list;
  list.push_back(nullptr);
  EXPECT_EQ(1u, list.size());
  EXPECT_FALSE(list.empty());
  EXPECT_EQ(nullptr, list.front());
  list.push_back(edges[1]);
  list.push_back(nullptr);
  EXPECT_EQ((std::vector<VEKZOLGraphEdge*>{nullptr, edges[1], nullptr}), Items(list));
}

TEST_F(VEKZOLEdgeListTest, CopiesHoldTheSameEdgesInBlocksOfTheirOwn) {
  VEKZOLEdgeList one;
  one.push_back(edges[0]);
  VEKZOLEdgeList many;
  for (int i = 0; i < 5; ++i) many.push_back(edges[i]);
  VEKZOLEdgeList oneCopy(one);
  VEKZOLEdgeList manyCopy(many);
  EXPECT_EQ(Items(one), Items(oneCopy));
  EXPECT_EQ(Items(many), Items(manyCopy));
  EXPECT_NE(many.begin(), manyCopy.begin());
  manyCopy.push_back(edges[9]);
  EXPECT_EQ(5u, many.size());
  one = many;
  EXPECT_EQ(Items(many), Items(one));
  many = many;  // NOLINT: assignment to itself keeps the list
  EXPECT_EQ(5u, many.size());
  one.clear();
  EXPECT_TRUE(one.empty());
}

TEST_F(VEKZOLEdgeListTest, AFailedGrowthRaisesOutOfMemoryAndKeepsTheList) {
  VEKZOLEdgeList list;
  list.push_back(edges[0]);
  list.push_back(edges[1]);
  HRESULT status = S_OK;
  g_failAllocations = true;
  try {
    list.push_back(edges[2]);
    list.push_back(edges[3]);
  } catch (const CAtlException& e) {
    status = e.m_hr;
  }
  g_failAllocations = false;
  EXPECT_EQ(E_OUTOFMEMORY, status);
  EXPECT_EQ((std::vector<VEKZOLGraphEdge*>{edges[0], edges[1]}), Items(list));
}

}  // namespace
