// File: VEKZOLSTLServicesTestSupport.h
// Shared pieces of the string-list services' test programs: lists written
// as initialiser lists and read back as standard strings (embedded NULs
// kept), and a platform backend whose user decimal separator the test sets
// and which records the switches of the numeric locale.
#ifndef VEKZOL_SRC_STRINGLISTS_VEKZOLSTLSERVICESTESTSUPPORT_H_
#define VEKZOL_SRC_STRINGLISTS_VEKZOLSTLSERVICESTESTSUPPORT_H_

#include <deque>
#include <initializer_list>
#include <string>
#include <vector>

#include <vekzol/platform/CString.h>

#include "platform/System.h"

namespace vekzol_stl_test {

// A list of CString from standard strings, so that elements may hold NULs.
inline std::deque<CString> List(std::initializer_list<std::string> elements) {
  std::deque<CString> list;
  for (const std::string& element : elements) {
    list.emplace_back(element);
  }
  return list;
}

// The bytes of each element, for comparisons that print well.
inline std::vector<std::string> Bytes(const std::deque<CString>& list) {
  std::vector<std::string> bytes;
  for (const CString& element : list) {
    bytes.push_back(element.str());
  }
  return bytes;
}

// The platform's own backend with a user decimal separator of the test's
// choosing (or a failure to tell it), and a numeric locale switch that is
// recorded, passed on to the platform, or made to fail.
class SeparatorSystem : public vekzol::platform::ForwardingSystem {
 public:
  SeparatorSystem() : ForwardingSystem(vekzol::platform::DefaultSystem()) {}

  bool UserDecimalSeparator(std::string* value) override {
    ++separatorReads;
    if (failSeparator) {
      return false;
    }
    *value = separator;
    return true;
  }

  bool SetNumericLocale(const char* name, std::string* current) override {
    localeCalls.push_back(name != nullptr ? name : "(null)");
    if (name == nullptr ? failQuery : (std::string(name) == "C" ? failSwitch : failRestore)) {
      return false;
    }
    if (passLocaleOn) {
      return ForwardingSystem::SetNumericLocale(name, current);
    }
    if (name != nullptr) {
      fakeLocale = name;
    }
    if (current != nullptr) {
      *current = fakeLocale;
    }
    return true;
  }

  std::string separator = ".";
  bool failSeparator = false;
  bool failQuery = false;
  bool failSwitch = false;
  bool failRestore = false;
  // The real locale switch instead of the recorded one.
  bool passLocaleOn = false;
  std::string fakeLocale = "host-locale";

  int separatorReads = 0;
  std::vector<std::string> localeCalls;
};

}  // namespace vekzol_stl_test

#endif  // VEKZOL_SRC_STRINGLISTS_VEKZOLSTLSERVICESTESTSUPPORT_H_
