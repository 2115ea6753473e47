// On Windows VARIANT, BSTR and their functions are the system's. These
// tests pin what the library relies on from them: the layout and the VT_*
// numbers of the interfaces, deep copies of text, the length prefix of a
// BSTR, and the conversions of VariantChangeType (the tests run with the
// user locale English (United States), so the decimal point is ".").
#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/platform/Variant.h>

namespace {

std::u16string Units(BSTR text) {
  return std::u16string(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
}

// A VARIANT that clears itself.
class Value {
 public:
  Value() { VariantInit(&v); }
  ~Value() { VariantClear(&v); }
  Value(const Value&) = delete;
  Value& operator=(const Value&) = delete;
  VARIANT v;
};

// `source` converted to text with `flags`; the status goes to `*status`.
std::u16string AsText(const VARIANT& source, unsigned short flags, HRESULT* status) {
  Value text;
  *status = VariantChangeType(&text.v, &source, flags, VT_BSTR);
  return text.v.vt == VT_BSTR ? Units(text.v.bstrVal) : u"<not text>";
}

TEST(Win32VariantTest, LayoutAndTypeNumbersAreThoseOfTheInterfaces) {
  EXPECT_EQ(24u, sizeof(VARIANT));
  EXPECT_EQ(0u, offsetof(VARIANT, vt));
  EXPECT_EQ(8u, offsetof(VARIANT, llVal));
  EXPECT_EQ(2u, sizeof(OLECHAR));
  EXPECT_EQ(0, VT_EMPTY);
  EXPECT_EQ(1, VT_NULL);
  EXPECT_EQ(2, VT_I2);
  EXPECT_EQ(3, VT_I4);
  EXPECT_EQ(4, VT_R4);
  EXPECT_EQ(5, VT_R8);
  EXPECT_EQ(8, VT_BSTR);
  EXPECT_EQ(10, VT_ERROR);
  EXPECT_EQ(11, VT_BOOL);
  EXPECT_EQ(20, VT_I8);
  EXPECT_EQ(-1, VARIANT_TRUE);
  EXPECT_EQ(0, VARIANT_FALSE);
}

TEST(Win32VariantTest, BstrCarriesItsLengthAndAClosingNul) {
  const OLECHAR text[] = {L'a', L'b', L'c', 0};
  BSTR copy = SysAllocStringLen(text, 2);
  ASSERT_NE(nullptr, copy);
  EXPECT_EQ(2u, SysStringLen(copy));
  EXPECT_EQ(4u, SysStringByteLen(copy));
  EXPECT_EQ(4u, reinterpret_cast<const unsigned int*>(copy)[-1]);
  EXPECT_EQ(u"ab", Units(copy));
  EXPECT_EQ(0, copy[2]);
  SysFreeString(copy);

  EXPECT_EQ(nullptr, SysAllocString(nullptr));
  EXPECT_EQ(0u, SysStringLen(nullptr));
  BSTR room = SysAllocStringLen(nullptr, 3);
  ASSERT_NE(nullptr, room);
  EXPECT_EQ(3u, SysStringLen(room));
  EXPECT_EQ(0, room[3]);
  SysFreeString(room);
}

TEST(Win32VariantTest, CopyDuplicatesTextAndClearEmpties) {
  Value source;
  source.v.vt = VT_BSTR;
  source.v.bstrVal = SysAllocString(L"id-1");
  Value copy;
  ASSERT_EQ(S_OK, VariantCopy(&copy.v, &source.v));
  EXPECT_EQ(VT_BSTR, copy.v.vt);
  EXPECT_NE(source.v.bstrVal, copy.v.bstrVal);
  EXPECT_EQ(u"id-1", Units(copy.v.bstrVal));
  EXPECT_EQ(S_OK, VariantClear(&copy.v));
  EXPECT_EQ(VT_EMPTY, copy.v.vt);
  EXPECT_EQ(u"id-1", Units(source.v.bstrVal));
}

TEST(Win32VariantTest, CopyRefusesWhatIsNoType) {
  Value source;
  source.v.vt = 15;
  Value target;
  target.v.vt = VT_I4;
  target.v.lVal = 7;
  EXPECT_EQ(DISP_E_BADVARTYPE, VariantCopy(&target.v, &source.v));
  EXPECT_EQ(VT_I4, target.v.vt);
  EXPECT_EQ(7, target.v.lVal);
  source.v.vt = VT_EMPTY;
}

TEST(Win32VariantTest, NumbersAndBooleansBecomeTheirText) {
  HRESULT status = E_FAIL;
  Value number;
  number.v.vt = VT_I4;
  number.v.lVal = -42;
  EXPECT_EQ(u"-42", AsText(number.v, 0, &status));
  EXPECT_EQ(S_OK, status);
  number.v.lVal = 2147483647;
  EXPECT_EQ(u"2147483647", AsText(number.v, 0, &status));

  Value real;
  real.v.vt = VT_R8;
  real.v.dblVal = 0.5;
  EXPECT_EQ(u"0.5", AsText(real.v, 0, &status));
  real.v.dblVal = 1e20;
  EXPECT_EQ(u"1E+20", AsText(real.v, 0, &status));
  real.v.dblVal = 1.0 / 3.0;
  EXPECT_EQ(u"0.333333333333333", AsText(real.v, 0, &status));

  Value single;
  single.v.vt = VT_R4;
  single.v.fltVal = 0.1f;
  EXPECT_EQ(u"0.1", AsText(single.v, 0, &status));

  Value flag;
  flag.v.vt = VT_BOOL;
  flag.v.boolVal = VARIANT_TRUE;
  EXPECT_EQ(u"-1", AsText(flag.v, 0, &status));
  EXPECT_EQ(u"True", AsText(flag.v, VARIANT_ALPHABOOL, &status));
  flag.v.boolVal = VARIANT_FALSE;
  EXPECT_EQ(u"0", AsText(flag.v, 0, &status));
  EXPECT_EQ(u"False", AsText(flag.v, VARIANT_ALPHABOOL, &status));
}

TEST(Win32VariantTest, TextAndRealsBecomeIntegersOrFailWithoutChange) {
  Value text;
  text.v.vt = VT_BSTR;
  text.v.bstrVal = SysAllocString(L"123");
  Value number;
  ASSERT_EQ(S_OK, VariantChangeType(&number.v, &text.v, 0, VT_I4));
  EXPECT_EQ(VT_I4, number.v.vt);
  EXPECT_EQ(123, number.v.lVal);

  Value word;
  word.v.vt = VT_BSTR;
  word.v.bstrVal = SysAllocString(L"abc");
  EXPECT_EQ(DISP_E_TYPEMISMATCH, VariantChangeType(&number.v, &word.v, 0, VT_I4));
  EXPECT_EQ(VT_I4, number.v.vt);
  EXPECT_EQ(123, number.v.lVal);

  Value real;
  real.v.vt = VT_R8;
  real.v.dblVal = 1e10;
  EXPECT_EQ(DISP_E_OVERFLOW, VariantChangeType(&number.v, &real.v, 0, VT_I4));
  EXPECT_EQ(123, number.v.lVal);
  // Halves go to the even neighbour.
  real.v.dblVal = 2.5;
  ASSERT_EQ(S_OK, VariantChangeType(&number.v, &real.v, 0, VT_I4));
  EXPECT_EQ(2, number.v.lVal);
  real.v.dblVal = 3.5;
  ASSERT_EQ(S_OK, VariantChangeType(&number.v, &real.v, 0, VT_I4));
  EXPECT_EQ(4, number.v.lVal);
}

}  // namespace
