// File: CComVariant.cpp
// The library's CComVariant, with the rules of ATL's class: scalar
// constructors and assignments set the type and the value, text becomes a
// BSTR, copies go through VariantCopy and raise their failure, Copy and
// ChangeType return theirs.
#include <vekzol/platform/CComVariant.h>

#include <cstring>
#include <new>
#include <string>

#include "platform/TextConversion.h"

namespace {

// Makes `variant` VT_EMPTY with every byte of its value cleared, so no
// stale bits of a previous value survive in the union.
void Reset(VARIANT* variant) {
  std::memset(static_cast<void*>(variant), 0, sizeof(VARIANT));
  VariantInit(variant);
}

bool SameBstr(BSTR left, BSTR right) {
  // A null BSTR is the empty string.
  const unsigned int length = SysStringByteLen(left);
  if (length != SysStringByteLen(right)) return false;
  return length == 0 || std::memcmp(left, right, length) == 0;
}

}  // namespace

CComVariant::CComVariant() noexcept { Reset(this); }

CComVariant::CComVariant(const CComVariant& other) : tagVARIANT() {
  Reset(this);
  CopyOrThrow(other);
}

CComVariant::CComVariant(const VARIANT& other) : tagVARIANT() {
  Reset(this);
  CopyOrThrow(other);
}

CComVariant::CComVariant(int value) noexcept {
  Reset(this);
  vt = VT_I4;
  lVal = value;
}

CComVariant::CComVariant(long value) noexcept {
  Reset(this);
  vt = VT_I4;
  lVal = static_cast<int>(value);
}

CComVariant::CComVariant(short value) noexcept {
  Reset(this);
  vt = VT_I2;
  iVal = value;
}

CComVariant::CComVariant(long long value) noexcept {
  Reset(this);
  vt = VT_I8;
  llVal = value;
}

CComVariant::CComVariant(float value) noexcept {
  Reset(this);
  vt = VT_R4;
  fltVal = value;
}

CComVariant::CComVariant(double value) noexcept {
  Reset(this);
  vt = VT_R8;
  dblVal = value;
}

CComVariant::CComVariant(bool value) noexcept {
  Reset(this);
  vt = VT_BOOL;
  boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

CComVariant::CComVariant(const char* text) : tagVARIANT() {
  Reset(this);
  SetText(text);
}

CComVariant::CComVariant(const CString& text) : tagVARIANT() {
  Reset(this);
  SetText(text.GetString());
}

CComVariant::CComVariant(const OLECHAR* text) : tagVARIANT() {
  Reset(this);
  *this = text;
}

CComVariant::~CComVariant() { Clear(); }

CComVariant& CComVariant::operator=(const CComVariant& other) {
  if (this != &other) CopyOrThrow(other);
  return *this;
}

CComVariant& CComVariant::operator=(const VARIANT& other) {
  if (static_cast<const VARIANT*>(this) != &other) CopyOrThrow(other);
  return *this;
}

CComVariant& CComVariant::operator=(int value) {
  Clear();
  vt = VT_I4;
  lVal = value;
  return *this;
}

CComVariant& CComVariant::operator=(long value) {
  Clear();
  vt = VT_I4;
  lVal = static_cast<int>(value);
  return *this;
}

CComVariant& CComVariant::operator=(short value) {
  Clear();
  vt = VT_I2;
  iVal = value;
  return *this;
}

CComVariant& CComVariant::operator=(long long value) {
  Clear();
  vt = VT_I8;
  llVal = value;
  return *this;
}

CComVariant& CComVariant::operator=(float value) {
  Clear();
  vt = VT_R4;
  fltVal = value;
  return *this;
}

CComVariant& CComVariant::operator=(double value) {
  Clear();
  vt = VT_R8;
  dblVal = value;
  return *this;
}

CComVariant& CComVariant::operator=(bool value) {
  Clear();
  vt = VT_BOOL;
  boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  return *this;
}

CComVariant& CComVariant::operator=(const char* text) {
  SetText(text);
  return *this;
}

CComVariant& CComVariant::operator=(const CString& text) {
  SetText(text.GetString());
  return *this;
}

CComVariant& CComVariant::operator=(const OLECHAR* text) {
  // The copy is made first: `text` may be this variant's own string.
  BSTR copy = SysAllocString(text);
  Clear();
  vt = VT_BSTR;
  bstrVal = copy;
  if (copy == nullptr && text != nullptr) {
    vt = VT_ERROR;
    scode = E_OUTOFMEMORY;
    AtlThrow(E_OUTOFMEMORY);
  }
  return *this;
}

bool CComVariant::operator==(const VARIANT& other) const {
  if (vt != other.vt) return false;
  switch (vt) {
    case VT_EMPTY:
    case VT_NULL:
      return true;
    case VT_I1:
      return cVal == other.cVal;
    case VT_UI1:
      return bVal == other.bVal;
    case VT_I2:
      return iVal == other.iVal;
    case VT_UI2:
      return uiVal == other.uiVal;
    case VT_I4:
      return lVal == other.lVal;
    case VT_UI4:
      return ulVal == other.ulVal;
    case VT_INT:
      return intVal == other.intVal;
    case VT_UINT:
      return uintVal == other.uintVal;
    case VT_I8:
    case VT_CY:
      return llVal == other.llVal;
    case VT_UI8:
      return ullVal == other.ullVal;
    case VT_R4:
      return fltVal == other.fltVal;
    case VT_R8:
      return dblVal == other.dblVal;
    case VT_DATE:
      return date == other.date;
    case VT_BOOL:
      return boolVal == other.boolVal;
    case VT_ERROR:
      return scode == other.scode;
    case VT_BSTR:
      return SameBstr(bstrVal, other.bstrVal);
    default:
      // A type this library cannot compare is never equal.
      return false;
  }
}

bool CComVariant::operator!=(const VARIANT& other) const { return !(*this == other); }

HRESULT CComVariant::Clear() { return VariantClear(this); }

HRESULT CComVariant::Copy(const VARIANT* source) {
  const HRESULT hr = VariantCopy(this, source);
  if (FAILED(hr)) {
    // Whatever VariantCopy left (this variant unchanged for a bad type, or
    // cleared for a failed allocation) is released before it is replaced.
    Clear();
    vt = VT_ERROR;
    scode = hr;
  }
  return hr;
}

HRESULT CComVariant::ChangeType(VARTYPE type, const VARIANT* source) {
  return VariantChangeType(this, source != nullptr ? source : this, 0, type);
}

void CComVariant::CopyOrThrow(const VARIANT& source) {
  const HRESULT hr = Copy(&source);
  if (FAILED(hr)) AtlThrow(hr);
}

void CComVariant::SetText(const char* text) {
  BSTR converted = nullptr;
  bool failed = false;
  if (text != nullptr) {
    try {
      const std::u16string wide = vekzol::platform::NarrowToWide(text, std::strlen(text));
      static_assert(sizeof(char16_t) == sizeof(OLECHAR), "16-bit units");
      // Longer texts do not fit a BSTR's 32-bit byte count.
      if (wide.size() <= 0x7FFFFFFFu) {
        converted = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(wide.data()),
                                      static_cast<unsigned int>(wide.size()));
      }
    } catch (const std::bad_alloc&) {
      converted = nullptr;
    }
    failed = converted == nullptr;
  }
  Clear();
  if (failed) {
    vt = VT_ERROR;
    scode = E_OUTOFMEMORY;
    AtlThrow(E_OUTOFMEMORY);
  }
  vt = VT_BSTR;
  bstrVal = converted;
}
