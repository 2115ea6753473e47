// Tests of the multi-byte string functions of the Win32 backend. They run
// with the ANSI code page 1252, a code page of one byte per character, and
// switch the runtime's multi-byte code page to 932 (Shift-JIS) where a
// character of two bytes is needed; only ASCII letters are folded in both.
#include <mbctype.h>

#include <string>

#include <gtest/gtest.h>

#include "platform/MbString.h"

namespace {

using vekzol::platform::Mbscmp;
using vekzol::platform::Mbsicmp;
using vekzol::platform::Mbsinc;
using vekzol::platform::Mbslwr;
using vekzol::platform::Mbsstr;
using vekzol::platform::Mbsupr;

// Switches the runtime's multi-byte code page for the life of the object.
class ScopedMbcp {
 public:
  explicit ScopedMbcp(int codePage) : previous_(_getmbcp()) { EXPECT_EQ(0, _setmbcp(codePage)); }
  ~ScopedMbcp() { _setmbcp(previous_); }
  ScopedMbcp(const ScopedMbcp&) = delete;
  ScopedMbcp& operator=(const ScopedMbcp&) = delete;

 private:
  int previous_;
};

TEST(Win32MbStringTest, RuntimeStartsWithTheAnsiCodePage) { EXPECT_EQ(1252, _getmbcp()); }

TEST(Win32MbStringTest, CompareGivesSignOfUnsignedByteOrder) {
  EXPECT_EQ(0, Mbscmp("abc", "abc"));
  EXPECT_EQ(-1, Mbscmp("abc", "abd"));
  EXPECT_EQ(1, Mbscmp("abd", "abc"));
  EXPECT_EQ(-1, Mbscmp("ab", "abc"));
  EXPECT_EQ(-1, Mbscmp("B", "a"));
  EXPECT_EQ(1, Mbscmp("\xE9", "z"));
  EXPECT_EQ(1, Mbscmp("\x80", "\x7F"));
}

TEST(Win32MbStringTest, CompareTakesNullAsEmpty) {
  EXPECT_EQ(0, Mbscmp(nullptr, ""));
  EXPECT_EQ(-1, Mbscmp(nullptr, "a"));
  EXPECT_EQ(1, Mbscmp("a", nullptr));
  EXPECT_EQ(0, Mbsicmp(nullptr, nullptr));
}

TEST(Win32MbStringTest, CompareNoCaseFoldsAsciiLetters) {
  EXPECT_EQ(0, Mbsicmp("AbC", "aBc"));
  EXPECT_EQ(-1, Mbsicmp("abc", "ABD"));
  EXPECT_EQ(1, Mbsicmp("ABD", "abc"));
  EXPECT_EQ(0, Mbsicmp("x\x80", "X\x80"));
  EXPECT_EQ(-1, Mbsicmp("\x80", "\x89"));
}

TEST(Win32MbStringTest, SearchFindsTheFirstHit) {
  const char* text = "abcabc";
  EXPECT_EQ(text + 1, Mbsstr(text, "bc"));
  EXPECT_EQ(nullptr, Mbsstr(text, "cb"));
  EXPECT_EQ(text, Mbsstr(text, ""));
  EXPECT_EQ(text, Mbsstr(text, nullptr));
  EXPECT_EQ(nullptr, Mbsstr(nullptr, "a"));
  const char* accented = "d\xE9j\xE0 vu";
  EXPECT_EQ(accented + 3, Mbsstr(accented, "\xE0 "));
}

TEST(Win32MbStringTest, CaseChangesTouchAsciiLettersAndEveryRunBetweenNuls) {
  std::string text("Ab\x80Z\0cD\x89", 8);
  Mbslwr(&text[0], text.size());
  EXPECT_EQ(std::string("ab\x80z\0cd\x89", 8), text);
  Mbsupr(&text[0], text.size());
  EXPECT_EQ(std::string("AB\x80Z\0CD\x89", 8), text);
  // Only the given length changes.
  std::string part("abcd");
  Mbsupr(&part[0], 2);
  EXPECT_EQ("ABcd", part);
  Mbslwr(nullptr, 3);
}

TEST(Win32MbStringTest, EveryByteIsACharacterInCodePage1252) {
  const char* text = "\x82\xA0z";
  EXPECT_EQ(text + 1, Mbsinc(text));
  EXPECT_EQ(text + 2, Mbsinc(text + 1));
  const char* empty = "";
  EXPECT_EQ(empty + 1, Mbsinc(empty));
  EXPECT_EQ(nullptr, Mbsinc(nullptr));
}

TEST(Win32MbStringTest, DoubleByteCharactersStayWholeInCodePage932) {
  ScopedMbcp shiftJis(932);
  // U+3042 is 82 A0 and U+3044 is 82 A2; U+30BA is 83 5A, whose trail byte
  // is the letter Z.
  const char* text = "\x82\xA0z";
  EXPECT_EQ(text + 2, Mbsinc(text));
  EXPECT_EQ(text + 3, Mbsinc(text + 2));
  // A lead byte before the NUL is a character of its own.
  const char* cut = "\x82";
  EXPECT_EQ(cut + 1, Mbsinc(cut));
  EXPECT_EQ(-1, Mbscmp("\x82\xA0", "\x82\xA2"));
  EXPECT_EQ(1, Mbsicmp("\x82\xA2", "\x82\xA0"));

  std::string lower(
      "A\x83\x5A"
      "B");
  Mbslwr(&lower[0], lower.size());
  EXPECT_EQ(
      "a\x83\x5A"
      "b",
      lower);
  std::string upper(
      "a\x83\x7A"
      "b");
  Mbsupr(&upper[0], upper.size());
  EXPECT_EQ(
      "A\x83\x7A"
      "B",
      upper);
}

}  // namespace
