// File: VEKZOLZip.cpp
// Compression of a text into a blob, the zlib result texts and the timers'
// report. The blob is made in one pass into one block: its size is fixed in
// advance from compressBound, the header goes in first with the bound in
// its c field, and zlib writes the stream straight behind it. The block is
// never shrunk or copied, so the c field is patched afterwards at the
// bound's width and the block keeps its slack.
#include <vekzol/services/VEKZOLZip.h>

#include <zlib.h>

#include <cstdint>
#include <cstring>
#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/services/UnicodeString.h>

#include "blobs/BlobHeader.h"
#include "platform/DeliberateLeak.h"

using vekzol::blobs::FormatBlobHeader;
using vekzol::blobs::kBlobHeaderVersion;

namespace {

// Writes the decimal digits of `compressed` over those of the bound in the
// c field, right-aligned and padded with '0', so the header keeps its
// length. The c field is what follows the last '=' that has a byte behind
// it.
void PatchCompressedLength(char* header, size_t headerLength, uLong bound, uLong compressed) {
  size_t equals = headerLength - 1;
  while (equals > 0 && header[equals - 1] != '=') --equals;
  const std::string boundDigits = std::to_string(static_cast<int32_t>(bound));
  const std::string compressedDigits = std::to_string(static_cast<int32_t>(compressed));
  const size_t padding = boundDigits.size() - compressedDigits.size();
  std::memset(header + equals, '0', padding);
  std::memcpy(header + equals + padding, compressedDigits.data(), compressedDigits.size());
}

}  // namespace

VEKZOLZip& VEKZOLZip::operator=(const VEKZOLZip&) = default;

char* VEKZOLZip::compressString(char const* text, unsigned long& length) {
  length = 0;
  if (text == nullptr || *text == '\0') return nullptr;

  _CompressStringTimer.StartTimer();
  const size_t textLength = std::strlen(text);
  const uLong bound = textLength <= INT32_MAX ? compressBound(static_cast<uLong>(textLength)) : 0;
  if (bound == 0 || bound > INT32_MAX) {
    // d and c are 32-bit fields of the header: a text they cannot describe
    // fails as a compression without room would.
    VEKZOLLog::WriteMsg(CString("****** ERROR:\t CompressString - ") + zerr(Z_BUF_ERROR), 0);
    _CompressStringTimer.StopTimer();
    return nullptr;
  }
  const uLong d = static_cast<uLong>(textLength);

  const std::string header =
      FormatBlobHeader(kBlobHeaderVersion, static_cast<int32_t>(d), static_cast<int32_t>(bound));
  const size_t h = header.size();
  char* block = new char[bound + h]();
  std::memcpy(block, header.data(), h);

  _ZlibCompressBlobTimer.StartTimer();
  uLongf compressed = bound;
  const int code = compress(reinterpret_cast<Bytef*>(block + h), &compressed,
                            reinterpret_cast<const Bytef*>(text), d);
  _ZlibCompressBlobTimer.StopTimer();

  if (compressed != bound) VEKZOLLog::WriteMsg(CString("VEKZOLZip::compressString - "), 1);

  if (code != Z_OK) {
    VEKZOLLog::WriteMsg(CString("****** ERROR:\t CompressString - ") + zerr(code), 0);
    delete[] block;
    block = nullptr;
  } else {
    length = static_cast<unsigned long>(h + compressed);
    if (compressed != bound) PatchCompressedLength(block, h, bound, compressed);
  }

  _CompressStringTimer.StopTimer();
  return block;
}

char* VEKZOLZip::compressString(unsigned short* const text, unsigned long& length) {
  UnicodeString wide(text);
  // The narrow copy handed to the compression stays allocated for good,
  // one block per call, as hosts have always seen it.
  char* narrow = wide.ConvertToCharPtr();
  vekzol::platform::KeepDeliberately(narrow);
  return compressString(narrow, length);
}

CString VEKZOLZip::zerr(int code) {
  if (code == Z_OK) return CString();
  CString text("ZLib Error: ");
  switch (code) {
    case Z_VERSION_ERROR:
      text += "ZLib version mismatch.";
      break;
    case Z_BUF_ERROR:
      text += "Not enough room in the output buffer.";
      break;
    case Z_MEM_ERROR:
      text += "Out of memory.";
      break;
    case Z_DATA_ERROR:
      text += "Invalid or incomplete deflate data.";
      break;
    case Z_STREAM_ERROR:
      text += "Invalid compression level.";
      break;
    default:
      text += "UNKNOWN";
      break;
  }
  return text;
}

void VEKZOLZip::PrintAndResetCummulativeTimes() {
  VEKZOLTimer* const timers[] = {&_CompressStringTimer, &_ZlibCompressBlobTimer,
                                 &_DecompressBStringTimer, &_DecompressCStringTimer,
                                 &_ZlibDecompressBlobTimer};
  for (VEKZOLTimer* timer : timers) {
    timer->PrintCummulativeTimes();
    timer->TotalReset();
  }
}
