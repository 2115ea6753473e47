// File: VEKZOLZip_dump_env_test.cpp
// Runs with VEK_ZOL_DUMP_DECOMPRESSED_BLOBS=1: each narrow decompression
// writes what it got into the session directory, named with one number of
// rand() per call: all d bytes on every outcome of zlib, the text up to its
// NUL on success only. The session directory's path is data, '%' included.
#include <vekzol/services/VEKZOLZip.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "diagnostics/VEKZOLLogTestSupport.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "blobs/VEKZOLZipTestSupport.h"

namespace {

using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::ListDirectory;
using vekzol_log_test::ReadFile;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;
using vekzol_timer_test::FreshTrace;
using vekzol_zip_test::Compress;
using vekzol_zip_test::Deflate;
using vekzol_zip_test::Take;
using vekzol_zip_test::XmlText;

std::string Sep() { return std::string(1, vekzol::platform::DefaultSystem()->PathSeparator()); }

// Reads a dump file as bytes: dumps are written in binary mode.
std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class VEKZOLZipDumpTest : public ::testing::Test {
 protected:
  void SetUp() override {
    FreshTrace();
    // A directory whose name would be format directives if it were taken
    // as a format.
    directory_ = TestTempDir() + Sep() + "dump %d %s %n " +
                 ::testing::UnitTest::GetInstance()->current_test_info()->name();
    std::error_code error;
    std::filesystem::remove_all(directory_, error);
    std::filesystem::create_directories(directory_);
    CString path(directory_.c_str());
    VEKZOLFileSystemServices::SetVZOLSessionDataDirectory(path);
  }

  // The number the next call will draw, with rand's sequence set back so
  // that the call draws it.
  static int NextNumber(unsigned int seed) {
    std::srand(seed);
    const int number = std::rand();
    std::srand(seed);
    return number;
  }

  std::string DumpPath(const char* kind, int number) const {
    return directory_ + Sep() + "decompressString." + kind + "." + std::to_string(number) + ".txt";
  }

  FixedClockSystem system_;
  ScopedSystem scoped_{&system_};
  std::string directory_;
};

TEST_F(VEKZOLZipDumpTest, SuccessWritesBothFilesWithOneNumber) {
  const std::string text = XmlText(2000);
  const std::string blob = Compress(text);
  const int number = NextNumber(7);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.c_str())), text);
  EXPECT_EQ(ReadBytes(DumpPath("orig", number)), text);
  EXPECT_EQ(ReadBytes(DumpPath("retStr", number)), text);
  EXPECT_EQ(ListDirectory(directory_).size(), 2u);
}

TEST_F(VEKZOLZipDumpTest, OriginalHoldsAllBytesAndReturnedTextStopsAtItsNul) {
  const std::string text = std::string("first part") + '\0' + XmlText(100);
  const std::string stream = Deflate(text);
  const std::string blob = "zlib:v=1230:d=" + std::to_string(text.size()) +
                           ":c=" + std::to_string(stream.size()) + ":" + stream;
  const int number = NextNumber(11);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.data(), static_cast<unsigned long>(blob.size()))),
            "first part");
  EXPECT_EQ(ReadBytes(DumpPath("orig", number)), text);
  EXPECT_EQ(ReadBytes(DumpPath("retStr", number)), "first part");
}

TEST_F(VEKZOLZipDumpTest, FailedDecompressionWritesOnlyTheOriginal) {
  const std::string text = XmlText(2000);
  std::string blob = Compress(text);
  blob[blob.size() - 1] = static_cast<char>(blob[blob.size() - 1] ^ 0x55);  // the checksum
  const int number = NextNumber(13);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.data(), static_cast<unsigned long>(blob.size()))),
            "<null>");
  // The whole text came out before the checksum failed.
  EXPECT_EQ(ReadBytes(DumpPath("orig", number)), text);
  EXPECT_EQ(ListDirectory(directory_).size(), 1u);
}

TEST_F(VEKZOLZipDumpTest, RefusedBlobsDrawNoNumberAndWriteNothing) {
  std::srand(17);
  const int first = std::rand();
  std::srand(17);
  // A d that one byte of stream cannot reach, a stream past the given
  // bytes, and a blob without header: zlib is never called.
  EXPECT_EQ(Take(VEKZOLZip::decompressString("zlib:v=1230:d=1097:c=1:x")), "<null>");
  EXPECT_EQ(Take(VEKZOLZip::decompressString("zlib:v=1230:d=30:c=5:x", 22)), "<null>");
  EXPECT_EQ(Take(VEKZOLZip::decompressString("no header here")), "<null>");
  EXPECT_EQ(std::rand(), first);
  EXPECT_TRUE(ListDirectory(directory_).empty());
}

TEST_F(VEKZOLZipDumpTest, LargestDecompressedSizeOfAStreamStillReachesZlib) {
  const int number = NextNumber(19);
  // 1032 * 1 + 64: allowed, and zlib then finds the one byte no stream.
  EXPECT_EQ(Take(VEKZOLZip::decompressString("zlib:v=1230:d=1096:c=1:x")), "<null>");
  EXPECT_EQ(ReadBytes(DumpPath("orig", number)), "");
  EXPECT_TRUE(std::filesystem::exists(DumpPath("orig", number)));
}

// Points the session at a directory below the test's own whose name is
// padded so that the dump's whole path has `pathLength` characters.
std::string PaddedDirectory(const std::string& base, const std::string& fileName,
                            size_t pathLength) {
  const size_t fixed = base.size() + 2 * Sep().size() + fileName.size();
  std::string directory = base + Sep() + std::string(pathLength - fixed, 'x');
  std::filesystem::create_directories(directory);
  CString path(directory.c_str());
  VEKZOLFileSystemServices::SetVZOLSessionDataDirectory(path);
  return directory;
}

TEST_F(VEKZOLZipDumpTest, PathOfTwoHundredFiftyFiveCharactersIsWritten) {
  const int number = NextNumber(23);
  const std::string name = "decompressString.orig." + std::to_string(number) + ".txt";
  const std::string directory = PaddedDirectory(directory_, name, 255);
  const std::string text = XmlText(100);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(Compress(text).c_str())), text);
  EXPECT_EQ(ReadBytes(directory + Sep() + name), text);
  // "retStr" is two characters longer than "orig": its path does not fit.
  EXPECT_EQ(ListDirectory(directory).size(), 1u);
}

TEST_F(VEKZOLZipDumpTest, PathBeyondTheCapacityOfTwoHundredFiftySixIsNotWritten) {
  const int number = NextNumber(29);
  const std::string name = "decompressString.orig." + std::to_string(number) + ".txt";
  const std::string directory = PaddedDirectory(directory_, name, 256);
  const std::string text = XmlText(100);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(Compress(text).c_str())), text);
  // The original's path has 256 characters and does not fit with its NUL;
  // the returned text's is two characters longer still.
  EXPECT_TRUE(ListDirectory(directory).empty());
}

}  // namespace
