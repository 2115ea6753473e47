// File: UnicodeString.cpp
// The two forms of a UnicodeString and their conversions. Conversions go
// through the platform layer (the ANSI code page; UTF-8 on POSIX); the
// 16-bit form is a BSTR of the platform's allocator.
#include <vekzol/services/UnicodeString.h>

#include <cstring>
#include <iostream>
#include <string>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>
#include <vekzol/platform/Variant.h>

#include "platform/DeliberateLeak.h"
#include "platform/TextConversion.h"

namespace {

// The interfaces speak of `unsigned short *`; the platform's BSTR is that
// type on POSIX and wchar_t on Windows, both 16-bit units of one layout.
BSTR AsBstr(unsigned short* text) { return reinterpret_cast<BSTR>(text); }
unsigned short* AsUnits(BSTR text) { return reinterpret_cast<unsigned short*>(text); }

size_t UnitsUpToNul(const unsigned short* text) {
  size_t length = 0;
  while (text[length] != 0) ++length;
  return length;
}

unsigned short* NewBstr(const std::u16string& units) {
  return AsUnits(SysAllocStringLen(reinterpret_cast<const OLECHAR*>(units.data()),
                                   static_cast<unsigned int>(units.size())));
}

char* NewNarrowCopy(const char* text, size_t length) {
  char* copy = new char[length + 1];
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

}  // namespace

UnicodeString::UnicodeString() : _NarrowText(nullptr), _WideText(nullptr) {}

UnicodeString::UnicodeString(char const* text) : _NarrowText(nullptr), _WideText(nullptr) {
  SetFromNarrow(text);
}

UnicodeString::UnicodeString(unsigned short* text) : _NarrowText(nullptr), _WideText(nullptr) {
  SetFromWide(text);
}

UnicodeString::UnicodeString(CString const& text) : _NarrowText(nullptr), _WideText(nullptr) {
  // The stored bytes, without a NUL, become a temporary BSTR in the
  // thread's code page (the same ANSI code page here); both forms are then
  // made from it as from any 16-bit text. The temporary stays allocated for
  // good: hosts have always seen one such block per construction.
  std::u16string units =
      vekzol::platform::NarrowToWide(text.GetString(), static_cast<size_t>(text.GetLength()));
  unsigned short* temporary = NewBstr(units);
  if (temporary == nullptr) AtlThrow(E_OUTOFMEMORY);
  vekzol::platform::KeepDeliberately(temporary);
  SetFromWide(temporary);
}

UnicodeString::~UnicodeString() { Release(); }

UnicodeString const& UnicodeString::operator=(char* text) {
  Release();
  SetFromNarrow(text);
  return *this;
}

UnicodeString const& UnicodeString::operator=(unsigned short* text) {
  Release();
  SetFromWide(text);
  return *this;
}

UnicodeString const& UnicodeString::operator=(UnicodeString const& other) {
  _NarrowText = other._NarrowText;
  _WideText = other._WideText;
  return *this;
}

bool UnicodeString::operator==(char* text) {
  if (_NarrowText == nullptr) return false;
  return std::strcmp(_NarrowText, text) == 0;
}

bool UnicodeString::operator==(unsigned short* text) {
  if (_WideText == nullptr) return false;
  size_t i = 0;
  while (_WideText[i] == text[i]) {
    if (_WideText[i] == 0) return true;
    ++i;
  }
  return false;
}

void UnicodeString::ConvertToBSTR(unsigned short** out) {
  if (out == nullptr) return;
  if (_WideText == nullptr) {
    *out = nullptr;
    return;
  }
  BSTR own = AsBstr(_WideText);
  *out = AsUnits(SysAllocStringLen(own, SysStringLen(own)));
}

char* UnicodeString::ConvertToCharPtr() {
  if (_NarrowText == nullptr) return nullptr;
  return NewNarrowCopy(_NarrowText, std::strlen(_NarrowText));
}

void UnicodeString::print() {
  std::cout << "_Str is " << (_NarrowText != nullptr ? _NarrowText : "") << std::endl;
}

void UnicodeString::deleteBstr(unsigned short* p) { SysFreeString(AsBstr(p)); }

void UnicodeString::deleteStr(char* p) { delete[] p; }

void UnicodeString::SetFromNarrow(char const* text) {
  if (text == nullptr) return;
  size_t length = std::strlen(text);
  _NarrowText = NewNarrowCopy(text, length);
  // The closing NUL is converted too, so it counts in the BSTR's length:
  // "abc" gives a BSTR of length 4. A failed BSTR allocation leaves the
  // 16-bit form null and is not reported.
  _WideText = NewBstr(vekzol::platform::NarrowToWide(text, length + 1));
}

void UnicodeString::SetFromWide(unsigned short* text) {
  if (text == nullptr) return;
  size_t units = UnitsUpToNul(text);
  std::string narrow =
      vekzol::platform::WideToNarrow(reinterpret_cast<const char16_t*>(text), units);
  _NarrowText = NewNarrowCopy(narrow.data(), narrow.size());

  // The 16-bit form keeps the source's prefix length; its text is copied up
  // to the first NUL unit, so units behind an embedded NUL are not carried
  // over (they are zero here). A text longer than its prefix admits is the
  // failure of a bounded copy: the copy is left empty.
  unsigned int prefixLength = SysStringLen(AsBstr(text));
  BSTR copy = SysAllocStringLen(nullptr, prefixLength);
  if (copy == nullptr) return;
  unsigned short* target = AsUnits(copy);
  size_t copied = units <= prefixLength ? units : 0;
  std::memcpy(target, text, copied * sizeof(unsigned short));
  std::memset(target + copied, 0, (prefixLength - copied) * sizeof(unsigned short));
  _WideText = target;
}

void UnicodeString::Release() {
  delete[] _NarrowText;
  _NarrowText = nullptr;
  SysFreeString(AsBstr(_WideText));
  _WideText = nullptr;
}
