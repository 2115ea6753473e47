// File: VEKZOLZip_shared_test.cpp
// Blob compression and the Unicode string as a host sees them: this program
// links the shared library, so every operation and static used here must be
// exported from it, and blocks go back through the library's own release
// functions.
#include <gtest/gtest.h>

#include <string>

#include <vekzol/VEKZOLBase.h>

namespace {

TEST(VEKZOLZipSharedTest, BlobRoundTripsThroughTheExportedOperations) {
  const std::string text(1000, 'x');
  unsigned long length = 0;
  char* blob = VEKZOLZip::compressString(text.c_str(), length);
  ASSERT_NE(blob, nullptr);
  EXPECT_EQ(std::string(blob, 23), "zlib:v=1230:d=1000:c=00");
  char* back = VEKZOLZip::decompressString(blob, length);
  ASSERT_NE(back, nullptr);
  EXPECT_EQ(std::string(back), text);
  UnicodeString::deleteStr(back);
  back = VEKZOLZip::decompressString(blob);
  EXPECT_EQ(std::string(back), text);
  UnicodeString::deleteStr(back);
  UnicodeString::deleteStr(blob);
  EXPECT_EQ(std::string(VEKZOLZip::zerr(-3)), "ZLib Error: Invalid or incomplete deflate data.");
  VEKZOLZip::PrintAndResetCummulativeTimes();
  EXPECT_EQ(VEKZOLZip::_CompressStringTimer.GetCounter(), 0);
  VEKZOLZip copy;
  VEKZOLZip other;
  copy = other;
}

TEST(VEKZOLZipSharedTest, UnicodeStringHandsOutCopiesThatTheHostReleases) {
  UnicodeString text("abc");
  unsigned short* wide = nullptr;
  text.ConvertToBSTR(&wide);
  ASSERT_NE(wide, nullptr);
  EXPECT_EQ(SysStringLen(reinterpret_cast<BSTR>(wide)), 4u);
  char* narrow = text.ConvertToCharPtr();
  EXPECT_STREQ(narrow, "abc");
  char same[] = "abc";
  EXPECT_TRUE(text == same);
  EXPECT_TRUE(text == wide);
  UnicodeString fromWide(wide);
  UnicodeString fromCString(CString("abc"));
  EXPECT_TRUE(fromCString == same);
  UnicodeString::deleteStr(narrow);
  UnicodeString::deleteBstr(wide);
}

}  // namespace
