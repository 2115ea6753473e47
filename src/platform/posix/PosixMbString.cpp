// File: PosixMbString.cpp
// The multi-byte string functions for the POSIX narrow code page, UTF-8.
// Order is unsigned byte order, which for UTF-8 is code-point order; case
// folding touches ASCII letters only, since a byte >= 0x80 is always part of
// a multi-byte sequence (or invalid) and must stay as it is.
//
// A null pointer is taken as the empty text, so that a bad argument never
// reads from address zero.
#include "platform/MbString.h"

#include <cstring>

namespace vekzol {
namespace platform {
namespace {

inline unsigned char FoldLower(unsigned char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<unsigned char>(c + ('a' - 'A')) : c;
}

inline unsigned char FoldUpper(unsigned char c) {
  return (c >= 'a' && c <= 'z') ? static_cast<unsigned char>(c - ('a' - 'A')) : c;
}

inline bool IsContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// The length of the well-formed UTF-8 sequence at `p` (the byte ranges of
// the Unicode standard: no overlong forms, no surrogates, nothing above
// U+10FFFF), or 1 when the bytes there do not form one. A NUL is never a
// continuation byte, so the scan never runs past the end of the text.
size_t SequenceLength(const unsigned char* p) {
  const unsigned char lead = p[0];
  if (lead < 0x80) return 1;
  size_t length = 0;
  unsigned char secondLow = 0x80;
  unsigned char secondHigh = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    if (lead == 0xE0) secondLow = 0xA0;   // below would be an overlong form
    if (lead == 0xED) secondHigh = 0x9F;  // above would be a surrogate
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    if (lead == 0xF0) secondLow = 0x90;   // below would be an overlong form
    if (lead == 0xF4) secondHigh = 0x8F;  // above would pass U+10FFFF
  } else {
    return 1;  // a stray continuation byte, 0xC0, 0xC1 or 0xF5..0xFF
  }
  if (p[1] < secondLow || p[1] > secondHigh) return 1;
  for (size_t i = 2; i < length; ++i) {
    if (!IsContinuation(p[i])) return 1;
  }
  return length;
}

inline int Sign(int value) { return (value > 0) - (value < 0); }

}  // namespace

int Mbscmp(const char* left, const char* right) {
  // strcmp compares as unsigned char, which is the order wanted here.
  return Sign(std::strcmp(left != nullptr ? left : "", right != nullptr ? right : ""));
}

int Mbsicmp(const char* left, const char* right) {
  const unsigned char* l = reinterpret_cast<const unsigned char*>(left != nullptr ? left : "");
  const unsigned char* r = reinterpret_cast<const unsigned char*>(right != nullptr ? right : "");
  for (;; ++l, ++r) {
    const unsigned char a = FoldLower(*l);
    const unsigned char b = FoldLower(*r);
    if (a != b) return a < b ? -1 : 1;
    if (a == 0) return 0;
  }
}

const char* Mbsstr(const char* text, const char* pattern) {
  if (text == nullptr) return nullptr;
  if (pattern == nullptr || *pattern == '\0') return text;
  return std::strstr(text, pattern);
}

void Mbslwr(char* text, size_t length) {
  if (text == nullptr) return;
  for (size_t i = 0; i < length; ++i) {
    text[i] = static_cast<char>(FoldLower(static_cast<unsigned char>(text[i])));
  }
}

void Mbsupr(char* text, size_t length) {
  if (text == nullptr) return;
  for (size_t i = 0; i < length; ++i) {
    text[i] = static_cast<char>(FoldUpper(static_cast<unsigned char>(text[i])));
  }
}

const char* Mbsinc(const char* text) {
  if (text == nullptr) return nullptr;
  return text + SequenceLength(reinterpret_cast<const unsigned char*>(text));
}

}  // namespace platform
}  // namespace vekzol
