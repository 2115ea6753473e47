// Tests of the Win32 text conversion. They run with the ANSI code page
// 1252: one byte per character, 0x80 to 0x9F holding the typographic
// characters (U+20AC, U+201A, ...), the five undefined bytes of the code
// page mapping to the control characters of the same number, and what the
// code page cannot hold coming back as its default character "?".
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <string>

#include <gtest/gtest.h>

#include "platform/TextConversion.h"

namespace {

using vekzol::platform::NarrowToWide;
using vekzol::platform::WideToNarrow;

TEST(Win32TextConversionTest, TestsRunWithCodePage1252) { ASSERT_EQ(1252u, GetACP()); }

TEST(Win32TextConversionTest, AsciiIsTheSame) {
  EXPECT_EQ(u"plain text 123", NarrowToWide("plain text 123", 14));
  const std::u16string wide = u"plain text 123";
  EXPECT_EQ("plain text 123", WideToNarrow(wide.data(), wide.size()));
}

TEST(Win32TextConversionTest, EveryByteIsOneCharacter) {
  const std::string narrow = "\xE9\x80\x82\x81\xFF";
  EXPECT_EQ((std::u16string{0x00E9, 0x20AC, 0x201A, 0x0081, 0x00FF}),
            NarrowToWide(narrow.data(), narrow.size()));
  const std::u16string wide{0x00E9, 0x20AC, 0x201A, 0x0081, 0x00FF};
  EXPECT_EQ(narrow, WideToNarrow(wide.data(), wide.size()));
}

TEST(Win32TextConversionTest, WhatTheCodePageCannotHoldBecomesTheDefaultCharacter) {
  // U+4E2D and a lone surrogate.
  const std::u16string wide{u'a', 0x4E2D, 0xD800, u'b'};
  EXPECT_EQ("a??b", WideToNarrow(wide.data(), wide.size()));
}

TEST(Win32TextConversionTest, LengthsAreExplicitAndNulIsData) {
  const std::string narrow("a\0b", 3);
  EXPECT_EQ(std::u16string(u"a\0b", 3), NarrowToWide(narrow.data(), narrow.size()));
  const std::u16string wide(u"a\0b", 3);
  EXPECT_EQ(std::string("a\0b", 3), WideToNarrow(wide.data(), wide.size()));
  EXPECT_EQ(u"ab", NarrowToWide("abc", 2));
  EXPECT_EQ("a", WideToNarrow(u"abc", 1));
}

TEST(Win32TextConversionTest, EmptyAndNullGiveEmpty) {
  EXPECT_EQ(u"", NarrowToWide("abc", 0));
  EXPECT_EQ(u"", NarrowToWide(nullptr, 3));
  EXPECT_EQ("", WideToNarrow(u"abc", 0));
  EXPECT_EQ("", WideToNarrow(nullptr, 3));
}

TEST(Win32TextConversionTest, LongTextsConvertWhole) {
  const std::string narrow(100000, '\xE9');
  const std::u16string wide = NarrowToWide(narrow.data(), narrow.size());
  EXPECT_EQ(std::u16string(100000, 0x00E9), wide);
  EXPECT_EQ(narrow, WideToNarrow(wide.data(), wide.size()));
}

}  // namespace
