// File: BlobHeader_test.cpp
// The blob header's reader reads as the format "zlib:v=%x:d=%d:c=%d:"
// does, within the bytes it is given; the writers give the exact texts.
#include "blobs/BlobHeader.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using vekzol::blobs::BlobHeader;
using vekzol::blobs::FormatBlobHeader;
using vekzol::blobs::FormatBlobHeaderPrefix;
using vekzol::blobs::ReadBlobHeader;

int Read(const std::string& text, BlobHeader* header) {
  return ReadBlobHeader(text.data(), text.size(), header);
}

TEST(BlobHeaderTest, WritesTheHeaderAndItsPrefix) {
  EXPECT_EQ(FormatBlobHeader(0x1230, 100000, 100043), "zlib:v=1230:d=100000:c=100043:");
  EXPECT_EQ(FormatBlobHeaderPrefix(0x1230, 100000), "zlib:v=1230:d=100000:c=");
  EXPECT_EQ(FormatBlobHeaderPrefix(0xabcdef, -5), "zlib:v=abcdef:d=-5:c=");
}

TEST(BlobHeaderTest, ReadsAllThreeValues) {
  BlobHeader header;
  EXPECT_EQ(Read("zlib:v=1230:d=100000:c=000412:payload", &header), 3);
  EXPECT_EQ(header.version, 0x1230u);
  EXPECT_EQ(header.uncompressed, 100000);
  EXPECT_EQ(header.compressed, 412);
}

TEST(BlobHeaderTest, AcceptsAnyVersionLeadingZerosAndAMissingClosingColon) {
  BlobHeader header;
  EXPECT_EQ(Read("zlib:v=1240:d=0007:c=0", &header), 3);
  EXPECT_EQ(header.version, 0x1240u);
  EXPECT_EQ(header.uncompressed, 7);
  EXPECT_EQ(header.compressed, 0);
}

TEST(BlobHeaderTest, NumbersMayHaveBlanksSignsAndAHexadecimalPrefix) {
  BlobHeader header;
  EXPECT_EQ(Read("zlib:v= 0XfF:d=\t+12:c=\n-3:", &header), 3);
  EXPECT_EQ(header.version, 0xFFu);
  EXPECT_EQ(header.uncompressed, 12);
  EXPECT_EQ(header.compressed, -3);
  EXPECT_EQ(Read("zlib:v=-1:d=1:c=1:", &header), 3);
  EXPECT_EQ(header.version, 0xFFFFFFFFu);
}

TEST(BlobHeaderTest, CountsTheValuesReadBeforeAMismatch) {
  BlobHeader header;
  EXPECT_EQ(Read("plain text", &header), 0);
  EXPECT_EQ(Read("zlib:v=:d=1:c=1:", &header), 0);
  EXPECT_EQ(Read("zlib:v=12", &header), 1);
  EXPECT_EQ(Read("zlib:v=12:D=1:c=1:", &header), 1);
  EXPECT_EQ(Read("zlib:v=12:d=1:c=x", &header), 2);
  EXPECT_EQ(Read("ZLIB:v=12:d=1:c=1:", &header), 0);
}

TEST(BlobHeaderTest, ThirtyTwoBitLimitsHoldAndBeyondThemReadingStops) {
  BlobHeader header;
  EXPECT_EQ(Read("zlib:v=ffffffff:d=2147483647:c=-2147483648:", &header), 3);
  EXPECT_EQ(header.version, 0xFFFFFFFFu);
  EXPECT_EQ(header.uncompressed, 2147483647);
  EXPECT_EQ(header.compressed, -2147483647 - 1);
  EXPECT_EQ(Read("zlib:v=100000000:d=1:c=1:", &header), 0);
  EXPECT_EQ(Read("zlib:v=1:d=2147483648:c=1:", &header), 1);
  EXPECT_EQ(Read("zlib:v=1:d=1:c=99999999999999999999999:", &header), 2);
  EXPECT_EQ(Read("zlib:v=1:d=0000000000000000000000000000042:c=1:", &header), 3);
  EXPECT_EQ(header.uncompressed, 42);
}

TEST(BlobHeaderTest, NeverReadsPastTheGivenLengthOrANul) {
  const char text[] = "zlib:v=1230:d=512:c=77:";
  BlobHeader header;
  // Cut inside d: the digits seen so far are all there is.
  EXPECT_EQ(ReadBlobHeader(text, 15, &header), 2);
  EXPECT_EQ(header.uncompressed, 5);
  EXPECT_EQ(ReadBlobHeader(text, 7, &header), 0);
  const char withNul[] =
      "zlib:v=1230:d=5\0"
      "12:c=77:";
  EXPECT_EQ(ReadBlobHeader(withNul, sizeof withNul, &header), 2);
  EXPECT_EQ(header.uncompressed, 5);
}

}  // namespace
