// File: TextOrder.h
// Order and equality of two CStrings exactly as the multi-byte compare
// `_mbscmp` gives them, computed inline eight bytes at a time.
//
// A CString's text lies in a block padded with NULs to a multiple of eight
// bytes (CString.h), so the words read here never leave the block. The scan
// stops at the first byte where the texts differ or the left one ends
// (its NUL, or an embedded NUL, as `_mbscmp` stops there too).
//
// Where byte order is text order: always for the POSIX narrow code page,
// UTF-8, whose byte order is code-point order; on Windows whenever every
// byte up to the difference is ASCII, which holds in every ANSI code page.
// A byte of 0x80 or more there, in a code page with lead bytes, orders a
// double-byte character as one unit, so the platform's `_mbscmp` decides.
// Equality needs no such care: two texts are equal exactly when their bytes
// up to the first NUL are.
#ifndef VEKZOL_SRC_PLATFORM_TEXTORDER_H_
#define VEKZOL_SRC_PLATFORM_TEXTORDER_H_

#include <cstddef>
#include <cstdint>
#include <cstring>

#include <vekzol/platform/CString.h>

#include "platform/MbString.h"

#if !defined(__BYTE_ORDER__) || __BYTE_ORDER__ != __ORDER_LITTLE_ENDIAN__
#error "TextOrder.h reads words as little-endian"
#endif

namespace vekzol {
namespace platform {

// Set by the platform backend's build: 1 where the narrow code page is
// UTF-8 (POSIX), 0 where it is the ANSI code page (Windows).
constexpr bool kByteOrderIsTextOrder = VEKZOL_BYTE_ORDER_IS_TEXT_ORDER != 0;

// Where two NUL-padded texts part: the byte index and the unsigned byte
// order there (0 when both end there, so the texts are equal).
struct TextDifference {
  size_t at;
  int order;
};

inline TextDifference FirstDifference(const char* left, const char* right) noexcept {
  constexpr uint64_t kOnes = 0x0101010101010101ull;
  constexpr uint64_t kHighs = 0x8080808080808080ull;
  for (size_t i = 0;; i += 8) {
    uint64_t a;
    uint64_t b;
    std::memcpy(&a, left + i, 8);
    std::memcpy(&b, right + i, 8);
    // The lowest flagged byte is exact: the first that differs or the
    // first NUL of `left` (the zero test errs only above a real NUL).
    const uint64_t stop = (a ^ b) | ((a - kOnes) & ~a & kHighs);
    if (stop != 0) {
      const unsigned shift = static_cast<unsigned>(__builtin_ctzll(stop)) & ~7u;
      const unsigned byteA = static_cast<unsigned>(a >> shift) & 0xFFu;
      const unsigned byteB = static_cast<unsigned>(b >> shift) & 0xFFu;
      return {i + shift / 8, (byteA > byteB) - (byteA < byteB)};
    }
  }
}

// Whether the `count` bytes at `text` and the bytes at `count` of both
// texts are ASCII.
inline bool AsciiThrough(const char* left, const char* right, size_t count) noexcept {
  for (size_t i = 0; i < count; ++i) {
    if (static_cast<unsigned char>(left[i]) >= 0x80) return false;
  }
  return static_cast<unsigned char>(left[count]) < 0x80 &&
         static_cast<unsigned char>(right[count]) < 0x80;
}

// -1, 0 or 1 as `_mbscmp` of the two texts.
inline int TextCompare(const CString& left, const CString& right) {
  const char* a = left.GetString();
  const char* b = right.GetString();
  if (a == b) return 0;  // one shared text
  const TextDifference difference = FirstDifference(a, b);
  if (kByteOrderIsTextOrder || difference.order == 0 || AsciiThrough(a, b, difference.at)) {
    return difference.order;
  }
  return Mbscmp(a, b);
}

inline bool TextEqual(const CString& left, const CString& right) noexcept {
  const char* a = left.GetString();
  const char* b = right.GetString();
  return a == b || FirstDifference(a, b).order == 0;
}

// The strict order of ordered containers and sorts of CStrings.
struct TextLess {
  bool operator()(const CString& left, const CString& right) const {
    return TextCompare(left, right) < 0;
  }
};

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_TEXTORDER_H_
