// File: UnicodeString_test.cpp
// The two forms of UnicodeString: how each source fills them, the prefix
// length each source gives, pointer-sharing assignment, the comparisons,
// the copies handed out and the printing.
#include <vekzol/services/UnicodeString.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>

#include "unicode/UnicodeStringTestSupport.h"
#if !defined(_WIN32)
#include "platform/BstrAllocatorTesting.h"
#endif

namespace {

using vekzol_unicode_test::MakeBstr;
using vekzol_unicode_test::PrefixLength;
using vekzol_unicode_test::Units;
using Peer = UnicodeStringTestPeer;

// The narrow bytes of "é" and of a character outside code page 1252 in the
// narrow code page: UTF-8 on POSIX, 1252 on Windows (where the second has
// no form and becomes the default character).
#if defined(_WIN32)
const char* const kNarrowEAcute = "\xE9";
const char* const kNarrowHan = "?";
#else
const char* const kNarrowEAcute = "\xC3\xA9";
const char* const kNarrowHan = "\xE4\xB8\xAD";
#endif

std::string TakeNarrow(char* text) {
  std::string copy = text != nullptr ? text : "<null>";
  UnicodeString::deleteStr(text);
  return copy;
}

TEST(UnicodeStringTest, EmptyObjectHasNeitherFormAndComparesUnequal) {
  UnicodeString text;
  EXPECT_EQ(Peer::Narrow(text), nullptr);
  EXPECT_EQ(Peer::Wide(text), nullptr);
  EXPECT_EQ(text.ConvertToCharPtr(), nullptr);
  unsigned short marker = 1;
  unsigned short* out = &marker;
  text.ConvertToBSTR(&out);
  EXPECT_EQ(out, nullptr);
  char empty[] = "";
  EXPECT_FALSE(text == empty);
  unsigned short* wide = MakeBstr(u"");
  EXPECT_FALSE(text == wide);
  UnicodeString::deleteBstr(wide);
}

TEST(UnicodeStringTest, NarrowTextGivesBstrThatCountsItsNul) {
  UnicodeString text("abc");
  EXPECT_STREQ(Peer::Narrow(text), "abc");
  unsigned short* out = nullptr;
  text.ConvertToBSTR(&out);
  ASSERT_NE(out, nullptr);
  EXPECT_EQ(PrefixLength(out), 4u);
  EXPECT_EQ(Units(out), std::u16string(u"abc\0", 4));
  EXPECT_EQ(out[4], 0);
  EXPECT_NE(out, Peer::Wide(text));
  UnicodeString::deleteBstr(out);
}

TEST(UnicodeStringTest, EmptyNarrowTextGivesBstrHoldingOnlyTheNul) {
  UnicodeString text("");
  EXPECT_STREQ(Peer::Narrow(text), "");
  EXPECT_EQ(Units(Peer::Wide(text)), std::u16string(u"\0", 1));
}

TEST(UnicodeStringTest, BstrKeepsItsOwnPrefixLength) {
  unsigned short* source = MakeBstr(u"abc");
  UnicodeString text(source);
  UnicodeString::deleteBstr(source);
  EXPECT_STREQ(Peer::Narrow(text), "abc");
  unsigned short* out = nullptr;
  text.ConvertToBSTR(&out);
  EXPECT_EQ(PrefixLength(out), 3u);
  EXPECT_EQ(Units(out), u"abc");
  UnicodeString::deleteBstr(out);
}

TEST(UnicodeStringTest, BstrIsCopiedOnlyUpToItsFirstNul) {
  unsigned short* source = MakeBstr(std::u16string(u"ab\0cd", 5));
  UnicodeString text(source);
  UnicodeString::deleteBstr(source);
  EXPECT_STREQ(Peer::Narrow(text), "ab");
  // The length stays 5; what stood behind the NUL is not carried over.
  EXPECT_EQ(Units(Peer::Wide(text)), std::u16string(u"ab\0\0\0", 5));
}

TEST(UnicodeStringTest, CStringGivesBstrWithoutNul) {
  UnicodeString text(CString("abc"));
  EXPECT_STREQ(Peer::Narrow(text), "abc");
  EXPECT_EQ(PrefixLength(Peer::Wide(text)), 3u);
  EXPECT_EQ(Units(Peer::Wide(text)), u"abc");
}

TEST(UnicodeStringTest, CStringIsConvertedOverItsStoredLength) {
  UnicodeString text(CString("ab\0c", 4));
  EXPECT_STREQ(Peer::Narrow(text), "ab");
  EXPECT_EQ(Units(Peer::Wide(text)), std::u16string(u"ab\0\0", 4));
}

TEST(UnicodeStringTest, NarrowTextIsReadInTheAnsiCodePage) {
  UnicodeString text(kNarrowEAcute);
  EXPECT_EQ(Units(Peer::Wide(text)), std::u16string(u"\u00E9\0", 2));
}

TEST(UnicodeStringTest, SixteenBitTextBecomesNarrowInTheAnsiCodePage) {
  unsigned short* source = MakeBstr(u"\u00E9\u4E2D");
  UnicodeString text(source);
  UnicodeString::deleteBstr(source);
  EXPECT_EQ(std::string(Peer::Narrow(text)), std::string(kNarrowEAcute) + kNarrowHan);
  EXPECT_EQ(Units(Peer::Wide(text)), u"\u00E9\u4E2D");
}

TEST(UnicodeStringTest, LoneSurrogateBecomesTheDefaultCharacter) {
  unsigned short* source = MakeBstr(u"a\xD800z");
  UnicodeString text(source);
  UnicodeString::deleteBstr(source);
  EXPECT_STREQ(Peer::Narrow(text), "a?z");
}

TEST(UnicodeStringTest, NullTextLeavesBothFormsNull) {
  UnicodeString narrow(static_cast<const char*>(nullptr));
  UnicodeString wide(static_cast<unsigned short*>(nullptr));
  EXPECT_EQ(Peer::Narrow(narrow), nullptr);
  EXPECT_EQ(Peer::Wide(narrow), nullptr);
  EXPECT_EQ(Peer::Narrow(wide), nullptr);
  EXPECT_EQ(Peer::Wide(wide), nullptr);
}

// The sanitizer build reports the old blocks as leaks if they were not
// released.
TEST(UnicodeStringTest, AssigningNarrowTextReplacesBothForms) {
  UnicodeString text("old text");
  char replacement[] = "new";
  const UnicodeString& result = (text = replacement);
  EXPECT_EQ(&result, &text);
  EXPECT_STREQ(Peer::Narrow(text), "new");
  EXPECT_NE(Peer::Narrow(text), replacement);
  EXPECT_EQ(Units(Peer::Wide(text)), std::u16string(u"new\0", 4));
}

TEST(UnicodeStringTest, AssigningSixteenBitTextReplacesBothForms) {
  UnicodeString text("old text");
  unsigned short* replacement = MakeBstr(u"xy");
  const UnicodeString& result = (text = replacement);
  UnicodeString::deleteBstr(replacement);
  EXPECT_EQ(&result, &text);
  EXPECT_STREQ(Peer::Narrow(text), "xy");
  EXPECT_EQ(Units(Peer::Wide(text)), u"xy");
}

TEST(UnicodeStringTest, AssigningAnObjectSharesItsTwoBlocks) {
  UnicodeString owner("shared");
  UnicodeString sharer;
  const UnicodeString& result = (sharer = owner);
  EXPECT_EQ(&result, &sharer);
  EXPECT_EQ(Peer::Narrow(sharer), Peer::Narrow(owner));
  EXPECT_EQ(Peer::Wide(sharer), Peer::Wide(owner));
  // Only one of the two may release them.
  Peer::Forget(sharer);
}

TEST(UnicodeStringTest, NarrowComparisonIsByteWiseAndCaseSensitive) {
  UnicodeString text("abc");
  char same[] = "abc";
  char upper[] = "ABC";
  char shorter[] = "ab";
  char longer[] = "abcd";
  EXPECT_TRUE(text == same);
  EXPECT_FALSE(text == upper);
  EXPECT_FALSE(text == shorter);
  EXPECT_FALSE(text == longer);
}

TEST(UnicodeStringTest, SixteenBitComparisonStopsAtTheNulAndIgnoresTheLength) {
  UnicodeString text("abc");  // prefix length 4, NUL included
  unsigned short* same = MakeBstr(u"abc");
  unsigned short* cut = MakeBstr(std::u16string(u"abc\0zz", 6));
  unsigned short* other = MakeBstr(u"abd");
  unsigned short* shorter = MakeBstr(u"ab");
  EXPECT_TRUE(text == same);
  EXPECT_TRUE(text == cut);
  EXPECT_FALSE(text == other);
  EXPECT_FALSE(text == shorter);
  for (unsigned short* p : {same, cut, other, shorter}) UnicodeString::deleteBstr(p);
}

TEST(UnicodeStringTest, ConvertToCharPtrHandsOutAnIndependentCopy) {
  UnicodeString text("copy me");
  char* copy = text.ConvertToCharPtr();
  EXPECT_NE(copy, Peer::Narrow(text));
  EXPECT_EQ(TakeNarrow(copy), "copy me");
}

TEST(UnicodeStringTest, PrintWritesTheNarrowFormAndAnEndOfLine) {
  UnicodeString text("hello");
  ::testing::internal::CaptureStdout();
  text.print();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "_Str is hello\n");
}

TEST(UnicodeStringTest, PrintWithoutNarrowFormWritesAnEmptyText) {
  UnicodeString text;
  ::testing::internal::CaptureStdout();
  text.print();
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "_Str is \n");
}

TEST(UnicodeStringTest, ReleasingNullIsHarmless) {
  UnicodeString::deleteStr(nullptr);
  UnicodeString::deleteBstr(nullptr);
}

#if !defined(_WIN32)
// The POSIX build's BSTR allocator can be made to fail; the system's cannot.
void* FailingAllocator(size_t) { return nullptr; }

class FailingBstrAllocation {
 public:
  FailingBstrAllocation() { vekzol::platform::SetBstrAllocatorForTesting(FailingAllocator); }
  ~FailingBstrAllocation() { vekzol::platform::SetBstrAllocatorForTesting(nullptr); }
};

TEST(UnicodeStringTest, FailedBstrAllocationLeavesOnlyTheSixteenBitFormNull) {
  unsigned short* source = MakeBstr(u"wide");
  FailingBstrAllocation failing;
  UnicodeString fromNarrow("narrow");
  UnicodeString fromWide(source);
  EXPECT_STREQ(Peer::Narrow(fromNarrow), "narrow");
  EXPECT_EQ(Peer::Wide(fromNarrow), nullptr);
  EXPECT_STREQ(Peer::Narrow(fromWide), "wide");
  EXPECT_EQ(Peer::Wide(fromWide), nullptr);
  UnicodeString::deleteBstr(source);
}

TEST(UnicodeStringTest, FailedTemporaryOfACStringRaisesOutOfMemory) {
  FailingBstrAllocation failing;
  try {
    UnicodeString text(CString("abc"));
    FAIL() << "no exception";
  } catch (const CAtlException& e) {
    EXPECT_EQ(static_cast<HRESULT>(e), E_OUTOFMEMORY);
  }
}
#endif

}  // namespace
