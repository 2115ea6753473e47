// File: VEKZOLZip.h
// VEKZOLZip: turns a text into a self-describing compressed blob and back.
// A blob is one memory block: the printable header
// "zlib:v=1230:d=<d>:c=<c>:" and then zlib's stream of the text as raw bytes
// (it may hold NUL bytes). d is the text's length, c the stream's length,
// written with leading zeros to the width of zlib's compressBound(d) so that
// the header never changes length after compression; behind the c payload
// bytes the block keeps its slack up to that bound, filled with zeros.
//
// Contract:
// - compressString returns a new block and sets `length` to the header's
//   plus the payload's bytes (neither the slack nor a NUL); a caller that
//   stores the blob stores exactly `length` bytes. Null with `length` 0 for
//   a null or empty text and when zlib fails (an error trace line then).
//   A text is compressed up to its first NUL.
// - decompressString returns a new NUL-terminated text, or null when the
//   header does not parse, d < 1, c == 0, or zlib fails (an error trace
//   line then). The version field is read and never compared. The payload
//   starts behind the colon that closes the c field and is c bytes long.
//   Texts shorter than 20 bytes compress but never come back.
// - A header whose d is more than any deflate stream of c bytes can produce
//   (1032 * c + 64) is refused as a data error before anything of size d is
//   allocated. The sized overload also refuses a c that runs past `size`;
//   use it for blobs from files or databases.
// - Every block returned is released with UnicodeString::deleteStr.
// - With the environment variable VEK_ZOL_DUMP_DECOMPRESSED_BLOBS set and
//   not empty, each narrow decompression writes the text it got into the
//   session data directory as decompressString.orig.<r>.txt and, on
//   success, decompressString.retStr.<r>.txt (r from rand()).
// - The 16-bit overloads convert through the ANSI code page (UTF-8 on
//   POSIX): the 16-bit blob is cut at its first NUL unit, so it only serves
//   payloads free of zero bytes. Neither accepts null.
// - No status and no error-list entry: a null result and the trace line are
//   all there is. The five timers make the class one-thread-at-a-time.
#ifndef VEKZOL_SERVICES_VEKZOLZIP_H_
#define VEKZOL_SERVICES_VEKZOLZIP_H_

#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLZip {
 public:
  VEKZOLZip& operator=(const VEKZOLZip& other);

  static char* compressString(char const* text, unsigned long& length);
  static char* compressString(unsigned short* const text, unsigned long& length);

  static char* decompressString(char const* blob);
  // The same for a blob of `size` bytes: a header, or a c, that runs past
  // `size` yields null without reading beyond it.
  static char* decompressString(char const* blob, unsigned long size);
  static char* decompressString(unsigned short* const blob);

  // "" for 0, otherwise "ZLib Error: " and the text of the zlib code.
  static CString zerr(int code);

  // PrintCummulativeTimes and then TotalReset on the five timers, in the
  // order in which they are declared below.
  static void PrintAndResetCummulativeTimes();

  static VEKZOLTimer _CompressStringTimer;
  static VEKZOLTimer _ZlibCompressBlobTimer;
  static VEKZOLTimer _DecompressBStringTimer;
  static VEKZOLTimer _DecompressCStringTimer;
  static VEKZOLTimer _ZlibDecompressBlobTimer;
};

#endif  // VEKZOL_SERVICES_VEKZOLZIP_H_
