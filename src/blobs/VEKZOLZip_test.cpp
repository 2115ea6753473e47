// File: VEKZOLZip_test.cpp
// Blob compression: the exact header with its padded c field, the payload
// and slack, round trips, what does not come back, hostile and cut blobs,
// the 16-bit overloads and the trace lines; and the dump of decompressed
// texts.
//
// The program starts with every switch empty, so no case dumps unless it
// asks to. The dump switch is read at each call, so the dump cases turn it
// on through the platform backend's environment alone: each narrow
// decompression then writes what it got into the session directory, named
// with one number of rand() per call: all d bytes on every outcome of zlib,
// the text up to its NUL on success only. The session directory's path is
// data, '%' included.
#include <vekzol/services/VEKZOLZip.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "blobs/VEKZOLZipTestSupport.h"
#include "diagnostics/VEKZOLLogTestSupport.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "platform/TextConversion.h"
#include "unicode/UnicodeStringTestSupport.h"

namespace {

using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::ListDirectory;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TraceBody;
using vekzol_unicode_test::MakeBstr;
using vekzol_zip_test::Compress;
using vekzol_zip_test::Deflate;
using vekzol_zip_test::NoiseText;
using vekzol_zip_test::Take;
using vekzol_zip_test::XmlText;

const char* const kDataError =
    "****** ERROR:\t DecompressString - ZLib Error: Invalid or incomplete deflate data.";

class VEKZOLZipTest : public ::testing::Test {
 protected:
  void SetUp() override { FreshTrace(); }

  static std::string DecompressSized(const std::string& blob) {
    // Exactly the blob's bytes on the heap, nothing behind them, so that a
    // read past them is caught by the sanitizer build.
    std::vector<char> bytes(blob.begin(), blob.end());
    return Take(
        VEKZOLZip::decompressString(bytes.data(), static_cast<unsigned long>(bytes.size())));
  }

  FixedClockSystem system_;
  ScopedSystem scoped_{&system_};
};

TEST_F(VEKZOLZipTest, ZerrNamesEveryZlibResult) {
  EXPECT_EQ(std::string(VEKZOLZip::zerr(0)), "");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(-6)), "ZLib Error: ZLib version mismatch.");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(-5)), "ZLib Error: Not enough room in the output buffer.");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(-4)), "ZLib Error: Out of memory.");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(-3)), "ZLib Error: Invalid or incomplete deflate data.");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(-2)), "ZLib Error: Invalid compression level.");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(-1)), "ZLib Error: UNKNOWN");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(1)), "ZLib Error: UNKNOWN");
  EXPECT_EQ(std::string(VEKZOLZip::zerr(2)), "ZLib Error: UNKNOWN");
}

TEST_F(VEKZOLZipTest, NullOrEmptyTextGivesNullAndLengthZero) {
  unsigned long length = 99;
  EXPECT_EQ(VEKZOLZip::compressString(static_cast<const char*>(nullptr), length), nullptr);
  EXPECT_EQ(length, 0u);
  length = 99;
  EXPECT_EQ(VEKZOLZip::compressString("", length), nullptr);
  EXPECT_EQ(length, 0u);
  EXPECT_EQ(TraceBody(), "");
}

TEST_F(VEKZOLZipTest, CompressedLengthIsPaddedToTheWidthOfTheBound) {
  std::string text;
  while (text.size() < 100000) text += "abc";
  text.resize(100000);
  ASSERT_EQ(compressBound(100000), 100043u);
  const std::string stream = Deflate(text);
  ASSERT_EQ(std::to_string(stream.size()).size(), 3u);

  unsigned long length = 0;
  char* block = VEKZOLZip::compressString(text.c_str(), length);
  ASSERT_NE(block, nullptr);
  const std::string header = "zlib:v=1230:d=100000:c=000" + std::to_string(stream.size()) + ":";
  EXPECT_EQ(header.size(), 30u);
  EXPECT_EQ(length, header.size() + stream.size());
  EXPECT_EQ(std::string(block, header.size()), header);
  EXPECT_EQ(std::string(block + header.size(), stream.size()), stream);
  // The slack up to the bound is zero and not part of the length.
  EXPECT_EQ(std::string(block + length, 100043 - stream.size()),
            std::string(100043 - stream.size(), '\0'));
  UnicodeString::deleteStr(block);
}

TEST_F(VEKZOLZipTest, HeaderOfAShortTextHasTheBoundsTwoDigits) {
  const std::string text = "ten bytes!";
  ASSERT_EQ(compressBound(10), 23u);
  const std::string stream = Deflate(text);
  ASSERT_EQ(stream.size(), 18u);
  EXPECT_EQ(Compress(text), "zlib:v=1230:d=10:c=18:" + stream);
}

TEST_F(VEKZOLZipTest, TextsRoundTripThroughBothNarrowReaders) {
  for (const std::string& text : {XmlText(20), XmlText(1000), XmlText(65536), NoiseText(5000)}) {
    const std::string blob = Compress(text);
    EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.c_str())), text);
    EXPECT_EQ(DecompressSized(blob), text);
  }
  EXPECT_EQ(TraceBody(), "");
}

TEST_F(VEKZOLZipTest, TextsShorterThanTwentyBytesCompressButDoNotComeBack) {
  std::string expectedTrace;
  for (size_t size = 1; size < 20; ++size) {
    const std::string text = XmlText(size);
    const std::string blob = Compress(text);
    ASSERT_FALSE(blob.empty()) << size;
    EXPECT_EQ(blob.compare(0, 14, "zlib:v=1230:d="), 0);
    EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.c_str())), "<null>") << size;
    expectedTrace += Line(kDataError);
  }
  EXPECT_EQ(TraceBody(), expectedTrace);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(Compress(XmlText(20)).c_str())), XmlText(20));
}

TEST_F(VEKZOLZipTest, TextIsCompressedOnlyUpToItsFirstNul) {
  const char text[] = "abcdefghijklmnopqrstuvwxyz\0and the rest";
  unsigned long length = 0;
  char* block = VEKZOLZip::compressString(text, length);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::string(block, 16), "zlib:v=1230:d=26");
  EXPECT_EQ(Take(VEKZOLZip::decompressString(block)), "abcdefghijklmnopqrstuvwxyz");
  UnicodeString::deleteStr(block);
}

TEST_F(VEKZOLZipTest, ZeroBytesInThePayloadDoNotDisturbTheNarrowReader) {
  const std::string text = NoiseText(2000);
  const std::string blob = Compress(text);
  const size_t payload = blob.find(':', 20) + 1;
  ASSERT_NE(blob.find('\0', payload), std::string::npos);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.data())), text);
}

TEST_F(VEKZOLZipTest, AnyVersionIsAccepted) {
  const std::string text = XmlText(500);
  std::string blob = Compress(text);
  ASSERT_EQ(blob.compare(0, 11, "zlib:v=1230"), 0);
  blob.replace(7, 4, "1240");
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.c_str())), text);
  blob.replace(7, 4, "1");
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.c_str())), text);
}

TEST_F(VEKZOLZipTest, LeadingZerosInDMoveTheSearchForThePayloadBackByAsMany) {
  // The payload is searched from the length of the prefix formed anew from
  // the values read; three zeros more in d make it find the colon ahead of
  // "c=" instead of the one behind the c field.
  const std::string text = XmlText(500);
  std::string blob = Compress(text);
  ASSERT_EQ(blob.compare(0, 18, "zlib:v=1230:d=500:"), 0);
  blob.replace(14, 0, "000");
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.c_str())), "<null>");
  EXPECT_EQ(TraceBody(), Line(kDataError));
}

TEST_F(VEKZOLZipTest, HeaderWithoutItsClosingColonEndsInADataError) {
  EXPECT_EQ(Take(VEKZOLZip::decompressString("zlib:v=1230:d=30:c=1")), "<null>");
  EXPECT_EQ(TraceBody(), Line(kDataError));
}

TEST_F(VEKZOLZipTest, BlobsWithoutAUsableHeaderGiveNullAndNoTrace) {
  for (const char* blob : {"plain text without any header at all", "zlib:v=1230:d=0:c=5:xxxxx",
                           "zlib:v=1230:d=-7:c=5:xxxxx", "zlib:v=1230:d=30:c=0:xxxxx",
                           "zlib:v=1230:d=30:", "zlib:v=1230:d=99999999999:c=5:xxxxx", ""}) {
    EXPECT_EQ(Take(VEKZOLZip::decompressString(blob)), "<null>") << blob;
    EXPECT_EQ(DecompressSized(blob), "<null>") << blob;
  }
  EXPECT_EQ(Take(VEKZOLZip::decompressString(static_cast<const char*>(nullptr))), "<null>");
  EXPECT_EQ(Take(VEKZOLZip::decompressString(static_cast<const char*>(nullptr), 10)), "<null>");
  EXPECT_EQ(TraceBody(), "");
}

TEST_F(VEKZOLZipTest, DecompressedSizeNoStreamOfCBytesCanReachIsADataError) {
  // 1032 * 1 + 64 = 1096 is the most one byte of stream may claim.
  EXPECT_EQ(Take(VEKZOLZip::decompressString("zlib:v=1230:d=1097:c=1:x")), "<null>");
  EXPECT_EQ(Take(VEKZOLZip::decompressString("zlib:v=1230:d=2147483647:c=1:x")), "<null>");
  EXPECT_EQ(DecompressSized("zlib:v=1230:d=2147483647:c=2:xy"), "<null>");
  EXPECT_EQ(TraceBody(), Line(kDataError) + Line(kDataError) + Line(kDataError));
}

TEST_F(VEKZOLZipTest, SizedReaderRefusesAStreamThatRunsPastTheGivenBytes) {
  const std::string text = XmlText(3000);
  const std::string blob = Compress(text);
  EXPECT_EQ(DecompressSized(blob.substr(0, blob.size() - 1)), "<null>");
  EXPECT_EQ(DecompressSized(blob), text);
  // A negative c passes the header test and is a length far past the blob.
  EXPECT_EQ(DecompressSized("zlib:v=1230:d=30:c=-5:abcde"), "<null>");
  EXPECT_EQ(TraceBody(), Line(kDataError) + Line(kDataError));
}

TEST_F(VEKZOLZipTest, SizedReaderStopsAtTheGivenBytesInsideTheHeader) {
  const std::string blob = Compress(XmlText(3000));
  for (size_t size = 1; size < 40; ++size) {
    EXPECT_EQ(DecompressSized(blob.substr(0, size)), "<null>") << size;
  }
}

TEST_F(VEKZOLZipTest, CorruptStreamEndsInADataErrorTrace) {
  const std::string text = XmlText(3000);
  std::string blob = Compress(text);
  blob[blob.size() - 1] = static_cast<char>(blob[blob.size() - 1] ^ 0x55);  // the checksum
  EXPECT_EQ(DecompressSized(blob), "<null>");
  EXPECT_EQ(TraceBody(), Line(kDataError));
}

TEST_F(VEKZOLZipTest, CompressionWritesItsVerboseLineOnlyWhenVerbose) {
  Compress(XmlText(1000));
  EXPECT_EQ(TraceBody(), "");
  VEKZOLLogTestPeer::SetVerbose(true);
  Compress(XmlText(1000));
  EXPECT_EQ(TraceBody(), Line("VEKZOLZip::compressString - "));
}

TEST_F(VEKZOLZipTest, SixteenBitTextIsCompressedAsItsNarrowForm) {
  const std::string text = XmlText(1000);
  unsigned short* wide = MakeBstr(std::u16string(text.begin(), text.end()));
  unsigned long length = 0;
  char* block = VEKZOLZip::compressString(wide, length);
  UnicodeString::deleteBstr(wide);
  ASSERT_NE(block, nullptr);
  EXPECT_EQ(std::string(block, length), Compress(text));
  UnicodeString::deleteStr(block);
}

TEST_F(VEKZOLZipTest, SixteenBitTextIsConvertedToTheAnsiCodePageFirst) {
  const std::u16string units =
      u"\u00E9t\u00E9 \u00E9t\u00E9 \u00E9t\u00E9 \u00E9t\u00E9 \u00E9t\u00E9";
  const std::string narrow = vekzol::platform::WideToNarrow(units.data(), units.size());
  unsigned short* wide = MakeBstr(units);
  unsigned long length = 0;
  char* block = VEKZOLZip::compressString(wide, length);
  UnicodeString::deleteBstr(wide);
#if defined(_WIN32)
  EXPECT_EQ(narrow.size(), 19u);
#else
  EXPECT_EQ(narrow.size(), 29u);
#endif
  EXPECT_EQ(std::string(block, length), Compress(narrow));
  UnicodeString::deleteStr(block);
}

// A zlib stream whose bytes all survive the narrow code page (valid UTF-8,
// and one to one in code page 1252) and hold no zero: a header with a
// printable flag byte, one stored block whose length bytes 41 C3 BE 3C read
// as "A", U+00FE and "<", printable data, and a checksum made printable by
// the choice of the data's last byte.
std::string PrintableStream(std::string* text) {
  const size_t length = 0xC341;
  for (char last = '!'; last <= '~'; ++last) {
    std::string data = XmlText(length - 1) + last;
    const uLong adler = adler32(adler32(0, nullptr, 0), reinterpret_cast<const Bytef*>(data.data()),
                                static_cast<uInt>(data.size()));
    std::string checksum;
    for (int shift = 24; shift >= 0; shift -= 8) {
      checksum += static_cast<char>((adler >> shift) & 0xFF);
    }
    bool printable = true;
    for (char c : checksum) printable = printable && c > 0 && static_cast<unsigned char>(c) < 0x80;
    if (printable) {
      *text = data;
      return std::string("\x78\x5E\x01\x41\xC3\xBE\x3C") + data + checksum;
    }
  }
  return std::string();
}

TEST_F(VEKZOLZipTest, SixteenBitBlobComesBackWhenItsBytesSurviveTheCodePage) {
  std::string text;
  const std::string stream = PrintableStream(&text);
  ASSERT_FALSE(stream.empty());
  const std::string blob = "zlib:v=1230:d=" + std::to_string(text.size()) +
                           ":c=" + std::to_string(stream.size()) + ":" + stream;
  EXPECT_EQ(Take(VEKZOLZip::decompressString(blob.c_str())), text);
  const std::u16string units = vekzol::platform::NarrowToWide(blob.data(), blob.size());
  unsigned short* wide = MakeBstr(units);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(wide)), text);
  UnicodeString::deleteBstr(wide);
  EXPECT_EQ(TraceBody(), "");
}

TEST_F(VEKZOLZipTest, SixteenBitBlobIsCutAtAZeroByteOfItsPayload) {
  const std::string blob = Compress(NoiseText(2000));
  const size_t payload = blob.find(':', 20) + 1;
  ASSERT_NE(blob.find('\0', payload), std::string::npos);
  // Each byte held as one unit: the first zero ends the 16-bit text while
  // c still promises the whole stream.
  std::u16string units;
  for (char c : blob) units += static_cast<char16_t>(static_cast<unsigned char>(c));
  unsigned short* wide = MakeBstr(units);
  EXPECT_EQ(Take(VEKZOLZip::decompressString(wide)), "<null>");
  UnicodeString::deleteBstr(wide);
  EXPECT_EQ(TraceBody(), Line(kDataError));
}

TEST_F(VEKZOLZipTest, NullSixteenBitArgumentsGiveNull) {
  unsigned long length = 99;
  EXPECT_EQ(VEKZOLZip::compressString(static_cast<unsigned short*>(nullptr), length), nullptr);
  EXPECT_EQ(length, 0u);
  EXPECT_EQ(VEKZOLZip::decompressString(static_cast<unsigned short*>(nullptr)), nullptr);
  EXPECT_EQ(TraceBody(), "");
}

// ---------------------------------------------------------------------------
// The dump of decompressed texts

std::string Sep() { return std::string(1, vekzol::platform::DefaultSystem()->PathSeparator()); }

// Reads a dump file as bytes: dumps are written in binary mode.
std::string ReadBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// The fixed clock, with the dump switch on in the environment that the
// library reads; every other variable is the process's own.
class DumpSwitchSystem : public FixedClockSystem {
 public:
  bool GetEnv(const char* name, std::string* value) override {
    if (std::string(name) == "VEK_ZOL_DUMP_DECOMPRESSED_BLOBS") {
      *value = "1";
      return true;
    }
    return FixedClockSystem::GetEnv(name, value);
  }
};

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

  DumpSwitchSystem system_;
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
