// Tests of the pieces of the graph texts: counts as decimal text through
// the variant conversion, and runs of blanks.
#include "graphs/GraphTextPieces.h"

#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>

namespace {

using vekzol::graphs::AppendBlanks;
using vekzol::graphs::CountText;

std::string Text(const CString& text) { return std::string(text.GetString(), text.GetLength()); }

TEST(GraphTextPiecesTest, CountTextIsPlainDecimal) {
  EXPECT_EQ("0", Text(CountText(0)));
  EXPECT_EQ("7", Text(CountText(7)));
  EXPECT_EQ("1000000", Text(CountText(1000000)));
  EXPECT_EQ("2147483647", Text(CountText(2147483647u)));
}

TEST(GraphTextPiecesTest, CountTextTakesTheCountAsASigned32BitInteger) {
  EXPECT_EQ("-2147483648", Text(CountText(std::size_t{2147483648u})));
  EXPECT_EQ("-1", Text(CountText(std::size_t{4294967295u})));
  EXPECT_EQ("5", Text(CountText(static_cast<std::size_t>(4294967296ull + 5u))));
}

TEST(GraphTextPiecesTest, AppendBlanksAppendsExactlyThatManyBlanks) {
  CString text("ab");
  AppendBlanks(text, 0);
  EXPECT_EQ("ab", Text(text));
  AppendBlanks(text, 3);
  EXPECT_EQ("ab   ", Text(text));
  CString empty;
  AppendBlanks(empty, 100000);
  EXPECT_EQ(std::string(100000, ' '), Text(empty));
}

TEST(GraphTextPiecesTest, AppendBlanksBeyondWhatATextCanHoldRaisesOutOfMemoryAndKeepsTheText) {
  CString text("ab");
  try {
    AppendBlanks(text, std::size_t{1} << 31);
    ADD_FAILURE() << "no exception";
  } catch (const CAtlException& raised) {
    EXPECT_EQ(E_OUTOFMEMORY, raised.m_hr);
  }
  EXPECT_EQ("ab", Text(text));
}

}  // namespace
