// File: VEKZOLZipTestSupport.h
// Shared pieces of the blob compression tests: zlib called directly for the
// expected bytes, texts to compress, blobs put together by hand, and a
// decompressed block taken over as a string. Not installed.
#ifndef VEKZOL_SRC_BLOBS_VEKZOLZIPTESTSUPPORT_H_
#define VEKZOL_SRC_BLOBS_VEKZOLZIPTESTSUPPORT_H_

#include <zlib.h>

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/services/UnicodeString.h>
#include <vekzol/services/VEKZOLZip.h>

namespace vekzol_zip_test {

// The zlib stream that compress() at its default level makes of `text`.
inline std::string Deflate(const std::string& text) {
  uLongf length = compressBound(static_cast<uLong>(text.size()));
  std::string stream(length, '\0');
  EXPECT_EQ(compress(reinterpret_cast<Bytef*>(&stream[0]), &length,
                     reinterpret_cast<const Bytef*>(text.data()), static_cast<uLong>(text.size())),
            Z_OK);
  stream.resize(length);
  return stream;
}

// An XML-like text of `length` bytes that compresses well.
inline std::string XmlText(size_t length) {
  std::string text;
  for (int i = 0; text.size() < length; ++i) {
    text += "<process id=\"PRC-" + std::to_string(1000000 + i) +
            "\" name=\"Weld frame\"><station>S1</station></process>\n";
  }
  text.resize(length);
  return text;
}

// `length` printable bytes from a fixed pseudo-random sequence: compresses
// poorly, and its stream holds bytes of every value.
inline std::string NoiseText(size_t length, uint32_t seed = 12345) {
  std::string text(length, ' ');
  for (char& c : text) {
    seed = seed * 1664525u + 1013904223u;
    c = static_cast<char>(33 + (seed >> 24) % 94);
  }
  return text;
}

// The header and payload of a blob, its slack left out.
inline std::string BlobBytes(const char* block, unsigned long length) {
  return std::string(block, length);
}

// A decompressed block as a string, released; "<null>" for null.
inline std::string Take(char* block) {
  std::string text = block != nullptr ? block : "<null>";
  UnicodeString::deleteStr(block);
  return text;
}

// Compresses and returns the blob's bytes (header and payload).
inline std::string Compress(const std::string& text) {
  unsigned long length = 0;
  char* block = VEKZOLZip::compressString(text.c_str(), length);
  std::string blob = block != nullptr ? std::string(block, length) : std::string();
  UnicodeString::deleteStr(block);
  return blob;
}

}  // namespace vekzol_zip_test

#endif  // VEKZOL_SRC_BLOBS_VEKZOLZIPTESTSUPPORT_H_
