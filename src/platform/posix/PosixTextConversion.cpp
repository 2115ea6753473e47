// File: PosixTextConversion.cpp
// UTF-8 <-> UTF-16 for POSIX, where the narrow code page is UTF-8.
//
// Bad input is replaced, never refused, as the Windows converters do
// without MB_ERR_INVALID_CHARS / WC_ERR_INVALID_CHARS:
// - UTF-8 to UTF-16: each maximal subpart of an ill-formed sequence (the
//   longest prefix of a well-formed sequence, or else one byte) becomes one
//   U+FFFD, the practice the Unicode standard recommends (section 3.9, "U+FFFD
//   Substitution of Maximal Subparts"). So "\xE2\x82" (a cut three-byte
//   sequence) gives one U+FFFD, "\xC0\xAF" (an overlong form) two, and an
//   encoded surrogate "\xED\xA0\x80" three.
// - UTF-16 to UTF-8: a surrogate that is not part of a pair becomes '?', the
//   default character that Windows uses for what the target cannot hold.
// Lengths are explicit; a NUL unit or byte is converted like any other.
#include "platform/TextConversion.h"

#include <cstdint>

namespace vekzol {
namespace platform {
namespace {

constexpr char16_t kReplacement = 0xFFFD;

bool IsContinuation(unsigned char byte) { return byte >= 0x80 && byte <= 0xBF; }

void AppendCodePoint(uint32_t codePoint, std::u16string* out) {
  if (codePoint < 0x10000) {
    out->push_back(static_cast<char16_t>(codePoint));
  } else {
    codePoint -= 0x10000;
    out->push_back(static_cast<char16_t>(0xD800 + (codePoint >> 10)));
    out->push_back(static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF)));
  }
}

void AppendUtf8(uint32_t codePoint, std::string* out) {
  if (codePoint < 0x80) {
    out->push_back(static_cast<char>(codePoint));
  } else if (codePoint < 0x800) {
    out->push_back(static_cast<char>(0xC0 | (codePoint >> 6)));
    out->push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
  } else if (codePoint < 0x10000) {
    out->push_back(static_cast<char>(0xE0 | (codePoint >> 12)));
    out->push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
  } else {
    out->push_back(static_cast<char>(0xF0 | (codePoint >> 18)));
    out->push_back(static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F)));
    out->push_back(static_cast<char>(0x80 | (codePoint & 0x3F)));
  }
}

}  // namespace

std::u16string NarrowToWide(const char* text, size_t length) {
  std::u16string out;
  if (text == nullptr) return out;
  out.reserve(length);
  const auto* bytes = reinterpret_cast<const unsigned char*>(text);
  size_t i = 0;
  while (i < length) {
    const unsigned char lead = bytes[i];
    if (lead < 0x80) {
      out.push_back(lead);
      ++i;
      continue;
    }
    // Number of continuation bytes and the range allowed for the first of
    // them: the narrower ranges rule out overlong forms, surrogates and
    // values above U+10FFFF.
    size_t trail = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    uint32_t codePoint = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
      trail = 1;
      codePoint = lead & 0x1F;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
      trail = 2;
      codePoint = lead & 0x0F;
      if (lead == 0xE0) low = 0xA0;
      if (lead == 0xED) high = 0x9F;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
      trail = 3;
      codePoint = lead & 0x07;
      if (lead == 0xF0) low = 0x90;
      if (lead == 0xF4) high = 0x8F;
    } else {
      // 0x80..0xC1 and 0xF5..0xFF never start a sequence.
      out.push_back(kReplacement);
      ++i;
      continue;
    }
    size_t taken = 1;
    bool complete = true;
    for (size_t k = 0; k < trail; ++k) {
      const size_t at = i + 1 + k;
      if (at >= length) {
        complete = false;
        break;
      }
      const unsigned char byte = bytes[at];
      const bool inRange = k == 0 ? (byte >= low && byte <= high) : IsContinuation(byte);
      if (!inRange) {
        complete = false;
        break;
      }
      codePoint = (codePoint << 6) | (byte & 0x3F);
      ++taken;
    }
    if (complete) {
      AppendCodePoint(codePoint, &out);
    } else {
      // The bytes taken so far are the maximal subpart; the byte that broke
      // the sequence starts the next one.
      out.push_back(kReplacement);
    }
    i += taken;
  }
  return out;
}

std::string WideToNarrow(const char16_t* text, size_t length) {
  std::string out;
  if (text == nullptr) return out;
  out.reserve(length);
  size_t i = 0;
  while (i < length) {
    const uint32_t unit = text[i];
    if (unit >= 0xD800 && unit <= 0xDBFF && i + 1 < length && text[i + 1] >= 0xDC00 &&
        text[i + 1] <= 0xDFFF) {
      const uint32_t codePoint = 0x10000 + ((unit - 0xD800) << 10) + (text[i + 1] - 0xDC00);
      AppendUtf8(codePoint, &out);
      i += 2;
      continue;
    }
    if (unit >= 0xD800 && unit <= 0xDFFF) {
      out.push_back('?');
    } else {
      AppendUtf8(unit, &out);
    }
    ++i;
  }
  return out;
}

}  // namespace platform
}  // namespace vekzol
