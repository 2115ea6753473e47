// Tests of the UTF-8 <-> UTF-16 conversion of the POSIX backend.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "platform/TextConversion.h"

namespace vekzol {
namespace platform {
namespace {

std::u16string Wide(const std::string& narrow) {
  return NarrowToWide(narrow.data(), narrow.size());
}

std::string Narrow(const std::u16string& wide) { return WideToNarrow(wide.data(), wide.size()); }

TEST(NarrowToWideTest, AsciiBecomesOneUnitPerByte) { EXPECT_EQ(Wide("Abc 09~"), u"Abc 09~"); }

TEST(NarrowToWideTest, MultiByteSequencesBecomeTheirCodePoints) {
  EXPECT_EQ(Wide("\xC3\xA9"), std::u16string(1, char16_t{0x00E9}));
  EXPECT_EQ(Wide("\xE2\x82\xAC"), std::u16string(1, char16_t{0x20AC}));
  EXPECT_EQ(Wide("\xEF\xBF\xBF"), std::u16string(1, char16_t{0xFFFF}));
}

TEST(NarrowToWideTest, FourByteSequenceBecomesSurrogatePair) {
  EXPECT_EQ(Wide("\xF0\x9F\x98\x80"), (std::u16string{0xD83D, 0xDE00}));
  EXPECT_EQ(Wide("\xF4\x8F\xBF\xBF"), (std::u16string{0xDBFF, 0xDFFF}));
}

TEST(NarrowToWideTest, EmbeddedNulIsConverted) {
  EXPECT_EQ(NarrowToWide("a\0b", 3), (std::u16string{u'a', 0, u'b'}));
}

TEST(NarrowToWideTest, NullOrEmptyTextGivesEmptyResult) {
  EXPECT_EQ(NarrowToWide(nullptr, 5), u"");
  EXPECT_EQ(NarrowToWide("abc", 0), u"");
}

TEST(NarrowToWideTest, LengthLimitsTheBytesRead) { EXPECT_EQ(NarrowToWide("abcdef", 2), u"ab"); }

TEST(NarrowToWideTest, StrayContinuationByteBecomesOneReplacement) {
  EXPECT_EQ(Wide("a\x80z"), (std::u16string{u'a', 0xFFFD, u'z'}));
  EXPECT_EQ(Wide("\xBF\xBF"), (std::u16string{0xFFFD, 0xFFFD}));
}

TEST(NarrowToWideTest, BytesThatNeverStartASequenceBecomeOneReplacementEach) {
  EXPECT_EQ(Wide("\xC0\xAF"), (std::u16string{0xFFFD, 0xFFFD}));
  EXPECT_EQ(Wide("\xC1\xBF"), (std::u16string{0xFFFD, 0xFFFD}));
  EXPECT_EQ(Wide("\xF5\x80"), (std::u16string{0xFFFD, 0xFFFD}));
  EXPECT_EQ(Wide("\xFF"), std::u16string(1, char16_t{0xFFFD}));
}

TEST(NarrowToWideTest, TruncatedSequenceBecomesOneReplacement) {
  EXPECT_EQ(Wide("\xE2\x82"), std::u16string(1, char16_t{0xFFFD}));
  EXPECT_EQ(Wide("\xF0\x9F\x98"), std::u16string(1, char16_t{0xFFFD}));
  EXPECT_EQ(Wide("\xC3"), std::u16string(1, char16_t{0xFFFD}));
}

TEST(NarrowToWideTest, InterruptedSequenceIsReplacedAndTheBreakingByteKept) {
  EXPECT_EQ(Wide("\xE2\x82X"), (std::u16string{0xFFFD, u'X'}));
  EXPECT_EQ(Wide("\xF0\x9F\x98\xC3\xA9"), (std::u16string{0xFFFD, 0x00E9}));
  EXPECT_EQ(Wide("\xE2\x82\xE2\x82\xAC"), (std::u16string{0xFFFD, 0x20AC}));
}

TEST(NarrowToWideTest, OverlongFormsAreReplacedPerMaximalSubpart) {
  // E0 needs A0..BF next, F0 needs 90..BF: the lead byte alone is the
  // maximal subpart, each following byte is a stray continuation.
  EXPECT_EQ(Wide("\xE0\x80\xAF"), (std::u16string{0xFFFD, 0xFFFD, 0xFFFD}));
  EXPECT_EQ(Wide("\xF0\x8F\xBF\xBF"), (std::u16string{0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD}));
}

TEST(NarrowToWideTest, EncodedSurrogateIsReplacedPerByte) {
  EXPECT_EQ(Wide("\xED\xA0\x80"), (std::u16string{0xFFFD, 0xFFFD, 0xFFFD}));
  EXPECT_EQ(Wide("\xED\x9F\xBF"), std::u16string(1, char16_t{0xD7FF}));
}

TEST(NarrowToWideTest, CodePointAboveUnicodeRangeIsReplacedPerByte) {
  EXPECT_EQ(Wide("\xF4\x90\x80\x80"), (std::u16string{0xFFFD, 0xFFFD, 0xFFFD, 0xFFFD}));
}

TEST(WideToNarrowTest, AsciiBecomesOneBytePerUnit) { EXPECT_EQ(Narrow(u"Abc 09~"), "Abc 09~"); }

TEST(WideToNarrowTest, CodePointsBecomeTheirUtf8Bytes) {
  EXPECT_EQ(Narrow(std::u16string(1, char16_t{0x00E9})), "\xC3\xA9");
  EXPECT_EQ(Narrow(std::u16string(1, char16_t{0x07FF})), "\xDF\xBF");
  EXPECT_EQ(Narrow(std::u16string(1, char16_t{0x20AC})), "\xE2\x82\xAC");
  EXPECT_EQ(Narrow(std::u16string(1, char16_t{0xFFFD})), "\xEF\xBF\xBD");
}

TEST(WideToNarrowTest, SurrogatePairBecomesFourBytes) {
  EXPECT_EQ(Narrow(std::u16string{0xD83D, 0xDE00}), "\xF0\x9F\x98\x80");
  EXPECT_EQ(Narrow(std::u16string{0xD800, 0xDC00}), "\xF0\x90\x80\x80");
}

TEST(WideToNarrowTest, LoneHighSurrogateBecomesQuestionMark) {
  EXPECT_EQ(Narrow(std::u16string{u'a', 0xD83D}), "a?");
  EXPECT_EQ(Narrow(std::u16string{0xD83D, u'b'}), "?b");
  EXPECT_EQ(Narrow(std::u16string{0xD83D, 0xD83D, 0xDE00}), "?\xF0\x9F\x98\x80");
}

TEST(WideToNarrowTest, LoneLowSurrogateBecomesQuestionMark) {
  EXPECT_EQ(Narrow(std::u16string{0xDE00, u'x'}), "?x");
  EXPECT_EQ(Narrow(std::u16string{0xDC00, 0xD800}), "??");
}

TEST(WideToNarrowTest, EmbeddedNulIsConverted) {
  EXPECT_EQ(Narrow(std::u16string{u'a', 0, u'b'}), std::string("a\0b", 3));
}

TEST(WideToNarrowTest, NullOrEmptyTextGivesEmptyResult) {
  EXPECT_EQ(WideToNarrow(nullptr, 3), "");
  EXPECT_EQ(WideToNarrow(u"abc", 0), "");
}

TEST(TextConversionTest, EveryScalarValueSurvivesARoundTrip) {
  for (uint32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
    if (codePoint >= 0xD800 && codePoint <= 0xDFFF) continue;
    std::u16string wide;
    if (codePoint < 0x10000) {
      wide.push_back(static_cast<char16_t>(codePoint));
    } else {
      wide.push_back(static_cast<char16_t>(0xD800 + ((codePoint - 0x10000) >> 10)));
      wide.push_back(static_cast<char16_t>(0xDC00 + ((codePoint - 0x10000) & 0x3FF)));
    }
    const std::string narrow = Narrow(wide);
    const size_t expectedBytes = codePoint < 0x80      ? 1
                                 : codePoint < 0x800   ? 2
                                 : codePoint < 0x10000 ? 3
                                                       : 4;
    ASSERT_EQ(narrow.size(), expectedBytes) << codePoint;
    ASSERT_EQ(Wide(narrow), wide) << codePoint;
  }
}

}  // namespace
}  // namespace platform
}  // namespace vekzol
