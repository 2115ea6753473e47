// File: Win32TextConversion.cpp
// Conversion between the ANSI code page and UTF-16 with
// MultiByteToWideChar / WideCharToMultiByte (CP_ACP, no flags): what the
// code page cannot hold becomes its default character, and bytes that form
// no character become what the system makes of them. Lengths are explicit,
// so a NUL is converted like any other unit.
#define WIN32_LEAN_AND_MEAN
#define NOMINMAX
#include <windows.h>

#include <climits>
#include <new>

#include "platform/TextConversion.h"

namespace vekzol {
namespace platform {

static_assert(sizeof(wchar_t) == sizeof(char16_t), "UTF-16 units are wchar_t on Windows");

std::u16string NarrowToWide(const char* text, size_t length) {
  std::u16string out;
  if (text == nullptr || length == 0) return out;
  // The system counts in int; nothing longer fits a BSTR anyway.
  if (length > static_cast<size_t>(INT_MAX)) throw std::bad_alloc();
  const int count = static_cast<int>(length);
  const int needed = ::MultiByteToWideChar(CP_ACP, 0, text, count, nullptr, 0);
  if (needed <= 0) return out;
  out.resize(static_cast<size_t>(needed));
  const int made =
      ::MultiByteToWideChar(CP_ACP, 0, text, count, reinterpret_cast<wchar_t*>(&out[0]), needed);
  out.resize(made > 0 ? static_cast<size_t>(made) : 0);
  return out;
}

std::string WideToNarrow(const char16_t* text, size_t length) {
  std::string out;
  if (text == nullptr || length == 0) return out;
  if (length > static_cast<size_t>(INT_MAX)) throw std::bad_alloc();
  const int count = static_cast<int>(length);
  const wchar_t* wide = reinterpret_cast<const wchar_t*>(text);
  const int needed = ::WideCharToMultiByte(CP_ACP, 0, wide, count, nullptr, 0, nullptr, nullptr);
  if (needed <= 0) return out;
  out.resize(static_cast<size_t>(needed));
  const int made = ::WideCharToMultiByte(CP_ACP, 0, wide, count, &out[0], needed, nullptr, nullptr);
  out.resize(made > 0 ? static_cast<size_t>(made) : 0);
  return out;
}

}  // namespace platform
}  // namespace vekzol
