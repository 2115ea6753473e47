// Tests of the set of vertices on a walk's path: membership through growth,
// and erasure in any order with colliding probe runs.
#include "graphs/VertexPathSet.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace {

using vekzol::graphs::VertexPathSet;

// Distinct fake addresses spaced like heap blocks; the set never reads
// through them.
std::vector<const VEKZOLGraphVertex*> Addresses(std::size_t count) {
  std::vector<const VEKZOLGraphVertex*> addresses;
  for (std::size_t i = 1; i <= count; ++i) {
    addresses.push_back(reinterpret_cast<const VEKZOLGraphVertex*>(i * 64));
  }
  return addresses;
}

TEST(VertexPathSetTest, NewSetContainsNothing) {
  VertexPathSet set;
  EXPECT_EQ(0u, set.Size());
  EXPECT_FALSE(set.Contains(reinterpret_cast<const VEKZOLGraphVertex*>(64)));
}

TEST(VertexPathSetTest, InsertedVerticesAreContainedThroughGrowth) {
  VertexPathSet set;
  const auto addresses = Addresses(10000);
  for (std::size_t i = 0; i < addresses.size(); ++i) {
    set.Insert(addresses[i]);
    ASSERT_TRUE(set.Contains(addresses[i])) << i;
  }
  EXPECT_EQ(10000u, set.Size());
  for (const auto* address : addresses) {
    EXPECT_TRUE(set.Contains(address));
  }
  EXPECT_FALSE(set.Contains(reinterpret_cast<const VEKZOLGraphVertex*>(64 * 10001)));
  EXPECT_FALSE(set.Contains(reinterpret_cast<const VEKZOLGraphVertex*>(32)));
}

TEST(VertexPathSetTest, ErasingInReverseOrderLeavesExactlyTheOthers) {
  VertexPathSet set;
  const auto addresses = Addresses(5000);
  for (const auto* address : addresses) set.Insert(address);
  for (std::size_t i = addresses.size(); i-- > 2500;) {
    set.Erase(addresses[i]);
  }
  EXPECT_EQ(2500u, set.Size());
  for (std::size_t i = 0; i < addresses.size(); ++i) {
    EXPECT_EQ(i < 2500, set.Contains(addresses[i])) << i;
  }
}

TEST(VertexPathSetTest, ErasingInRandomOrderKeepsEveryOtherEntryReachable) {
  VertexPathSet set;
  auto addresses = Addresses(4000);
  for (const auto* address : addresses) set.Insert(address);
  std::mt19937 random(7);
  std::shuffle(addresses.begin(), addresses.end(), random);
  for (std::size_t i = 0; i < addresses.size(); ++i) {
    set.Erase(addresses[i]);
    ASSERT_FALSE(set.Contains(addresses[i])) << i;
    for (std::size_t j = i + 1; j < addresses.size(); j += 97) {
      ASSERT_TRUE(set.Contains(addresses[j])) << i << " " << j;
    }
  }
  EXPECT_EQ(0u, set.Size());
}

TEST(VertexPathSetTest, AnErasedVertexCanBeInsertedAgain) {
  VertexPathSet set;
  const auto addresses = Addresses(3);
  set.Insert(addresses[0]);
  set.Insert(addresses[1]);
  set.Erase(addresses[0]);
  EXPECT_FALSE(set.Contains(addresses[0]));
  set.Insert(addresses[0]);
  EXPECT_TRUE(set.Contains(addresses[0]));
  EXPECT_TRUE(set.Contains(addresses[1]));
  EXPECT_FALSE(set.Contains(addresses[2]));
  EXPECT_EQ(2u, set.Size());
}

}  // namespace
