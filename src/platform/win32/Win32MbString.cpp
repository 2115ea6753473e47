// File: Win32MbString.cpp
// The multi-byte string functions of the ANSI code page, as the C runtime
// has them: its multi-byte code page is set to the ANSI code page at start,
// so `_mbscmp`, `_mbsicmp`, `_mbsstr`, `_mbslwr_s`, `_mbsupr_s` and
// `_ismbblead` know the code page's lead bytes and letters.
//
// A null pointer is taken as the empty text, as on every platform, so that a
// bad argument never reaches the runtime's invalid-parameter handler.
#include "platform/MbString.h"

#include <mbctype.h>
#include <mbstring.h>

#include <string>

namespace vekzol {
namespace platform {
namespace {

inline const unsigned char* Bytes(const char* text) {
  return reinterpret_cast<const unsigned char*>(text != nullptr ? text : "");
}

inline int Sign(int value) { return (value > 0) - (value < 0); }

// Applies `convert` (`_mbslwr_s` or `_mbsupr_s`) to `length` bytes. The
// runtime's functions stop at a NUL and need one inside the buffer they are
// given, so they work on a NUL-terminated copy of each NUL-free run.
template <typename Convert>
void ConvertRuns(char* text, size_t length, Convert convert) {
  if (text == nullptr) return;
  size_t start = 0;
  while (start < length) {
    if (text[start] == '\0') {
      ++start;
      continue;
    }
    size_t end = start;
    while (end < length && text[end] != '\0') ++end;
    std::string run(text + start, end - start);
    convert(reinterpret_cast<unsigned char*>(&run[0]), run.size() + 1);
    run.copy(text + start, end - start);
    start = end;
  }
}

}  // namespace

int Mbscmp(const char* left, const char* right) {
  return Sign(::_mbscmp(Bytes(left), Bytes(right)));
}

int Mbsicmp(const char* left, const char* right) {
  return Sign(::_mbsicmp(Bytes(left), Bytes(right)));
}

const char* Mbsstr(const char* text, const char* pattern) {
  if (text == nullptr) return nullptr;
  if (pattern == nullptr || *pattern == '\0') return text;
  const unsigned char* hit = ::_mbsstr(Bytes(text), Bytes(pattern));
  return reinterpret_cast<const char*>(hit);
}

void Mbslwr(char* text, size_t length) {
  ConvertRuns(text, length, [](unsigned char* run, size_t size) { ::_mbslwr_s(run, size); });
}

void Mbsupr(char* text, size_t length) {
  ConvertRuns(text, length, [](unsigned char* run, size_t size) { ::_mbsupr_s(run, size); });
}

const char* Mbsinc(const char* text) {
  if (text == nullptr) return nullptr;
  // A lead byte and its trail byte are one character; a lead byte before
  // the NUL is one on its own, so that a scan never steps over the NUL
  // (older runtimes' _mbsinc does).
  const unsigned char* bytes = Bytes(text);
  if (::_ismbblead(bytes[0]) && bytes[1] != '\0') return text + 2;
  return text + 1;
}

}  // namespace platform
}  // namespace vekzol
