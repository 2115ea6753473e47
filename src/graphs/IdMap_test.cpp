// Tests of the graphs' id map: ascending `_mbscmp` order whatever the order
// of insertion, exact case-sensitive look-up before and after sorting, the
// first value of a key kept, keys equal up to an embedded NUL taken as one,
// null values, growth from one entry to many, copies, clearing, and the
// same answers as an ordered map over a million random insertions.
#include "graphs/IdMap.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/TextOrder.h"

namespace {

using Map = vekzol::graphs::IdMap<int>;

CString Text(const std::string& bytes) {
  return CString(bytes.data(), static_cast<int>(bytes.size()));
}

std::vector<std::string> Keys(const Map& map) {
  std::vector<std::string> keys;
  for (const auto& entry : map) keys.emplace_back(entry.first.GetString(), entry.first.GetLength());
  return keys;
}

TEST(IdMapTest, IteratesInAscendingByteOrderWhateverTheInsertionOrder) {
  Map map;
  int value = 0;
  for (const char* id : {"q", "p", "B", "a", "A", "\xC3\xA9", "aa", ""}) map.Insert(id, &value);
  EXPECT_EQ((std::vector<std::string>{"", "A", "B", "a", "aa", "p", "q", "\xC3\xA9"}), Keys(map));
}

TEST(IdMapTest, TheFirstValueOfAKeyStays) {
  Map map;
  int first = 1;
  int second = 2;
  EXPECT_EQ(std::make_pair(&first, true), map.Insert("k", &first));
  EXPECT_EQ(std::make_pair(&first, false), map.Insert("k", &second));
  EXPECT_EQ(1u, map.size());
  EXPECT_EQ(&first, map.Find("k")->second);
}

TEST(IdMapTest, LookUpIsExactAndCaseSensitiveBeforeAndAfterSorting) {
  Map map;
  int a = 1;
  int upper = 2;
  map.Insert("b", &a);
  map.Insert("a", &a);
  map.Insert("A", &upper);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(&a, map.Find("a")->second);
    EXPECT_EQ(&upper, map.Find("A")->second);
    EXPECT_EQ(nullptr, map.Find("c"));
    EXPECT_EQ(nullptr, map.Find("ab"));
    EXPECT_EQ(nullptr, map.Find(""));
    map.Sort();
  }
}

TEST(IdMapTest, KeysEqualUpToAnEmbeddedNulAreOneKey) {
  Map map;
  int first = 1;
  int second = 2;
  map.Insert(Text(std::string("id\0x", 4)), &first);
  EXPECT_FALSE(map.Insert(Text(std::string("id\0y", 4)), &second).second);
  EXPECT_FALSE(map.Insert("id", &second).second);
  EXPECT_EQ(&first, map.Find("id")->second);
  EXPECT_EQ(1u, map.size());
}

TEST(IdMapTest, KeysCutShortFindTheirEqualsAfterTheOldBytes) {
  // A key whose text was cut still holds its old bytes after the NUL.
  CString cut("abcdefghijk");
  cut.GetBufferSetLength(3);
  cut.ReleaseBuffer();
  Map map;
  int value = 0;
  map.Insert(cut, &value);
  EXPECT_NE(nullptr, map.Find("abc"));
  EXPECT_EQ(nullptr, map.Find("abcdefghijk"));
}

TEST(IdMapTest, NullValuesAreEntriesLikeOthers) {
  Map map;
  map["x"] = nullptr;
  ASSERT_NE(nullptr, map.Find("x"));
  EXPECT_EQ(nullptr, map.Find("x")->second);
  int value = 3;
  map["x"] = &value;
  EXPECT_EQ(&value, map.Find("x")->second);
  EXPECT_EQ(1u, map.size());
}

TEST(IdMapTest, CopiesAreIndependentAndClearEmpties) {
  Map map;
  int value = 0;
  map.Insert("b", &value);
  map.Insert("a", &value);
  Map copy(map);
  copy.Insert("c", &value);
  EXPECT_EQ((std::vector<std::string>{"a", "b"}), Keys(map));
  EXPECT_EQ((std::vector<std::string>{"a", "b", "c"}), Keys(copy));
  map = copy;
  EXPECT_EQ(3u, map.size());
  EXPECT_NE(nullptr, map.Find("c"));
  copy.clear();
  EXPECT_TRUE(copy.empty());
  EXPECT_EQ(nullptr, copy.Find("a"));
  EXPECT_TRUE(Keys(copy).empty());
  copy.Insert("z", &value);
  EXPECT_EQ((std::vector<std::string>{"z"}), Keys(copy));
}

TEST(IdMapTest, InsertionsBetweenOrderedReadsKeepTheOrder) {
  Map map;
  int value = 0;
  std::vector<std::string> expected;
  std::mt19937 random(7);
  for (int round = 0; round < 50; ++round) {
    for (int i = 0; i < 37; ++i) {
      const std::string id = "id-" + std::to_string(random() % 100000);
      if (map.Insert(id.c_str(), &value).second) expected.push_back(id);
    }
    std::sort(expected.begin(), expected.end());
    ASSERT_EQ(expected, Keys(map)) << "round " << round;
  }
}

// Three hundred thousand ids inserted one by one in random order, half
// GUID-shaped and half short, many of them twice, against an ordered map of
// standard strings.
TEST(IdMapTest, ManyRandomInsertionsAnswerAsAnOrderedMap) {
  Map map;
  std::map<std::string, int*> reference;
  std::vector<int> values(1000);
  std::mt19937_64 random(11);
  char text[64];
  for (int i = 0; i < 300000; ++i) {
    const uint64_t bits = random();
    if (i % 2 == 0) {
      std::snprintf(text, sizeof text, "PRC-%08x-%04x-%04x-%04x-%012llx",
                    static_cast<unsigned>(bits >> 32), static_cast<unsigned>(bits & 0xFFFF),
                    static_cast<unsigned>((bits >> 16) & 0xFFFF), 0x8000u,
                    static_cast<unsigned long long>(bits % 120000));
    } else {
      std::snprintf(text, sizeof text, "PRC-%07u", static_cast<unsigned>(bits % 200000));
    }
    int* value = &values[bits % values.size()];
    const auto added = map.Insert(text, value);
    const auto expected = reference.emplace(text, value);
    ASSERT_EQ(expected.second, added.second);
    ASSERT_EQ(expected.first->second, added.first);
  }
  ASSERT_EQ(reference.size(), map.size());
  auto expected = reference.begin();
  for (const auto& entry : map) {
    ASSERT_EQ(expected->first, entry.first.GetString());
    ASSERT_EQ(expected->second, entry.second);
    ++expected;
  }
  for (const auto& pair : reference) {
    const auto* found = map.Find(pair.first.c_str());
    ASSERT_NE(nullptr, found);
    ASSERT_EQ(pair.second, found->second);
  }
}

// The sort orders by a key's first eight bytes where they differ and by the
// whole key where they are equal; keys that share those bytes, keys that
// end within them, keys with bytes above ASCII in them, and a NUL among
// them must still come out in text order, and every key must be found
// again through the table afterwards.
TEST(IdMapTest, KeysSharingTheirFirstEightBytesSortByTheirWholeText) {
  std::vector<std::string> ids = {"PRC-0001",          "PRC-00019", "PRC-00012", "PRC-000",
                                  "PRC-0001\x80",      "PRC",       "PRC-0001A", "\xC3\xA9-000001",
                                  "\xC3\xA9-00000",    "PRC-0\x7F", "PRC-0\xFF", "P",
                                  "PRC-00011234567890"};
  std::vector<std::string> expected = ids;
  std::sort(expected.begin(), expected.end(), [](const std::string& a, const std::string& b) {
    return vekzol::platform::TextCompare(Text(a), Text(b)) < 0;
  });
  std::mt19937 random(5);
  for (int round = 0; round < 20; ++round) {
    std::shuffle(ids.begin(), ids.end(), random);
    Map map;
    std::vector<int> values(ids.size());
    for (size_t i = 0; i < ids.size(); ++i) map.Insert(Text(ids[i]), &values[i]);
    EXPECT_EQ(expected, Keys(map));
    for (size_t i = 0; i < ids.size(); ++i) {
      const auto* found = map.Find(Text(ids[i]));
      ASSERT_NE(nullptr, found) << ids[i];
      EXPECT_EQ(&values[i], found->second) << ids[i];
    }
    EXPECT_EQ(nullptr, map.Find("PRC-0002"));
    EXPECT_EQ(nullptr, map.Find("PRC-00"));
    // A second batch merges into the sorted entries.
    int later = 0;
    map.Insert("PRC-00015", &later);
    map.Insert("PRC-0000", &later);
    std::vector<std::string> merged = expected;
    merged.push_back("PRC-00015");
    merged.push_back("PRC-0000");
    std::sort(merged.begin(), merged.end(), [](const std::string& a, const std::string& b) {
      return vekzol::platform::TextCompare(Text(a), Text(b)) < 0;
    });
    EXPECT_EQ(merged, Keys(map));
    EXPECT_EQ(&later, map.Find("PRC-00015")->second);
    EXPECT_EQ(&values[0], map.Find(Text(ids[0]))->second);
  }
}

TEST(IdMapTest, ReserveMakesRoomWithoutChangingTheMap) {
  Map map;
  int value = 0;
  map.Insert("a", &value);
  map.Reserve(1000);
  for (int i = 0; i < 1000; ++i) map.Insert(("k" + std::to_string(i)).c_str(), &value);
  EXPECT_EQ(1001u, map.size());
  EXPECT_NE(nullptr, map.Find("a"));
  EXPECT_NE(nullptr, map.Find("k999"));
}

// The same answers from a map that keeps its table for the unsorted tail
// only, with insertions between sorts so that both halves are searched.
TEST(IdMapTest, AMapIndexingItsTailOnlyAnswersTheSame) {
  Map map(true);
  std::map<std::string, int*> reference;
  std::vector<int> values(100);
  std::mt19937 random(5);
  for (int round = 0; round < 40; ++round) {
    for (int i = 0; i < 500; ++i) {
      const std::string id = "E-" + std::to_string(random() % 30000);
      int* value = &values[random() % values.size()];
      const auto added = map.Insert(id.c_str(), value);
      const auto expected = reference.emplace(id, value);
      ASSERT_EQ(expected.second, added.second);
      ASSERT_EQ(expected.first->second, added.first);
    }
    if (round % 3 == 0) map.Sort();
    for (int i = 0; i < 200; ++i) {
      const std::string id = "E-" + std::to_string(random() % 30000);
      const auto* found = map.Find(id.c_str());
      const auto expected = reference.find(id);
      ASSERT_EQ(expected == reference.end(), found == nullptr);
      if (found != nullptr) {
        ASSERT_EQ(expected->second, found->second);
      }
    }
  }
  std::vector<std::string> keys;
  for (const auto& pair : reference) keys.push_back(pair.first);
  EXPECT_EQ(keys, Keys(map));
  // Ids added in ascending order after a sort extend the sorted part.
  map.Insert("F-1", &values[0]);
  map.Insert("F-2", &values[0]);
  EXPECT_NE(nullptr, map.Find("F-1"));
  EXPECT_NE(nullptr, map.Find("F-2"));
  EXPECT_NE(nullptr, map.Find(keys.front().c_str()));
}

TEST(IdMapTest, FindForwardAnswersAsFindInAnyOrderOfIds) {
  Map map(true);
  std::vector<int> values(50);
  for (int i = 0; i < 50; ++i) map.Insert(("k" + std::to_string(i * 2)).c_str(), &values[i]);
  std::vector<std::string> asked;
  for (int i = -1; i < 101; ++i) asked.push_back("k" + std::to_string(i));
  std::sort(asked.begin(), asked.end());
  std::vector<std::string> shuffled = asked;
  std::shuffle(shuffled.begin(), shuffled.end(), std::mt19937(3));
  for (const auto* order : {&asked, &shuffled}) {
    size_t hint = 0;
    for (const std::string& id : *order) {
      ASSERT_EQ(map.Find(id.c_str()), map.FindForward(id.c_str(), hint)) << id;
    }
  }
  size_t hint = 1000;
  EXPECT_EQ(map.Find("k0"), map.FindForward("k0", hint));
}

TEST(IdMapTest, TruncateKeepsTheFirstEntriesInIdOrder) {
  for (bool tailOnly : {false, true}) {
    Map map(tailOnly);
    int value = 0;
    for (const char* id : {"d", "b", "a", "c"}) map.Insert(id, &value);
    map.Truncate(2);
    EXPECT_EQ((std::vector<std::string>{"a", "b"}), Keys(map));
    EXPECT_NE(nullptr, map.Find("b"));
    EXPECT_EQ(nullptr, map.Find("c"));
    map.Insert("c", &value);
    EXPECT_EQ((std::vector<std::string>{"a", "b", "c"}), Keys(map));
  }
}

// A table reserved for ids that then came in order (as a graph's copy adds
// them) is given back at the next ordered read by a map indexing its tail
// only; a map indexing all keeps it.
TEST(IdMapTest, ATableLeftUnusedByIdsInOrderIsGivenBack) {
  int value = 0;
  for (bool tailOnly : {false, true}) {
    Map map(tailOnly);
    map.Reserve(1000);
    for (int i = 0; i < 1000; ++i) {
      char id[16];
      std::snprintf(id, sizeof id, "k%04d", i);
      map.Insert(id, &value);
    }
    const size_t entries = map.size() * sizeof(Map::Entry);
    ASSERT_GT(map.HeapBytes(), entries);
    map.Sort();
    if (tailOnly) {
      EXPECT_EQ(entries, map.HeapBytes());
    } else {
      EXPECT_GT(map.HeapBytes(), entries);
    }
    EXPECT_NE(nullptr, map.Find("k0500"));
    EXPECT_EQ(nullptr, map.Find("k1000"));
  }
}

TEST(IdMapTest, HashesTextUpToTheFirstNulOnly) {
  using vekzol::graphs::HashText;
  EXPECT_EQ(HashText(CString("abc").GetString()),
            HashText(Text(std::string("abc\0z", 5)).GetString()));
  EXPECT_NE(HashText(CString("abc").GetString()), HashText(CString("abd").GetString()));
  EXPECT_NE(HashText(CString("PRC-0000001").GetString()),
            HashText(CString("PRC-0000002").GetString()));
}

}  // namespace
