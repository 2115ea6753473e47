// File: PosixVariant.cpp
// BSTR and the VARIANT functions for POSIX, where the system has none.
//
// BSTR layout, as on Windows: one malloc block holding a 32-bit byte length,
// the 16-bit units and a closing NUL unit; the BSTR points at the first unit,
// four bytes into the block.
//
// VARIANT: the scalar types VT_EMPTY, VT_NULL, VT_I1, VT_UI1, VT_I2, VT_UI2,
// VT_I4, VT_UI4, VT_INT, VT_UINT, VT_I8, VT_UI8, VT_R4, VT_R8, VT_BOOL,
// VT_BSTR, VT_ERROR, VT_CY and VT_DATE can be held, cleared and copied. Any
// other type (objects, arrays, by-reference values, VT_DECIMAL) gives
// DISP_E_BADVARTYPE, since nothing in this library makes one.
//
// VariantChangeType follows OLE Automation's rules for the types it
// converts:
// - Integers to text: plain decimal ("-42"). VT_BOOL to text: "-1"/"0"
//   (the value read as VT_I2), or "True"/"False" with VARIANT_ALPHABOOL.
// - VT_R8 to text: "%.15G", VT_R4: "%.7G" (7 and 15 significant digits,
//   trailing zeros dropped, exponent form "1E+20" / "1E-05" where the
//   exponent is below -4 or not below the digit count), with '.' as the
//   decimal point whatever the C locale, and negative zero as "0". Infinities
//   give "INF" / "-INF", NaN gives "NAN".
// - Text to numbers: [blanks][+|-]digits[.digits][(e|E)[+|-]digits][blanks],
//   where blanks are space, tab, CR, LF, VT and FF, and the text ends at its
//   first NUL unit. A null BSTR is the empty text. Anything else is
//   DISP_E_TYPEMISMATCH. To VT_BOOL the text may also be "True" or "False"
//   in any case, or "#TRUE#" / "#FALSE#"; a number gives true unless zero.
// - Values out of the target's range: DISP_E_OVERFLOW (a double whose
//   float would be infinite, too). Reals and decimal text round half to even
//   when they become integers ("2.5" -> 2, "3.5" -> 4, -0.5 -> 0).
// - VT_BOOL to a number: -1 / 0; to an unsigned type VARIANT_TRUE keeps its
//   bit pattern (255, 65535, ...) instead of overflowing, as OLE
//   Automation's VarUI1FromBool does. A number to VT_BOOL: VARIANT_TRUE
//   unless zero.
// - VT_EMPTY converts to 0, "" or VARIANT_FALSE. Every type but VT_NULL and
//   VT_ERROR converts to VT_EMPTY and VT_NULL. VT_NULL converts to nothing
//   else: DISP_E_TYPEMISMATCH. VT_ERROR converts only to itself.
// - VT_CY and VT_DATE are not converted here (DISP_E_BADVARTYPE): nothing
//   in the library makes them.
// VariantCopy clears the destination first; if the copy of a string cannot
// be allocated the destination is left VT_EMPTY and E_OUTOFMEMORY returned.
// The result is made apart and put in place only on success, so a failure
// leaves the destination as it was, and source and destination may be the
// same variant.
#include <vekzol/platform/Variant.h>

#include "platform/BstrAllocatorTesting.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

namespace vekzol {
namespace platform {

namespace {

void* DefaultAllocate(size_t size) { return std::malloc(size); }

BstrAllocator g_allocate = &DefaultAllocate;

constexpr size_t kPrefixBytes = sizeof(uint32_t);

// A block of `bytes` bytes copied from `data` (zeroed when data is null),
// then a NUL unit.
BSTR AllocateBytes(const void* data, uint64_t bytes) {
  if (bytes > UINT32_MAX) return nullptr;
  const uint64_t total = kPrefixBytes + bytes + sizeof(OLECHAR);
  if (total != static_cast<size_t>(total)) return nullptr;
  char* block = static_cast<char*>(g_allocate(static_cast<size_t>(total)));
  if (block == nullptr) return nullptr;
  const uint32_t prefix = static_cast<uint32_t>(bytes);
  std::memcpy(block, &prefix, kPrefixBytes);
  char* units = block + kPrefixBytes;
  if (data != nullptr) {
    std::memcpy(units, data, static_cast<size_t>(bytes));
  } else {
    std::memset(units, 0, static_cast<size_t>(bytes));
  }
  std::memset(units + bytes, 0, sizeof(OLECHAR));
  return reinterpret_cast<BSTR>(units);
}

// Types a VARIANT may hold here: those that need no object, array or
// reference handling.
bool IsKnownType(VARTYPE vt) {
  switch (vt) {
    case VT_EMPTY:
    case VT_NULL:
    case VT_I2:
    case VT_I4:
    case VT_R4:
    case VT_R8:
    case VT_CY:
    case VT_DATE:
    case VT_BSTR:
    case VT_ERROR:
    case VT_BOOL:
    case VT_I1:
    case VT_UI1:
    case VT_UI2:
    case VT_UI4:
    case VT_I8:
    case VT_UI8:
    case VT_INT:
    case VT_UINT:
      return true;
    default:
      return false;
  }
}

// ---------------------------------------------------------------------------
// Numbers.

// A value read from a numeric, boolean or empty source.
struct Number {
  enum class Kind { kSigned, kUnsigned, kReal };
  Kind kind = Kind::kSigned;
  int64_t s = 0;
  uint64_t u = 0;
  double r = 0;
  bool fromBool = false;
};

Number ReadNumber(const VARIANT& src) {
  Number n;
  switch (src.vt) {
    case VT_I1:
      n.s = static_cast<signed char>(src.cVal);
      break;
    case VT_I2:
      n.s = src.iVal;
      break;
    case VT_I4:
      n.s = src.lVal;
      break;
    case VT_INT:
      n.s = src.intVal;
      break;
    case VT_I8:
      n.s = src.llVal;
      break;
    case VT_BOOL:
      n.s = src.boolVal;
      n.fromBool = true;
      break;
    case VT_UI1:
      n.kind = Number::Kind::kUnsigned;
      n.u = src.bVal;
      break;
    case VT_UI2:
      n.kind = Number::Kind::kUnsigned;
      n.u = src.uiVal;
      break;
    case VT_UI4:
      n.kind = Number::Kind::kUnsigned;
      n.u = src.ulVal;
      break;
    case VT_UINT:
      n.kind = Number::Kind::kUnsigned;
      n.u = src.uintVal;
      break;
    case VT_UI8:
      n.kind = Number::Kind::kUnsigned;
      n.u = src.ullVal;
      break;
    case VT_R4:
      n.kind = Number::Kind::kReal;
      n.r = src.fltVal;
      break;
    case VT_R8:
      n.kind = Number::Kind::kReal;
      n.r = src.dblVal;
      break;
    default:  // VT_EMPTY reads as 0.
      break;
  }
  return n;
}

struct IntegerLimits {
  bool isSigned;
  uint64_t negativeMagnitude;  // largest magnitude of a negative value
  uint64_t max;
};

bool IsIntegerType(VARTYPE vt) {
  switch (vt) {
    case VT_I1:
    case VT_UI1:
    case VT_I2:
    case VT_UI2:
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_I8:
    case VT_UI8:
      return true;
    default:
      return false;
  }
}

IntegerLimits LimitsOf(VARTYPE vt) {
  switch (vt) {
    case VT_I1:
      return {true, 128u, 127u};
    case VT_UI1:
      return {false, 0u, 255u};
    case VT_I2:
      return {true, 32768u, 32767u};
    case VT_UI2:
      return {false, 0u, 65535u};
    case VT_I4:
    case VT_INT:
      return {true, 2147483648u, 2147483647u};
    case VT_UI4:
    case VT_UINT:
      return {false, 0u, 4294967295u};
    case VT_I8:
      return {true, uint64_t{1} << 63, (uint64_t{1} << 63) - 1};
    default:  // VT_UI8
      return {false, 0u, UINT64_MAX};
  }
}

// Stores a value already known to fit `vt`.
void StoreSigned(VARTYPE vt, int64_t value, VARIANT* out) {
  switch (vt) {
    case VT_I1:
      out->cVal = static_cast<char>(static_cast<signed char>(value));
      break;
    case VT_I2:
      out->iVal = static_cast<short>(value);
      break;
    case VT_I4:
      out->lVal = static_cast<int>(value);
      break;
    case VT_INT:
      out->intVal = static_cast<int>(value);
      break;
    default:  // VT_I8
      out->llVal = value;
      break;
  }
  out->vt = vt;
}

// Stores the low bits of `value` that fit `vt`.
void StoreUnsigned(VARTYPE vt, uint64_t value, VARIANT* out) {
  switch (vt) {
    case VT_UI1:
      out->bVal = static_cast<unsigned char>(value);
      break;
    case VT_UI2:
      out->uiVal = static_cast<unsigned short>(value);
      break;
    case VT_UI4:
      out->ulVal = static_cast<unsigned int>(value);
      break;
    case VT_UINT:
      out->uintVal = static_cast<unsigned int>(value);
      break;
    default:  // VT_UI8
      out->ullVal = value;
      break;
  }
  out->vt = vt;
}

// The integer -magnitude or +magnitude, checked against the range of `vt`.
HRESULT StoreIntegral(VARTYPE vt, bool negative, uint64_t magnitude, VARIANT* out) {
  const IntegerLimits limits = LimitsOf(vt);
  if (negative && magnitude != 0) {
    if (magnitude > limits.negativeMagnitude) return DISP_E_OVERFLOW;
    // -(magnitude - 1) - 1 stays inside int64 for a magnitude of 2^63.
    StoreSigned(vt, -static_cast<int64_t>(magnitude - 1) - 1, out);
    return S_OK;
  }
  if (magnitude > limits.max) return DISP_E_OVERFLOW;
  if (limits.isSigned) {
    StoreSigned(vt, static_cast<int64_t>(magnitude), out);
  } else {
    StoreUnsigned(vt, magnitude, out);
  }
  return S_OK;
}

// Rounds a non-negative value half to even. a - floor(a) is exact for
// a >= 0, so the tie is seen exactly.
double RoundMagnitudeHalfEven(double a) {
  const double whole = std::floor(a);
  const double fraction = a - whole;
  if (fraction > 0.5) return whole + 1.0;
  if (fraction < 0.5) return whole;
  return std::fmod(whole, 2.0) == 0.0 ? whole : whole + 1.0;
}

HRESULT RealToIntegral(double value, VARTYPE vt, VARIANT* out) {
  if (!std::isfinite(value)) return DISP_E_OVERFLOW;
  const double rounded = RoundMagnitudeHalfEven(std::fabs(value));
  if (rounded >= 0x1p64) return DISP_E_OVERFLOW;
  return StoreIntegral(vt, value < 0, static_cast<uint64_t>(rounded), out);
}

// A double to VT_R4: overflow where the float would be infinite, that is
// from the midpoint between FLT_MAX and 2^128 on (and for infinities).
HRESULT RealToFloat(double value, VARIANT* out) {
  if (std::fabs(value) >= 0x1.ffffffp+127) return DISP_E_OVERFLOW;
  out->fltVal = static_cast<float>(value);
  out->vt = VT_R4;
  return S_OK;
}

void StoreBool(bool value, VARIANT* out) {
  out->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
  out->vt = VT_BOOL;
}

HRESULT StoreNumber(const Number& n, VARTYPE vt, VARIANT* out) {
  const bool isReal = n.kind == Number::Kind::kReal;
  const bool isSigned = n.kind == Number::Kind::kSigned;
  if (vt == VT_BOOL) {
    StoreBool(isReal ? n.r != 0.0 : (isSigned ? n.s != 0 : n.u != 0), out);
    return S_OK;
  }
  if (vt == VT_R8) {
    out->dblVal = isReal ? n.r : (isSigned ? static_cast<double>(n.s) : static_cast<double>(n.u));
    out->vt = VT_R8;
    return S_OK;
  }
  if (vt == VT_R4) {
    if (isReal) return RealToFloat(n.r, out);
    out->fltVal = isSigned ? static_cast<float>(n.s) : static_cast<float>(n.u);
    out->vt = VT_R4;
    return S_OK;
  }
  // An integer type.
  if (isReal) return RealToIntegral(n.r, vt, out);
  if (!isSigned) return StoreIntegral(vt, false, n.u, out);
  if (n.fromBool && !LimitsOf(vt).isSigned) {
    // VARIANT_TRUE keeps its bit pattern in an unsigned type.
    StoreUnsigned(vt, static_cast<uint64_t>(n.s), out);
    return S_OK;
  }
  const uint64_t magnitude =
      n.s < 0 ? uint64_t{0} - static_cast<uint64_t>(n.s) : static_cast<uint64_t>(n.s);
  return StoreIntegral(vt, n.s < 0, magnitude, out);
}

// ---------------------------------------------------------------------------
// Text to numbers.

// A decimal number read from text: digits * 10^exponent, with neither
// leading nor trailing zeros in `digits` (empty for zero).
struct DecimalText {
  bool negative = false;
  std::string digits;
  int64_t exponent = 0;
};

bool IsBlank(OLECHAR c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\v' || c == '\f';
}

bool IsDigit(OLECHAR c) { return c >= '0' && c <= '9'; }

// The units of `text` up to its first NUL (a null BSTR is empty).
size_t TextLength(BSTR text) {
  if (text == nullptr) return 0;
  const size_t length = SysStringLen(text);
  size_t n = 0;
  while (n < length && text[n] != 0) ++n;
  return n;
}

bool ParseDecimal(const OLECHAR* text, size_t length, DecimalText* out) {
  size_t i = 0;
  while (i < length && IsBlank(text[i])) ++i;
  if (i < length && (text[i] == '+' || text[i] == '-')) {
    out->negative = text[i] == '-';
    ++i;
  }
  std::string digits;
  int64_t fractionDigits = 0;
  bool anyDigit = false;
  while (i < length && IsDigit(text[i])) {
    digits.push_back(static_cast<char>(text[i++]));
    anyDigit = true;
  }
  if (i < length && text[i] == '.') {
    ++i;
    while (i < length && IsDigit(text[i])) {
      digits.push_back(static_cast<char>(text[i++]));
      ++fractionDigits;
      anyDigit = true;
    }
  }
  if (!anyDigit) return false;
  int64_t exponent = 0;
  if (i < length && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    bool negativeExponent = false;
    if (i < length && (text[i] == '+' || text[i] == '-')) {
      negativeExponent = text[i] == '-';
      ++i;
    }
    if (i >= length || !IsDigit(text[i])) return false;
    while (i < length && IsDigit(text[i])) {
      // Saturate: beyond a billion the value is out of every range anyway.
      if (exponent < 1000000000) exponent = exponent * 10 + (text[i] - '0');
      ++i;
    }
    if (negativeExponent) exponent = -exponent;
  }
  while (i < length && IsBlank(text[i])) ++i;
  if (i != length) return false;

  const size_t first = digits.find_first_not_of('0');
  if (first == std::string::npos) {
    out->digits.clear();
    out->exponent = 0;
    return true;
  }
  const size_t last = digits.find_last_not_of('0');
  out->digits = digits.substr(first, last - first + 1);
  out->exponent = exponent - fractionDigits + static_cast<int64_t>(digits.size() - 1 - last);
  return true;
}

// Exact conversion of decimal text to an integer type, rounding the
// fraction half to even.
HRESULT DecimalToIntegral(const DecimalText& d, VARTYPE vt, VARIANT* out) {
  if (d.digits.empty()) return StoreIntegral(vt, false, 0, out);
  const int64_t count = static_cast<int64_t>(d.digits.size());
  const int64_t integerDigits = count + d.exponent;
  if (integerDigits > 20) return DISP_E_OVERFLOW;  // 10^20 > 2^64
  uint64_t magnitude = 0;
  for (int64_t k = 0; k < integerDigits; ++k) {
    const unsigned digit = k < count ? static_cast<unsigned>(d.digits[k] - '0') : 0u;
    if (magnitude > (UINT64_MAX - digit) / 10) return DISP_E_OVERFLOW;
    magnitude = magnitude * 10 + digit;
  }
  // Below 0.1 (integerDigits < 0) the fraction always rounds down.
  if (integerDigits >= 0 && integerDigits < count) {
    const int dropped = d.digits[integerDigits] - '0';
    // The last digit is never 0, so any digit after the first dropped one
    // makes the fraction larger than dropped/10.
    const bool more = integerDigits + 1 < count;
    const bool up = dropped > 5 || (dropped == 5 && (more || (magnitude & 1u) != 0));
    if (up) {
      if (magnitude == UINT64_MAX) return DISP_E_OVERFLOW;
      ++magnitude;
    }
  }
  return StoreIntegral(vt, d.negative, magnitude, out);
}

// Decimal text to the nearest double; DISP_E_OVERFLOW past the range.
HRESULT DecimalToReal(const DecimalText& d, double* value) {
  if (d.digits.empty()) {
    *value = 0.0;
    return S_OK;
  }
  // Digits and an exponent only: no decimal point, so the C locale plays no
  // part in strtod.
  const std::string text = d.digits + "e" + std::to_string(d.exponent);
  const double magnitude = std::strtod(text.c_str(), nullptr);
  if (std::isinf(magnitude)) return DISP_E_OVERFLOW;
  *value = d.negative ? -magnitude : magnitude;
  return S_OK;
}

// Case-insensitive match of `text` with an ASCII word.
bool MatchesWord(const OLECHAR* text, size_t length, const char* word, bool foldCase) {
  const size_t n = std::strlen(word);
  if (length != n) return false;
  for (size_t k = 0; k < n; ++k) {
    OLECHAR c = text[k];
    if (foldCase && c >= 'a' && c <= 'z') c = static_cast<OLECHAR>(c - 'a' + 'A');
    if (c != static_cast<unsigned char>(word[k])) return false;
  }
  return true;
}

HRESULT TextToNumber(BSTR text, VARTYPE vt, VARIANT* out) {
  const size_t length = TextLength(text);
  if (vt == VT_BOOL) {
    if (MatchesWord(text, length, "TRUE", true) || MatchesWord(text, length, "#TRUE#", false)) {
      StoreBool(true, out);
      return S_OK;
    }
    if (MatchesWord(text, length, "FALSE", true) || MatchesWord(text, length, "#FALSE#", false)) {
      StoreBool(false, out);
      return S_OK;
    }
  }
  DecimalText decimal;
  if (!ParseDecimal(text, length, &decimal)) return DISP_E_TYPEMISMATCH;
  if (IsIntegerType(vt)) return DecimalToIntegral(decimal, vt, out);
  double value = 0.0;
  const HRESULT hr = DecimalToReal(decimal, &value);
  if (FAILED(hr)) return hr;
  Number n;
  n.kind = Number::Kind::kReal;
  n.r = value;
  return StoreNumber(n, vt, out);
}

// ---------------------------------------------------------------------------
// Numbers to text.

// printf's "%.<digits>G", made independent of the C locale: whatever the
// locale writes as its decimal point becomes '.'.
std::string FormatReal(double value, int digits) {
  if (std::isnan(value)) return "NAN";
  if (std::isinf(value)) return value < 0 ? "-INF" : "INF";
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*G", digits, value);
  std::string text;
  for (const char* p = buffer; *p != '\0'; ++p) {
    const char c = *p;
    if ((c >= '0' && c <= '9') || c == '-' || c == '+' || c == 'E') {
      text.push_back(c);
    } else if (text.empty() || text.back() != '.') {
      text.push_back('.');
    }
  }
  // A negative value that shows as zero is written "0".
  if (text[0] == '-' && text.find_first_not_of("0.", 1) == std::string::npos) return "0";
  return text;
}

std::string Decimal(long long value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%lld", value);
  return buffer;
}

std::string DecimalUnsigned(unsigned long long value) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%llu", value);
  return buffer;
}

std::string TextOf(const VARIANT& src, unsigned short flags) {
  switch (src.vt) {
    case VT_BOOL:
      if ((flags & VARIANT_ALPHABOOL) != 0) return src.boolVal != 0 ? "True" : "False";
      return Decimal(src.boolVal);
    case VT_R4:
      return FormatReal(src.fltVal, 7);
    case VT_R8:
      return FormatReal(src.dblVal, 15);
    case VT_EMPTY:
      return std::string();
    default:
      break;
  }
  const Number n = ReadNumber(src);
  return n.kind == Number::Kind::kSigned ? Decimal(n.s) : DecimalUnsigned(n.u);
}

HRESULT StoreAsciiText(const std::string& text, VARIANT* out) {
  BSTR result = AllocateBytes(nullptr, uint64_t{text.size()} * sizeof(OLECHAR));
  if (result == nullptr) return E_OUTOFMEMORY;
  for (size_t k = 0; k < text.size(); ++k) result[k] = static_cast<unsigned char>(text[k]);
  out->bstrVal = result;
  out->vt = VT_BSTR;
  return S_OK;
}

// ---------------------------------------------------------------------------

// Converts `src` into `out`, an empty variant that nothing else sees until
// the conversion has succeeded.
HRESULT Convert(const VARIANT& src, unsigned short flags, VARTYPE vt, VARIANT* out) {
  if (src.vt == vt) return VariantCopy(out, &src);
  if (src.vt == VT_NULL) return DISP_E_TYPEMISMATCH;
  if (vt == VT_EMPTY || vt == VT_NULL) {
    if (src.vt == VT_ERROR) return DISP_E_TYPEMISMATCH;
    out->vt = vt;
    return S_OK;
  }
  if (src.vt == VT_ERROR || vt == VT_ERROR) return DISP_E_TYPEMISMATCH;
  if (src.vt == VT_CY || src.vt == VT_DATE || vt == VT_CY || vt == VT_DATE) {
    return DISP_E_BADVARTYPE;
  }
  if (vt == VT_BSTR) return StoreAsciiText(TextOf(src, flags), out);
  if (src.vt == VT_BSTR) return TextToNumber(src.bstrVal, vt, out);
  return StoreNumber(ReadNumber(src), vt, out);
}

}  // namespace

BstrAllocator SetBstrAllocatorForTesting(BstrAllocator allocator) {
  const BstrAllocator previous = g_allocate;
  g_allocate = allocator != nullptr ? allocator : &DefaultAllocate;
  return previous;
}

}  // namespace platform
}  // namespace vekzol

using vekzol::platform::AllocateBytes;
using vekzol::platform::Convert;
using vekzol::platform::IsKnownType;
using vekzol::platform::kPrefixBytes;

BSTR SysAllocString(const OLECHAR* text) {
  if (text == nullptr) return nullptr;
  size_t length = 0;
  while (text[length] != 0) ++length;
  return AllocateBytes(text, uint64_t{length} * sizeof(OLECHAR));
}

BSTR SysAllocStringLen(const OLECHAR* text, unsigned int length) {
  return AllocateBytes(text, uint64_t{length} * sizeof(OLECHAR));
}

void SysFreeString(BSTR text) {
  if (text == nullptr) return;
  std::free(reinterpret_cast<char*>(text) - kPrefixBytes);
}

unsigned int SysStringByteLen(BSTR text) {
  if (text == nullptr) return 0;
  uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const char*>(text) - kPrefixBytes, kPrefixBytes);
  return bytes;
}

unsigned int SysStringLen(BSTR text) {
  return SysStringByteLen(text) / static_cast<unsigned int>(sizeof(OLECHAR));
}

void VariantInit(VARIANTARG* variant) {
  if (variant == nullptr) return;
  variant->vt = VT_EMPTY;
  variant->wReserved1 = 0;
  variant->wReserved2 = 0;
  variant->wReserved3 = 0;
}

HRESULT VariantClear(VARIANTARG* variant) {
  if (variant == nullptr) return E_INVALIDARG;
  if (!IsKnownType(variant->vt)) return DISP_E_BADVARTYPE;
  if (variant->vt == VT_BSTR) SysFreeString(variant->bstrVal);
  variant->vt = VT_EMPTY;
  return S_OK;
}

HRESULT VariantCopy(VARIANTARG* destination, const VARIANTARG* source) {
  if (destination == nullptr || source == nullptr) return E_INVALIDARG;
  if (!IsKnownType(source->vt)) return DISP_E_BADVARTYPE;
  if (destination == source) return S_OK;
  const HRESULT hr = VariantClear(destination);
  if (FAILED(hr)) return hr;
  BSTR text = nullptr;
  if (source->vt == VT_BSTR && source->bstrVal != nullptr) {
    // By bytes, so that a string of odd byte length stays as it was.
    text = AllocateBytes(source->bstrVal, SysStringByteLen(source->bstrVal));
    if (text == nullptr) return E_OUTOFMEMORY;  // the destination stays VT_EMPTY
  }
  *destination = *source;
  if (source->vt == VT_BSTR) destination->bstrVal = text;
  return S_OK;
}

HRESULT VariantChangeType(VARIANTARG* destination, const VARIANTARG* source, unsigned short flags,
                          VARTYPE type) {
  if (destination == nullptr || source == nullptr) return E_INVALIDARG;
  if (!IsKnownType(source->vt) || !IsKnownType(type)) return DISP_E_BADVARTYPE;
  VARIANT result;
  VariantInit(&result);
  HRESULT hr = S_OK;
  try {
    hr = Convert(*source, flags, type, &result);
  } catch (const std::bad_alloc&) {
    hr = E_OUTOFMEMORY;
  }
  if (FAILED(hr)) return hr;
  // The source is cleared here when it is also the destination; the result
  // no longer depends on it.
  hr = VariantClear(destination);
  if (FAILED(hr)) {
    VariantClear(&result);
    return hr;
  }
  *destination = result;
  return S_OK;
}
