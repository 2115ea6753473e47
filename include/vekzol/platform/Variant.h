// File: Variant.h
// The OLE Automation value types of the interfaces: VARIANT, BSTR and the
// functions that manage them.
//
// On Windows these are the system's own (oleaut32), and OLECHAR is the
// system's 16-bit wchar_t, so an interface written with `unsigned short *`
// takes a BSTR through a cast there. Elsewhere the library supplies them
// with the same shape, the same VT_* numbers and the same rules:
// - A BSTR points at 16-bit code units that follow a 32-bit byte-length
//   prefix and end with a NUL unit. A null BSTR is a valid empty string.
//   OLECHAR is `unsigned short`, so a BSTR passes where an interface takes
//   `unsigned short *`.
// - VariantCopy deep-copies a VT_BSTR value; VariantClear frees it.
// - VariantChangeType converts between numbers, booleans and text as OLE
//   Automation does (a VT_I4 becomes its plain decimal text, VT_BOOL text is
//   "-1"/"0", or "True"/"False" with VARIANT_ALPHABOOL, numbers out of the
//   target's range give DISP_E_OVERFLOW, text that is no number
//   DISP_E_TYPEMISMATCH). A failed conversion leaves the destination as it
//   was.
#ifndef VEKZOL_PLATFORM_VARIANT_H_
#define VEKZOL_PLATFORM_VARIANT_H_

#include <vekzol/platform/Export.h>
#include <vekzol/platform/Status.h>

#if defined(_WIN32)
// VARIANT comes from <oaidl.h>, the BSTR and VARIANT functions from
// <oleauto.h>, which needs <oaidl.h> before it; both pull in <windows.h>.
// The host's choices stand where it included <windows.h> (or
// <minwindef.h>) first. Otherwise the min and max macros are kept out, so
// that std::min, std::max and numeric_limits<T>::max() keep working in the
// host's code and ours; a host that relies on those macros includes
// <windows.h> before this header. The names that <windows.h> turns into
// macros (GetObject, CopyFile, CreateDirectory, ...) are never used here
// unsuffixed: the library's members that carry them end in A as part of
// their name, so the macros leave them alone in ANSI and Unicode builds.
#if !defined(_MINWINDEF_) && !defined(NOMINMAX)
#define NOMINMAX
#define VEKZOL_VARIANT_H_DEFINED_NOMINMAX
#endif
#include <oaidl.h>
#include <oleauto.h>
#if defined(VEKZOL_VARIANT_H_DEFINED_NOMINMAX)
#undef NOMINMAX
#undef VEKZOL_VARIANT_H_DEFINED_NOMINMAX
#endif

// The system never writes to the source of VariantCopy and
// VariantChangeType, and current SDKs declare it const; the MinGW headers
// still declare it without. These take a const source everywhere. Being
// templates, they lose to the system's declaration whenever that one fits,
// so with an SDK that has the const form they are never chosen.
template <typename = void>
inline HRESULT VariantCopy(VARIANTARG* destination, const VARIANTARG* source) {
  return VariantCopy(destination, const_cast<VARIANTARG*>(source));
}
template <typename = void>
inline HRESULT VariantChangeType(VARIANTARG* destination, const VARIANTARG* source,
                                 unsigned short flags, VARTYPE type) {
  return VariantChangeType(destination, const_cast<VARIANTARG*>(source), flags, type);
}
#else

#include <cstdint>

typedef unsigned short OLECHAR;
typedef OLECHAR* BSTR;
typedef unsigned short VARTYPE;
typedef short VARIANT_BOOL;
typedef HRESULT SCODE;

#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)

// Status values of the variant functions, as the Windows headers have them
// (bit patterns read as signed 32-bit numbers).
#define DISP_E_TYPEMISMATCH ((HRESULT)(-2147352571L))  // 0x80020005
#define DISP_E_OVERFLOW ((HRESULT)(-2147352566L))      // 0x8002000A
#define DISP_E_BADVARTYPE ((HRESULT)(-2147352568L))    // 0x80020008

// Flags of VariantChangeType.
#define VARIANT_NOVALUEPROP 0x01
#define VARIANT_ALPHABOOL 0x02

enum VARENUM {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_UNKNOWN = 13,
  VT_DECIMAL = 14,
  VT_I1 = 16,
  VT_UI1 = 17,
  VT_UI2 = 18,
  VT_UI4 = 19,
  VT_I8 = 20,
  VT_UI8 = 21,
  VT_INT = 22,
  VT_UINT = 23,
};

// The layout of the Windows VARIANT: the type, three reserved words, then
// an 8-byte union (16 bytes wide on 64-bit Windows because of its record
// member; the library's POSIX union has the same 16 bytes).
struct tagVARIANT {
  VARTYPE vt;
  unsigned short wReserved1;
  unsigned short wReserved2;
  unsigned short wReserved3;
  union {
    long long llVal;
    int lVal;
    unsigned char bVal;
    short iVal;
    float fltVal;
    double dblVal;
    VARIANT_BOOL boolVal;
    SCODE scode;
    double date;
    BSTR bstrVal;
    char cVal;
    unsigned short uiVal;
    unsigned int ulVal;
    unsigned long long ullVal;
    int intVal;
    unsigned int uintVal;
    void* byref;
    void* pvRecord[2];
  };
};
typedef tagVARIANT VARIANT;
typedef tagVARIANT VARIANTARG;

// BSTR allocation. SysAllocString(null) and SysAllocStringLen(null, n)
// follow Windows: the first gives null, the second an uninitialised string
// of n units (zeroed here). Allocation failure gives null.
VEKZOL_API BSTR SysAllocString(const OLECHAR* text);
VEKZOL_API BSTR SysAllocStringLen(const OLECHAR* text, unsigned int length);
VEKZOL_API void SysFreeString(BSTR text);
// Length in 16-bit units / in bytes, from the prefix; 0 for null.
VEKZOL_API unsigned int SysStringLen(BSTR text);
VEKZOL_API unsigned int SysStringByteLen(BSTR text);

VEKZOL_API void VariantInit(VARIANTARG* variant);
VEKZOL_API HRESULT VariantClear(VARIANTARG* variant);
VEKZOL_API HRESULT VariantCopy(VARIANTARG* destination, const VARIANTARG* source);
VEKZOL_API HRESULT VariantChangeType(VARIANTARG* destination, const VARIANTARG* source,
                                     unsigned short flags, VARTYPE type);

#endif

#endif  // VEKZOL_PLATFORM_VARIANT_H_
