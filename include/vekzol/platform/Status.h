// File: Status.h
// HRESULT and the four status values of the library, plus E_OUTOFMEMORY,
// which only travels inside CAtlException.
//
// On Windows these are the system's own. Elsewhere HRESULT is `long` and the
// failure values are the Windows bit patterns read as signed 32-bit numbers,
// so that they are negative on every platform and `status < 0` tells failure
// (on LP64 systems a plain 0x80004005L literal would be positive).
//
// On Windows only <winerror.h> is included, not <windows.h>: the status
// values need nothing more. HRESULT is declared under the guard that the
// system headers use for it, so either declaration may come first.
#ifndef VEKZOL_PLATFORM_STATUS_H_
#define VEKZOL_PLATFORM_STATUS_H_

#if defined(_WIN32)
#include <winerror.h>
#ifndef _HRESULT_DEFINED
#define _HRESULT_DEFINED
typedef long HRESULT;
#endif
#else

typedef long HRESULT;

#define S_OK ((HRESULT)0L)
#define S_FALSE ((HRESULT)1L)
// 0x80070057, 0x80004005 and 0x8007000E as signed 32-bit values.
#define E_INVALIDARG ((HRESULT)(-2147024809L))
#define E_FAIL ((HRESULT)(-2147467259L))
#define E_OUTOFMEMORY ((HRESULT)(-2147024882L))

#define SUCCEEDED(hr) (((HRESULT)(hr)) >= 0)
#define FAILED(hr) (((HRESULT)(hr)) < 0)

#endif

#endif  // VEKZOL_PLATFORM_STATUS_H_
