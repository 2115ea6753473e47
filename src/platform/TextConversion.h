// File: TextConversion.h
// Conversion between the narrow code page and 16-bit code units
// (MultiByteToWideChar / WideCharToMultiByte with the ANSI code page).
// On POSIX: UTF-8 to UTF-16 and back. A byte sequence that is not UTF-8
// becomes U+FFFD; a lone surrogate becomes '?'.
#ifndef VEKZOL_SRC_PLATFORM_TEXTCONVERSION_H_
#define VEKZOL_SRC_PLATFORM_TEXTCONVERSION_H_

#include <cstddef>
#include <string>

namespace vekzol {
namespace platform {

std::u16string NarrowToWide(const char* text, size_t length);
std::string WideToNarrow(const char16_t* text, size_t length);

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_TEXTCONVERSION_H_
