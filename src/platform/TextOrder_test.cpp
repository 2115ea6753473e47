// Tests of the inline order and equality of CStrings: over the byte ranges
// where byte order and `_mbscmp` could part (ASCII, the upper half, lead and
// trail bytes of double-byte code pages, embedded NULs) and over every
// position within and across the eight-byte words the scan reads, the
// inline answer is the platform's `_mbscmp` (Mbscmp) answer.
#include "platform/TextOrder.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/MbString.h"

namespace {

using vekzol::platform::Mbscmp;
using vekzol::platform::TextCompare;
using vekzol::platform::TextEqual;

CString Text(const std::string& bytes) {
  return CString(bytes.data(), static_cast<int>(bytes.size()));
}

// Checks order, equality and the operators against Mbscmp for one pair.
void ExpectSameOrder(const std::string& left, const std::string& right) {
  const CString a = Text(left);
  const CString b = Text(right);
  const int expected = Mbscmp(a.GetString(), b.GetString());
  ASSERT_EQ(expected, TextCompare(a, b))
      << testing::PrintToString(left) << " vs " << testing::PrintToString(right);
  ASSERT_EQ(expected == 0, TextEqual(a, b));
  ASSERT_EQ(expected < 0, a < b);
  ASSERT_EQ(expected == 0, a == b);
}

TEST(TextOrderTest, EveryPairOfSingleBytesOrdersAsTheMultiByteCompare) {
  for (int x = 1; x < 256; ++x) {
    for (int y = 1; y < 256; ++y) {
      ExpectSameOrder(std::string(1, static_cast<char>(x)), std::string(1, static_cast<char>(y)));
    }
  }
}

// Two-byte texts from the ranges that matter: ASCII, the bytes that are
// lead bytes in double-byte code pages (0x81..0xFE) and the trail bytes
// (0x40..0x7E, 0x80..0xFC), against one another and against one byte.
TEST(TextOrderTest, TwoByteTextsOfEveryRangeOrderAsTheMultiByteCompare) {
  const std::vector<int> bytes = {0x01, 0x20, 0x40, 0x41, 0x5A, 0x5C, 0x61, 0x7E,
                                  0x7F, 0x80, 0x81, 0x9F, 0xA0, 0xA1, 0xC2, 0xDF,
                                  0xE0, 0xE3, 0xEF, 0xF0, 0xF4, 0xFC, 0xFE, 0xFF};
  std::vector<std::string> texts;
  for (int x : bytes) {
    texts.push_back(std::string(1, static_cast<char>(x)));
    for (int y : bytes) {
      std::string text;
      text += static_cast<char>(x);
      text += static_cast<char>(y);
      texts.push_back(text);
      texts.push_back(text + "z");
    }
  }
  for (const std::string& left : texts) {
    for (const std::string& right : texts) ExpectSameOrder(left, right);
  }
}

TEST(TextOrderTest, UpperHalfBytesAfterAnAsciiPrefixOrderAsTheMultiByteCompare) {
  const std::string prefix = "PRC-000123";  // ten ASCII bytes, across a word
  for (int x = 0x80; x < 256; x += 3) {
    for (int y = 0x40; y < 256; y += 5) {
      std::string left = prefix + static_cast<char>(x) + static_cast<char>(y);
      std::string right = prefix + static_cast<char>(y) + static_cast<char>(x);
      ExpectSameOrder(left, right);
      ExpectSameOrder(left, prefix);
    }
  }
}

// A difference or an end at every position from 0 to 40 (GUID-shaped ids
// are 36 to 40 bytes), so within a word, at its last byte and in the next.
TEST(TextOrderTest, DifferencesAndEndsAtEveryPositionOrderAsTheMultiByteCompare) {
  const std::string id = "3f2504e0-4f89-11d3-9a0c-0305e82c3301-PRC";
  for (size_t at = 0; at < id.size(); ++at) {
    std::string lower = id;
    lower[at] = static_cast<char>(id[at] - 1);
    std::string higher = id;
    higher[at] = static_cast<char>(0xE9);
    ExpectSameOrder(id, lower);
    ExpectSameOrder(lower, id);
    ExpectSameOrder(id, higher);
    ExpectSameOrder(id, id.substr(0, at));
    ExpectSameOrder(id.substr(0, at), id);
    ExpectSameOrder(id, std::string(id));
  }
}

// `_mbscmp` stops at the first NUL, so what follows an embedded NUL never
// counts, wherever the NUL stands in a word.
TEST(TextOrderTest, TextsAreComparedUpToTheirFirstNul) {
  for (size_t at = 0; at < 20; ++at) {
    const std::string base(at, 'k');
    ExpectSameOrder(base + std::string(1, '\0') + "abc", base + std::string(1, '\0') + "xyz");
    ExpectSameOrder(base + std::string(1, '\0') + "abc", base);
    ExpectSameOrder(base + std::string(1, '\0'), base + "a");
    ExpectSameOrder(base + "a" + std::string(1, '\0') + "z", base + "b");
  }
  EXPECT_TRUE(Text(std::string("a\0b", 3)) == Text(std::string("a\0c", 3)));
  EXPECT_EQ(0, TextCompare(Text(std::string("a\0b", 3)), Text("a")));
}

TEST(TextOrderTest, EmptyTextsAndSharedTexts) {
  const CString empty;
  const CString a("a");
  const CString copy(a);
  EXPECT_EQ(0, TextCompare(empty, CString("")));
  EXPECT_EQ(-1, TextCompare(empty, a));
  EXPECT_EQ(1, TextCompare(a, empty));
  EXPECT_EQ(0, TextCompare(a, copy));
  EXPECT_TRUE(TextEqual(a, copy));
}

#if !defined(_WIN32)
// UTF-8 is the narrow code page on POSIX: its byte order is code-point
// order, so bytes alone decide there.
TEST(TextOrderTest, ByteOrderIsTextOrderOnPosix) {
  EXPECT_TRUE(vekzol::platform::kByteOrderIsTextOrder);
  ExpectSameOrder("\xC3\xA9", "\xE2\x82\xAC");          // U+00E9 before U+20AC
  ExpectSameOrder("\xEF\xBF\xBD", "\xF0\x9F\x98\x80");  // U+FFFD before U+1F600
}
#endif

}  // namespace
