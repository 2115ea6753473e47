// File: VEKZOLZipDecompress.cpp
// Decompression of a blob back into its text, the optional dump of what
// came out, and the 16-bit entry point. Blobs come from files and databases
// the host does not control, so the header's promises are checked before
// they are acted on: a d that no deflate stream of c bytes can produce is a
// data error before d bytes are allocated, and the sized entry point never
// reads past the bytes it was given.
#include <vekzol/services/VEKZOLZip.h>

#include <zlib.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "blobs/BlobHeader.h"
#include "filesystem/FileSystemSupport.h"
#include "platform/DeliberateLeak.h"
#include "platform/System.h"
#include "platform/TextConversion.h"
#include "state/LibraryState.h"

using vekzol::blobs::BlobHeader;
using vekzol::platform::Sys;

namespace {

// deflate cannot expand by more than 1032 to 1 (its longest match, 258
// bytes, costs at least two bits), plus a few bytes of stream header and
// trailer.
constexpr uint64_t kMaxExpansion = 1032;
constexpr uint64_t kMaxStreamOverhead = 64;

// The capacity of the dump file's path, its closing NUL included.
constexpr size_t kDumpPathCapacity = 256;

bool DumpRequested() { return vekzol::state::DumpDecompressedBlobs(); }

// Writes `length` bytes of `text` to "<session directory>/<name>" where
// `name` is `pattern` with the number filled in. The directory is data,
// never a format: a '%' in it stays a '%'. A path that does not fit the
// capacity is not written, as a failed bounded format gives no name.
void DumpText(const char* pattern, int number, const char* text, size_t length) {
  CString directory;
  VEKZOLFileSystemServices::GetVZOLSessionDataDirectory(directory);
  CString name;
  name.Format(pattern, number);
  const CString path = vekzol::filesystem::JoinPath(directory, name);
  if (static_cast<size_t>(path.GetLength()) + 1 > kDumpPathCapacity) return;
  std::FILE* file = Sys().OpenFile(path, "wb");
  if (file == nullptr) return;
  std::fwrite(text, 1, length, file);
  std::fclose(file);
}

void ReportDataError(int code) {
  VEKZOLLog::WriteMsg(CString("****** ERROR:\t DecompressString - ") + VEKZOLZip::zerr(code), 0);
}

// The blob's bytes: `size` of them when the caller told, else unbounded
// (the payload taken on trust as long as c says).
struct BlobBytes {
  const char* data;
  bool sized;
  uint64_t size;
};

// The length up to the first NUL, within the known size.
size_t TextLength(const BlobBytes& blob) {
  if (!blob.sized) return std::strlen(blob.data);
  const void* nul = std::memchr(blob.data, '\0', static_cast<size_t>(blob.size));
  return nul != nullptr ? static_cast<size_t>(static_cast<const char*>(nul) - blob.data)
                        : static_cast<size_t>(blob.size);
}

// Everything behind a header that parsed, with d >= 1 and c != 0.
char* DecompressPayload(const BlobBytes& blob, size_t n, const BlobHeader& header) {
  const uint32_t c = static_cast<uint32_t>(header.compressed);
  const int32_t d = header.uncompressed;
  if (static_cast<uint64_t>(d) > kMaxExpansion * c + kMaxStreamOverhead) {
    // No stream of c bytes inflates to d: uncompress would end in a data
    // error, so that is the answer, without a block of d bytes.
    ReportDataError(Z_DATA_ERROR);
    return nullptr;
  }

  // The writer's prefix "zlib:v=..:d=..:c=" reformed from the values read,
  // within a capacity of d with its NUL. When it does not fit, the bounded
  // format fails and leaves nothing: the search below then starts at 0 and
  // stops at the colon of "zlib:", so the stream cannot inflate. This is why
  // texts under 20 bytes compress but never come back.
  const std::string prefix = vekzol::blobs::FormatBlobHeaderPrefix(header.version, d);
  const size_t prefixLength = prefix.size() + 1 <= static_cast<size_t>(d) ? prefix.size() : 0;

  // The payload starts behind the first colon from there on (the one that
  // closes the c field), or right there when none follows.
  size_t payload = prefixLength;
  for (size_t i = prefixLength; i < n; ++i) {
    if (blob.data[i] == ':') {
      payload = i + 1;
      break;
    }
  }
  if (blob.sized && payload + uint64_t{c} > blob.size) {
    // The stream would run past the bytes given: a stream cut short.
    ReportDataError(Z_DATA_ERROR);
    return nullptr;
  }

  char* block = new char[static_cast<size_t>(d) + 1]();
  VEKZOLZip::_ZlibDecompressBlobTimer.StartTimer();
  uLongf inflated = static_cast<uLongf>(d);
  const int code = uncompress(reinterpret_cast<Bytef*>(block), &inflated,
                              reinterpret_cast<const Bytef*>(blob.data + payload), uLong{c});
  VEKZOLZip::_ZlibDecompressBlobTimer.StopTimer();

  // One number names both dump files of this call.
  const bool dump = DumpRequested();
  const int number = dump ? std::rand() : 0;
  if (dump) DumpText("decompressString.orig.%d.txt", number, block, inflated);

  if (code != Z_OK) {
    ReportDataError(code);
    // The block of a failed decompression stays allocated, as hosts have
    // always seen it.
    vekzol::platform::KeepDeliberately(block);
    return nullptr;
  }
  if (dump) DumpText("decompressString.retStr.%d.txt", number, block, std::strlen(block));
  return block;
}

char* DecompressNarrow(const BlobBytes& blob) {
  if (blob.data == nullptr || (blob.sized && blob.size == 0) || *blob.data == '\0') {
    return nullptr;
  }
  VEKZOLZip::_DecompressCStringTimer.StartTimer();
  // The header has no NUL, so the text up to the first one covers it;
  // payload bytes behind a NUL are reached through c.
  const size_t n = static_cast<uint32_t>(TextLength(blob));
  BlobHeader header;
  char* result = nullptr;
  if (vekzol::blobs::ReadBlobHeader(blob.data, n, &header) == 3 && header.uncompressed > 0 &&
      header.compressed != 0) {
    result = DecompressPayload(blob, n, header);
  }
  VEKZOLZip::_DecompressCStringTimer.StopTimer();
  return result;
}

}  // namespace

char* VEKZOLZip::decompressString(char const* blob) {
  return DecompressNarrow(BlobBytes{blob, false, 0});
}

char* VEKZOLZip::decompressString(char const* blob, unsigned long size) {
  return DecompressNarrow(BlobBytes{blob, true, size});
}

char* VEKZOLZip::decompressString(unsigned short* const blob) {
  _DecompressBStringTimer.StartTimer();
  char* result = nullptr;
  if (blob != nullptr) {
    // Each unit becomes narrow text in the ANSI code page, up to the first
    // NUL unit; only bytes that map one to one and are not zero survive. The
    // narrow blob's length is known here, so the sized reading keeps a c
    // that promises more than survived from reading past it.
    size_t units = 0;
    while (blob[units] != 0) ++units;
    const std::string narrow =
        vekzol::platform::WideToNarrow(reinterpret_cast<const char16_t*>(blob), units);
    char* temporary = new char[narrow.size() + 1];
    std::memcpy(temporary, narrow.c_str(), narrow.size() + 1);
    result = DecompressNarrow(BlobBytes{temporary, true, narrow.size()});
    delete[] temporary;
  }
  _DecompressBStringTimer.StopTimer();
  return result;
}
