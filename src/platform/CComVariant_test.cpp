// Tests of CComVariant: construction, assignment, deep copies and their
// failures, Clear, Copy, ChangeType and comparison.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include <vekzol/platform/CComVariant.h>

#if !defined(_WIN32)
// On Windows the BSTR functions are the system's, whose allocator a test
// cannot make fail; the out-of-memory tests run where the library has its
// own.
#include "platform/BstrAllocatorTesting.h"
#endif

namespace {

#if !defined(_WIN32)
void* FailingAllocate(size_t) { return nullptr; }

class FailingAllocatorScope {
 public:
  FailingAllocatorScope()
      : previous_(vekzol::platform::SetBstrAllocatorForTesting(&FailingAllocate)) {}
  ~FailingAllocatorScope() { vekzol::platform::SetBstrAllocatorForTesting(previous_); }
  FailingAllocatorScope(const FailingAllocatorScope&) = delete;
  FailingAllocatorScope& operator=(const FailingAllocatorScope&) = delete;

 private:
  vekzol::platform::BstrAllocator previous_;
};
#endif

std::u16string Units(BSTR text) {
  return std::u16string(reinterpret_cast<const char16_t*>(text), SysStringLen(text));
}

const OLECHAR* Ole(const char16_t* text) { return reinterpret_cast<const OLECHAR*>(text); }

// A plain VARIANT of a type that nothing can copy.
VARIANT Uncopyable() {
  VARIANT v;
  VariantInit(&v);
#if defined(_WIN32)
  // The system copies a VT_DISPATCH (a null one too); 15 is no type at all.
  v.vt = 15;
#else
  v.vt = VT_DISPATCH;
#endif
  v.byref = nullptr;
  return v;
}

TEST(CComVariantTest, DefaultIsEmpty) {
  CComVariant v;
  EXPECT_EQ(v.vt, VT_EMPTY);
  EXPECT_EQ(v.wReserved1, 0);
}

TEST(CComVariantTest, IntAndLongGiveI4) {
  CComVariant i(-5);
  EXPECT_EQ(i.vt, VT_I4);
  EXPECT_EQ(i.lVal, -5);
  CComVariant l(123456L);
  EXPECT_EQ(l.vt, VT_I4);
  EXPECT_EQ(l.lVal, 123456);
}

#if defined(_WIN32)
TEST(CComVariantTest, LongHoldsEveryValueInThirtyTwoBits) {
  // long is 32 bits on Windows: nothing is cut.
  static_assert(sizeof(long) == 4, "long is 32 bits on Windows");
  CComVariant low(static_cast<long>(-2147483647L - 1));
  EXPECT_EQ(low.vt, VT_I4);
  EXPECT_EQ(low.lVal, -2147483647L - 1);
  CComVariant high(2147483647L);
  EXPECT_EQ(high.lVal, 2147483647L);
}
#else
TEST(CComVariantTest, LongIsCutToThirtyTwoBits) {
  if (sizeof(long) == 4) GTEST_SKIP() << "long is 32 bits here";
  const long wide = static_cast<long>((1LL << 32) + 7);
  CComVariant v(wide);
  EXPECT_EQ(v.vt, VT_I4);
  EXPECT_EQ(v.lVal, 7);
}
#endif

TEST(CComVariantTest, ScalarConstructorsSetTypeAndValue) {
  CComVariant s(static_cast<short>(-300));
  EXPECT_EQ(s.vt, VT_I2);
  EXPECT_EQ(s.iVal, -300);
  CComVariant ll(-9000000000LL);
  EXPECT_EQ(ll.vt, VT_I8);
  EXPECT_EQ(ll.llVal, -9000000000LL);
  CComVariant f(1.25f);
  EXPECT_EQ(f.vt, VT_R4);
  EXPECT_EQ(f.fltVal, 1.25f);
  CComVariant d(2.5);
  EXPECT_EQ(d.vt, VT_R8);
  EXPECT_EQ(d.dblVal, 2.5);
  CComVariant t(true);
  EXPECT_EQ(t.vt, VT_BOOL);
  EXPECT_EQ(t.boolVal, VARIANT_TRUE);
  CComVariant n(false);
  EXPECT_EQ(n.vt, VT_BOOL);
  EXPECT_EQ(n.boolVal, VARIANT_FALSE);
}

TEST(CComVariantTest, NarrowTextBecomesBstr) {
  CComVariant v("abc");
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"abc");
  EXPECT_EQ(v.bstrVal[3], 0);
}

#if defined(_WIN32)
// The narrow code page is the ANSI code page; the tests run with 1252.
TEST(CComVariantTest, NarrowTextIsReadInTheAnsiCodePage) {
  ASSERT_EQ(GetACP(), 1252u);
  CComVariant v("\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), (std::u16string{0x00C3, 0x00A9, 0x00E2, 0x201A, 0x00AC}));
  CComVariant euro("a\x80z\xFF");
  EXPECT_EQ(Units(euro.bstrVal), (std::u16string{u'a', 0x20AC, u'z', 0x00FF}));
}
#else
TEST(CComVariantTest, NarrowTextIsReadAsUtf8) {
  CComVariant v("\xC3\xA9\xE2\x82\xAC");
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), (std::u16string{0x00E9, 0x20AC}));
  CComVariant bad("a\xFFz");
  EXPECT_EQ(Units(bad.bstrVal), (std::u16string{u'a', 0xFFFD, u'z'}));
}
#endif

TEST(CComVariantTest, NullNarrowTextGivesNullBstr) {
  CComVariant v(static_cast<const char*>(nullptr));
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(v.bstrVal, nullptr);
}

TEST(CComVariantTest, EmptyNarrowTextGivesEmptyBstr) {
  CComVariant v("");
  EXPECT_EQ(v.vt, VT_BSTR);
  ASSERT_NE(v.bstrVal, nullptr);
  EXPECT_EQ(SysStringLen(v.bstrVal), 0u);
}

TEST(CComVariantTest, CStringBecomesBstr) {
  const CString text("id-42");
  CComVariant v(text);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"id-42");
  v = CString("next");
  EXPECT_EQ(Units(v.bstrVal), u"next");
}

TEST(CComVariantTest, WideTextIsCopied) {
  const char16_t text[] = u"wide";
  CComVariant v(Ole(text));
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_NE(static_cast<const void*>(v.bstrVal), static_cast<const void*>(text));
  EXPECT_EQ(Units(v.bstrVal), u"wide");
  EXPECT_EQ(SysStringByteLen(v.bstrVal), 8u);
}

TEST(CComVariantTest, NullWideTextGivesNullBstr) {
  CComVariant v(static_cast<const OLECHAR*>(nullptr));
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(v.bstrVal, nullptr);
}

TEST(CComVariantTest, CopyConstructorMakesDeepCopy) {
  CComVariant* original = new CComVariant("deep");
  CComVariant copy(*original);
  EXPECT_EQ(copy.vt, VT_BSTR);
  EXPECT_NE(copy.bstrVal, original->bstrVal);
  delete original;
  EXPECT_EQ(Units(copy.bstrVal), u"deep");
}

TEST(CComVariantTest, ConstructionFromVariantMakesDeepCopy) {
  VARIANT source;
  VariantInit(&source);
  source.vt = VT_BSTR;
  source.bstrVal = SysAllocString(Ole(u"plain"));
  CComVariant copy(source);
  EXPECT_NE(copy.bstrVal, source.bstrVal);
  VariantClear(&source);
  EXPECT_EQ(Units(copy.bstrVal), u"plain");
}

TEST(CComVariantTest, AssignmentMakesDeepCopyAndReleasesOldValue) {
  CComVariant source("new");
  CComVariant target("old");
  target = source;
  EXPECT_EQ(target.vt, VT_BSTR);
  EXPECT_NE(target.bstrVal, source.bstrVal);
  source.Clear();
  EXPECT_EQ(Units(target.bstrVal), u"new");
}

TEST(CComVariantTest, AssignmentFromVariantCopiesScalars) {
  VARIANT source;
  VariantInit(&source);
  source.vt = VT_R8;
  source.dblVal = -0.125;
  CComVariant target("old");
  target = source;
  EXPECT_EQ(target.vt, VT_R8);
  EXPECT_EQ(target.dblVal, -0.125);
}

TEST(CComVariantTest, SelfAssignmentKeepsTheValue) {
  CComVariant v("self");
  const BSTR before = v.bstrVal;
  CComVariant& alias = v;
  v = alias;
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(v.bstrVal, before);
  EXPECT_EQ(Units(v.bstrVal), u"self");
  v = static_cast<const VARIANT&>(alias);
  EXPECT_EQ(v.bstrVal, before);
}

TEST(CComVariantTest, AssigningOwnStringKeepsTheText) {
  CComVariant v("own");
  v = static_cast<const OLECHAR*>(v.bstrVal);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"own");
}

TEST(CComVariantTest, ScalarAssignmentReplacesString) {
  CComVariant v("text");
  v = 17;
  EXPECT_EQ(v.vt, VT_I4);
  EXPECT_EQ(v.lVal, 17);
  v = static_cast<short>(3);
  EXPECT_EQ(v.vt, VT_I2);
  EXPECT_EQ(v.iVal, 3);
  v = 5L;
  EXPECT_EQ(v.vt, VT_I4);
  EXPECT_EQ(v.lVal, 5);
  v = 6LL;
  EXPECT_EQ(v.vt, VT_I8);
  EXPECT_EQ(v.llVal, 6);
  v = 0.5f;
  EXPECT_EQ(v.vt, VT_R4);
  EXPECT_EQ(v.fltVal, 0.5f);
  v = 0.75;
  EXPECT_EQ(v.vt, VT_R8);
  EXPECT_EQ(v.dblVal, 0.75);
  v = true;
  EXPECT_EQ(v.vt, VT_BOOL);
  EXPECT_EQ(v.boolVal, VARIANT_TRUE);
  v = "again";
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"again");
  v = Ole(u"wide");
  EXPECT_EQ(Units(v.bstrVal), u"wide");
}

TEST(CComVariantTest, FailedCopyConstructionRaisesTheCode) {
  const VARIANT source = Uncopyable();
  try {
    CComVariant copy(source);
    FAIL() << "no exception";
  } catch (const CAtlException& e) {
    EXPECT_EQ(e.m_hr, DISP_E_BADVARTYPE);
  }
}

TEST(CComVariantTest, FailedAssignmentLeavesErrorAndRaisesTheCode) {
  const VARIANT source = Uncopyable();
  CComVariant target("old");
  try {
    target = source;
    FAIL() << "no exception";
  } catch (const CAtlException& e) {
    EXPECT_EQ(static_cast<HRESULT>(e), DISP_E_BADVARTYPE);
  }
  EXPECT_EQ(target.vt, VT_ERROR);
  EXPECT_EQ(target.scode, DISP_E_BADVARTYPE);
}

#if !defined(_WIN32)
TEST(CComVariantTest, OutOfMemoryDuringCopyLeavesErrorAndRaises) {
  CComVariant source("big");
  CComVariant target(1);
  {
    FailingAllocatorScope failing;
    try {
      target = source;
      FAIL() << "no exception";
    } catch (const CAtlException& e) {
      EXPECT_EQ(e.m_hr, E_OUTOFMEMORY);
    }
  }
  EXPECT_EQ(target.vt, VT_ERROR);
  EXPECT_EQ(target.scode, E_OUTOFMEMORY);
  EXPECT_EQ(Units(source.bstrVal), u"big");
}

TEST(CComVariantTest, OutOfMemoryForTextLeavesErrorAndRaises) {
  CComVariant target(1);
  {
    FailingAllocatorScope failing;
    try {
      target = "text";
      FAIL() << "no exception";
    } catch (const CAtlException& e) {
      EXPECT_EQ(e.m_hr, E_OUTOFMEMORY);
    }
    try {
      CComVariant made("text");
      FAIL() << "no exception";
    } catch (const CAtlException& e) {
      EXPECT_EQ(e.m_hr, E_OUTOFMEMORY);
    }
  }
  EXPECT_EQ(target.vt, VT_ERROR);
  EXPECT_EQ(target.scode, E_OUTOFMEMORY);
}
#endif

TEST(CComVariantTest, CopyReturnsTheCodeWithoutRaising) {
  const VARIANT bad = Uncopyable();
  CComVariant target("old");
  EXPECT_EQ(target.Copy(&bad), DISP_E_BADVARTYPE);
  EXPECT_EQ(target.vt, VT_ERROR);
  EXPECT_EQ(target.scode, DISP_E_BADVARTYPE);

  CComVariant good("fine");
  EXPECT_EQ(target.Copy(&good), S_OK);
  EXPECT_EQ(target.vt, VT_BSTR);
  EXPECT_NE(target.bstrVal, good.bstrVal);
  EXPECT_EQ(Units(target.bstrVal), u"fine");
}

TEST(CComVariantTest, ClearEmptiesTheVariant) {
  CComVariant v("text");
  EXPECT_EQ(v.Clear(), S_OK);
  EXPECT_EQ(v.vt, VT_EMPTY);
}

TEST(CComVariantTest, ChangeTypeInPlaceGivesDecimalText) {
  CComVariant v(42);
  EXPECT_EQ(v.ChangeType(VT_BSTR), S_OK);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"42");
  CComVariant b(true);
  EXPECT_EQ(b.ChangeType(VT_BSTR), S_OK);
  EXPECT_EQ(Units(b.bstrVal), u"-1");
}

TEST(CComVariantTest, ChangeTypeFromSourceLeavesSourceAlone) {
  CComVariant source("-17");
  CComVariant target;
  EXPECT_EQ(target.ChangeType(VT_I4, &source), S_OK);
  EXPECT_EQ(target.vt, VT_I4);
  EXPECT_EQ(target.lVal, -17);
  EXPECT_EQ(source.vt, VT_BSTR);
  EXPECT_EQ(Units(source.bstrVal), u"-17");
}

TEST(CComVariantTest, FailedChangeTypeKeepsTheValue) {
  CComVariant v("not a number");
  EXPECT_EQ(v.ChangeType(VT_I4), DISP_E_TYPEMISMATCH);
  EXPECT_EQ(v.vt, VT_BSTR);
  EXPECT_EQ(Units(v.bstrVal), u"not a number");
  CComVariant big(100000);
  EXPECT_EQ(big.ChangeType(VT_I2), DISP_E_OVERFLOW);
  EXPECT_EQ(big.vt, VT_I4);
  EXPECT_EQ(big.lVal, 100000);
}

TEST(CComVariantTest, EqualityComparesTypeAndValue) {
  EXPECT_TRUE(CComVariant(42) == CComVariant(42));
  EXPECT_FALSE(CComVariant(42) == CComVariant(43));
  EXPECT_FALSE(CComVariant(42) == CComVariant(static_cast<short>(42)));
  EXPECT_FALSE(CComVariant(42) == CComVariant(42LL));
  EXPECT_TRUE(CComVariant(1.5) == CComVariant(1.5));
  EXPECT_FALSE(CComVariant(1.5) == CComVariant(1.5f));
  EXPECT_TRUE(CComVariant(true) == CComVariant(true));
  EXPECT_FALSE(CComVariant(true) == CComVariant(false));
  EXPECT_TRUE(CComVariant() == CComVariant());
  EXPECT_FALSE(CComVariant() == CComVariant(0));
}

TEST(CComVariantTest, StringsCompareByContent) {
  CComVariant a("same");
  CComVariant b("same");
  ASSERT_NE(a.bstrVal, b.bstrVal);
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a == CComVariant("Same"));
  EXPECT_FALSE(a == CComVariant("sam"));
  EXPECT_TRUE(CComVariant(static_cast<const char*>(nullptr)) == CComVariant(""));
}

TEST(CComVariantTest, NullsAreEqual) {
  VARIANT null;
  VariantInit(&null);
  null.vt = VT_NULL;
  CComVariant v(null);
  EXPECT_TRUE(v == null);
  EXPECT_FALSE(v != null);
}

TEST(CComVariantTest, InequalityIsTheNegation) {
  EXPECT_TRUE(CComVariant(1) != CComVariant(2));
  EXPECT_FALSE(CComVariant("x") != CComVariant("x"));
  EXPECT_TRUE(CComVariant("x") != CComVariant(1));
}

}  // namespace
