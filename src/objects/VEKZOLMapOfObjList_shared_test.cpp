// VEKZOLMapOfObjList and TestClassBase as a host sees them: this test links
// the shared library, so every operation used here must be exported.
#include <deque>

#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

namespace {

TEST(VEKZOLMapOfObjListSharedTest, EveryOperationIsReachableThroughTheSharedLibrary) {
  VEKZOLObjectImpl object("o");
  VEKZOLMapOfObjList map;
  EXPECT_EQ(S_OK, map.Add("k", &object));
  std::deque<VEKIZOLObject*> more{nullptr};
  EXPECT_EQ(S_OK, map.Add("k", more));

  VEKZOLMapOfObjList copy(map);
  VEKZOLMapOfObjList assigned;
  assigned = copy;
  std::deque<VEKIZOLObject*> list;
  EXPECT_EQ(S_OK, assigned.Get("k", list));
  EXPECT_EQ(std::deque<VEKIZOLObject*>({&object, nullptr}), list);
  ASSERT_TRUE(assigned.begin() != assigned.end());
  EXPECT_EQ("k", assigned.begin()->first);
  EXPECT_EQ(S_OK, assigned.clear());
  EXPECT_TRUE(assigned.begin() == assigned.end());
  EXPECT_EQ(E_FAIL, assigned.Get("k", list));
}

TEST(TestClassBaseSharedTest, EveryOperationIsReachableThroughTheSharedLibrary) {
  TestClassBase first;
  TestClassBase second;
  first.Foobar();
  EXPECT_EQ(&first, &(first = second));
}

}  // namespace
