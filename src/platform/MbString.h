// File: MbString.h
// The multi-byte string functions of the narrow code page, as the library
// uses them: `_mbscmp`, `_mbsicmp`, `_mbsstr`, `_mbslwr_s` and their
// relatives. Pure functions, no state; one implementation per backend.
//
// On POSIX the narrow code page is UTF-8: order is unsigned byte order
// (code-point order), case folding touches ASCII letters only, and a
// character is a whole UTF-8 sequence.
#ifndef VEKZOL_SRC_PLATFORM_MBSTRING_H_
#define VEKZOL_SRC_PLATFORM_MBSTRING_H_

#include <cstddef>

namespace vekzol {
namespace platform {

// -1, 0 or 1 as `left` orders before, equal to or after `right`.
int Mbscmp(const char* left, const char* right);
// The same, with letters folded to lower case first.
int Mbsicmp(const char* left, const char* right);
// The first occurrence of `pattern` in `text`, or null. An empty pattern
// gives `text`.
const char* Mbsstr(const char* text, const char* pattern);
// Lower-/upper-cases the `length` bytes of `text` in place.
void Mbslwr(char* text, size_t length);
void Mbsupr(char* text, size_t length);
// The start of the character after the one at `text` (_mbsinc); a NUL
// byte counts as one character.
const char* Mbsinc(const char* text);

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_MBSTRING_H_
