// File: VEKZOLSTLServicesText.cpp
// Number conversion that does not depend on the user's decimal separator,
// and a case-insensitive search by byte index.
#include <vekzol/services/VEKZOLSTLServices.h>

#include <cstdlib>
#include <string>

#include <vekzol/platform/Status.h>

#include "platform/MbString.h"
#include "platform/System.h"

long VEKZOLSTLServices::String2Double(CString text, double& number) {
  using vekzol::platform::Sys;
  // Made on the first call and kept for the life of the process.
  static CString separator;

  if (s_DecimalSeparatorKnown) {
    // Only the first byte of the separator counts. The conversion runs
    // under the numeric locale in force, which is taken to use ".".
    if (separator[0] != '.') {
      text.Replace(separator[0], '.');
    }
    number = std::strtod(text.GetString(), nullptr);
    return S_OK;
  }

  std::string userSeparator;
  if (!Sys().UserDecimalSeparator(&userSeparator)) {
    // Still unknown: the next call asks again.
    return E_FAIL;
  }
  separator = CString(userSeparator.c_str());
  s_DecimalSeparatorKnown = true;

  // The first conversion runs under the "C" numeric locale, whatever the
  // host has set, and the host's locale comes back after it. When the
  // current locale cannot be told, putting it back only asks again, which
  // fails as the first ask did, and the "C" locale stays.
  std::string saved;
  const bool haveSaved = Sys().SetNumericLocale(nullptr, &saved);
  if (!Sys().SetNumericLocale("C", nullptr)) {
    return E_FAIL;
  }
  text.Replace(separator[0], '.');
  number = std::strtod(text.GetString(), nullptr);
  if (!Sys().SetNumericLocale(haveSaved ? saved.c_str() : nullptr, nullptr)) {
    return E_FAIL;
  }
  return S_OK;
}

int VEKZOLSTLServices::FindInStringNoCase(CString text, CString pattern, int start) {
  const int length = text.GetLength();
  vekzol::platform::Mbslwr(text.GetBuffer(length), static_cast<size_t>(length));
  text.ReleaseBuffer(length);
  const int patternLength = pattern.GetLength();
  vekzol::platform::Mbslwr(pattern.GetBuffer(patternLength), static_cast<size_t>(patternLength));
  pattern.ReleaseBuffer(patternLength);

  if (start < 0 || start > length) {
    return -1;
  }
  const char* const begin = text.GetString();
  const char* const hit = vekzol::platform::Mbsstr(begin + start, pattern.GetString());
  if (hit == nullptr) {
    return -1;
  }
  return static_cast<int>(hit - begin);
}
