// File: UnicodeStringTestSupport.h
// Shared pieces of the tests of UnicodeString and VEKZOLZip: the peer that
// shows an object's two pointers, and the making and reading of 16-bit
// length-prefixed strings in a way that holds on every platform. Not
// installed.
#ifndef VEKZOL_SRC_UNICODE_UNICODESTRINGTESTSUPPORT_H_
#define VEKZOL_SRC_UNICODE_UNICODESTRINGTESTSUPPORT_H_

#include <string>

#include <vekzol/platform/Variant.h>
#include <vekzol/services/UnicodeString.h>

class UnicodeStringTestPeer {
 public:
  static char* Narrow(const UnicodeString& text) { return text._NarrowText; }
  static unsigned short* Wide(const UnicodeString& text) { return text._WideText; }
  // Forgets both blocks without releasing them, for an object whose blocks
  // another object owns.
  static void Forget(UnicodeString& text) {
    text._NarrowText = nullptr;
    text._WideText = nullptr;
  }
};

namespace vekzol_unicode_test {

// A new length-prefixed string holding exactly `units` (its length is
// units.size()); release it with UnicodeString::deleteBstr.
inline unsigned short* MakeBstr(const std::u16string& units) {
  return reinterpret_cast<unsigned short*>(SysAllocStringLen(
      reinterpret_cast<const OLECHAR*>(units.data()), static_cast<unsigned int>(units.size())));
}

inline unsigned int PrefixLength(unsigned short* text) {
  return SysStringLen(reinterpret_cast<BSTR>(text));
}

// All units of a length-prefixed string, as many as its prefix counts.
inline std::u16string Units(unsigned short* text) {
  return std::u16string(reinterpret_cast<const char16_t*>(text), PrefixLength(text));
}

}  // namespace vekzol_unicode_test

#endif  // VEKZOL_SRC_UNICODE_UNICODESTRINGTESTSUPPORT_H_
