// Tests of CString: every operation with exact results, the clamping and
// exception cases, embedded NULs and aliasing (an argument that points into
// the string it changes).
#include <vekzol/platform/CString.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <new>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#if defined(_WIN32)
#include <mbctype.h>
#endif

// This test program replaces the global allocator so that a test can make
// allocations fail and check that std::bad_alloc comes out as
// CAtlException(E_OUTOFMEMORY), and count what a copy allocates.
#include "platform/CountingAllocatorTesting.h"

namespace {

// While alive, every allocation through operator new fails.
class FailingAllocations {
 public:
  FailingAllocations() { g_failAllocations = true; }
  ~FailingAllocations() { g_failAllocations = false; }
};

// The status carried by the CAtlException that `action` raises, or S_OK
// when it raises none.
template <typename F>
HRESULT StatusRaised(F&& action) {
  try {
    action();
  } catch (const CAtlException& e) {
    return e.m_hr;
  }
  return S_OK;
}

// The bytes of a CString, embedded NULs included.
std::string Bytes(const CString& s) { return std::string(s.GetString(), s.GetLength()); }

// A text longer than any short-string buffer, so that copying it allocates.
const char kLongText[] = "a text long enough to need memory of its own on the heap";

#if defined(_WIN32)
// On Windows the narrow code page is the ANSI code page, and the tests run
// with 1252, where every byte is a character of its own: the tests of
// multi-byte characters hold the expectations of that code page there.
TEST(CStringTest, TestsRunWithCodePage1252) { ASSERT_EQ(1252, _getmbcp()); }
#endif

// --- Construction ------------------------------------------------------------------------------

TEST(CStringTest, DefaultIsEmptyAndNotNull) {
  CString s;
  EXPECT_EQ(0, s.GetLength());
  EXPECT_TRUE(s.IsEmpty());
  ASSERT_NE(nullptr, s.GetString());
  EXPECT_STREQ("", s.GetString());
}

TEST(CStringTest, ConstructsFromText) {
  CString s("hello");
  EXPECT_EQ(5, s.GetLength());
  EXPECT_FALSE(s.IsEmpty());
  EXPECT_STREQ("hello", s.GetString());
}

TEST(CStringTest, NullTextGivesEmpty) {
  const char* none = nullptr;
  CString s(none);
  EXPECT_EQ(0, s.GetLength());
  EXPECT_STREQ("", s.GetString());
}

TEST(CStringTest, PointerAndLengthTakesThatManyBytes) {
  CString s("abcdef", 3);
  EXPECT_EQ("abc", Bytes(s));
}

TEST(CStringTest, PointerAndLengthKeepsEmbeddedNul) {
  CString s("ab\0cd", 5);
  EXPECT_EQ(5, s.GetLength());
  EXPECT_EQ('\0', s.GetAt(2));
  EXPECT_EQ('c', s.GetAt(3));
  EXPECT_EQ(std::string("ab\0cd", 5), Bytes(s));
  EXPECT_EQ(std::string("ab\0cd", 5), s.str());
  EXPECT_STREQ("ab", s.GetString());
}

TEST(CStringTest, PointerAndNegativeLengthRaisesInvalidArg) {
  EXPECT_EQ(E_INVALIDARG, StatusRaised([] { CString s("abc", -1); }));
}

TEST(CStringTest, NullPointerWithLengthRaisesInvalidArg) {
  EXPECT_EQ(E_INVALIDARG, StatusRaised([] { CString s(nullptr, 3); }));
}

TEST(CStringTest, NullPointerWithZeroLengthGivesEmpty) {
  CString s(nullptr, 0);
  EXPECT_TRUE(s.IsEmpty());
}

TEST(CStringTest, CharAndCountRepeatsChar) {
  EXPECT_EQ("xxx", Bytes(CString('x', 3)));
  EXPECT_EQ("y", Bytes(CString('y')));
}

TEST(CStringTest, CharWithCountBelowOneGivesEmpty) {
  EXPECT_TRUE(CString('x', 0).IsEmpty());
  EXPECT_TRUE(CString('x', -4).IsEmpty());
}

TEST(CStringTest, ConstructsFromStdStringWithEmbeddedNul) {
  const std::string text("a\0b", 3);
  CString s(text);
  EXPECT_EQ(3, s.GetLength());
  EXPECT_EQ(text, s.str());
}

// --- Copies, moves and assignment --------------------------------------------------------------

TEST(CStringTest, CopyIsIndependent) {
  CString original("abc");
  CString copy(original);
  copy.SetAt(0, 'X');
  EXPECT_STREQ("abc", original.GetString());
  EXPECT_STREQ("Xbc", copy.GetString());
  original += "d";
  EXPECT_STREQ("Xbc", copy.GetString());
}

TEST(CStringTest, AssignedCopyIsIndependent) {
  CString original("abc");
  CString copy;
  copy = original;
  original.SetAt(1, 'Y');
  EXPECT_STREQ("abc", copy.GetString());
  EXPECT_STREQ("aYc", original.GetString());
}

TEST(CStringTest, CopyKeepsEmbeddedNul) {
  CString original("a\0b", 3);
  CString copy(original);
  CString assigned;
  assigned = original;
  EXPECT_EQ(std::string("a\0b", 3), Bytes(copy));
  EXPECT_EQ(std::string("a\0b", 3), Bytes(assigned));
}

TEST(CStringTest, MoveLeavesSourceEmpty) {
  CString source(kLongText);
  CString target(std::move(source));
  EXPECT_STREQ(kLongText, target.GetString());
  EXPECT_TRUE(source.IsEmpty());  // NOLINT(bugprone-use-after-move): the state is the contract
  EXPECT_STREQ("", source.GetString());

  CString other("x");
  other = std::move(target);
  EXPECT_STREQ(kLongText, other.GetString());
  EXPECT_TRUE(target.IsEmpty());  // NOLINT(bugprone-use-after-move)
}

TEST(CStringTest, SelfAssignmentKeepsValue) {
  CString s(kLongText);
  CString& alias = s;
  s = alias;
  EXPECT_STREQ(kLongText, s.GetString());
  s = std::move(alias);
  EXPECT_STREQ(kLongText, s.GetString());
}

TEST(CStringTest, AssignsOwnTextTail) {
  CString s(kLongText);
  s = s.GetString() + 2;
  EXPECT_STREQ(kLongText + 2, s.GetString());
}

TEST(CStringTest, AssignsTextAndNull) {
  CString s("abc");
  s = "de";
  EXPECT_STREQ("de", s.GetString());
  const char* none = nullptr;
  s = none;
  EXPECT_TRUE(s.IsEmpty());
}

TEST(CStringTest, AssignsSingleChar) {
  CString s("abc");
  s = 'z';
  EXPECT_EQ("z", Bytes(s));
}

// --- Appending and concatenation ---------------------------------------------------------------

TEST(CStringTest, AppendsStringTextAndChar) {
  CString s("ab");
  s += CString("cd");
  s += "ef";
  s += 'g';
  EXPECT_STREQ("abcdefg", s.GetString());
}

TEST(CStringTest, AppendOfNullTextChangesNothing) {
  CString s("ab");
  const char* none = nullptr;
  s += none;
  EXPECT_STREQ("ab", s.GetString());
}

TEST(CStringTest, AppendKeepsEmbeddedNulOfBothSides) {
  CString s("a\0b", 3);
  s += CString("c\0d", 3);
  EXPECT_EQ(std::string("a\0bc\0d", 6), Bytes(s));
  s += '\0';
  EXPECT_EQ(7, s.GetLength());
}

TEST(CStringTest, SelfAppendDoublesText) {
  CString s("abc");
  s += s;
  EXPECT_STREQ("abcabc", s.GetString());

  CString longer(kLongText);
  longer += longer;
  EXPECT_EQ(std::string(kLongText) + kLongText, Bytes(longer));
}

TEST(CStringTest, AppendsOwnTextTail) {
  CString s(kLongText);
  s += s.GetString() + 5;
  EXPECT_EQ(std::string(kLongText) + (kLongText + 5), Bytes(s));
}

TEST(CStringTest, ConcatenatesAllOperandKinds) {
  const CString ab("ab");
  EXPECT_STREQ("abab", (ab + ab).GetString());
  EXPECT_STREQ("abcd", (ab + "cd").GetString());
  EXPECT_STREQ("cdab", ("cd" + ab).GetString());
  EXPECT_STREQ("abx", (ab + 'x').GetString());
  EXPECT_STREQ("xab", ('x' + ab).GetString());
  EXPECT_STREQ("ab", ab.GetString());
}

TEST(CStringTest, ConcatenationWithNullTextGivesOtherSide) {
  const CString ab("ab");
  const char* none = nullptr;
  EXPECT_STREQ("ab", (ab + none).GetString());
  EXPECT_STREQ("ab", (none + ab).GetString());
}

// --- Access ------------------------------------------------------------------------------------

TEST(CStringTest, GetAtAcceptsZeroToLength) {
  const CString s("abc");
  EXPECT_EQ('a', s.GetAt(0));
  EXPECT_EQ('c', s.GetAt(2));
  EXPECT_EQ('\0', s.GetAt(3));
  EXPECT_EQ('b', s[1]);
  EXPECT_EQ('\0', s[3]);
}

TEST(CStringTest, GetAtOutsideRangeRaisesInvalidArg) {
  const CString s("abc");
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.GetAt(-1); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.GetAt(4); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s[-1]; }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s[4]; }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([] { CString().GetAt(1); }));
}

TEST(CStringTest, SetAtChangesOneByte) {
  CString s("abc");
  s.SetAt(0, 'X');
  s.SetAt(2, 'Z');
  EXPECT_STREQ("XbZ", s.GetString());
}

TEST(CStringTest, SetAtOutsideZeroToLengthMinusOneRaisesInvalidArg) {
  CString s("abc");
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.SetAt(3, 'x'); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.SetAt(-1, 'x'); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([] { CString().SetAt(0, 'x'); }));
  EXPECT_STREQ("abc", s.GetString());
}

TEST(CStringTest, EmptyClearsText) {
  CString s(kLongText);
  s.Empty();
  EXPECT_TRUE(s.IsEmpty());
  EXPECT_STREQ("", s.GetString());
}

TEST(CStringTest, ConvertsImplicitlyToConstCharPointer) {
  const CString s("abc");
  const char* text = s;
  EXPECT_EQ(s.GetString(), text);
  EXPECT_EQ(3u, std::strlen(s));
}

// --- Comparison --------------------------------------------------------------------------------

TEST(CStringTest, CompareGivesMinusOneZeroOrOne) {
  const CString s("abc");
  EXPECT_EQ(0, s.Compare("abc"));
  EXPECT_EQ(-1, s.Compare("abd"));
  EXPECT_EQ(1, s.Compare("abb"));
  EXPECT_EQ(-1, s.Compare("abcd"));
  EXPECT_EQ(1, s.Compare("ab"));
  EXPECT_EQ(0, s.Compare(CString("abc")));
}

TEST(CStringTest, CompareIsCaseSensitiveByteOrder) {
  EXPECT_EQ(-1, CString("B").Compare("a"));
  EXPECT_EQ(1, CString("\xC3\xA9").Compare("z"));
}

TEST(CStringTest, CompareStopsAtEmbeddedNul) {
  const CString s("ab\0x", 4);
  EXPECT_EQ(0, s.Compare("ab"));
  EXPECT_TRUE(s == CString("ab\0y", 4));
  EXPECT_TRUE(s == "ab");
  EXPECT_FALSE(s < CString("ab"));
}

TEST(CStringTest, CompareWithNullRaisesFail) {
  const CString s("abc");
  const char* none = nullptr;
  EXPECT_EQ(E_FAIL, StatusRaised([&] { s.Compare(none); }));
  EXPECT_EQ(E_FAIL, StatusRaised([&] { s.CompareNoCase(none); }));
  EXPECT_EQ(E_FAIL, StatusRaised([&] { (void)(s == none); }));
}

TEST(CStringTest, CompareNoCaseFoldsAsciiOnly) {
  const CString s("AbC");
  EXPECT_EQ(0, s.CompareNoCase("aBc"));
  EXPECT_EQ(-1, s.CompareNoCase("abd"));
  EXPECT_EQ(1, s.CompareNoCase("ABB"));
#if defined(_WIN32)
  // Code page 1252: U+2030 and U+20AC have no case.
  EXPECT_EQ(-1, CString("\x80").CompareNoCase("\x89"));
  EXPECT_EQ(0, CString("x\x80").CompareNoCase("X\x80"));
#else
  EXPECT_EQ(-1, CString("\xC3\x89").CompareNoCase("\xC3\xA9"));
  EXPECT_NE(0, CString("x\xC3\xA9").CompareNoCase("X\xC3\x89"));
#endif
}

TEST(CStringTest, EqualityOperatorsOnEitherSide) {
  const CString abc("abc");
  const CString abd("abd");
  EXPECT_TRUE(abc == CString("abc"));
  EXPECT_FALSE(abc == abd);
  EXPECT_TRUE(abc == "abc");
  EXPECT_TRUE("abc" == abc);
  EXPECT_FALSE(abc == "ABC");
  EXPECT_FALSE("ABC" == abc);
  EXPECT_TRUE(abc != abd);
  EXPECT_FALSE(abc != CString("abc"));
  EXPECT_TRUE(abc != "abd");
  EXPECT_TRUE("abd" != abc);
  EXPECT_FALSE(abc != "abc");
  EXPECT_FALSE("abc" != abc);
}

TEST(CStringTest, OrderOperatorsAgainstCString) {
  const CString abc("abc");
  const CString abd("abd");
  EXPECT_TRUE(abc < abd);
  EXPECT_FALSE(abd < abc);
  EXPECT_FALSE(abc < abc);
  EXPECT_TRUE(abd > abc);
  EXPECT_FALSE(abc > abd);
  EXPECT_TRUE(abc <= abd);
  EXPECT_TRUE(abc <= abc);
  EXPECT_FALSE(abd <= abc);
  EXPECT_TRUE(abd >= abc);
  EXPECT_TRUE(abc >= abc);
  EXPECT_FALSE(abc >= abd);
}

TEST(CStringTest, OrderOperatorsAgainstTextOnTheRight) {
  const CString abc("abc");
  EXPECT_TRUE(abc < "abd");
  EXPECT_FALSE(abc < "abc");
  EXPECT_TRUE(abc > "abb");
  EXPECT_FALSE(abc > "abc");
  EXPECT_TRUE(abc <= "abc");
  EXPECT_FALSE(abc <= "abb");
  EXPECT_TRUE(abc >= "abc");
  EXPECT_FALSE(abc >= "abd");
}

TEST(CStringTest, OrderOperatorsAgainstTextOnTheLeft) {
  const CString abc("abc");
  EXPECT_TRUE("abb" < abc);
  EXPECT_FALSE("abc" < abc);
  EXPECT_TRUE("abd" > abc);
  EXPECT_FALSE("abc" > abc);
  EXPECT_TRUE("abc" <= abc);
  EXPECT_FALSE("abd" <= abc);
  EXPECT_TRUE("abc" >= abc);
  EXPECT_FALSE("abb" >= abc);
}

TEST(CStringTest, MapOrdersKeysByUnsignedBytes) {
  std::map<CString, int> map;
  map[CString("\xC3\xA9")] = 1;
  map[CString("b")] = 2;
  map[CString("B")] = 3;
  map[CString("a")] = 4;
  std::string order;
  for (const auto& entry : map) order += std::to_string(entry.second);
  EXPECT_EQ("3421", order);
}

// --- Left, Right, Mid --------------------------------------------------------------------------

TEST(CStringTest, LeftTakesFirstBytes) {
  const CString s("abcdef");
  EXPECT_EQ("ab", Bytes(s.Left(2)));
  EXPECT_EQ("", Bytes(s.Left(0)));
  EXPECT_EQ("abcdef", Bytes(s.Left(6)));
}

TEST(CStringTest, LeftClampsNegativeToZeroAndCutsAtEnd) {
  const CString s("abcdef");
  EXPECT_EQ("", Bytes(s.Left(-3)));
  EXPECT_EQ("abcdef", Bytes(s.Left(99)));
  EXPECT_EQ("abcdef", Bytes(s.Left(INT_MAX)));
}

TEST(CStringTest, RightTakesLastBytes) {
  const CString s("abcdef");
  EXPECT_EQ("ef", Bytes(s.Right(2)));
  EXPECT_EQ("", Bytes(s.Right(0)));
  EXPECT_EQ("abcdef", Bytes(s.Right(6)));
}

TEST(CStringTest, RightClampsNegativeToZeroAndCutsAtEnd) {
  const CString s("abcdef");
  EXPECT_EQ("", Bytes(s.Right(-1)));
  EXPECT_EQ("abcdef", Bytes(s.Right(99)));
}

TEST(CStringTest, MidWithStartTakesRest) {
  const CString s("abcdef");
  EXPECT_EQ("cdef", Bytes(s.Mid(2)));
  EXPECT_EQ("abcdef", Bytes(s.Mid(0)));
  EXPECT_EQ("", Bytes(s.Mid(6)));
  EXPECT_EQ("", Bytes(s.Mid(99)));
}

TEST(CStringTest, MidClampsNegativeStartToZero) {
  const CString s("abcdef");
  EXPECT_EQ("abcdef", Bytes(s.Mid(-2)));
  EXPECT_EQ("abcdef", Bytes(s.Mid(INT_MIN)));
  EXPECT_EQ("ab", Bytes(s.Mid(-1, 2)));
}

TEST(CStringTest, MidWithCountTakesThatMany) {
  const CString s("abcdef");
  EXPECT_EQ("bc", Bytes(s.Mid(1, 2)));
  EXPECT_EQ("abcdef", Bytes(s.Mid(0, 6)));
  EXPECT_EQ("", Bytes(s.Mid(2, 0)));
}

TEST(CStringTest, MidClampsNegativeCountAndCutsAtEnd) {
  const CString s("abcdef");
  EXPECT_EQ("", Bytes(s.Mid(1, -1)));
  EXPECT_EQ("ef", Bytes(s.Mid(4, 99)));
  EXPECT_EQ("bcdef", Bytes(s.Mid(1, INT_MAX)));
  EXPECT_EQ("", Bytes(s.Mid(6, 2)));
  EXPECT_EQ("", Bytes(s.Mid(7, 2)));
}

TEST(CStringTest, PartsKeepEmbeddedNul) {
  const CString s("ab\0cd", 5);
  EXPECT_EQ(std::string("b\0c", 3), Bytes(s.Mid(1, 3)));
  EXPECT_EQ(std::string("\0cd", 3), Bytes(s.Right(3)));
  EXPECT_EQ(std::string("ab\0", 3), Bytes(s.Left(3)));
}

TEST(CStringTest, PartsAreIndependentCopies) {
  CString s("abcdef");
  CString whole = s.Left(99);
  CString middle = s.Mid(0);
  s.SetAt(0, 'X');
  EXPECT_STREQ("abcdef", whole.GetString());
  EXPECT_STREQ("abcdef", middle.GetString());
}

TEST(CStringTest, SpanIncludingTakesLeadingCharsInSet) {
  EXPECT_EQ("cabba", Bytes(CString("cabbage").SpanIncluding("abc")));
  EXPECT_EQ("", Bytes(CString("xabc").SpanIncluding("abc")));
  EXPECT_EQ("", Bytes(CString("abc").SpanIncluding("")));
}

TEST(CStringTest, SpanExcludingTakesLeadingCharsNotInSet) {
  EXPECT_EQ("hello", Bytes(CString("hello, world").SpanExcluding(",;")));
  EXPECT_EQ("abc", Bytes(CString("abc").SpanExcluding("xyz")));
  EXPECT_EQ("", Bytes(CString(",a").SpanExcluding(",")));
}

TEST(CStringTest, SpansMatchWholeMultiByteCharacters) {
  // U+00E9 (C3 A9) and U+00EA (C3 AA) share their lead byte.
  const CString s("\xC3\xA9\xC3\xA9\xC3\xAAx");
#if defined(_WIN32)
  // Code page 1252: the set holds the two characters C3 and A9.
  EXPECT_EQ("\xC3\xA9\xC3\xA9\xC3", Bytes(s.SpanIncluding("\xC3\xA9")));
#else
  EXPECT_EQ("\xC3\xA9\xC3\xA9", Bytes(s.SpanIncluding("\xC3\xA9")));
#endif
  EXPECT_EQ("", Bytes(s.SpanExcluding("\xC3\xA9")));
  EXPECT_EQ("\xC3\xA9\xC3\xA9\xC3\xAA", Bytes(s.SpanExcluding("x")));
}

TEST(CStringTest, SpanWithNullSetRaisesInvalidArg) {
  const CString s("abc");
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.SpanIncluding(nullptr); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.SpanExcluding(nullptr); }));
}

// --- Search ------------------------------------------------------------------------------------

TEST(CStringTest, FindCharGivesFirstIndexFromStart) {
  const CString s("abcabc");
  EXPECT_EQ(1, s.Find('b'));
  EXPECT_EQ(4, s.Find('b', 2));
  EXPECT_EQ(5, s.Find('c', 5));
  EXPECT_EQ(-1, s.Find('z'));
}

TEST(CStringTest, FindCharWithStartOutsideTextGivesMinusOne) {
  const CString s("abcabc");
  EXPECT_EQ(-1, s.Find('a', -1));
  EXPECT_EQ(-1, s.Find('a', 6));
  EXPECT_EQ(-1, s.Find('a', 99));
  EXPECT_EQ(-1, CString().Find('a'));
}

TEST(CStringTest, FindNulCharGivesTerminatorIndex) {
  EXPECT_EQ(3, CString("abc").Find('\0'));
  EXPECT_EQ(-1, CString("abc").Find('\0', 3));
  EXPECT_EQ(2, CString("ab\0cd", 5).Find('\0'));
}

TEST(CStringTest, FindStopsAtEmbeddedNul) {
  const CString s("ab\0cd", 5);
  EXPECT_EQ(-1, s.Find('c'));
  EXPECT_EQ(-1, s.Find("cd"));
  EXPECT_EQ(3, s.Find('c', 3));
  EXPECT_EQ(3, s.Find("cd", 3));
}

TEST(CStringTest, FindCharDoesNotMatchInsideMultiByteCharacter) {
#if defined(_WIN32)
  // Code page 1252: both bytes are characters.
  EXPECT_EQ(1, CString("\xC3\xA9").Find('\xA9'));
  EXPECT_EQ(0, CString("\xC3\xA9").Find('\xC3'));
#else
  EXPECT_EQ(-1, CString("\xC3\xA9").Find('\xA9'));
  EXPECT_EQ(-1, CString("\xC3\xA9").Find('\xC3'));
#endif
  // A stray byte is a character of its own.
  EXPECT_EQ(1, CString("a\xA9").Find('\xA9'));
  EXPECT_EQ(2, CString("\xC3\xA9x").Find('x'));
}

TEST(CStringTest, FindTextGivesFirstIndexFromStart) {
  const CString s("abcabc");
  EXPECT_EQ(1, s.Find("bc"));
  EXPECT_EQ(4, s.Find("bc", 2));
  EXPECT_EQ(0, s.Find("abcabc"));
  EXPECT_EQ(-1, s.Find("cb"));
  EXPECT_EQ(-1, s.Find("abcabcd"));
}

TEST(CStringTest, FindEmptyTextGivesStart) {
  const CString s("abcabc");
  EXPECT_EQ(0, s.Find(""));
  EXPECT_EQ(2, s.Find("", 2));
  EXPECT_EQ(6, s.Find("", 6));
  EXPECT_EQ(0, CString().Find(""));
}

TEST(CStringTest, FindTextWithStartOutsideTextGivesMinusOne) {
  const CString s("abcabc");
  EXPECT_EQ(-1, s.Find("a", -1));
  EXPECT_EQ(-1, s.Find("", 7));
  EXPECT_EQ(-1, s.Find("", -1));
}

TEST(CStringTest, FindNullTextGivesMinusOne) {
  const char* none = nullptr;
  EXPECT_EQ(-1, CString("abc").Find(none));
}

TEST(CStringTest, ReverseFindGivesLastIndex) {
  const CString s("abcabc");
  EXPECT_EQ(4, s.ReverseFind('b'));
  EXPECT_EQ(0, CString("abc").ReverseFind('a'));
  EXPECT_EQ(-1, s.ReverseFind('z'));
  EXPECT_EQ(-1, CString().ReverseFind('a'));
}

TEST(CStringTest, ReverseFindNulGivesTerminatorIndex) {
  EXPECT_EQ(3, CString("abc").ReverseFind('\0'));
}

TEST(CStringTest, ReverseFindStopsAtEmbeddedNul) {
  EXPECT_EQ(0, CString("ab\0ab", 5).ReverseFind('a'));
}

TEST(CStringTest, ReverseFindSkipsBytesInsideMultiByteCharacters) {
#if defined(_WIN32)
  EXPECT_EQ(3, CString("\xC3\xA9\xC3\xA9").ReverseFind('\xA9'));  // code page 1252
#else
  EXPECT_EQ(-1, CString("\xC3\xA9\xC3\xA9").ReverseFind('\xA9'));
#endif
  EXPECT_EQ(3, CString("\xA9\xC3\xA9\xA9").ReverseFind('\xA9'));
}

TEST(CStringTest, FindOneOfGivesFirstIndexOfAnyInSet) {
  const CString s("abcdef");
  EXPECT_EQ(3, s.FindOneOf("fd"));
  EXPECT_EQ(0, s.FindOneOf("a"));
  EXPECT_EQ(-1, s.FindOneOf("xyz"));
  EXPECT_EQ(-1, s.FindOneOf(""));
  EXPECT_EQ(-1, s.FindOneOf(nullptr));
}

TEST(CStringTest, FindOneOfMatchesWholeMultiByteCharacters) {
  const CString s("x\xC3\xAA\xC3\xA9");
#if defined(_WIN32)
  // Code page 1252: C3 is a character of the set.
  EXPECT_EQ(1, s.FindOneOf("\xC3\xA9"));
  EXPECT_EQ(0, CString("\xC3\xAA").FindOneOf("\xC3\xA9"));
#else
  EXPECT_EQ(3, s.FindOneOf("\xC3\xA9"));
  EXPECT_EQ(-1, CString("\xC3\xAA").FindOneOf("\xC3\xA9"));
#endif
}

TEST(CStringTest, FindOneOfStopsAtEmbeddedNul) {
  EXPECT_EQ(-1, CString("ab\0cd", 5).FindOneOf("c"));
}

// --- Replace, Remove, Insert, Delete -----------------------------------------------------------

TEST(CStringTest, ReplaceCharReturnsCount) {
  CString s("a.b.c");
  EXPECT_EQ(2, s.Replace('.', '/'));
  EXPECT_STREQ("a/b/c", s.GetString());
  EXPECT_EQ(0, s.Replace('x', 'y'));
  EXPECT_STREQ("a/b/c", s.GetString());
}

TEST(CStringTest, ReplaceCharWithItselfReturnsZero) {
  CString s("aaa");
  EXPECT_EQ(0, s.Replace('a', 'a'));
  EXPECT_STREQ("aaa", s.GetString());
}

TEST(CStringTest, ReplaceCharCoversWholeLength) {
  CString s("a\0a", 3);
  EXPECT_EQ(2, s.Replace('a', 'b'));
  EXPECT_EQ(std::string("b\0b", 3), Bytes(s));
  EXPECT_EQ(1, s.Replace('\0', '-'));
  EXPECT_EQ("b-b", Bytes(s));
}

TEST(CStringTest, ReplaceTextReturnsCount) {
  CString s("one two one");
  EXPECT_EQ(2, s.Replace("one", "1"));
  EXPECT_STREQ("1 two 1", s.GetString());
  EXPECT_EQ(1, s.Replace("two", "three"));
  EXPECT_STREQ("1 three 1", s.GetString());
}

TEST(CStringTest, ReplaceTextScansLeftToRightWithoutOverlap) {
  CString s("aaaaa");
  EXPECT_EQ(2, s.Replace("aa", "b"));
  EXPECT_STREQ("bba", s.GetString());
  CString grow("aa");
  EXPECT_EQ(2, grow.Replace("a", "aa"));
  EXPECT_STREQ("aaaa", grow.GetString());
}

TEST(CStringTest, ReplaceEmptyOrNullOldTextReplacesNothing) {
  CString s("abc");
  EXPECT_EQ(0, s.Replace("", "x"));
  EXPECT_EQ(0, s.Replace(nullptr, "x"));
  EXPECT_STREQ("abc", s.GetString());
}

TEST(CStringTest, ReplaceWithNullNewTextRemoves) {
  CString s("a-b-c");
  EXPECT_EQ(2, s.Replace("-", nullptr));
  EXPECT_STREQ("abc", s.GetString());
  EXPECT_EQ(1, s.Replace("b", ""));
  EXPECT_STREQ("ac", s.GetString());
}

TEST(CStringTest, ReplaceMissingTextLeavesStringAndReturnsZero) {
  CString s("abc");
  EXPECT_EQ(0, s.Replace("x", "y"));
  EXPECT_STREQ("abc", s.GetString());
}

TEST(CStringTest, ReplaceTextSearchesEachPieceBetweenNuls) {
  CString s("ab\0ab", 5);
  EXPECT_EQ(2, s.Replace("ab", "x"));
  EXPECT_EQ(std::string("x\0x", 3), Bytes(s));
}

TEST(CStringTest, ReplaceWithOwnTextAsNewText) {
  // kLongText begins with "a text": that part gives way to the whole text.
  CString s(kLongText);
  EXPECT_EQ(1, s.Replace("a text", s.GetString()));
  EXPECT_EQ(std::string(kLongText) + (kLongText + 6), Bytes(s));
}

TEST(CStringTest, RemoveReturnsBytesRemoved) {
  CString s("a-b-c-");
  EXPECT_EQ(3, s.Remove('-'));
  EXPECT_STREQ("abc", s.GetString());
  EXPECT_EQ(0, s.Remove('x'));
  EXPECT_STREQ("abc", s.GetString());
}

TEST(CStringTest, RemoveCoversWholeLength) {
  CString s("a\0b\0", 4);
  EXPECT_EQ(2, s.Remove('\0'));
  EXPECT_EQ("ab", Bytes(s));
}

TEST(CStringTest, RemoveKeepsMultiByteCharacterWithMatchingTrailByte) {
  CString s("\xC3\xA9\xA9");
#if defined(_WIN32)
  EXPECT_EQ(2, s.Remove('\xA9'));  // code page 1252: two characters A9
  EXPECT_EQ("\xC3", Bytes(s));
#else
  EXPECT_EQ(1, s.Remove('\xA9'));
  EXPECT_EQ("\xC3\xA9", Bytes(s));
#endif
}

TEST(CStringTest, InsertCharReturnsNewLength) {
  CString s("abc");
  EXPECT_EQ(4, s.Insert(1, 'x'));
  EXPECT_STREQ("axbc", s.GetString());
  EXPECT_EQ(5, s.Insert(4, 'y'));
  EXPECT_STREQ("axbcy", s.GetString());
}

TEST(CStringTest, InsertClampsIndexToText) {
  CString s("abc");
  EXPECT_EQ(4, s.Insert(-5, 'x'));
  EXPECT_STREQ("xabc", s.GetString());
  EXPECT_EQ(6, s.Insert(99, "yz"));
  EXPECT_STREQ("xabcyz", s.GetString());
}

TEST(CStringTest, InsertTextReturnsNewLength) {
  CString s("ad");
  EXPECT_EQ(4, s.Insert(1, "bc"));
  EXPECT_STREQ("abcd", s.GetString());
  EXPECT_EQ(4, s.Insert(1, nullptr));
  EXPECT_EQ(4, s.Insert(1, ""));
  EXPECT_STREQ("abcd", s.GetString());
}

TEST(CStringTest, InsertsOwnText) {
  CString s(kLongText);
  s.Insert(1, s.GetString());
  EXPECT_EQ(std::string("a") + kLongText + (kLongText + 1), Bytes(s));
}

TEST(CStringTest, DeleteReturnsNewLength) {
  CString s("abcdef");
  EXPECT_EQ(4, s.Delete(1, 2));
  EXPECT_STREQ("adef", s.GetString());
  EXPECT_EQ(3, s.Delete(0));
  EXPECT_STREQ("def", s.GetString());
}

TEST(CStringTest, DeleteClampsIndexAndCount) {
  CString s("abcdef");
  EXPECT_EQ(5, s.Delete(-1, 1));
  EXPECT_STREQ("bcdef", s.GetString());
  EXPECT_EQ(3, s.Delete(3, 99));
  EXPECT_STREQ("bcd", s.GetString());
  EXPECT_EQ(3, s.Delete(9));
  EXPECT_EQ(3, s.Delete(1, -2));
  EXPECT_EQ(1, s.Delete(1, INT_MAX));
  EXPECT_STREQ("b", s.GetString());
}

// --- Tokenize ----------------------------------------------------------------------------------

TEST(CStringTest, TokenizeWalksTokensAndEndsWithMinusOne) {
  const CString s("a,b,,c");
  int start = 0;
  EXPECT_EQ("a", Bytes(s.Tokenize(",", start)));
  EXPECT_EQ(2, start);
  EXPECT_EQ("b", Bytes(s.Tokenize(",", start)));
  EXPECT_EQ(4, start);
  EXPECT_EQ("c", Bytes(s.Tokenize(",", start)));
  EXPECT_EQ(7, start);
  EXPECT_EQ("", Bytes(s.Tokenize(",", start)));
  EXPECT_EQ(-1, start);
}

TEST(CStringTest, TokenizeSkipsLeadingDelimitersOfAnyKind) {
  const CString s(" ;a b;; c; ");
  int start = 0;
  EXPECT_EQ("a", Bytes(s.Tokenize("; ", start)));
  EXPECT_EQ(4, start);
  EXPECT_EQ("b", Bytes(s.Tokenize("; ", start)));
  EXPECT_EQ(6, start);
  EXPECT_EQ("c", Bytes(s.Tokenize("; ", start)));
  EXPECT_EQ(10, start);
  EXPECT_EQ("", Bytes(s.Tokenize("; ", start)));
  EXPECT_EQ(-1, start);
}

TEST(CStringTest, TokenizeOfOnlyDelimitersGivesEmptyAndMinusOne) {
  int start = 0;
  EXPECT_EQ("", Bytes(CString(",,,").Tokenize(",", start)));
  EXPECT_EQ(-1, start);
  start = 0;
  EXPECT_EQ("", Bytes(CString().Tokenize(",", start)));
  EXPECT_EQ(-1, start);
}

TEST(CStringTest, TokenizeWithStartAtOrPastEndGivesMinusOne) {
  const CString s("abc");
  int start = 3;
  EXPECT_EQ("", Bytes(s.Tokenize(",", start)));
  EXPECT_EQ(-1, start);
  start = 99;
  EXPECT_EQ("", Bytes(s.Tokenize(",", start)));
  EXPECT_EQ(-1, start);
}

TEST(CStringTest, TokenizeWithNegativeStartRaisesInvalidArg) {
  const CString s("a,b");
  int start = -1;
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.Tokenize(",", start); }));
  EXPECT_EQ(-1, start);
}

TEST(CStringTest, TokenizeWithoutDelimitersGivesRestAndKeepsStart) {
  const CString s("abc");
  int start = 1;
  EXPECT_EQ("bc", Bytes(s.Tokenize(nullptr, start)));
  EXPECT_EQ(1, start);
  EXPECT_EQ("bc", Bytes(s.Tokenize("", start)));
  EXPECT_EQ(1, start);
  start = 3;
  EXPECT_EQ("", Bytes(s.Tokenize("", start)));
  EXPECT_EQ(-1, start);
}

TEST(CStringTest, TokenizeMatchesWholeMultiByteDelimiters) {
  // "\xC3\xA9" separates; "\xC3\xAA" shares its lead byte and does not.
  const CString s("\xC3\xAA\xC3\xA9x");
  int start = 0;
#if defined(_WIN32)
  // Code page 1252: C3 and A9 both separate.
  EXPECT_EQ("\xAA", Bytes(s.Tokenize("\xC3\xA9", start)));
  EXPECT_EQ(3, start);
  EXPECT_EQ("x", Bytes(s.Tokenize("\xC3\xA9", start)));
  EXPECT_EQ(6, start);
#else
  EXPECT_EQ("\xC3\xAA", Bytes(s.Tokenize("\xC3\xA9", start)));
  EXPECT_EQ(3, start);
#endif
}

TEST(CStringTest, TokenizeMovesStartOneBytePastToken) {
  // The start moves one byte past the token, so after a multi-byte
  // delimiter it lands on the delimiter's trailing byte, which is then a
  // character of its own.
  const CString s(
      "a\xC3\xA9"
      "b");
  int start = 0;
  EXPECT_EQ("a", Bytes(s.Tokenize("\xC3\xA9", start)));
  EXPECT_EQ(2, start);
#if defined(_WIN32)
  // Code page 1252: the A9 there is a delimiter of its own.
  EXPECT_EQ("b", Bytes(s.Tokenize("\xC3\xA9", start)));
#else
  EXPECT_EQ(
      "\xA9"
      "b",
      Bytes(s.Tokenize("\xC3\xA9", start)));
#endif
  EXPECT_EQ(5, start);
  EXPECT_EQ("", Bytes(s.Tokenize("\xC3\xA9", start)));
  EXPECT_EQ(-1, start);
}

// --- Trim --------------------------------------------------------------------------------------

TEST(CStringTest, TrimRemovesWhiteSpaceOnBothSides) {
  CString s(" \t\n\v\f\rab c \r\n\t");
  EXPECT_EQ(&s, &s.Trim());
  EXPECT_STREQ("ab c", s.GetString());
}

TEST(CStringTest, TrimLeftAndTrimRightRemoveOneSide) {
  CString left("  ab  ");
  left.TrimLeft();
  EXPECT_STREQ("ab  ", left.GetString());
  CString right("  ab  ");
  right.TrimRight();
  EXPECT_STREQ("  ab", right.GetString());
}

TEST(CStringTest, TrimOfAllWhiteSpaceGivesEmpty) {
  CString s(" \t ");
  s.Trim();
  EXPECT_TRUE(s.IsEmpty());
  CString left(" \t ");
  left.TrimLeft();
  EXPECT_TRUE(left.IsEmpty());
  CString right(" \t ");
  right.TrimRight();
  EXPECT_TRUE(right.IsEmpty());
}

TEST(CStringTest, TrimKeepsOtherBytes) {
  CString s("\xC2\xA0x\xC2\xA0");
  s.Trim();
  EXPECT_EQ("\xC2\xA0x\xC2\xA0", Bytes(s));
}

TEST(CStringTest, TrimCharRemovesThatChar) {
  CString s("xxaxbxx");
  EXPECT_EQ(&s, &s.Trim('x'));
  EXPECT_STREQ("axb", s.GetString());
  CString left("xxaxx");
  EXPECT_EQ(&left, &left.TrimLeft('x'));
  EXPECT_STREQ("axx", left.GetString());
  CString right("xxaxx");
  EXPECT_EQ(&right, &right.TrimRight('x'));
  EXPECT_STREQ("xxa", right.GetString());
}

TEST(CStringTest, TrimSetRemovesAnyCharInSet) {
  CString s("xyaxbyx");
  EXPECT_EQ(&s, &s.Trim("xy"));
  EXPECT_STREQ("axb", s.GetString());
  CString left("yxay");
  EXPECT_EQ(&left, &left.TrimLeft("xy"));
  EXPECT_STREQ("ay", left.GetString());
  CString right("yxay");
  EXPECT_EQ(&right, &right.TrimRight("xy"));
  EXPECT_STREQ("yxa", right.GetString());
}

TEST(CStringTest, TrimWithNullOrEmptySetChangesNothing) {
  CString s(" a ");
  s.Trim(nullptr);
  s.Trim("");
  s.TrimLeft(nullptr);
  s.TrimRight("");
  EXPECT_STREQ(" a ", s.GetString());
}

TEST(CStringTest, TrimSetTakesOnlyOneByteCharacters) {
  // The set is searched for the lead byte of each character as a character
  // of its own, so a multi-byte character is never trimmed.
  CString s(
      "\xC3\xA9"
      "a\xC3\xA9");
  s.Trim("\xC3\xA9");
#if defined(_WIN32)
  EXPECT_EQ("a", Bytes(s));  // code page 1252: both bytes are one-byte characters
#else
  EXPECT_EQ(
      "\xC3\xA9"
      "a\xC3\xA9",
      Bytes(s));
#endif
}

TEST(CStringTest, TrimRightStopsAtEmbeddedNul) {
  // The scan ends at the first NUL and cuts at the white space before it.
  CString s("ab \0cd", 6);
  s.TrimRight();
  EXPECT_EQ("ab", Bytes(s));
  CString untouched("ab\0 ", 4);
  untouched.TrimRight();
  EXPECT_EQ(std::string("ab\0 ", 4), Bytes(untouched));
}

TEST(CStringTest, TrimLeftKeepsBytesAfterEmbeddedNul) {
  CString s("  a\0b", 5);
  s.TrimLeft();
  EXPECT_EQ(std::string("a\0b", 3), Bytes(s));
}

TEST(CStringTest, TrimLeftNulCharRemovesLeadingNuls) {
  CString s("\0\0ab", 4);
  s.TrimLeft('\0');
  EXPECT_EQ("ab", Bytes(s));
  CString nuls("\0\0", 2);
  nuls.TrimLeft('\0');
  EXPECT_TRUE(nuls.IsEmpty());
}

// --- Case and order ----------------------------------------------------------------------------

#if defined(_WIN32)
// Code page 1252: U+20AC and U+2030 have no case.
TEST(CStringTest, MakeLowerFoldsAsciiOnly) {
  CString s("AbC\x80\x89Z1");
  EXPECT_EQ(&s, &s.MakeLower());
  EXPECT_EQ("abc\x80\x89z1", Bytes(s));
}

TEST(CStringTest, MakeUpperFoldsAsciiOnly) {
  CString s("aBc\x80\x89z1");
  EXPECT_EQ(&s, &s.MakeUpper());
  EXPECT_EQ("ABC\x80\x89Z1", Bytes(s));
}
#else
TEST(CStringTest, MakeLowerFoldsAsciiOnly) {
  CString s("AbC\xC3\x89Z1");
  EXPECT_EQ(&s, &s.MakeLower());
  EXPECT_EQ("abc\xC3\x89z1", Bytes(s));
}

TEST(CStringTest, MakeUpperFoldsAsciiOnly) {
  CString s("aBc\xC3\xA9z1");
  EXPECT_EQ(&s, &s.MakeUpper());
  EXPECT_EQ("ABC\xC3\xA9Z1", Bytes(s));
}
#endif

TEST(CStringTest, CaseChangesStopAtEmbeddedNul) {
  CString lower("A\0B", 3);
  lower.MakeLower();
  EXPECT_EQ(std::string("a\0B", 3), Bytes(lower));
  CString upper("a\0b", 3);
  upper.MakeUpper();
  EXPECT_EQ(std::string("A\0b", 3), Bytes(upper));
}

TEST(CStringTest, MakeReverseReversesCharacters) {
  CString s("abc");
  EXPECT_EQ(&s, &s.MakeReverse());
  EXPECT_STREQ("cba", s.GetString());
  CString empty;
  empty.MakeReverse();
  EXPECT_TRUE(empty.IsEmpty());
}

TEST(CStringTest, MakeReverseKeepsMultiByteCharactersWhole) {
  CString s(
      "a\xC3\xA9"
      "b\xE2\x82\xAC");
  s.MakeReverse();
#if defined(_WIN32)
  EXPECT_EQ(
      "\xAC\x82\xE2"
      "b\xA9\xC3"
      "a",
      Bytes(s));  // code page 1252: byte by byte
#else
  EXPECT_EQ(
      "\xE2\x82\xAC"
      "b\xC3\xA9"
      "a",
      Bytes(s));
#endif
}

TEST(CStringTest, MakeReverseStopsAtEmbeddedNul) {
  CString s("ab\0cd", 5);
  s.MakeReverse();
  EXPECT_EQ(std::string("ba\0cd", 5), Bytes(s));
}

// --- Format ------------------------------------------------------------------------------------

TEST(CStringTest, FormatFollowsPrintfRules) {
  CString s("old");
  s.Format("%d-%s-%05.1f|%x|%-3c|%%", 42, "x", 3.14159, 255, 'z');
  EXPECT_STREQ("42-x-003.1|ff|z  |%", s.GetString());
}

TEST(CStringTest, FormatWithoutArgumentsCopiesFormat) {
  CString s;
  s.Format("plain");
  EXPECT_STREQ("plain", s.GetString());
  s.Format("");
  EXPECT_TRUE(s.IsEmpty());
}

TEST(CStringTest, FormatPassesCStringArgumentsAsText) {
  const CString other("id");
  CString s;
  s.Format("%s-%d", other, 5);
  EXPECT_STREQ("id-5", s.GetString());
}

TEST(CStringTest, FormatMayReadItsOwnText) {
  CString s("abc");
  s.Format("%s!", s.GetString());
  EXPECT_STREQ("abc!", s.GetString());

  CString longer(kLongText);
  longer.Format("%s%s", longer, longer);
  EXPECT_EQ(std::string(kLongText) + kLongText, Bytes(longer));
}

TEST(CStringTest, FormatGivesLongText) {
  CString s;
  s.Format("%s|%500d|", kLongText, 7);
  EXPECT_EQ(std::string(kLongText) + "|" + std::string(499, ' ') + "7|", Bytes(s));
}

TEST(CStringTest, AppendFormatAppends) {
  CString s("x=");
  s.AppendFormat("%d", 5);
  s.AppendFormat(", %s=%.2f", CString("y"), 0.5);
  EXPECT_STREQ("x=5, y=0.50", s.GetString());
}

TEST(CStringTest, AppendFormatMayReadItsOwnText) {
  CString s(kLongText);
  s.AppendFormat("%s", s.GetString());
  EXPECT_EQ(std::string(kLongText) + kLongText, Bytes(s));
}

TEST(CStringTest, FormatWithNullFormatRaisesInvalidArg) {
  CString s("keep");
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.Format(nullptr); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.AppendFormat(nullptr); }));
  EXPECT_STREQ("keep", s.GetString());
}

#if defined(_WIN32)
TEST(CStringTest, WideTextStopsAtACharacterWithoutNarrowForm) {
  // The MinGW runtime's formatter stops a %ls argument at the first
  // character that has no narrow form and reports no error.
  const wchar_t loneSurrogate[] = {L'a', static_cast<wchar_t>(0xD800), L'b', 0};
  CString s("keep");
  EXPECT_EQ(S_OK, StatusRaised([&] { s.Format("[%ls]", loneSurrogate); }));
  EXPECT_STREQ("[a]", s.GetString());
  EXPECT_EQ(S_OK, StatusRaised([&] { s.AppendFormat("[%ls]", loneSurrogate); }));
  EXPECT_STREQ("[a][a]", s.GetString());
}
#else
TEST(CStringTest, FormatterErrorRaisesAndKeepsText) {
  // A lone surrogate has no narrow form in any locale: the formatter fails.
  const wchar_t loneSurrogate[] = {static_cast<wchar_t>(0xD800), 0};
  CString s("keep");
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.Format("%ls", loneSurrogate); }));
  EXPECT_EQ(E_FAIL, StatusRaised([&] { s.AppendFormat("%ls", loneSurrogate); }));
  EXPECT_STREQ("keep", s.GetString());
}
#endif

// --- Buffer access -----------------------------------------------------------------------------

TEST(CStringTest, GetBufferThenReleaseBufferTakesLengthToNul) {
  CString s("abc");
  char* buffer = s.GetBuffer(10);
  ASSERT_NE(nullptr, buffer);
  std::memcpy(buffer, "hello", 6);
  s.ReleaseBuffer();
  EXPECT_EQ(5, s.GetLength());
  EXPECT_STREQ("hello", s.GetString());
}

TEST(CStringTest, GetBufferKeepsTextAndGivesRoom) {
  CString s("abc");
  char* buffer = s.GetBuffer(8);
  EXPECT_STREQ("abc", buffer);
  std::memcpy(buffer + 3, "defgh", 5);
  buffer[8] = '\0';
  s.ReleaseBuffer(8);
  EXPECT_STREQ("abcdefgh", s.GetString());
}

TEST(CStringTest, GetBufferSmallerThanTextKeepsText) {
  CString s("abcdef");
  char* buffer = s.GetBuffer(2);
  EXPECT_STREQ("abcdef", buffer);
  s.ReleaseBuffer();
  EXPECT_STREQ("abcdef", s.GetString());
}

TEST(CStringTest, GetBufferWithoutLengthWritesInPlace) {
  CString s("abc");
  s.GetBuffer()[0] = 'X';
  s.ReleaseBuffer();
  EXPECT_STREQ("Xbc", s.GetString());
}

TEST(CStringTest, ReleaseBufferWithLengthTakesThatMany) {
  CString s("abcdef");
  s.GetBuffer();
  s.ReleaseBuffer(3);
  EXPECT_EQ("abc", Bytes(s));
  s.GetBuffer(5)[1] = '\0';
  s.ReleaseBuffer(3);
  EXPECT_EQ(std::string("a\0c", 3), Bytes(s));
}

TEST(CStringTest, ReleaseBufferOutsideBufferRaisesInvalidArg) {
  CString s("abc");
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.ReleaseBuffer(-2); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.ReleaseBuffer(4); }));
  EXPECT_STREQ("abc", s.GetString());
}

TEST(CStringTest, GetBufferSetLengthSetsLength) {
  CString s("abcdef");
  char* buffer = s.GetBufferSetLength(3);
  EXPECT_EQ(3, s.GetLength());
  EXPECT_STREQ("abc", buffer);
  buffer = s.GetBufferSetLength(5);
  EXPECT_EQ(5, s.GetLength());
  buffer[3] = 'x';
  buffer[4] = 'y';
  s.ReleaseBuffer();
  EXPECT_STREQ("abcxy", s.GetString());
}

TEST(CStringTest, NegativeBufferLengthRaisesInvalidArg) {
  CString s("abc");
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.GetBuffer(-1); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.GetBufferSetLength(-1); }));
  EXPECT_STREQ("abc", s.GetString());
}

// --- Failed allocations ------------------------------------------------------------------------

TEST(CStringTest, FailedAllocationRaisesOutOfMemory) {
  CString s("short");
  HRESULT construct, append, format, buffer, replace;
  {
    FailingAllocations failing;
    construct = StatusRaised([] { CString copy(kLongText); });
    append = StatusRaised([&] { s += kLongText; });
    format = StatusRaised([&] { s.Format("%s", kLongText); });
    buffer = StatusRaised([&] { s.GetBuffer(100); });
    replace = StatusRaised([&] { s.Replace("short", kLongText); });
  }
  EXPECT_EQ(E_OUTOFMEMORY, construct);
  EXPECT_EQ(E_OUTOFMEMORY, append);
  EXPECT_EQ(E_OUTOFMEMORY, format);
  EXPECT_EQ(E_OUTOFMEMORY, buffer);
  EXPECT_EQ(E_OUTOFMEMORY, replace);
  EXPECT_STREQ("short", s.GetString());
}

// A copy shares the text of its source, so it needs no memory even where
// every allocation fails; the first change to the copy needs its own text,
// fails there, and leaves both strings as they were.
TEST(CStringTest, CopyNeedsNoMemoryAndAFailedChangeLeavesBothStrings) {
  const CString source(kLongText);
  CString target("x");
  HRESULT copy, assign, change;
  {
    FailingAllocations failing;
    copy = StatusRaised([&] { CString duplicate(source); });
    assign = StatusRaised([&] { target = source; });
    change = StatusRaised([&] { target.SetAt(0, 'A'); });
  }
  EXPECT_EQ(S_OK, copy);
  EXPECT_EQ(S_OK, assign);
  EXPECT_EQ(E_OUTOFMEMORY, change);
  EXPECT_STREQ(kLongText, target.GetString());
  EXPECT_STREQ(kLongText, source.GetString());
}

// --- Shared texts ------------------------------------------------------------------------------

// A GUID-shaped id of 40 bytes, as product-lifecycle systems give them.
const char kGuidId[] = "PRC-3f2504e0-4f89-11d3-9a0c-0305e82c3301";

TEST(CStringTest, CopyOfAFortyByteIdAllocatesNothing) {
  const CString id(kGuidId);
  ASSERT_EQ(40, id.GetLength());
  const std::size_t before = g_allocations;
  CString copy(id);
  CString assigned;
  assigned = copy;
  CString moved(std::move(assigned));
  EXPECT_EQ(before, g_allocations);
  EXPECT_EQ(id.GetString(), copy.GetString());
  EXPECT_EQ(id.GetString(), moved.GetString());
  EXPECT_TRUE(assigned.IsEmpty());
}

TEST(CStringTest, WholeLeftRightAndMidShareTheText) {
  const CString id(kGuidId);
  const std::size_t before = g_allocations;
  EXPECT_EQ(id.GetString(), id.Left(40).GetString());
  EXPECT_EQ(id.GetString(), id.Right(99).GetString());
  EXPECT_EQ(id.GetString(), id.Mid(0).GetString());
  EXPECT_EQ(before, g_allocations);
}

TEST(CStringTest, EveryChangeToACopyLeavesTheSourceAlone) {
  const CString source(kGuidId);
  const std::vector<std::function<void(CString&)>> changes = {
      [](CString& s) { s.SetAt(0, 'X'); },
      [](CString& s) { s += "-tail"; },
      [](CString& s) { s += 'z'; },
      [](CString& s) { s.Replace('0', 'O'); },
      [](CString& s) { s.Replace("PRC", "PRD"); },
      [](CString& s) { s.Remove('-'); },
      [](CString& s) { s.Insert(3, "++"); },
      [](CString& s) { s.Insert(3, '+'); },
      [](CString& s) { s.Delete(0, 4); },
      [](CString& s) { s.Trim("P3"); },
      [](CString& s) { s.TrimLeft('P'); },
      [](CString& s) { s.TrimRight('1'); },
      [](CString& s) { s.MakeLower(); },
      [](CString& s) { s.MakeUpper(); },
      [](CString& s) { s.MakeReverse(); },
      [](CString& s) { s.Format("%s!", s.GetString()); },
      [](CString& s) { s.AppendFormat("%d", 7); },
      [](CString& s) {
        s.GetBuffer()[1] = 'Q';
        s.ReleaseBuffer();
      },
      [](CString& s) {
        s.GetBufferSetLength(3);
        s.ReleaseBuffer();
      },
      [](CString& s) {
        s.GetBuffer(50)[45] = 'W';
        s.ReleaseBuffer(46);
      },
      [](CString& s) { s.Empty(); },
      [](CString& s) { s = "other"; },
  };
  for (std::size_t i = 0; i < changes.size(); ++i) {
    CString copy(source);
    changes[i](copy);
    EXPECT_STREQ(kGuidId, source.GetString()) << "change " << i;
    EXPECT_EQ(40, source.GetLength()) << "change " << i;
    EXPECT_NE(std::string(kGuidId), Bytes(copy)) << "change " << i;
  }
}

TEST(CStringTest, ACopyMadeWhileTheBufferIsOutKeepsItsOwnText) {
  CString s("abc");
  char* buffer = s.GetBuffer();
  const CString copy(s);
  EXPECT_NE(copy.GetString(), s.GetString());
  buffer[0] = 'X';
  s.ReleaseBuffer();
  EXPECT_STREQ("Xbc", s.GetString());
  EXPECT_STREQ("abc", copy.GetString());
  // Released, the text is shared again by the next copy.
  const CString shared(s);
  EXPECT_EQ(shared.GetString(), s.GetString());
}

TEST(CStringTest, GetBufferOfASharedTextWritesOnlyThisString) {
  const CString source("abc");
  CString copy(source);
  copy.GetBuffer()[2] = 'Z';
  copy.ReleaseBuffer();
  EXPECT_STREQ("abZ", copy.GetString());
  EXPECT_STREQ("abc", source.GetString());
}

TEST(CStringTest, AppendingToItselfThroughAShareKeepsBothTexts) {
  CString s(kGuidId);
  const CString copy(s);
  s += s;
  s += s.GetString() + 76;
  EXPECT_EQ(std::string(kGuidId) + kGuidId + "3301", Bytes(s));
  EXPECT_STREQ(kGuidId, copy.GetString());
}

TEST(CStringTest, CopiesDroppedOnSeveralThreadsFreeTheTextOnce) {
  const CString source(kGuidId);
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&source] {
      for (int i = 0; i < 20000; ++i) {
        CString copy(source);
        CString again(copy);
        if (again.GetLength() != 40) std::abort();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_STREQ(kGuidId, source.GetString());
}

TEST(CStringTest, AppendsGrowTheTextByHalfItsLength) {
  CString s;
  const std::size_t before = g_allocations;
  for (int i = 0; i < 10000; ++i) s += 'a';
  EXPECT_EQ(10000, s.GetLength());
  // 10000 appends, each block half as large again as the last: a few dozen
  // allocations, not one per append.
  EXPECT_LT(g_allocations - before, 40u);
}

TEST(CStringTest, PreallocateMakesRoomWithoutChangingTheText) {
  CString s("ab");
  s.Preallocate(100);
  EXPECT_STREQ("ab", s.GetString());
  const std::size_t before = g_allocations;
  for (int i = 0; i < 98; ++i) s += 'c';
  EXPECT_EQ(before, g_allocations);
  EXPECT_EQ(100, s.GetLength());
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.Preallocate(-1); }));
}

TEST(CStringTest, AppendTakesBytesWithNulsAndRefusesANegativeLength) {
  CString s("a");
  s.Append("b\0c", 3);
  EXPECT_EQ(std::string("ab\0c", 4), Bytes(s));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.Append("x", -1); }));
  EXPECT_EQ(E_INVALIDARG, StatusRaised([&] { s.Append(nullptr, 1); }));
  s.Append(nullptr, 0);
  EXPECT_EQ(4, s.GetLength());
}

}  // namespace
