// File: BlobHeader.cpp
// The blob header's reader and writers.
#include "blobs/BlobHeader.h"

#include <cstdio>

namespace vekzol {
namespace blobs {
namespace {

// A cursor over a bounded text that ends at `length` or at a NUL.
class Cursor {
 public:
  Cursor(const char* text, size_t length) : text_(text), length_(length) {}

  bool AtEnd() const { return position_ >= length_ || text_[position_] == '\0'; }
  char Peek() const { return AtEnd() ? '\0' : text_[position_]; }
  char PeekAt(size_t ahead) const {
    for (size_t i = 0; i <= ahead; ++i) {
      if (position_ + i >= length_ || text_[position_ + i] == '\0') return '\0';
    }
    return text_[position_ + ahead];
  }
  void Advance(size_t count = 1) { position_ += count; }

  bool Match(const char* literal) {
    for (; *literal != '\0'; ++literal) {
      if (Peek() != *literal) return false;
      Advance();
    }
    return true;
  }

  // The blanks that a numeric conversion of scanf skips.
  void SkipBlanks() {
    while (Peek() == ' ' || (Peek() >= '\t' && Peek() <= '\r')) Advance();
  }

 private:
  const char* text_;
  size_t length_;
  size_t position_ = 0;
};

int DigitValue(char c, int base) {
  int value = -1;
  if (c >= '0' && c <= '9') value = c - '0';
  if (c >= 'a' && c <= 'f') value = c - 'a' + 10;
  if (c >= 'A' && c <= 'F') value = c - 'A' + 10;
  return value < base ? value : -1;
}

// Optional sign, then digits of `base`; the magnitude may not pass
// `positiveLimit`, or `negativeLimit` behind a minus sign. False when no
// digit stands there or the number is too large.
bool ReadNumber(Cursor* cursor, int base, uint64_t positiveLimit, uint64_t negativeLimit,
                bool* negative, uint64_t* magnitude) {
  cursor->SkipBlanks();
  *negative = false;
  if (cursor->Peek() == '+' || cursor->Peek() == '-') {
    *negative = cursor->Peek() == '-';
    cursor->Advance();
  }
  if (base == 16 && cursor->Peek() == '0' &&
      (cursor->PeekAt(1) == 'x' || cursor->PeekAt(1) == 'X') &&
      DigitValue(cursor->PeekAt(2), 16) >= 0) {
    cursor->Advance(2);
  }
  uint64_t value = 0;
  bool anyDigit = false;
  const uint64_t allowed = *negative ? negativeLimit : positiveLimit;
  for (int digit = DigitValue(cursor->Peek(), base); digit >= 0;
       digit = DigitValue(cursor->Peek(), base)) {
    value = value * static_cast<uint64_t>(base) + static_cast<uint64_t>(digit);
    if (value > allowed) return false;
    anyDigit = true;
    cursor->Advance();
  }
  *magnitude = value;
  return anyDigit;
}

bool ReadDecimal(Cursor* cursor, int32_t* out) {
  bool negative = false;
  uint64_t magnitude = 0;
  if (!ReadNumber(cursor, 10, INT32_MAX, uint64_t{INT32_MAX} + 1, &negative, &magnitude)) {
    return false;
  }
  const int64_t value =
      negative ? -static_cast<int64_t>(magnitude) : static_cast<int64_t>(magnitude);
  *out = static_cast<int32_t>(value);
  return true;
}

bool ReadHexadecimal(Cursor* cursor, uint32_t* out) {
  bool negative = false;
  uint64_t magnitude = 0;
  // A minus sign negates in unsigned arithmetic, as the conversion does.
  if (!ReadNumber(cursor, 16, UINT32_MAX, UINT32_MAX, &negative, &magnitude)) return false;
  const uint32_t value = static_cast<uint32_t>(magnitude);
  *out = negative ? 0u - value : value;
  return true;
}

}  // namespace

int ReadBlobHeader(const char* text, size_t length, BlobHeader* header) {
  Cursor cursor(text, length);
  if (!cursor.Match("zlib:v=") || !ReadHexadecimal(&cursor, &header->version)) return 0;
  if (!cursor.Match(":d=") || !ReadDecimal(&cursor, &header->uncompressed)) return 1;
  if (!cursor.Match(":c=") || !ReadDecimal(&cursor, &header->compressed)) return 2;
  return 3;
}

// Both texts are at most 7 + 8 + 3 + 11 + 3 + 11 + 1 characters long.
std::string FormatBlobHeader(uint32_t version, int32_t uncompressed, int32_t compressed) {
  char buffer[64];
  const int length = std::snprintf(buffer, sizeof buffer, "zlib:v=%x:d=%d:c=%d:", version,
                                   static_cast<int>(uncompressed), static_cast<int>(compressed));
  return std::string(buffer, static_cast<size_t>(length));
}

std::string FormatBlobHeaderPrefix(uint32_t version, int32_t uncompressed) {
  char buffer[64];
  const int length = std::snprintf(buffer, sizeof buffer, "zlib:v=%x:d=%d:c=", version,
                                   static_cast<int>(uncompressed));
  return std::string(buffer, static_cast<size_t>(length));
}

}  // namespace blobs
}  // namespace vekzol
