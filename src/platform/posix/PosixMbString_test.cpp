// Tests of the multi-byte string functions of the POSIX backend (UTF-8).
#include "platform/MbString.h"

#include <string>

#include <gtest/gtest.h>

namespace vekzol {
namespace platform {
namespace {

// --- Mbscmp ---

TEST(PosixMbStringTest, MbscmpGivesMinusOneZeroOrOne) {
  EXPECT_EQ(-1, Mbscmp("a", "z"));
  EXPECT_EQ(1, Mbscmp("z", "a"));
  EXPECT_EQ(0, Mbscmp("same", "same"));
  EXPECT_EQ(0, Mbscmp("", ""));
}

TEST(PosixMbStringTest, MbscmpOrdersBytesAsUnsigned) {
  // U+00E9 (C3 A9) comes after every ASCII letter.
  EXPECT_EQ(1, Mbscmp("\xC3\xA9", "z"));
  EXPECT_EQ(-1, Mbscmp("z", "\xC3\xA9"));
  EXPECT_EQ(-1, Mbscmp("\x7F", "\x80"));
  // Code-point order: U+00E9 before U+20AC before U+1F600.
  EXPECT_EQ(-1, Mbscmp("\xC3\xA9", "\xE2\x82\xAC"));
  EXPECT_EQ(-1, Mbscmp("\xE2\x82\xAC", "\xF0\x9F\x98\x80"));
}

TEST(PosixMbStringTest, MbscmpIsCaseSensitive) {
  EXPECT_EQ(-1, Mbscmp("B", "a"));
  EXPECT_EQ(-1, Mbscmp("ABC", "abc"));
}

TEST(PosixMbStringTest, MbscmpOrdersPrefixFirst) {
  EXPECT_EQ(-1, Mbscmp("ab", "abc"));
  EXPECT_EQ(1, Mbscmp("abc", "ab"));
  EXPECT_EQ(-1, Mbscmp("", "a"));
}

TEST(PosixMbStringTest, MbscmpTakesNullAsEmptyText) {
  EXPECT_EQ(0, Mbscmp(nullptr, ""));
  EXPECT_EQ(-1, Mbscmp(nullptr, "a"));
  EXPECT_EQ(1, Mbscmp("a", nullptr));
}

// --- Mbsicmp ---

TEST(PosixMbStringTest, MbsicmpFoldsAsciiLetters) {
  EXPECT_EQ(0, Mbsicmp("ABC", "abc"));
  EXPECT_EQ(0, Mbsicmp("MiXeD", "mIxEd"));
  EXPECT_EQ(-1, Mbsicmp("abc", "ABD"));
  EXPECT_EQ(1, Mbsicmp("b", "A"));
  EXPECT_EQ(-1, Mbsicmp("ab", "AB C"));
}

TEST(PosixMbStringTest, MbsicmpLeavesNonAsciiUnfolded) {
  // U+00C9 (C3 89) and U+00E9 (C3 A9) differ in case but are not folded.
  EXPECT_EQ(-1, Mbsicmp("\xC3\x89", "\xC3\xA9"));
  EXPECT_EQ(1, Mbsicmp("\xC3\xA9", "\xC3\x89"));
  EXPECT_EQ(0, Mbsicmp("X\xC3\xA9", "x\xC3\xA9"));
}

TEST(PosixMbStringTest, MbsicmpComparesFoldedToLowerCase) {
  // '_' (0x5F) lies between the upper- and lower-case letters: folded to
  // lower case, "A" becomes 0x61 and orders after it.
  EXPECT_EQ(-1, Mbsicmp("_", "A"));
  EXPECT_EQ(1, Mbsicmp("a", "_"));
}

TEST(PosixMbStringTest, MbsicmpTakesNullAsEmptyText) {
  EXPECT_EQ(0, Mbsicmp(nullptr, nullptr));
  EXPECT_EQ(-1, Mbsicmp(nullptr, "A"));
}

// --- Mbsstr ---

TEST(PosixMbStringTest, MbsstrFindsFirstOccurrence) {
  const char* text = "abcabc";
  EXPECT_EQ(text + 1, Mbsstr(text, "bc"));
  EXPECT_EQ(text, Mbsstr(text, "abcabc"));
}

TEST(PosixMbStringTest, MbsstrGivesNullWhenMissing) {
  EXPECT_EQ(nullptr, Mbsstr("abcabc", "cb"));
  EXPECT_EQ(nullptr, Mbsstr("abc", "abcd"));
  EXPECT_EQ(nullptr, Mbsstr("", "a"));
}

TEST(PosixMbStringTest, MbsstrOfEmptyPatternGivesText) {
  const char* text = "abc";
  EXPECT_EQ(text, Mbsstr(text, ""));
  const char* empty = "";
  EXPECT_EQ(empty, Mbsstr(empty, ""));
}

TEST(PosixMbStringTest, MbsstrFindsMultiByteText) {
  const char* text = "caf\xC3\xA9 \xE2\x82\xAC";
  EXPECT_EQ(text + 3, Mbsstr(text, "\xC3\xA9"));
  EXPECT_EQ(text + 6, Mbsstr(text, "\xE2\x82\xAC"));
}

TEST(PosixMbStringTest, MbsstrOfNullText) {
  EXPECT_EQ(nullptr, Mbsstr(nullptr, "a"));
  const char* text = "abc";
  EXPECT_EQ(text, Mbsstr(text, nullptr));
}

// --- Mbslwr / Mbsupr ---

TEST(PosixMbStringTest, MbslwrLowersAsciiOnly) {
  std::string text = "ABC\xC3\x89xYZ@[";
  Mbslwr(&text[0], text.size());
  EXPECT_EQ("abc\xC3\x89xyz@[", text);
}

TEST(PosixMbStringTest, MbsuprUppersAsciiOnly) {
  std::string text = "abc\xC3\xA9XyZ`{";
  Mbsupr(&text[0], text.size());
  EXPECT_EQ("ABC\xC3\xA9XYZ`{", text);
}

TEST(PosixMbStringTest, MbslwrTouchesOnlyTheGivenLength) {
  std::string text = "ABCD";
  Mbslwr(&text[0], 2);
  EXPECT_EQ("abCD", text);
}

TEST(PosixMbStringTest, MbsuprGoesPastEmbeddedNulWithinLength) {
  std::string text("a\0b", 3);
  Mbsupr(&text[0], text.size());
  EXPECT_EQ(std::string("A\0B", 3), text);
}

// --- Mbsinc ---

size_t Step(const char* text) { return static_cast<size_t>(Mbsinc(text) - text); }

TEST(PosixMbStringTest, MbsincStepsOverAsciiByte) {
  EXPECT_EQ(1u, Step("ab"));
  EXPECT_EQ(1u, Step("\x7F"));
}

TEST(PosixMbStringTest, MbsincStepsOverTwoByteSequence) {
  EXPECT_EQ(2u, Step("\xC3\xA9x"));
  EXPECT_EQ(2u, Step("\xC2\x80"));
  EXPECT_EQ(2u, Step("\xDF\xBF"));
}

TEST(PosixMbStringTest, MbsincStepsOverThreeByteSequence) {
  EXPECT_EQ(3u, Step("\xE2\x82\xAC"));
  EXPECT_EQ(3u, Step("\xE0\xA0\x80"));
  EXPECT_EQ(3u, Step("\xED\x9F\xBF"));
  EXPECT_EQ(3u, Step("\xEF\xBF\xBF"));
}

TEST(PosixMbStringTest, MbsincStepsOverFourByteSequence) {
  EXPECT_EQ(4u, Step("\xF0\x9F\x98\x80"));
  EXPECT_EQ(4u, Step("\xF0\x90\x80\x80"));
  EXPECT_EQ(4u, Step("\xF4\x8F\xBF\xBF"));
}

TEST(PosixMbStringTest, MbsincCountsNulAsOneCharacter) {
  const char text[] = "\0a";
  EXPECT_EQ(text + 1, Mbsinc(text));
}

TEST(PosixMbStringTest, MbsincStepsOneByteOverInvalidByte) {
  EXPECT_EQ(1u, Step("\x80"));              // continuation byte without a lead
  EXPECT_EQ(1u, Step("\xBF\xBF"));          // continuation byte without a lead
  EXPECT_EQ(1u, Step("\xC0\x80"));          // overlong form of NUL
  EXPECT_EQ(1u, Step("\xC1\xBF"));          // overlong form
  EXPECT_EQ(1u, Step("\xE0\x80\x80"));      // overlong three-byte form
  EXPECT_EQ(1u, Step("\xED\xA0\x80"));      // surrogate U+D800
  EXPECT_EQ(1u, Step("\xF0\x80\x80\x80"));  // overlong four-byte form
  EXPECT_EQ(1u, Step("\xF4\x90\x80\x80"));  // above U+10FFFF
  EXPECT_EQ(1u, Step("\xF5\x80\x80\x80"));
  EXPECT_EQ(1u, Step("\xFF"));
}

TEST(PosixMbStringTest, MbsincStepsOneByteOverCutSequence) {
  EXPECT_EQ(1u, Step("\xC3"));  // the text ends after the lead byte
  EXPECT_EQ(1u, Step("\xC3"
                     "A"));         // a lead byte followed by ASCII
  EXPECT_EQ(1u, Step("\xE2\x82"));  // two of three bytes, then NUL
  EXPECT_EQ(1u, Step("\xE2\x82"
                     "A"));                     // two of three bytes, then ASCII
  EXPECT_EQ(1u, Step("\xF0\x9F\x98"));          // three of four bytes, then NUL
  EXPECT_EQ(1u, Step("\xF0\x9F\x98\xC3\xA9"));  // cut by the next lead byte
}

TEST(PosixMbStringTest, MbsincWalksMixedTextCharacterByCharacter) {
  const char* text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\x80z";
  const char* p = text;
  std::string steps;
  while (*p != '\0') {
    const char* next = Mbsinc(p);
    steps += std::to_string(next - p);
    p = next;
  }
  EXPECT_EQ("123411", steps);
}

}  // namespace
}  // namespace platform
}  // namespace vekzol
