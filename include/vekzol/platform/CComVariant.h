// File: CComVariant.h
// CComVariant: the library's tagged attribute value, derived from VARIANT
// as ATL's class is. Empty (VT_EMPTY) by default; copies are deep
// (VariantCopy). A failed copy leaves the destination as VT_ERROR holding
// the failure code and raises that code as CAtlException. On Windows the
// base is the system's VARIANT and the value functions are oleaut32's, so
// OLECHAR text is wchar_t text there (L"...").
#ifndef VEKZOL_PLATFORM_CCOMVARIANT_H_
#define VEKZOL_PLATFORM_CCOMVARIANT_H_

#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>
#include <vekzol/platform/Variant.h>

class VEKZOL_API CComVariant : public tagVARIANT {
 public:
  CComVariant() noexcept;
  CComVariant(const CComVariant& other);
  CComVariant(const VARIANT& other);  // NOLINT(google-explicit-constructor)
  CComVariant(int value) noexcept;    // NOLINT: VT_I4
  CComVariant(long value) noexcept;   // NOLINT: VT_I4 (truncated to 32 bits where long is wider)
  CComVariant(short value) noexcept;  // NOLINT: VT_I2
  CComVariant(long long value) noexcept;  // NOLINT: VT_I8
  CComVariant(float value) noexcept;      // NOLINT: VT_R4
  CComVariant(double value) noexcept;     // NOLINT: VT_R8
  CComVariant(bool value) noexcept;       // NOLINT: VT_BOOL
  // VT_BSTR converted from narrow text up to its first NUL (as ATL reads a
  // CString through its const char*); null text gives a null BSTR, the
  // empty BSTR value.
  CComVariant(const char* text);     // NOLINT
  CComVariant(const CString& text);  // NOLINT
  // VT_BSTR holding a copy of `text`.
  CComVariant(const OLECHAR* text);  // NOLINT
  ~CComVariant();

  CComVariant& operator=(const CComVariant& other);
  CComVariant& operator=(const VARIANT& other);
  CComVariant& operator=(int value);
  CComVariant& operator=(long value);
  CComVariant& operator=(short value);
  CComVariant& operator=(long long value);
  CComVariant& operator=(float value);
  CComVariant& operator=(double value);
  CComVariant& operator=(bool value);
  CComVariant& operator=(const char* text);
  CComVariant& operator=(const CString& text);
  CComVariant& operator=(const OLECHAR* text);

  // Both compare type and value; a BSTR by its units.
  bool operator==(const VARIANT& other) const;
  bool operator!=(const VARIANT& other) const;

  HRESULT Clear();
  // Deep copy of `source`; on failure this becomes VT_ERROR with the code,
  // and the code is returned (not raised: ATL's Copy returns it).
  HRESULT Copy(const VARIANT* source);
  // VariantChangeType in place (source null) or from `source`.
  HRESULT ChangeType(VARTYPE type, const VARIANT* source = nullptr);

 private:
  // Copies `source` or raises: the rule of the copy constructor and of
  // assignment.
  void CopyOrThrow(const VARIANT& source);
  void SetText(const char* text);
};

#endif  // VEKZOL_PLATFORM_CCOMVARIANT_H_
