// Tests of VEKZOLMapOfObjList: adding single objects and deques, reading a
// group back, walking the groups in key order, clearing, and copies that
// share the objects but not the lists.
#include <vekzol/objects/VEKZOLMapOfObjList.h>

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include <vekzol/objects/VEKZOLObjectImpl.h>

namespace {

static_assert(std::has_virtual_destructor_v<VEKZOLMapOfObjList>);
static_assert(std::is_copy_constructible_v<VEKZOLMapOfObjList>);
static_assert(std::is_copy_assignable_v<VEKZOLMapOfObjList>);

using ObjectList = std::deque<VEKIZOLObject*>;

// The keys of `map`, in the order its iterators give them.
std::vector<std::string> KeysOf(VEKZOLMapOfObjList& map) {
  std::vector<std::string> keys;
  for (auto it = map.begin(); it != map.end(); ++it) {
    keys.push_back(it->first.str());
  }
  return keys;
}

// The list of `key`, or a one-entry marker list when the key is missing.
ObjectList ListOf(VEKZOLMapOfObjList& map, const char* key) {
  ObjectList list;
  if (map.Get(key, list) != S_OK) {
    return ObjectList(1, nullptr);
  }
  return list;
}

class VEKZOLMapOfObjListTest : public ::testing::Test {
 protected:
  VEKZOLObjectImpl m_A{"a"};
  VEKZOLObjectImpl m_B{"b"};
  VEKZOLObjectImpl m_C{"c"};
  VEKIZOLObject* a = &m_A;
  VEKIZOLObject* b = &m_B;
  VEKIZOLObject* c = &m_C;
};

TEST_F(VEKZOLMapOfObjListTest, NewMapIsEmpty) {
  VEKZOLMapOfObjList map;
  EXPECT_TRUE(map.begin() == map.end());
  ObjectList list{a};
  EXPECT_EQ(E_FAIL, map.Get("", list));
  EXPECT_EQ(ObjectList({a}), list);
}

TEST_F(VEKZOLMapOfObjListTest, AddOfOneObjectMakesAListForANewKeyAndAppendsForAKnownOne) {
  VEKZOLMapOfObjList map;
  EXPECT_EQ(S_OK, map.Add("g", a));
  EXPECT_EQ(ObjectList({a}), ListOf(map, "g"));
  EXPECT_EQ(S_OK, map.Add("g", b));
  EXPECT_EQ(S_OK, map.Add("h", c));
  EXPECT_EQ(ObjectList({a, b}), ListOf(map, "g"));
  EXPECT_EQ(ObjectList({c}), ListOf(map, "h"));
}

TEST_F(VEKZOLMapOfObjListTest, AddingTheSamePointerTwiceListsItTwice) {
  VEKZOLMapOfObjList map;
  EXPECT_EQ(S_OK, map.Add("g", a));
  EXPECT_EQ(S_OK, map.Add("g", a));
  EXPECT_EQ(ObjectList({a, a}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, AddOfANullPointerAnswersSOkAndListsTheNullPointer) {
  VEKZOLMapOfObjList map;
  EXPECT_EQ(S_OK, map.Add("g", nullptr));
  EXPECT_EQ(S_OK, map.Add("g", a));
  ObjectList list;
  EXPECT_EQ(S_OK, map.Get("g", list));
  EXPECT_EQ(ObjectList({nullptr, a}), list);
}

TEST_F(VEKZOLMapOfObjListTest, BothAddFormsAcceptTheEmptyKey) {
  VEKZOLMapOfObjList map;
  EXPECT_EQ(S_OK, map.Add("", a));
  ObjectList more{b};
  EXPECT_EQ(S_OK, map.Add("", more));
  EXPECT_EQ(ObjectList({a, b}), ListOf(map, ""));
  EXPECT_EQ(std::vector<std::string>({""}), KeysOf(map));
}

TEST_F(VEKZOLMapOfObjListTest, AddOfADequeAppendsEveryEntryFrontToBackWithoutFilter) {
  VEKZOLMapOfObjList map;
  map.Add("g", c);
  ObjectList added{a, nullptr, b, a};
  EXPECT_EQ(S_OK, map.Add("g", added));
  EXPECT_EQ(ObjectList({c, a, nullptr, b, a}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, AddOfADequeLeavesTheCallersDequeUnchanged) {
  VEKZOLMapOfObjList map;
  map.Add("g", c);
  ObjectList added{a, b};
  map.Add("g", added);
  EXPECT_EQ(ObjectList({a, b}), added);
  // The stored list is a copy: changing the caller's deque afterwards does
  // not reach it.
  added.push_back(c);
  EXPECT_EQ(ObjectList({c, a, b}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, AddOfAnEmptyDequeUnderANewKeyMakesAnEmptyList) {
  VEKZOLMapOfObjList map;
  ObjectList empty;
  EXPECT_EQ(S_OK, map.Add("g", empty));
  ObjectList list{a, b};
  EXPECT_EQ(S_OK, map.Get("g", list));
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(std::vector<std::string>({"g"}), KeysOf(map));
}

TEST_F(VEKZOLMapOfObjListTest, AddOfAnEmptyDequeUnderAKnownKeyKeepsItsList) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  ObjectList empty;
  EXPECT_EQ(S_OK, map.Add("g", empty));
  EXPECT_EQ(ObjectList({a}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, AddOfAKeysOwnListDoublesIt) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  map.Add("g", b);
  EXPECT_EQ(S_OK, map.Add("g", map.begin()->second));
  EXPECT_EQ(ObjectList({a, b, a, b}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, GetOfAnUnknownKeyAnswersEFailAndKeepsTheDequesEntries) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  ObjectList list{b, c};
  EXPECT_EQ(E_FAIL, map.Get("G", list));
  EXPECT_EQ(ObjectList({b, c}), list);
}

TEST_F(VEKZOLMapOfObjListTest, GetOfAKnownKeyReplacesWhatTheDequeHeld) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  ObjectList list{b, c, nullptr};
  EXPECT_EQ(S_OK, map.Get("g", list));
  EXPECT_EQ(ObjectList({a}), list);
}

TEST_F(VEKZOLMapOfObjListTest, GetHandsOutACopyOfTheList) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  ObjectList list;
  map.Get("g", list);
  list.push_back(b);
  EXPECT_EQ(ObjectList({a}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, GetIntoTheKeysOwnListLeavesItAsItIs) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  map.Add("g", b);
  EXPECT_EQ(S_OK, map.Get("g", map.begin()->second));
  EXPECT_EQ(ObjectList({a, b}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, WalkingFromBeginGivesTheKeysInAscendingByteOrder) {
  VEKZOLMapOfObjList map;
  map.Add("a", a);
  map.Add("b", b);
  map.Add("A", c);
  map.Add("B", a);
  map.Add("", b);
  map.Add("a0", c);
  map.Add("\xC3\xA9", a);  // bytes above 0x7F: after every ASCII key
  EXPECT_EQ(std::vector<std::string>({"", "A", "B", "a", "a0", "b", "\xC3\xA9"}), KeysOf(map));
}

TEST_F(VEKZOLMapOfObjListTest, IteratorGivesEachKeyWithItsList) {
  VEKZOLMapOfObjList map;
  map.Add("y", b);
  map.Add("x", a);
  map.Add("x", c);
  VEKZOLMapOfObjList::ListMap::iterator it = map.begin();
  ASSERT_TRUE(it != map.end());
  EXPECT_EQ("x", it->first);
  EXPECT_EQ(ObjectList({a, c}), it->second);
  ++it;
  ASSERT_TRUE(it != map.end());
  EXPECT_EQ("y", it->first);
  EXPECT_EQ(ObjectList({b}), it->second);
  ++it;
  EXPECT_TRUE(it == map.end());
}

TEST_F(VEKZOLMapOfObjListTest, ClearAnswersSOkAndLeavesBeginEqualToEnd) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  map.Add("h", b);
  EXPECT_EQ(S_OK, map.clear());
  EXPECT_TRUE(map.begin() == map.end());
  ObjectList list{c};
  EXPECT_EQ(E_FAIL, map.Get("g", list));
  EXPECT_EQ(ObjectList({c}), list);
  EXPECT_EQ(S_OK, map.clear());
}

TEST_F(VEKZOLMapOfObjListTest, ObjectsStayAliveAndUsableAfterClear) {
  const int counter = VEKZOLObjectImpl::_RefCounter;
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  map.Add("g", b);
  map.clear();
  EXPECT_EQ(counter, VEKZOLObjectImpl::_RefCounter);
  EXPECT_EQ("a", a->GetID());
  EXPECT_EQ(S_OK, m_B.SetDisplayName("still here"));
  EXPECT_EQ("still here", b->GetDisplayName());
  // The map is usable again after clearing.
  EXPECT_EQ(S_OK, map.Add("g", c));
  EXPECT_EQ(ObjectList({c}), ListOf(map, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, DestroyingTheMapLeavesTheObjectsAlive) {
  const int counter = VEKZOLObjectImpl::_RefCounter;
  auto map = std::make_unique<VEKZOLMapOfObjList>();
  map->Add("g", a);
  map->Add("h", a);
  map.reset();
  EXPECT_EQ(counter, VEKZOLObjectImpl::_RefCounter);
  EXPECT_EQ("a", a->GetID());
}

TEST_F(VEKZOLMapOfObjListTest, CopyConstructorCopiesKeysAndListsAndSharesTheObjects) {
  VEKZOLMapOfObjList original;
  original.Add("g", a);
  original.Add("h", b);
  VEKZOLMapOfObjList copy(original);
  EXPECT_EQ(std::vector<std::string>({"g", "h"}), KeysOf(copy));
  EXPECT_EQ(ObjectList({a}), ListOf(copy, "g"));
  EXPECT_EQ(ObjectList({b}), ListOf(copy, "h"));
}

TEST_F(VEKZOLMapOfObjListTest, ChangingACopyChangesNeitherTheFirstMapsKeysNorItsLists) {
  VEKZOLMapOfObjList original;
  original.Add("g", a);
  VEKZOLMapOfObjList copy(original);
  copy.Add("g", b);
  copy.Add("new", c);
  copy.begin()->second.push_front(c);
  EXPECT_EQ(std::vector<std::string>({"g"}), KeysOf(original));
  EXPECT_EQ(ObjectList({a}), ListOf(original, "g"));
  copy.clear();
  EXPECT_EQ(ObjectList({a}), ListOf(original, "g"));
}

TEST_F(VEKZOLMapOfObjListTest, AssignmentReplacesEverythingByACopyOfTheOther) {
  VEKZOLMapOfObjList source;
  source.Add("s", a);
  VEKZOLMapOfObjList target;
  target.Add("t", b);
  target.Add("s", c);

  VEKZOLMapOfObjList& result = (target = source);
  EXPECT_EQ(&target, &result);
  EXPECT_EQ(std::vector<std::string>({"s"}), KeysOf(target));
  EXPECT_EQ(ObjectList({a}), ListOf(target, "s"));
  target.Add("s", b);
  EXPECT_EQ(ObjectList({a}), ListOf(source, "s"));
}

TEST_F(VEKZOLMapOfObjListTest, SelfAssignmentKeepsTheContent) {
  VEKZOLMapOfObjList map;
  map.Add("g", a);
  map.Add("g", b);
  VEKZOLMapOfObjList& alias = map;
  map = alias;
  EXPECT_EQ(std::vector<std::string>({"g"}), KeysOf(map));
  EXPECT_EQ(ObjectList({a, b}), ListOf(map, "g"));
}

// A host class derived from the map reaches the field that holds the groups.
class MapProbe : public VEKZOLMapOfObjList {
 public:
  const ListMap& Lists() const { return m_Lists; }
};

TEST_F(VEKZOLMapOfObjListTest, GroupsLiveInTheProtectedFieldKeyedByText) {
  MapProbe map;
  map.Add("g", a);
  ASSERT_EQ(1u, map.Lists().size());
  EXPECT_EQ(ObjectList({a}), map.Lists().at("g"));
}

}  // namespace
