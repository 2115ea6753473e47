// File: CAtlException.h
// The exception that the library's types raise: failures of memory
// (E_OUTOFMEMORY), out-of-range arguments of CString (E_INVALIDARG) and
// failed variant copies carry their status here and pass through to the
// host untouched.
#ifndef VEKZOL_PLATFORM_CATLEXCEPTION_H_
#define VEKZOL_PLATFORM_CATLEXCEPTION_H_

#include <vekzol/platform/Export.h>
#include <vekzol/platform/Status.h>

class VEKZOL_API CAtlException {
 public:
  CAtlException() noexcept : m_hr(E_FAIL) {}
  explicit CAtlException(HRESULT hr) noexcept : m_hr(hr) {}

  operator HRESULT() const noexcept { return m_hr; }

  HRESULT m_hr;
};

// Raises CAtlException carrying `hr`, as ATL's AtlThrow does.
[[noreturn]] VEKZOL_API void AtlThrow(HRESULT hr);

#endif  // VEKZOL_PLATFORM_CATLEXCEPTION_H_
