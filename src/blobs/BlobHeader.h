// File: BlobHeader.h
// Reading and writing the header of a compressed blob,
// "zlib:v=<hex>:d=<decimal>:c=<decimal>:". Internal to VEKZOLZip.
#ifndef VEKZOL_SRC_BLOBS_BLOBHEADER_H_
#define VEKZOL_SRC_BLOBS_BLOBHEADER_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace vekzol {
namespace blobs {

// The version the writer puts into every header (zlib 1.2.3's number). The
// reader takes whatever version stands there.
constexpr unsigned int kBlobHeaderVersion = 0x1230;

struct BlobHeader {
  uint32_t version = 0;
  int32_t uncompressed = 0;  // d
  int32_t compressed = 0;    // c, a length when taken as unsigned
};

// Reads the header at the start of the first `length` bytes of `text` the
// way sscanf reads the format "zlib:v=%x:d=%d:c=%d:": literal characters
// must match, each number may have blanks and a sign ahead of it (the
// hexadecimal one also a "0x"), leading zeros are fine, and the closing
// colon is not looked at. Returns how many of the three values were read,
// in order. A number beyond its 32-bit field ends the reading there, where
// sscanf would leave the result undefined. Never reads past `length`.
int ReadBlobHeader(const char* text, size_t length, BlobHeader* header);

// "zlib:v=<version>:d=<d>:c=<c>:" and "zlib:v=<version>:d=<d>:c=", the
// latter being the prefix whose length tells where the c field starts.
std::string FormatBlobHeader(uint32_t version, int32_t uncompressed, int32_t compressed);
std::string FormatBlobHeaderPrefix(uint32_t version, int32_t uncompressed);

}  // namespace blobs
}  // namespace vekzol

#endif  // VEKZOL_SRC_BLOBS_BLOBHEADER_H_
