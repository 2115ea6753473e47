// Tests of the POSIX BSTR functions and of VariantInit, VariantClear,
// VariantCopy and VariantChangeType.
#include <gtest/gtest.h>

#include <cfloat>
#include <clocale>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>

#include <vekzol/platform/Variant.h>

#include "platform/BstrAllocatorTesting.h"

namespace {

using vekzol::platform::SetBstrAllocatorForTesting;

int g_allocations = 0;

void* FailingAllocate(size_t) {
  ++g_allocations;
  return nullptr;
}

void* CountingAllocate(size_t size) {
  ++g_allocations;
  return std::malloc(size);
}

// Puts an allocator in place for the life of the object.
class AllocatorScope {
 public:
  explicit AllocatorScope(vekzol::platform::BstrAllocator allocator) {
    g_allocations = 0;
    previous_ = SetBstrAllocatorForTesting(allocator);
  }
  ~AllocatorScope() { SetBstrAllocatorForTesting(previous_); }
  AllocatorScope(const AllocatorScope&) = delete;
  AllocatorScope& operator=(const AllocatorScope&) = delete;

 private:
  vekzol::platform::BstrAllocator previous_;
};

BSTR Bstr(const std::u16string& text) {
  return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()),
                           static_cast<unsigned int>(text.size()));
}

std::u16string Units(BSTR text) {
  return std::u16string(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
}

uint32_t Prefix(BSTR text) {
  uint32_t prefix = 0;
  std::memcpy(&prefix, reinterpret_cast<const unsigned char*>(text) - 4, sizeof prefix);
  return prefix;
}

// A variant that frees what it holds when the test ends.
struct Var : VARIANT {
  Var() { VariantInit(this); }
  ~Var() { VariantClear(this); }
  Var(const Var&) = delete;
  Var& operator=(const Var&) = delete;
};

void SetI4(VARIANT* v, int value) {
  v->vt = VT_I4;
  v->lVal = value;
}

void SetR8(VARIANT* v, double value) {
  v->vt = VT_R8;
  v->dblVal = value;
}

void SetText(VARIANT* v, const std::u16string& text) {
  v->vt = VT_BSTR;
  v->bstrVal = Bstr(text);
}

// The text that `source` becomes as VT_BSTR, or the failure as text.
std::u16string AsText(const VARIANT& source, unsigned short flags = 0) {
  Var result;
  const HRESULT hr = VariantChangeType(&result, &source, flags, VT_BSTR);
  if (hr != S_OK) return u"<failed>";
  return Units(result.bstrVal);
}

std::u16string TextOfI4(int value) {
  Var v;
  SetI4(&v, value);
  return AsText(v);
}

std::u16string TextOfR8(double value) {
  Var v;
  SetR8(&v, value);
  return AsText(v);
}

std::u16string TextOfR4(float value) {
  Var v;
  v.vt = VT_R4;
  v.fltVal = value;
  return AsText(v);
}

// Converts text to `type` into `out`; returns the status.
HRESULT FromText(const std::u16string& text, VARTYPE type, VARIANT* out) {
  Var source;
  SetText(&source, text);
  return VariantChangeType(out, &source, 0, type);
}

HRESULT R8To(double value, VARTYPE type, VARIANT* out) {
  Var source;
  SetR8(&source, value);
  return VariantChangeType(out, &source, 0, type);
}

// ---------------------------------------------------------------------------
// BSTR

TEST(BstrTest, AllocStringStoresBytePrefixUnitsAndClosingNul) {
  BSTR text = SysAllocString(reinterpret_cast<const OLECHAR*>(u"abc"));
  ASSERT_NE(text, nullptr);
  const unsigned char* prefix = reinterpret_cast<const unsigned char*>(text) - 4;
  uint32_t expected = 6;
  EXPECT_EQ(std::memcmp(prefix, &expected, 4), 0);
  EXPECT_EQ(Prefix(text), 6u);
  EXPECT_EQ(text[0], u'a');
  EXPECT_EQ(text[1], u'b');
  EXPECT_EQ(text[2], u'c');
  EXPECT_EQ(text[3], 0);
  EXPECT_EQ(SysStringLen(text), 3u);
  EXPECT_EQ(SysStringByteLen(text), 6u);
  SysFreeString(text);
}

TEST(BstrTest, AllocStringOfNullIsNull) { EXPECT_EQ(SysAllocString(nullptr), nullptr); }

TEST(BstrTest, AllocStringOfEmptyTextIsEmptyString) {
  BSTR text = SysAllocString(reinterpret_cast<const OLECHAR*>(u""));
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(Prefix(text), 0u);
  EXPECT_EQ(text[0], 0);
  EXPECT_EQ(SysStringLen(text), 0u);
  SysFreeString(text);
}

TEST(BstrTest, AllocStringLenCopiesExactlyLengthUnitsWithEmbeddedNul) {
  const char16_t source[] = {u'x', 0, u'y', u'z'};
  BSTR text = SysAllocStringLen(reinterpret_cast<const OLECHAR*>(source), 3);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(Prefix(text), 6u);
  EXPECT_EQ(Units(text), (std::u16string{u'x', 0, u'y'}));
  EXPECT_EQ(text[3], 0);
  SysFreeString(text);
}

TEST(BstrTest, AllocStringLenOfNullGivesZeroedUnits) {
  BSTR text = SysAllocStringLen(nullptr, 4);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(Prefix(text), 8u);
  for (int k = 0; k <= 4; ++k) EXPECT_EQ(text[k], 0) << k;
  SysFreeString(text);
}

TEST(BstrTest, BlockComesFromTheAllocatorWithRoomForPrefixAndNul) {
  static size_t requested = 0;
  struct Recorder {
    static void* Allocate(size_t size) {
      requested = size;
      return std::malloc(size);
    }
  };
  AllocatorScope scope(&Recorder::Allocate);
  BSTR text = SysAllocStringLen(nullptr, 5);
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(requested, 4u + 10u + 2u);
  SysFreeString(text);
}

TEST(BstrTest, NullStringHasZeroLengths) {
  EXPECT_EQ(SysStringLen(nullptr), 0u);
  EXPECT_EQ(SysStringByteLen(nullptr), 0u);
}

TEST(BstrTest, FreeOfNullDoesNothing) { SysFreeString(nullptr); }

TEST(BstrTest, LengthWhoseByteCountOverflows32BitsGivesNullWithoutAllocating) {
  AllocatorScope scope(&CountingAllocate);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000u), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFFu), nullptr);
  EXPECT_EQ(g_allocations, 0);
}

TEST(BstrTest, FailedAllocationGivesNull) {
  AllocatorScope scope(&FailingAllocate);
  EXPECT_EQ(SysAllocString(reinterpret_cast<const OLECHAR*>(u"abc")), nullptr);
  EXPECT_EQ(SysAllocStringLen(nullptr, 2), nullptr);
  EXPECT_EQ(g_allocations, 2);
}

// ---------------------------------------------------------------------------
// VariantInit, VariantClear, VariantCopy

TEST(VariantInitTest, SetsEmptyTypeAndZeroReservedWords) {
  VARIANT v;
  std::memset(static_cast<void*>(&v), 0xAB, sizeof v);
  VariantInit(&v);
  EXPECT_EQ(v.vt, VT_EMPTY);
  EXPECT_EQ(v.wReserved1, 0);
  EXPECT_EQ(v.wReserved2, 0);
  EXPECT_EQ(v.wReserved3, 0);
}

TEST(VariantLayoutTest, HasTheWindowsShape) {
  EXPECT_EQ(sizeof(VARIANT), 8u + 2 * sizeof(void*));
  EXPECT_EQ(offsetof(VARIANT, llVal), 8u);
}

TEST(VariantClearTest, FreesStringAndLeavesEmpty) {
  VARIANT v;
  VariantInit(&v);
  SetText(&v, u"text");
  EXPECT_EQ(VariantClear(&v), S_OK);
  EXPECT_EQ(v.vt, VT_EMPTY);
}

TEST(VariantClearTest, ScalarBecomesEmpty) {
  VARIANT v;
  VariantInit(&v);
  SetR8(&v, 2.5);
  EXPECT_EQ(VariantClear(&v), S_OK);
  EXPECT_EQ(v.vt, VT_EMPTY);
}

TEST(VariantClearTest, UnknownTypeIsRefusedAndLeftAlone) {
  VARIANT v;
  VariantInit(&v);
  v.vt = 15;
  v.llVal = 1234;
  EXPECT_EQ(VariantClear(&v), DISP_E_BADVARTYPE);
  EXPECT_EQ(v.vt, 15);
  EXPECT_EQ(v.llVal, 1234);
  v.vt = VT_DISPATCH;
  EXPECT_EQ(VariantClear(&v), DISP_E_BADVARTYPE);
  EXPECT_EQ(v.vt, VT_DISPATCH);
}

TEST(VariantClearTest, NullVariantIsInvalidArgument) {
  EXPECT_EQ(VariantClear(nullptr), E_INVALIDARG);
}

TEST(VariantCopyTest, StringCopyIsDeepAndSurvivesFreeingTheSource) {
  Var source;
  SetText(&source, u"deep");
  Var copy;
  ASSERT_EQ(VariantCopy(&copy, &source), S_OK);
  EXPECT_EQ(copy.vt, VT_BSTR);
  EXPECT_NE(copy.bstrVal, source.bstrVal);
  ASSERT_EQ(VariantClear(&source), S_OK);
  EXPECT_EQ(Units(copy.bstrVal), u"deep");
  EXPECT_EQ(Prefix(copy.bstrVal), 8u);
  EXPECT_EQ(copy.bstrVal[4], 0);
}

TEST(VariantCopyTest, StringWithEmbeddedNulIsCopiedWhole) {
  Var source;
  SetText(&source, std::u16string{u'a', 0, u'b'});
  Var copy;
  ASSERT_EQ(VariantCopy(&copy, &source), S_OK);
  EXPECT_EQ(Units(copy.bstrVal), (std::u16string{u'a', 0, u'b'}));
}

TEST(VariantCopyTest, NullStringStaysNull) {
  Var source;
  source.vt = VT_BSTR;
  source.bstrVal = nullptr;
  Var copy;
  ASSERT_EQ(VariantCopy(&copy, &source), S_OK);
  EXPECT_EQ(copy.vt, VT_BSTR);
  EXPECT_EQ(copy.bstrVal, nullptr);
}

TEST(VariantCopyTest, ScalarsAreCopied) {
  Var source;
  source.vt = VT_I8;
  source.llVal = -1234567890123LL;
  Var copy;
  ASSERT_EQ(VariantCopy(&copy, &source), S_OK);
  EXPECT_EQ(copy.vt, VT_I8);
  EXPECT_EQ(copy.llVal, -1234567890123LL);

  source.vt = VT_BOOL;
  source.boolVal = VARIANT_TRUE;
  ASSERT_EQ(VariantCopy(&copy, &source), S_OK);
  EXPECT_EQ(copy.vt, VT_BOOL);
  EXPECT_EQ(copy.boolVal, VARIANT_TRUE);

  source.vt = VT_ERROR;
  source.scode = E_FAIL;
  ASSERT_EQ(VariantCopy(&copy, &source), S_OK);
  EXPECT_EQ(copy.vt, VT_ERROR);
  EXPECT_EQ(copy.scode, E_FAIL);
}

TEST(VariantCopyTest, DestinationStringIsFreedFirst) {
  // The sanitizer build reports the old string if it leaks.
  Var destination;
  SetText(&destination, u"old");
  Var source;
  SetI4(&source, 7);
  ASSERT_EQ(VariantCopy(&destination, &source), S_OK);
  EXPECT_EQ(destination.vt, VT_I4);
  EXPECT_EQ(destination.lVal, 7);
}

TEST(VariantCopyTest, CopyOntoItselfChangesNothing) {
  Var v;
  SetText(&v, u"same");
  const BSTR before = v.bstrVal;
  EXPECT_EQ(VariantCopy(&v, &v), S_OK);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(v.bstrVal, before);
  EXPECT_EQ(Units(v.bstrVal), u"same");
}

TEST(VariantCopyTest, UnknownSourceTypeIsRefusedAndDestinationKept) {
  VARIANT source;
  VariantInit(&source);
  source.vt = VT_UNKNOWN;
  Var destination;
  SetText(&destination, u"kept");
  const BSTR before = destination.bstrVal;
  EXPECT_EQ(VariantCopy(&destination, &source), DISP_E_BADVARTYPE);
  EXPECT_EQ(destination.vt, VT_BSTR);
  EXPECT_EQ(destination.bstrVal, before);
}

TEST(VariantCopyTest, FailedStringAllocationGivesOutOfMemoryAndEmptyDestination) {
  Var source;
  SetText(&source, u"abc");
  Var destination;
  SetText(&destination, u"old");
  {
    AllocatorScope scope(&FailingAllocate);
    EXPECT_EQ(VariantCopy(&destination, &source), E_OUTOFMEMORY);
  }
  EXPECT_EQ(destination.vt, VT_EMPTY);
  EXPECT_EQ(Units(source.bstrVal), u"abc");
}

// ---------------------------------------------------------------------------
// VariantChangeType: to text

TEST(ChangeTypeToTextTest, IntegersGivePlainDecimal) {
  EXPECT_EQ(TextOfI4(42), u"42");
  EXPECT_EQ(TextOfI4(-42), u"-42");
  EXPECT_EQ(TextOfI4(0), u"0");
  EXPECT_EQ(TextOfI4(1000000), u"1000000");
  EXPECT_EQ(TextOfI4(std::numeric_limits<int>::min()), u"-2147483648");
  EXPECT_EQ(TextOfI4(std::numeric_limits<int>::max()), u"2147483647");
}

TEST(ChangeTypeToTextTest, OtherIntegerTypesGivePlainDecimal) {
  Var v;
  v.vt = VT_I2;
  v.iVal = -32768;
  EXPECT_EQ(AsText(v), u"-32768");
  v.vt = VT_I8;
  v.llVal = std::numeric_limits<long long>::min();
  EXPECT_EQ(AsText(v), u"-9223372036854775808");
  v.vt = VT_UI8;
  v.ullVal = std::numeric_limits<unsigned long long>::max();
  EXPECT_EQ(AsText(v), u"18446744073709551615");
  v.vt = VT_UI1;
  v.bVal = 255;
  EXPECT_EQ(AsText(v), u"255");
  v.vt = VT_I1;
  v.cVal = static_cast<char>(-128);
  EXPECT_EQ(AsText(v), u"-128");
  v.vt = VT_UI4;
  v.ulVal = 4294967295u;
  EXPECT_EQ(AsText(v), u"4294967295");
  v.vt = VT_INT;
  v.intVal = -5;
  EXPECT_EQ(AsText(v), u"-5");
}

TEST(ChangeTypeToTextTest, BoolGivesMinusOneOrZeroWithoutAlphaBool) {
  Var v;
  v.vt = VT_BOOL;
  v.boolVal = VARIANT_TRUE;
  EXPECT_EQ(AsText(v), u"-1");
  v.boolVal = VARIANT_FALSE;
  EXPECT_EQ(AsText(v), u"0");
}

TEST(ChangeTypeToTextTest, BoolGivesTrueOrFalseWithAlphaBool) {
  Var v;
  v.vt = VT_BOOL;
  v.boolVal = VARIANT_TRUE;
  EXPECT_EQ(AsText(v, VARIANT_ALPHABOOL), u"True");
  v.boolVal = VARIANT_FALSE;
  EXPECT_EQ(AsText(v, VARIANT_ALPHABOOL), u"False");
}

TEST(ChangeTypeToTextTest, DoubleGivesUpToFifteenSignificantDigits) {
  EXPECT_EQ(TextOfR8(1.5), u"1.5");
  EXPECT_EQ(TextOfR8(-2.25), u"-2.25");
  EXPECT_EQ(TextOfR8(0.1), u"0.1");
  EXPECT_EQ(TextOfR8(0.1 + 0.2), u"0.3");
  EXPECT_EQ(TextOfR8(1.0 / 3.0), u"0.333333333333333");
  EXPECT_EQ(TextOfR8(2.0 / 3.0), u"0.666666666666667");
  EXPECT_EQ(TextOfR8(100.0), u"100");
  EXPECT_EQ(TextOfR8(0.0), u"0");
}

TEST(ChangeTypeToTextTest, DoubleUsesExponentFormOutsideFixedRange) {
  EXPECT_EQ(TextOfR8(1e14), u"100000000000000");
  EXPECT_EQ(TextOfR8(1e15), u"1E+15");
  EXPECT_EQ(TextOfR8(1e20), u"1E+20");
  EXPECT_EQ(TextOfR8(-1e100), u"-1E+100");
  EXPECT_EQ(TextOfR8(123456789012345678.0), u"1.23456789012346E+17");
  EXPECT_EQ(TextOfR8(0.0001), u"0.0001");
  EXPECT_EQ(TextOfR8(0.00001), u"1E-05");
  EXPECT_EQ(TextOfR8(1.5e-7), u"1.5E-07");
}

TEST(ChangeTypeToTextTest, NegativeZeroGivesZero) { EXPECT_EQ(TextOfR8(-0.0), u"0"); }

TEST(ChangeTypeToTextTest, InfinityAndNanHaveFixedTexts) {
  EXPECT_EQ(TextOfR8(std::numeric_limits<double>::infinity()), u"INF");
  EXPECT_EQ(TextOfR8(-std::numeric_limits<double>::infinity()), u"-INF");
  EXPECT_EQ(TextOfR8(std::numeric_limits<double>::quiet_NaN()), u"NAN");
}

TEST(ChangeTypeToTextTest, FloatGivesUpToSevenSignificantDigits) {
  EXPECT_EQ(TextOfR4(0.1f), u"0.1");
  EXPECT_EQ(TextOfR4(3.5f), u"3.5");
  EXPECT_EQ(TextOfR4(1.0f / 3.0f), u"0.3333333");
  EXPECT_EQ(TextOfR4(16777216.0f), u"1.677722E+07");
  EXPECT_EQ(TextOfR4(FLT_MAX), u"3.402823E+38");
}

TEST(ChangeTypeToTextTest, DecimalPointIsAPeriodWhateverTheCLocale) {
  const char* names[] = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8", "de_DE"};
  const std::string saved = std::setlocale(LC_NUMERIC, nullptr);
  const char* found = nullptr;
  for (const char* name : names) {
    if (std::setlocale(LC_NUMERIC, name) != nullptr) {
      found = name;
      break;
    }
  }
  if (found == nullptr) GTEST_SKIP() << "no locale with a comma decimal point is installed";
  const std::u16string text = TextOfR8(1.5);
  const std::u16string exponent = TextOfR8(1.5e-7);
  std::setlocale(LC_NUMERIC, saved.c_str());
  EXPECT_EQ(text, u"1.5");
  EXPECT_EQ(exponent, u"1.5E-07");
}

TEST(ChangeTypeToTextTest, EmptyGivesEmptyString) {
  Var v;
  Var result;
  ASSERT_EQ(VariantChangeType(&result, &v, 0, VT_BSTR), S_OK);
  EXPECT_EQ(result.vt, VT_BSTR);
  ASSERT_NE(result.bstrVal, nullptr);
  EXPECT_EQ(SysStringLen(result.bstrVal), 0u);
}

TEST(ChangeTypeToTextTest, TextToTextIsADeepCopy) {
  Var source;
  SetText(&source, u"copy me");
  Var result;
  ASSERT_EQ(VariantChangeType(&result, &source, 0, VT_BSTR), S_OK);
  EXPECT_NE(result.bstrVal, source.bstrVal);
  VariantClear(&source);
  EXPECT_EQ(Units(result.bstrVal), u"copy me");
}

TEST(ChangeTypeToTextTest, FailedAllocationGivesOutOfMemoryAndKeepsDestination) {
  Var source;
  SetI4(&source, 12);
  Var destination;
  SetI4(&destination, 99);
  {
    AllocatorScope scope(&FailingAllocate);
    EXPECT_EQ(VariantChangeType(&destination, &source, 0, VT_BSTR), E_OUTOFMEMORY);
  }
  EXPECT_EQ(destination.vt, VT_I4);
  EXPECT_EQ(destination.lVal, 99);
}

// ---------------------------------------------------------------------------
// VariantChangeType: text to numbers

TEST(ChangeTypeFromTextTest, DecimalTextGivesInteger) {
  Var r;
  ASSERT_EQ(FromText(u"42", VT_I4, &r), S_OK);
  EXPECT_EQ(r.vt, VT_I4);
  EXPECT_EQ(r.lVal, 42);
  ASSERT_EQ(FromText(u"-17", VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, -17);
  ASSERT_EQ(FromText(u"+5", VT_I2, &r), S_OK);
  EXPECT_EQ(r.vt, VT_I2);
  EXPECT_EQ(r.iVal, 5);
  ASSERT_EQ(FromText(u"0007", VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, 7);
}

TEST(ChangeTypeFromTextTest, LeadingAndTrailingBlanksAreAllowed) {
  Var r;
  ASSERT_EQ(FromText(u"  \t-17 \r\n", VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, -17);
}

TEST(ChangeTypeFromTextTest, FractionRoundsHalfToEven) {
  Var r;
  const struct {
    const char16_t* text;
    int expected;
  } cases[] = {{u"2.5", 2},    {u"3.5", 4},       {u"-2.5", -2}, {u"-3.5", -4},
               {u"2.4999", 2}, {u"2.5000001", 3}, {u"0.5", 0},   {u"1.5", 2},
               {u"-0.5", 0},   {u"0.05", 0},      {u"2.6", 3},   {u"12.50", 12},
               {u"1e3", 1000}, {u"1.5E+2", 150},  {u"25e-1", 2}, {u"0.0000001e7", 1},
               {u".5", 0},     {u"7.", 7},        {u"-0", 0},    {u"35E-1", 4}};
  for (const auto& c : cases) {
    ASSERT_EQ(FromText(c.text, VT_I4, &r), S_OK) << c.expected;
    EXPECT_EQ(r.lVal, c.expected) << c.expected;
  }
}

TEST(ChangeTypeFromTextTest, NonNumbersGiveTypeMismatch) {
  Var r;
  const char16_t* cases[] = {u"abc", u"",    u"   ", u"12abc", u"1 2", u".",  u"1e",
                             u"1e+", u"--1", u"+",   u"0x10",  u"1,5", u"e5", u"1.2.3"};
  for (const char16_t* text : cases) {
    EXPECT_EQ(FromText(text, VT_I4, &r), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(FromText(text, VT_R8, &r), DISP_E_TYPEMISMATCH);
  }
}

TEST(ChangeTypeFromTextTest, NullStringGivesTypeMismatch) {
  Var source;
  source.vt = VT_BSTR;
  source.bstrVal = nullptr;
  Var r;
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_I4), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_BOOL), DISP_E_TYPEMISMATCH);
}

TEST(ChangeTypeFromTextTest, TextEndsAtFirstNulUnit) {
  Var r;
  ASSERT_EQ(FromText(std::u16string{u'1', u'2', 0, u'x'}, VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, 12);
}

TEST(ChangeTypeFromTextTest, OutOfRangeGivesOverflow) {
  Var r;
  ASSERT_EQ(FromText(u"2147483647", VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, 2147483647);
  ASSERT_EQ(FromText(u"-2147483648", VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, std::numeric_limits<int>::min());
  ASSERT_EQ(FromText(u"2147483646.5", VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, 2147483646);
  EXPECT_EQ(FromText(u"2147483648", VT_I4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"-2147483649", VT_I4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"2147483647.5", VT_I4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"1e100", VT_I4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"32768", VT_I2, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"256", VT_UI1, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"-1", VT_UI4, &r), DISP_E_OVERFLOW);
}

TEST(ChangeTypeFromTextTest, SixtyFourBitLimitsAreExact) {
  Var r;
  ASSERT_EQ(FromText(u"9223372036854775807", VT_I8, &r), S_OK);
  EXPECT_EQ(r.llVal, std::numeric_limits<long long>::max());
  ASSERT_EQ(FromText(u"-9223372036854775808", VT_I8, &r), S_OK);
  EXPECT_EQ(r.llVal, std::numeric_limits<long long>::min());
  EXPECT_EQ(FromText(u"9223372036854775808", VT_I8, &r), DISP_E_OVERFLOW);
  ASSERT_EQ(FromText(u"18446744073709551615", VT_UI8, &r), S_OK);
  EXPECT_EQ(r.ullVal, std::numeric_limits<unsigned long long>::max());
  EXPECT_EQ(FromText(u"18446744073709551616", VT_UI8, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"18446744073709551615.5", VT_UI8, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"100000000000000000000", VT_UI8, &r), DISP_E_OVERFLOW);
}

TEST(ChangeTypeFromTextTest, SmallNegativeRoundsToZeroForUnsigned) {
  Var r;
  ASSERT_EQ(FromText(u"-0.4", VT_UI1, &r), S_OK);
  EXPECT_EQ(r.vt, VT_UI1);
  EXPECT_EQ(r.bVal, 0);
}

TEST(ChangeTypeFromTextTest, DecimalTextGivesDouble) {
  Var r;
  ASSERT_EQ(FromText(u"1.5", VT_R8, &r), S_OK);
  EXPECT_EQ(r.vt, VT_R8);
  EXPECT_EQ(r.dblVal, 1.5);
  ASSERT_EQ(FromText(u" -0.25 ", VT_R8, &r), S_OK);
  EXPECT_EQ(r.dblVal, -0.25);
  ASSERT_EQ(FromText(u"0.1", VT_R8, &r), S_OK);
  EXPECT_EQ(r.dblVal, 0.1);
  ASSERT_EQ(FromText(u"1E+20", VT_R8, &r), S_OK);
  EXPECT_EQ(r.dblVal, 1e20);
  ASSERT_EQ(FromText(u"123456789012345678901234567890", VT_R8, &r), S_OK);
  EXPECT_EQ(r.dblVal, 123456789012345678901234567890.0);
  ASSERT_EQ(FromText(u"1e-400", VT_R8, &r), S_OK);
  EXPECT_EQ(r.dblVal, 0.0);
}

TEST(ChangeTypeFromTextTest, DoubleOutOfRangeGivesOverflow) {
  Var r;
  ASSERT_EQ(FromText(u"1.7976931348623157e308", VT_R8, &r), S_OK);
  EXPECT_EQ(r.dblVal, DBL_MAX);
  EXPECT_EQ(FromText(u"1e309", VT_R8, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(FromText(u"-1e309", VT_R8, &r), DISP_E_OVERFLOW);
}

TEST(ChangeTypeFromTextTest, DecimalTextGivesFloat) {
  Var r;
  ASSERT_EQ(FromText(u"0.1", VT_R4, &r), S_OK);
  EXPECT_EQ(r.vt, VT_R4);
  EXPECT_EQ(r.fltVal, 0.1f);
  ASSERT_EQ(FromText(u"3.4e38", VT_R4, &r), S_OK);
  EXPECT_EQ(r.fltVal, 3.4e38f);
  EXPECT_EQ(FromText(u"3.5e38", VT_R4, &r), DISP_E_OVERFLOW);
}

TEST(ChangeTypeFromTextTest, BoolWordsInAnyCase) {
  Var r;
  const struct {
    const char16_t* text;
    VARIANT_BOOL expected;
  } cases[] = {{u"True", VARIANT_TRUE},     {u"TRUE", VARIANT_TRUE},   {u"true", VARIANT_TRUE},
               {u"False", VARIANT_FALSE},   {u"fALSE", VARIANT_FALSE}, {u"#TRUE#", VARIANT_TRUE},
               {u"#FALSE#", VARIANT_FALSE}, {u"0", VARIANT_FALSE},     {u"0.0", VARIANT_FALSE},
               {u"-1", VARIANT_TRUE},       {u"2", VARIANT_TRUE},      {u" 0.5 ", VARIANT_TRUE}};
  for (const auto& c : cases) {
    ASSERT_EQ(FromText(c.text, VT_BOOL, &r), S_OK);
    EXPECT_EQ(r.vt, VT_BOOL);
    EXPECT_EQ(r.boolVal, c.expected);
  }
}

TEST(ChangeTypeFromTextTest, OtherWordsGiveTypeMismatchForBool) {
  Var r;
  EXPECT_EQ(FromText(u"yes", VT_BOOL, &r), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(FromText(u" True", VT_BOOL, &r), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(FromText(u"#true#", VT_BOOL, &r), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(FromText(u"", VT_BOOL, &r), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(FromText(u"1e400", VT_BOOL, &r), DISP_E_OVERFLOW);
}

// ---------------------------------------------------------------------------
// VariantChangeType: between numbers and booleans

TEST(ChangeTypeNumberTest, DoubleToIntegerRoundsHalfToEven) {
  Var r;
  const struct {
    double value;
    int expected;
  } cases[] = {{2.5, 2},
               {3.5, 4},
               {-2.5, -2},
               {-3.5, -4},
               {0.5, 0},
               {-0.5, 0},
               {1.5, 2},
               {2.4999, 2},
               {2.6, 3},
               {-2.6, -3},
               {0.49999999999999994, 0},
               {-0.49999999999999994, 0},
               {495.5, 496},
               {-495.5, -496}};
  for (const auto& c : cases) {
    ASSERT_EQ(R8To(c.value, VT_I4, &r), S_OK) << c.value;
    EXPECT_EQ(r.vt, VT_I4);
    EXPECT_EQ(r.lVal, c.expected) << c.value;
  }
}

TEST(ChangeTypeNumberTest, LargeDoubleRoundsHalfToEvenInSixtyFourBits) {
  Var r;
  // 2^52 - 0.5: the tie goes up to the even 2^52.
  ASSERT_EQ(R8To(4503599627370495.5, VT_I8, &r), S_OK);
  EXPECT_EQ(r.llVal, 4503599627370496LL);
  ASSERT_EQ(R8To(-4503599627370494.5, VT_I8, &r), S_OK);
  EXPECT_EQ(r.llVal, -4503599627370494LL);
}

TEST(ChangeTypeNumberTest, DoubleOutOfIntegerRangeGivesOverflow) {
  Var r;
  ASSERT_EQ(R8To(2147483647.4, VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, 2147483647);
  ASSERT_EQ(R8To(-2147483648.5, VT_I4, &r), S_OK);
  EXPECT_EQ(r.lVal, std::numeric_limits<int>::min());
  EXPECT_EQ(R8To(2147483647.5, VT_I4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(-2147483648.6, VT_I4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(32767.5, VT_I2, &r), DISP_E_OVERFLOW);
  ASSERT_EQ(R8To(254.5, VT_UI1, &r), S_OK);
  EXPECT_EQ(r.bVal, 254);
  EXPECT_EQ(R8To(255.5, VT_UI1, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(-0.6, VT_UI1, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(9223372036854775808.0, VT_I8, &r), DISP_E_OVERFLOW);
  ASSERT_EQ(R8To(-9223372036854775808.0, VT_I8, &r), S_OK);
  EXPECT_EQ(r.llVal, std::numeric_limits<long long>::min());
  EXPECT_EQ(R8To(18446744073709551616.0, VT_UI8, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(std::numeric_limits<double>::infinity(), VT_I4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(std::numeric_limits<double>::quiet_NaN(), VT_I4, &r), DISP_E_OVERFLOW);
}

TEST(ChangeTypeNumberTest, DoubleToFloatOverflowsPastFloatRange) {
  Var r;
  ASSERT_EQ(R8To(1.5, VT_R4, &r), S_OK);
  EXPECT_EQ(r.vt, VT_R4);
  EXPECT_EQ(r.fltVal, 1.5f);
  ASSERT_EQ(R8To(FLT_MAX, VT_R4, &r), S_OK);
  EXPECT_EQ(r.fltVal, FLT_MAX);
  EXPECT_EQ(R8To(1e39, VT_R4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(-1e39, VT_R4, &r), DISP_E_OVERFLOW);
  EXPECT_EQ(R8To(std::numeric_limits<double>::infinity(), VT_R4, &r), DISP_E_OVERFLOW);
}

TEST(ChangeTypeNumberTest, IntegerNarrowingChecksRange) {
  Var source;
  Var r;
  SetI4(&source, 32768);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_I2), DISP_E_OVERFLOW);
  SetI4(&source, -32768);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_I2), S_OK);
  EXPECT_EQ(r.iVal, -32768);
  SetI4(&source, -1);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_UI4), DISP_E_OVERFLOW);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_UI8), DISP_E_OVERFLOW);
  SetI4(&source, 200);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_UI1), S_OK);
  EXPECT_EQ(r.bVal, 200);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_I1), DISP_E_OVERFLOW);
  source.vt = VT_UI4;
  source.ulVal = 4294967295u;
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_I4), DISP_E_OVERFLOW);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_I8), S_OK);
  EXPECT_EQ(r.llVal, 4294967295LL);
  source.vt = VT_I8;
  source.llVal = 5000000000LL;
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_I4), DISP_E_OVERFLOW);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_INT), DISP_E_OVERFLOW);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_R8), S_OK);
  EXPECT_EQ(r.dblVal, 5e9);
}

TEST(ChangeTypeNumberTest, IntegersBecomeReals) {
  Var source;
  SetI4(&source, -7);
  Var r;
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_R8), S_OK);
  EXPECT_EQ(r.vt, VT_R8);
  EXPECT_EQ(r.dblVal, -7.0);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_R4), S_OK);
  EXPECT_EQ(r.vt, VT_R4);
  EXPECT_EQ(r.fltVal, -7.0f);
}

TEST(ChangeTypeNumberTest, BoolBecomesMinusOneOrZero) {
  Var source;
  source.vt = VT_BOOL;
  source.boolVal = VARIANT_TRUE;
  Var r;
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_I4), S_OK);
  EXPECT_EQ(r.lVal, -1);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_R8), S_OK);
  EXPECT_EQ(r.dblVal, -1.0);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_UI1), S_OK);
  EXPECT_EQ(r.bVal, 255);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_UI2), S_OK);
  EXPECT_EQ(r.uiVal, 65535);
  source.boolVal = VARIANT_FALSE;
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_I4), S_OK);
  EXPECT_EQ(r.lVal, 0);
}

TEST(ChangeTypeNumberTest, NumbersBecomeTrueUnlessZero) {
  Var source;
  Var r;
  SetI4(&source, 5);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_BOOL), S_OK);
  EXPECT_EQ(r.vt, VT_BOOL);
  EXPECT_EQ(r.boolVal, VARIANT_TRUE);
  SetI4(&source, 0);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_BOOL), S_OK);
  EXPECT_EQ(r.boolVal, VARIANT_FALSE);
  SetR8(&source, 0.25);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_BOOL), S_OK);
  EXPECT_EQ(r.boolVal, VARIANT_TRUE);
  SetR8(&source, -0.0);
  ASSERT_EQ(VariantChangeType(&r, &source, 0, VT_BOOL), S_OK);
  EXPECT_EQ(r.boolVal, VARIANT_FALSE);
}

// ---------------------------------------------------------------------------
// VariantChangeType: empty, null, error and unknown types

TEST(ChangeTypeEmptyNullErrorTest, EmptyBecomesZeroOrFalse) {
  Var empty;
  Var r;
  ASSERT_EQ(VariantChangeType(&r, &empty, 0, VT_I4), S_OK);
  EXPECT_EQ(r.vt, VT_I4);
  EXPECT_EQ(r.lVal, 0);
  ASSERT_EQ(VariantChangeType(&r, &empty, 0, VT_R8), S_OK);
  EXPECT_EQ(r.vt, VT_R8);
  EXPECT_EQ(r.dblVal, 0.0);
  ASSERT_EQ(VariantChangeType(&r, &empty, 0, VT_BOOL), S_OK);
  EXPECT_EQ(r.vt, VT_BOOL);
  EXPECT_EQ(r.boolVal, VARIANT_FALSE);
}

TEST(ChangeTypeEmptyNullErrorTest, NullConvertsOnlyToNull) {
  Var null;
  null.vt = VT_NULL;
  Var r;
  SetI4(&r, 3);
  EXPECT_EQ(VariantChangeType(&r, &null, 0, VT_I4), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(VariantChangeType(&r, &null, 0, VT_BSTR), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(VariantChangeType(&r, &null, 0, VT_BOOL), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(VariantChangeType(&r, &null, 0, VT_EMPTY), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(r.vt, VT_I4);
  EXPECT_EQ(r.lVal, 3);
  ASSERT_EQ(VariantChangeType(&r, &null, 0, VT_NULL), S_OK);
  EXPECT_EQ(r.vt, VT_NULL);
}

TEST(ChangeTypeEmptyNullErrorTest, ValuesBecomeEmptyOrNull) {
  Var v;
  SetText(&v, u"gone");
  ASSERT_EQ(VariantChangeType(&v, &v, 0, VT_NULL), S_OK);
  EXPECT_EQ(v.vt, VT_NULL);
  SetI4(&v, 9);
  ASSERT_EQ(VariantChangeType(&v, &v, 0, VT_EMPTY), S_OK);
  EXPECT_EQ(v.vt, VT_EMPTY);
}

TEST(ChangeTypeEmptyNullErrorTest, ErrorConvertsOnlyToItself) {
  Var error;
  error.vt = VT_ERROR;
  error.scode = E_FAIL;
  Var r;
  EXPECT_EQ(VariantChangeType(&r, &error, 0, VT_I4), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(VariantChangeType(&r, &error, 0, VT_BSTR), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(VariantChangeType(&r, &error, 0, VT_EMPTY), DISP_E_TYPEMISMATCH);
  ASSERT_EQ(VariantChangeType(&r, &error, 0, VT_ERROR), S_OK);
  EXPECT_EQ(r.scode, E_FAIL);
  Var number;
  SetI4(&number, 1);
  EXPECT_EQ(VariantChangeType(&r, &number, 0, VT_ERROR), DISP_E_TYPEMISMATCH);
}

TEST(ChangeTypeEmptyNullErrorTest, UnknownTypesGiveBadVarType) {
  Var source;
  SetI4(&source, 1);
  Var r;
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_DISPATCH), DISP_E_BADVARTYPE);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, 15), DISP_E_BADVARTYPE);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_CY), DISP_E_BADVARTYPE);
  EXPECT_EQ(VariantChangeType(&r, &source, 0, VT_DATE), DISP_E_BADVARTYPE);
  VARIANT odd;
  VariantInit(&odd);
  odd.vt = VT_VARIANT;
  EXPECT_EQ(VariantChangeType(&r, &odd, 0, VT_I4), DISP_E_BADVARTYPE);
  EXPECT_EQ(r.vt, VT_EMPTY);
}

// ---------------------------------------------------------------------------
// VariantChangeType: destination handling

TEST(ChangeTypeDestinationTest, InPlaceConversionReplacesTheValue) {
  Var v;
  SetI4(&v, 42);
  ASSERT_EQ(VariantChangeType(&v, &v, 0, VT_BSTR), S_OK);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"42");
  ASSERT_EQ(VariantChangeType(&v, &v, 0, VT_I2), S_OK);
  EXPECT_EQ(v.vt, VT_I2);
  EXPECT_EQ(v.iVal, 42);
}

TEST(ChangeTypeDestinationTest, InPlaceToSameTypeKeepsTheText) {
  Var v;
  SetText(&v, u"same");
  ASSERT_EQ(VariantChangeType(&v, &v, 0, VT_BSTR), S_OK);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"same");
}

TEST(ChangeTypeDestinationTest, PreviousDestinationValueIsReleased) {
  Var source;
  SetI4(&source, 8);
  Var destination;
  SetText(&destination, u"released");
  ASSERT_EQ(VariantChangeType(&destination, &source, 0, VT_R8), S_OK);
  EXPECT_EQ(destination.vt, VT_R8);
  EXPECT_EQ(destination.dblVal, 8.0);
}

TEST(ChangeTypeDestinationTest, FailureLeavesDestinationUnchanged) {
  Var source;
  SetText(&source, u"abc");
  Var destination;
  SetText(&destination, u"keep");
  const BSTR before = destination.bstrVal;
  EXPECT_EQ(VariantChangeType(&destination, &source, 0, VT_I4), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(destination.vt, VT_BSTR);
  EXPECT_EQ(destination.bstrVal, before);
  EXPECT_EQ(Units(destination.bstrVal), u"keep");

  VariantClear(&destination);
  SetR8(&destination, 1.0);
  Var big;
  SetR8(&big, 1e10);
  EXPECT_EQ(VariantChangeType(&destination, &big, 0, VT_I4), DISP_E_OVERFLOW);
  EXPECT_EQ(destination.vt, VT_R8);
  EXPECT_EQ(destination.dblVal, 1.0);
}

TEST(ChangeTypeDestinationTest, FailedInPlaceConversionKeepsTheSource) {
  Var v;
  SetText(&v, u"abc");
  EXPECT_EQ(VariantChangeType(&v, &v, 0, VT_I4), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"abc");
}

TEST(ChangeTypeDestinationTest, DestinationOfUnknownTypeIsRefused) {
  Var source;
  SetI4(&source, 1);
  VARIANT destination;
  VariantInit(&destination);
  destination.vt = VT_UNKNOWN;
  EXPECT_EQ(VariantChangeType(&destination, &source, 0, VT_BSTR), DISP_E_BADVARTYPE);
  EXPECT_EQ(destination.vt, VT_UNKNOWN);
}

TEST(ChangeTypeDestinationTest, NullArgumentsAreInvalid) {
  Var v;
  EXPECT_EQ(VariantChangeType(nullptr, &v, 0, VT_I4), E_INVALIDARG);
  EXPECT_EQ(VariantChangeType(&v, nullptr, 0, VT_I4), E_INVALIDARG);
  EXPECT_EQ(VariantCopy(nullptr, &v), E_INVALIDARG);
  EXPECT_EQ(VariantCopy(&v, nullptr), E_INVALIDARG);
}

}  // namespace
