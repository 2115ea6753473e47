// File: BlobDecompression_fuzz.cpp
// libFuzzer target for blob compression. The first input byte picks what
// the rest is:
//   0: a blob as read from a file, handed to the sized reader;
//   1: a text, compressed and read back, which must give the text again
//      (or nothing, for texts under 20 bytes, which never come back);
//   2: a blob held as 16-bit units (pairs of bytes, little-endian).
// The sanitizers catch reads past the bytes given and every other memory
// error; a wrong round trip traps.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include <vekzol/platform/Variant.h>
#include <vekzol/services/UnicodeString.h>
#include <vekzol/services/VEKZOLZip.h>

namespace {

void ReadBlob(const uint8_t* data, size_t size) {
  // Exactly the given bytes on the heap, so that any read past them is a
  // heap overflow the sanitizer reports.
  char* blob = new char[size == 0 ? 1 : size];
  std::memcpy(blob, data, size);
  char* text = VEKZOLZip::decompressString(blob, static_cast<unsigned long>(size));
  if (text != nullptr) (void)std::strlen(text);
  UnicodeString::deleteStr(text);
  delete[] blob;
}

void RoundTrip(const uint8_t* data, size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::string upToNul = text.c_str();
  unsigned long length = 0;
  char* blob = VEKZOLZip::compressString(text.c_str(), length);
  if (upToNul.empty()) {
    if (blob != nullptr || length != 0) __builtin_trap();
    return;
  }
  if (blob == nullptr || length == 0) __builtin_trap();
  char* back = VEKZOLZip::decompressString(blob, length);
  const bool comesBack = upToNul.size() >= 20;
  if (comesBack != (back != nullptr)) __builtin_trap();
  if (back != nullptr && upToNul != back) __builtin_trap();
  UnicodeString::deleteStr(back);
  UnicodeString::deleteStr(blob);
}

void ReadWideBlob(const uint8_t* data, size_t size) {
  const size_t units = size / 2;
  BSTR wide = SysAllocStringLen(nullptr, static_cast<unsigned int>(units));
  if (wide == nullptr) return;
  for (size_t i = 0; i < units; ++i) {
    wide[i] = static_cast<OLECHAR>(data[2 * i] | (data[2 * i + 1] << 8));
  }
  char* text = VEKZOLZip::decompressString(reinterpret_cast<unsigned short*>(wide));
  UnicodeString::deleteStr(text);
  SysFreeString(wide);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  switch (data[0] % 3) {
    case 0:
      ReadBlob(data + 1, size - 1);
      break;
    case 1:
      RoundTrip(data + 1, size - 1);
      break;
    default:
      ReadWideBlob(data + 1, size - 1);
      break;
  }
  return 0;
}
