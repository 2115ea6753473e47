// Tests of VEKZOLObjectImpl: construction, ids, attributes, display name and
// SCIID, copies, the instance counter, and the same answers through every
// base the object is reached by.
#include <vekzol/objects/VEKZOLObjectImpl.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {

static_assert(!std::is_destructible_v<VEKIZOLBaseObject>,
              "an object must not be deletable through VEKIZOLBaseObject");
static_assert(!std::is_destructible_v<VEKIZOLObject>,
              "an object must not be deletable through VEKIZOLObject");
static_assert(std::is_abstract_v<VEKZOLBaseObjectImpl>, "IsA stays open in the base class");
static_assert(std::has_virtual_destructor_v<VEKZOLBaseObjectImpl>);
static_assert(std::is_base_of_v<VEKIZOLObject, VEKZOLObjectImpl>);
static_assert(std::is_base_of_v<VEKZOLBaseObjectImpl, VEKZOLObjectImpl>);

// A host-style derived class that exposes the protected attribute map, so
// that tests can reach the stored variants themselves.
class ObjectProbe : public VEKZOLObjectImpl {
 public:
  using VEKZOLObjectImpl::VEKZOLObjectImpl;

  CComVariant& Stored(const CString& key) { return m_Attributes.at(key); }
  size_t AttributeCount() const { return m_Attributes.size(); }
  std::vector<std::string> Keys() const {
    std::vector<std::string> keys;
    for (const auto& entry : m_Attributes) keys.push_back(entry.first.str());
    return keys;
  }
};

// The text of a VT_BSTR variant whose units are all ASCII.
std::string AsciiText(const VARIANT& value) {
  std::string text;
  if (value.vt != VT_BSTR) return "<not a BSTR>";
  for (unsigned int i = 0; i < SysStringLen(value.bstrVal); ++i) {
    text.push_back(static_cast<char>(value.bstrVal[i]));
  }
  return text;
}

TEST(VEKZOLObjectImplTest, IdOnlyConstructionAnswersEmptyRefIdDisplayNameAndSciid) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ("x", object.GetID());
  EXPECT_EQ("", object.GetRefID());
  EXPECT_EQ("", object.GetDisplayName());
  EXPECT_EQ("", object.GetSCIID());
  EXPECT_EQ("VEKZOLObjectImpl", object.IsA());
}

TEST(VEKZOLObjectImplTest, TwoStringConstructionKeepsIdAndRefIdAndLeavesNamesEmpty) {
  VEKZOLObjectImpl object("P-17", "REF-9");
  EXPECT_EQ("P-17", object.GetID());
  EXPECT_EQ("REF-9", object.GetRefID());
  EXPECT_EQ("", object.GetDisplayName());
  EXPECT_EQ("", object.GetSCIID());
}

TEST(VEKZOLObjectImplTest, EmptyIdIsAcceptedAsItIs) {
  VEKZOLObjectImpl object("");
  EXPECT_EQ("", object.GetID());
  CString id("previous");
  EXPECT_EQ(S_OK, object.GetID(id));
  EXPECT_EQ("", id);
  EXPECT_EQ("VEKZOLObjectImpl", object.IsA());
}

TEST(VEKZOLObjectImplTest, GetIdByReferenceOverwritesTheArgumentAndAnswersSOk) {
  VEKZOLObjectImpl object("x", "rx");
  CString id("previous");
  CString refId("previous");
  EXPECT_EQ(S_OK, object.GetID(id));
  EXPECT_EQ(S_OK, object.GetRefID(refId));
  EXPECT_EQ("x", id);
  EXPECT_EQ("rx", refId);
}

TEST(VEKZOLObjectImplTest, GetRefIdByReferenceEmptiesTheArgumentWhenNoRefIdWasGiven) {
  VEKZOLObjectImpl object("x");
  CString refId("previous");
  EXPECT_EQ(S_OK, object.GetRefID(refId));
  EXPECT_EQ("", refId);
}

TEST(VEKZOLObjectImplTest, DisplayNameSetterAnswersSOkAndGetterReturnsIt) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ(S_OK, object.SetDisplayName("Weld seam 3"));
  EXPECT_EQ("Weld seam 3", object.GetDisplayName());
  EXPECT_EQ(S_OK, object.SetDisplayName(""));
  EXPECT_EQ("", object.GetDisplayName());
}

TEST(VEKZOLObjectImplTest, SciidSetterAnswersSOkAndBothGettersReturnIt) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ(S_OK, object.SetSCIID("SC-42"));
  EXPECT_EQ("SC-42", object.GetSCIID());
  CString sciid("previous");
  EXPECT_EQ(S_OK, object.GetSCIID(sciid));
  EXPECT_EQ("SC-42", sciid);
}

TEST(VEKZOLObjectImplTest, SetAttributeOnNewKeyAnswersSOk) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant(1)));
  CComVariant value;
  EXPECT_EQ(S_OK, object.GetAttribute("a", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(1, value.lVal);
}

TEST(VEKZOLObjectImplTest, SetAttributeOnExistingKeyAnswersSFalseAndOverwrites) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant("x-value")));
  EXPECT_EQ(S_FALSE, object.SetAttribute("a", CComVariant("y-value")));
  CComVariant value;
  EXPECT_EQ(S_OK, object.GetAttribute("a", value));
  EXPECT_EQ("y-value", AsciiText(value));
}

TEST(VEKZOLObjectImplTest, OverwritingMayChangeTheVariantType) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant("text")));
  EXPECT_EQ(S_FALSE, object.SetAttribute("a", CComVariant(2.5)));
  CComVariant value;
  EXPECT_EQ(S_OK, object.GetAttribute("a", value));
  EXPECT_EQ(VT_R8, value.vt);
  EXPECT_EQ(2.5, value.dblVal);
}

TEST(VEKZOLObjectImplTest, AttributeKeysAreCaseSensitive) {
  ObjectProbe object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant(1)));
  EXPECT_EQ(S_OK, object.SetAttribute("A", CComVariant(2)));
  EXPECT_EQ(2u, object.AttributeCount());
  CComVariant lower;
  CComVariant upper;
  EXPECT_EQ(S_OK, object.GetAttribute("a", lower));
  EXPECT_EQ(S_OK, object.GetAttribute("A", upper));
  EXPECT_EQ(1, lower.lVal);
  EXPECT_EQ(2, upper.lVal);
}

TEST(VEKZOLObjectImplTest, AttributeKeysAreOrderedByUnsignedBytes) {
  ObjectProbe object("x");
  for (const char* key : {"b", "\xC3\xA9", "a", "B", "A", "ab"}) {
    EXPECT_EQ(S_OK, object.SetAttribute(key, CComVariant(0)));
  }
  EXPECT_EQ((std::vector<std::string>{"A", "B", "a", "ab", "b", "\xC3\xA9"}), object.Keys());
}

TEST(VEKZOLObjectImplTest, SetAttributeWithEmptyKeyAnswersInvalidArgAndStoresNothing) {
  ObjectProbe object("x");
  EXPECT_EQ(E_INVALIDARG, object.SetAttribute("", CComVariant(5)));
  EXPECT_EQ(0u, object.AttributeCount());
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant(1)));
  EXPECT_EQ(E_INVALIDARG, object.SetAttribute("", CComVariant(5)));
  EXPECT_EQ(1u, object.AttributeCount());
  EXPECT_EQ(1, object.Stored("a").lVal);
}

TEST(VEKZOLObjectImplTest, GetAttributeWithEmptyKeyAnswersInvalidArgAndLeavesTheValue) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant(1)));
  CComVariant value(42);
  EXPECT_EQ(E_INVALIDARG, object.GetAttribute("", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(42, value.lVal);
}

TEST(VEKZOLObjectImplTest, GetAttributeOfMissingKeyAnswersFailAndLeavesTheValue) {
  VEKZOLObjectImpl object("x");
  CComVariant value("keep");
  const BSTR before = value.bstrVal;
  EXPECT_EQ(E_FAIL, object.GetAttribute("never", value));
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant(1)));
  EXPECT_EQ(E_FAIL, object.GetAttribute("never", value));
  EXPECT_EQ(E_FAIL, object.GetAttribute("A", value));
  EXPECT_EQ(VT_BSTR, value.vt);
  EXPECT_EQ(before, value.bstrVal);
  EXPECT_EQ("keep", AsciiText(value));
}

TEST(VEKZOLObjectImplTest, GetAttributeHandsOutTheStoredTypeWithoutConversion) {
  VEKZOLObjectImpl object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("int", CComVariant(7)));
  EXPECT_EQ(S_OK, object.SetAttribute("bool", CComVariant(true)));
  EXPECT_EQ(S_OK, object.SetAttribute("short", CComVariant(static_cast<short>(-3))));
  EXPECT_EQ(S_OK, object.SetAttribute("empty", CComVariant()));

  CComVariant value("text held by the caller");
  EXPECT_EQ(S_OK, object.GetAttribute("int", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(7, value.lVal);
  EXPECT_EQ(S_OK, object.GetAttribute("bool", value));
  EXPECT_EQ(VT_BOOL, value.vt);
  EXPECT_EQ(VARIANT_TRUE, value.boolVal);
  EXPECT_EQ(S_OK, object.GetAttribute("short", value));
  EXPECT_EQ(VT_I2, value.vt);
  EXPECT_EQ(-3, value.iVal);
  EXPECT_EQ(S_OK, object.GetAttribute("empty", value));
  EXPECT_EQ(VT_EMPTY, value.vt);
}

TEST(VEKZOLObjectImplTest, GetAttributeGivesAnIndependentCopyOfText) {
  ObjectProbe object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("name", CComVariant("stored")));
  CComVariant value;
  EXPECT_EQ(S_OK, object.GetAttribute("name", value));
  EXPECT_EQ("stored", AsciiText(value));
  EXPECT_NE(object.Stored("name").bstrVal, value.bstrVal);
  value.bstrVal[0] = 'S';
  EXPECT_EQ("stored", AsciiText(object.Stored("name")));
}

TEST(VEKZOLObjectImplTest, SetAttributeStoresAnIndependentCopyOfText) {
  ObjectProbe object("x");
  CComVariant given("given");
  EXPECT_EQ(S_OK, object.SetAttribute("name", given));
  EXPECT_NE(given.bstrVal, object.Stored("name").bstrVal);
  given.bstrVal[0] = 'G';
  EXPECT_EQ("given", AsciiText(object.Stored("name")));

  CComVariant replacement("other");
  EXPECT_EQ(S_FALSE, object.SetAttribute("name", replacement));
  EXPECT_NE(replacement.bstrVal, object.Stored("name").bstrVal);
  replacement = "changed";
  EXPECT_EQ("other", AsciiText(object.Stored("name")));
}

TEST(VEKZOLObjectImplTest, GetAttributeIntoTheStoredVariantItselfCopiesNothing) {
  ObjectProbe object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant("text")));
  CComVariant& stored = object.Stored("a");
  const BSTR before = stored.bstrVal;
  EXPECT_EQ(S_OK, object.GetAttribute("a", stored));
  EXPECT_EQ(VT_BSTR, stored.vt);
  EXPECT_EQ(before, stored.bstrVal);
  EXPECT_EQ("text", AsciiText(object.Stored("a")));
}

TEST(VEKZOLObjectImplTest, SetAttributeWithTheStoredVariantItselfAnswersSFalseWithoutCopy) {
  ObjectProbe object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant("text")));
  CComVariant& stored = object.Stored("a");
  const BSTR before = stored.bstrVal;
  EXPECT_EQ(S_FALSE, object.SetAttribute("a", stored));
  EXPECT_EQ(VT_BSTR, stored.vt);
  EXPECT_EQ(before, stored.bstrVal);
  EXPECT_EQ("text", AsciiText(object.Stored("a")));
  EXPECT_EQ(1u, object.AttributeCount());
}

TEST(VEKZOLObjectImplTest, SetAttributeUnderNewKeyWithAnotherKeysStoredVariantCopiesIt) {
  ObjectProbe object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant("text")));
  EXPECT_EQ(S_OK, object.SetAttribute("b", object.Stored("a")));
  EXPECT_EQ("text", AsciiText(object.Stored("b")));
  EXPECT_NE(object.Stored("a").bstrVal, object.Stored("b").bstrVal);
}

// No variant type has this number (it lies between VT_DECIMAL and VT_I1),
// so VariantCopy refuses it with DISP_E_BADVARTYPE.
constexpr VARTYPE kUnusedType = 15;

TEST(VEKZOLObjectImplTest, FailedCopyInGetAttributeLeavesTheCallersVariantAsErrorAndRaises) {
  ObjectProbe object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant(1)));
  object.Stored("a").vt = kUnusedType;
  CComVariant value("caller's");
  try {
    object.GetAttribute("a", value);
    ADD_FAILURE() << "GetAttribute did not raise";
  } catch (const CAtlException& e) {
    EXPECT_EQ(DISP_E_BADVARTYPE, e.m_hr);
  }
  EXPECT_EQ(VT_ERROR, value.vt);
  EXPECT_EQ(DISP_E_BADVARTYPE, value.scode);
  object.Stored("a").vt = VT_I4;
}

TEST(VEKZOLObjectImplTest, FailedCopyWhenOverwritingLeavesTheStoredValueAsErrorAndRaises) {
  ObjectProbe object("x");
  EXPECT_EQ(S_OK, object.SetAttribute("a", CComVariant("old")));
  CComVariant bad(1);
  bad.vt = kUnusedType;
  try {
    object.SetAttribute("a", bad);
    ADD_FAILURE() << "SetAttribute did not raise";
  } catch (const CAtlException& e) {
    EXPECT_EQ(DISP_E_BADVARTYPE, e.m_hr);
  }
  EXPECT_EQ(1u, object.AttributeCount());
  EXPECT_EQ(VT_ERROR, object.Stored("a").vt);
  EXPECT_EQ(DISP_E_BADVARTYPE, object.Stored("a").scode);
  bad.vt = VT_I4;
}

TEST(VEKZOLObjectImplTest, FailedCopyOfANewValueRaisesAndAddsNoEntry) {
  ObjectProbe object("x");
  CComVariant bad(1);
  bad.vt = kUnusedType;
  EXPECT_THROW(object.SetAttribute("a", bad), CAtlException);
  EXPECT_EQ(0u, object.AttributeCount());
  CComVariant value(7);
  EXPECT_EQ(E_FAIL, object.GetAttribute("a", value));
  EXPECT_EQ(7, value.lVal);
  bad.vt = VT_I4;
}

TEST(VEKZOLObjectImplTest, CopyHasTheSameIdsNamesAndAttributes) {
  VEKZOLObjectImpl original("x", "rx");
  original.SetDisplayName("Name");
  original.SetSCIID("SC");
  original.SetAttribute("a", CComVariant("text"));
  original.SetAttribute("n", CComVariant(3));

  VEKZOLObjectImpl copy(original);
  EXPECT_EQ("x", copy.GetID());
  EXPECT_EQ("rx", copy.GetRefID());
  EXPECT_EQ("Name", copy.GetDisplayName());
  EXPECT_EQ("SC", copy.GetSCIID());
  CComVariant value;
  EXPECT_EQ(S_OK, copy.GetAttribute("a", value));
  EXPECT_EQ("text", AsciiText(value));
  EXPECT_EQ(S_OK, copy.GetAttribute("n", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(3, value.lVal);
}

TEST(VEKZOLObjectImplTest, ChangingAnAttributeOnACopyLeavesTheOriginalUnchanged) {
  ObjectProbe original("x");
  original.SetAttribute("a", CComVariant("first"));
  original.SetAttribute("n", CComVariant(1));

  ObjectProbe copy(original);
  EXPECT_NE(original.Stored("a").bstrVal, copy.Stored("a").bstrVal);
  EXPECT_EQ(S_FALSE, copy.SetAttribute("a", CComVariant("second")));
  EXPECT_EQ(S_FALSE, copy.SetAttribute("n", CComVariant(2)));
  EXPECT_EQ(S_OK, copy.SetAttribute("new", CComVariant(3)));
  copy.SetDisplayName("copy");

  CComVariant value;
  EXPECT_EQ(S_OK, original.GetAttribute("a", value));
  EXPECT_EQ("first", AsciiText(value));
  EXPECT_EQ(S_OK, original.GetAttribute("n", value));
  EXPECT_EQ(1, value.lVal);
  EXPECT_EQ(E_FAIL, original.GetAttribute("new", value));
  EXPECT_EQ("", original.GetDisplayName());
}

TEST(VEKZOLObjectImplTest, AssignmentTakesIdsNamesAndReplacesTheAttributeMap) {
  VEKZOLObjectImpl source("src", "rsrc");
  source.SetDisplayName("Source");
  source.SetSCIID("SC-S");
  source.SetAttribute("shared", CComVariant("from source"));

  VEKZOLObjectImpl target("tgt", "rtgt");
  target.SetDisplayName("Target");
  target.SetSCIID("SC-T");
  target.SetAttribute("shared", CComVariant("from target"));
  target.SetAttribute("own", CComVariant(9));

  VEKZOLObjectImpl& result = (target = source);
  EXPECT_EQ(&target, &result);
  EXPECT_EQ("src", target.GetID());
  EXPECT_EQ("rsrc", target.GetRefID());
  EXPECT_EQ("Source", target.GetDisplayName());
  EXPECT_EQ("SC-S", target.GetSCIID());
  CComVariant value;
  EXPECT_EQ(S_OK, target.GetAttribute("shared", value));
  EXPECT_EQ("from source", AsciiText(value));
  EXPECT_EQ(E_FAIL, target.GetAttribute("own", value));

  EXPECT_EQ(S_FALSE, target.SetAttribute("shared", CComVariant("changed")));
  EXPECT_EQ(S_OK, source.GetAttribute("shared", value));
  EXPECT_EQ("from source", AsciiText(value));
}

TEST(VEKZOLObjectImplTest, SelfAssignmentKeepsEverything) {
  VEKZOLObjectImpl object("x", "rx");
  object.SetDisplayName("Name");
  object.SetSCIID("SC");
  object.SetAttribute("a", CComVariant("text"));
  VEKZOLObjectImpl& alias = object;
  object = alias;
  EXPECT_EQ("x", object.GetID());
  EXPECT_EQ("rx", object.GetRefID());
  EXPECT_EQ("Name", object.GetDisplayName());
  EXPECT_EQ("SC", object.GetSCIID());
  CComVariant value;
  EXPECT_EQ(S_OK, object.GetAttribute("a", value));
  EXPECT_EQ("text", AsciiText(value));
}

TEST(VEKZOLObjectImplTest, RefCounterCountsConstructionsButNotCopiesWhileDestructionSubtracts) {
  VEKZOLObjectImpl::_RefCounter = 0;
  auto* first = new VEKZOLObjectImpl("x");
  EXPECT_EQ(1, VEKZOLObjectImpl::_RefCounter);
  auto* copy = new VEKZOLObjectImpl(*first);
  EXPECT_EQ(1, VEKZOLObjectImpl::_RefCounter);
  delete copy;
  EXPECT_EQ(0, VEKZOLObjectImpl::_RefCounter);
  delete first;
  EXPECT_EQ(-1, VEKZOLObjectImpl::_RefCounter);
}

TEST(VEKZOLObjectImplTest, RefCounterCountsTheTwoStringConstructorAndIgnoresAssignment) {
  VEKZOLObjectImpl::_RefCounter = 0;
  {
    VEKZOLObjectImpl first("x", "rx");
    EXPECT_EQ(1, VEKZOLObjectImpl::_RefCounter);
    VEKZOLObjectImpl second("y");
    EXPECT_EQ(2, VEKZOLObjectImpl::_RefCounter);
    second = first;
    EXPECT_EQ(2, VEKZOLObjectImpl::_RefCounter);
  }
  EXPECT_EQ(0, VEKZOLObjectImpl::_RefCounter);
}

TEST(VEKZOLObjectImplTest, DeletingThroughTheBaseImplementationRunsTheObjectsDestructor) {
  VEKZOLObjectImpl::_RefCounter = 0;
  VEKZOLBaseObjectImpl* base = new VEKZOLObjectImpl("x");
  EXPECT_EQ(1, VEKZOLObjectImpl::_RefCounter);
  delete base;
  EXPECT_EQ(0, VEKZOLObjectImpl::_RefCounter);
}

TEST(VEKZOLObjectImplTest, InterfaceIsTheFirstBaseAndTheBaseObjectIsPresentTwice) {
  VEKZOLObjectImpl object("x");
  VEKIZOLObject* asInterface = &object;
  VEKZOLBaseObjectImpl* asImpl = &object;
  EXPECT_EQ(static_cast<void*>(&object), static_cast<void*>(asInterface));
  EXPECT_NE(static_cast<void*>(&object), static_cast<void*>(asImpl));
  VEKIZOLBaseObject* viaInterface = asInterface;
  VEKIZOLBaseObject* viaImpl = asImpl;
  EXPECT_NE(viaInterface, viaImpl);
}

// Checks every operation of VEKIZOLBaseObject on `base` (any pointer type
// that reaches them). `base` must lead to an object with id "P1", ref id
// "R1" and the one attribute "color" = "red".
template <typename Reached>
void ExpectBaseObjectAnswers(Reached* base) {
  EXPECT_EQ("P1", base->GetID());
  CString text("previous");
  EXPECT_EQ(S_OK, base->GetID(text));
  EXPECT_EQ("P1", text);
  EXPECT_EQ("R1", base->GetRefID());
  EXPECT_EQ(S_OK, base->GetRefID(text));
  EXPECT_EQ("R1", text);
  CComVariant value(0);
  EXPECT_EQ(S_OK, base->GetAttribute("color", value));
  EXPECT_EQ("red", AsciiText(value));
  CComVariant untouched(5);
  EXPECT_EQ(E_FAIL, base->GetAttribute("Color", untouched));
  EXPECT_EQ(E_INVALIDARG, base->GetAttribute("", untouched));
  EXPECT_EQ(VT_I4, untouched.vt);
  EXPECT_EQ(5, untouched.lVal);
  EXPECT_EQ("VEKZOLObjectImpl", base->IsA());
}

TEST(VEKZOLObjectImplTest, EveryBaseObjectOperationAnswersTheSameThroughEitherBase) {
  VEKZOLObjectImpl object("P1", "R1");
  object.SetAttribute("color", CComVariant("red"));

  VEKIZOLObject* asInterface = &object;
  VEKZOLBaseObjectImpl* asImpl = &object;
  {
    SCOPED_TRACE("VEKIZOLObject*");
    ExpectBaseObjectAnswers(asInterface);
  }
  {
    SCOPED_TRACE("VEKIZOLBaseObject* reached through VEKIZOLObject");
    ExpectBaseObjectAnswers(static_cast<VEKIZOLBaseObject*>(asInterface));
  }
  {
    SCOPED_TRACE("VEKIZOLBaseObject* reached through VEKZOLBaseObjectImpl");
    ExpectBaseObjectAnswers(static_cast<VEKIZOLBaseObject*>(asImpl));
  }
  {
    SCOPED_TRACE("VEKZOLBaseObjectImpl*");
    ExpectBaseObjectAnswers(asImpl);
  }
  {
    SCOPED_TRACE("VEKZOLObjectImpl*");
    ExpectBaseObjectAnswers(&object);
  }
  EXPECT_EQ(S_FALSE, asImpl->SetAttribute("color", CComVariant(1)));
  CComVariant value;
  EXPECT_EQ(S_OK, asInterface->GetAttribute("color", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(1, value.lVal);
}

TEST(VEKZOLObjectImplTest, ObjectOperationsAnswerTheSameThroughTheInterface) {
  VEKZOLObjectImpl object("x");
  object.SetDisplayName("Shown");
  VEKIZOLObject* asInterface = &object;
  EXPECT_EQ("Shown", asInterface->GetDisplayName());
  EXPECT_EQ(S_OK, asInterface->SetSCIID("SC-7"));
  EXPECT_EQ("SC-7", object.GetSCIID());
  EXPECT_EQ("SC-7", asInterface->GetSCIID());
  CString sciid;
  EXPECT_EQ(S_OK, asInterface->GetSCIID(sciid));
  EXPECT_EQ("SC-7", sciid);
}

}  // namespace
