// Tests of the id index of a model file: the first object of an id stays,
// look-ups are exact (case, length, a NUL inside), and growing beyond the
// room asked for loses nothing.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "IdIndex.h"

namespace vekzol_tool {
namespace {

using Index = IdIndex<int>;

int* FindIn(const Index& index, std::string_view id) { return index.Find(id, Index::Hash(id)); }

TEST(IdIndex, KeepsTheFirstObjectOfAnId) {
  int first = 1;
  int second = 2;
  Index index(2);
  EXPECT_TRUE(index.Add("PRC-1", Index::Hash("PRC-1"), &first));
  EXPECT_FALSE(index.Add("PRC-1", Index::Hash("PRC-1"), &second));
  EXPECT_EQ(&first, FindIn(index, "PRC-1"));
}

TEST(IdIndex, FindsOnlyTheExactId) {
  int object = 1;
  int empty = 2;
  Index index(4);
  index.Add("PRC-1", Index::Hash("PRC-1"), &object);
  index.Add("", Index::Hash(""), &empty);
  EXPECT_EQ(nullptr, FindIn(index, "prc-1"));
  EXPECT_EQ(nullptr, FindIn(index, "PRC-10"));
  EXPECT_EQ(nullptr, FindIn(index, "PRC-"));
  EXPECT_EQ(nullptr, FindIn(index, std::string_view("PRC-1\0", 6)));
  EXPECT_EQ(&empty, FindIn(index, ""));
}

TEST(IdIndex, GrowsBeyondTheRoomAskedForAndAsksMemoryAheadWithoutChanges) {
  std::vector<std::string> ids;
  for (int i = 0; i < 5000; ++i) ids.push_back("E-" + std::to_string(i));
  std::vector<int> objects(ids.size());
  Index index(10);
  for (size_t i = 0; i < ids.size(); ++i) {
    index.PrefetchSlot(Index::Hash(ids[i]));
    index.PrefetchText(Index::Hash(ids[i]));
    ASSERT_TRUE(index.Add(ids[i], Index::Hash(ids[i]), &objects[i]));
  }
  for (size_t i = 0; i < ids.size(); ++i) EXPECT_EQ(&objects[i], FindIn(index, ids[i]));
  EXPECT_EQ(nullptr, FindIn(index, "E-5000"));
}

}  // namespace
}  // namespace vekzol_tool
