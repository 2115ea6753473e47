// Tests of VEKZOLRelationImpl: the argument order of its constructor, the
// borrowed ends, attributes, copies, the instance counter, and the same
// answers through every base the relation is reached by.
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/objects/VEKZOLRelationImpl.h>

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace {

static_assert(!std::is_destructible_v<VEKIZOLRelation>,
              "a relation must not be deletable through VEKIZOLRelation");
static_assert(std::is_base_of_v<VEKZOLBaseObjectImpl, VEKZOLRelationImpl>);
static_assert(std::is_base_of_v<VEKIZOLRelation, VEKZOLRelationImpl>);

// A host-style derived class that exposes the protected attribute map.
class RelationProbe : public VEKZOLRelationImpl {
 public:
  using VEKZOLRelationImpl::VEKZOLRelationImpl;

  CComVariant& Stored(const CString& key) { return m_Attributes.at(key); }
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

TEST(VEKZOLRelationImplTest, ConstructorTakesTheTypeBeforeTheId) {
  VEKZOLObjectImpl source("a");
  VEKZOLObjectImpl target("b");
  VEKZOLRelationImpl relation(&source, &target, "uses", "r1");
  EXPECT_EQ("r1", relation.GetID());
  CString type("previous");
  EXPECT_EQ(S_OK, relation.GetRelationType(type));
  EXPECT_EQ("uses", type);
  CString id("previous");
  EXPECT_EQ(S_OK, relation.GetID(id));
  EXPECT_EQ("r1", id);
}

TEST(VEKZOLRelationImplTest, RefIdIsAlwaysEmpty) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "uses", "r1");
  EXPECT_EQ("", relation.GetRefID());
  CString refId("previous");
  EXPECT_EQ(S_OK, relation.GetRefID(refId));
  EXPECT_EQ("", refId);
}

TEST(VEKZOLRelationImplTest, IsAAnswersTheClassName) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "", "");
  EXPECT_EQ("VEKZOLRelationImpl", relation.IsA());
  EXPECT_EQ("", relation.GetID());
}

TEST(VEKZOLRelationImplTest, EndsAreTheObjectsGivenAtConstruction) {
  VEKZOLObjectImpl source("a");
  VEKZOLObjectImpl target("b");
  VEKZOLRelationImpl relation(&source, &target, "uses", "r1");
  VEKIZOLObject* end = nullptr;
  EXPECT_EQ(S_OK, relation.GetSourceObject(end));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&source), end);
  EXPECT_EQ("a", end->GetID());
  EXPECT_EQ(S_OK, relation.GetTargetObject(end));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&target), end);
  EXPECT_EQ("b", end->GetID());
}

TEST(VEKZOLRelationImplTest, NullEndsAnswerSOkAndANullPointer) {
  VEKZOLObjectImpl other("o");
  VEKZOLRelationImpl relation(nullptr, nullptr, "uses", "r1");
  VEKIZOLObject* end = &other;
  EXPECT_EQ(S_OK, relation.GetSourceObject(end));
  EXPECT_EQ(nullptr, end);
  end = &other;
  EXPECT_EQ(S_OK, relation.GetTargetObject(end));
  EXPECT_EQ(nullptr, end);
}

TEST(VEKZOLRelationImplTest, OneNullEndIsKeptBesideTheOther) {
  VEKZOLObjectImpl target("b");
  VEKZOLRelationImpl relation(nullptr, &target, "uses", "r1");
  VEKIZOLObject* end = &target;
  EXPECT_EQ(S_OK, relation.GetSourceObject(end));
  EXPECT_EQ(nullptr, end);
  EXPECT_EQ(S_OK, relation.GetTargetObject(end));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&target), end);
}

TEST(VEKZOLRelationImplTest, AttributesFollowTheBaseObjectRules) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "uses", "r1");
  EXPECT_EQ(E_INVALIDARG, relation.SetAttribute("", CComVariant(1)));
  EXPECT_EQ(S_OK, relation.SetAttribute("a", CComVariant("x-value")));
  EXPECT_EQ(S_FALSE, relation.SetAttribute("a", CComVariant("y-value")));
  EXPECT_EQ(S_OK, relation.SetAttribute("A", CComVariant(2)));
  CComVariant value(42);
  EXPECT_EQ(E_INVALIDARG, relation.GetAttribute("", value));
  EXPECT_EQ(E_FAIL, relation.GetAttribute("b", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(42, value.lVal);
  EXPECT_EQ(S_OK, relation.GetAttribute("a", value));
  EXPECT_EQ("y-value", AsciiText(value));
  EXPECT_EQ(S_OK, relation.GetAttribute("A", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(2, value.lVal);
}

TEST(VEKZOLRelationImplTest, CopySharesTheEndsAndCopiesIdTypeAndAttributes) {
  VEKZOLObjectImpl source("a");
  VEKZOLObjectImpl target("b");
  VEKZOLRelationImpl original(&source, &target, "uses", "r1");
  original.SetAttribute("weight", CComVariant(3));

  VEKZOLRelationImpl copy(original);
  EXPECT_EQ("r1", copy.GetID());
  EXPECT_EQ("", copy.GetRefID());
  CString type;
  EXPECT_EQ(S_OK, copy.GetRelationType(type));
  EXPECT_EQ("uses", type);
  VEKIZOLObject* end = nullptr;
  EXPECT_EQ(S_OK, copy.GetSourceObject(end));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&source), end);
  EXPECT_EQ(S_OK, copy.GetTargetObject(end));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&target), end);
  CComVariant value;
  EXPECT_EQ(S_OK, copy.GetAttribute("weight", value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(3, value.lVal);
}

TEST(VEKZOLRelationImplTest, ChangingAnAttributeOnACopyLeavesTheOriginalUnchanged) {
  RelationProbe original(nullptr, nullptr, "uses", "r1");
  original.SetAttribute("label", CComVariant("first"));
  RelationProbe copy(original);
  EXPECT_NE(original.Stored("label").bstrVal, copy.Stored("label").bstrVal);
  EXPECT_EQ(S_FALSE, copy.SetAttribute("label", CComVariant("second")));
  CComVariant value;
  EXPECT_EQ(S_OK, original.GetAttribute("label", value));
  EXPECT_EQ("first", AsciiText(value));
  EXPECT_EQ(S_OK, copy.GetAttribute("label", value));
  EXPECT_EQ("second", AsciiText(value));
}

TEST(VEKZOLRelationImplTest, AssignmentTakesIdEndsTypeAndReplacesTheAttributeMap) {
  VEKZOLObjectImpl a("a");
  VEKZOLObjectImpl b("b");
  VEKZOLObjectImpl c("c");
  VEKZOLRelationImpl source(&a, &b, "uses", "r1");
  source.SetAttribute("shared", CComVariant("from source"));
  VEKZOLRelationImpl target(&c, nullptr, "holds", "r2");
  target.SetAttribute("shared", CComVariant("from target"));
  target.SetAttribute("own", CComVariant(1));

  VEKZOLRelationImpl& result = (target = source);
  EXPECT_EQ(&target, &result);
  EXPECT_EQ("r1", target.GetID());
  EXPECT_EQ("", target.GetRefID());
  CString type;
  EXPECT_EQ(S_OK, target.GetRelationType(type));
  EXPECT_EQ("uses", type);
  VEKIZOLObject* end = nullptr;
  EXPECT_EQ(S_OK, target.GetSourceObject(end));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&a), end);
  EXPECT_EQ(S_OK, target.GetTargetObject(end));
  EXPECT_EQ(static_cast<VEKIZOLObject*>(&b), end);
  CComVariant value;
  EXPECT_EQ(S_OK, target.GetAttribute("shared", value));
  EXPECT_EQ("from source", AsciiText(value));
  EXPECT_EQ(E_FAIL, target.GetAttribute("own", value));
  EXPECT_EQ("c", c.GetID());
}

TEST(VEKZOLRelationImplTest, DestroyingARelationLeavesItsEndsAlive) {
  VEKZOLObjectImpl::_RefCounter = 0;
  VEKZOLObjectImpl source("a");
  VEKZOLObjectImpl target("b");
  source.SetAttribute("kept", CComVariant("yes"));
  auto* relation = new VEKZOLRelationImpl(&source, &target, "uses", "r1");
  delete relation;
  EXPECT_EQ(2, VEKZOLObjectImpl::_RefCounter);
  EXPECT_EQ("a", source.GetID());
  EXPECT_EQ("b", target.GetID());
  CComVariant value;
  EXPECT_EQ(S_OK, source.GetAttribute("kept", value));
  EXPECT_EQ("yes", AsciiText(value));
}

TEST(VEKZOLRelationImplTest, RefCounterCountsConstructionsButNotCopiesWhileDestructionSubtracts) {
  VEKZOLRelationImpl::_RefCounter = 0;
  auto* first = new VEKZOLRelationImpl(nullptr, nullptr, "uses", "r1");
  EXPECT_EQ(1, VEKZOLRelationImpl::_RefCounter);
  auto* copy = new VEKZOLRelationImpl(*first);
  EXPECT_EQ(1, VEKZOLRelationImpl::_RefCounter);
  *copy = *first;
  EXPECT_EQ(1, VEKZOLRelationImpl::_RefCounter);
  delete copy;
  EXPECT_EQ(0, VEKZOLRelationImpl::_RefCounter);
  delete first;
  EXPECT_EQ(-1, VEKZOLRelationImpl::_RefCounter);
}

TEST(VEKZOLRelationImplTest, RelationAndObjectCountersAreSeparate) {
  VEKZOLObjectImpl::_RefCounter = 0;
  VEKZOLRelationImpl::_RefCounter = 0;
  {
    VEKZOLObjectImpl source("a");
    VEKZOLRelationImpl relation(&source, nullptr, "uses", "r1");
    EXPECT_EQ(1, VEKZOLObjectImpl::_RefCounter);
    EXPECT_EQ(1, VEKZOLRelationImpl::_RefCounter);
  }
  EXPECT_EQ(0, VEKZOLObjectImpl::_RefCounter);
  EXPECT_EQ(0, VEKZOLRelationImpl::_RefCounter);
}

TEST(VEKZOLRelationImplTest, DeletingThroughTheBaseImplementationRunsTheRelationsDestructor) {
  VEKZOLRelationImpl::_RefCounter = 0;
  VEKZOLBaseObjectImpl* base = new VEKZOLRelationImpl(nullptr, nullptr, "uses", "r1");
  EXPECT_EQ(1, VEKZOLRelationImpl::_RefCounter);
  delete base;
  EXPECT_EQ(0, VEKZOLRelationImpl::_RefCounter);
}

TEST(VEKZOLRelationImplTest, BaseImplementationIsTheFirstBaseAndTheBaseObjectIsPresentTwice) {
  VEKZOLRelationImpl relation(nullptr, nullptr, "uses", "r1");
  VEKZOLBaseObjectImpl* asImpl = &relation;
  VEKIZOLRelation* asInterface = &relation;
  EXPECT_EQ(static_cast<void*>(&relation), static_cast<void*>(asImpl));
  EXPECT_NE(static_cast<void*>(&relation), static_cast<void*>(asInterface));
  VEKIZOLBaseObject* viaImpl = asImpl;
  VEKIZOLBaseObject* viaInterface = asInterface;
  EXPECT_NE(viaImpl, viaInterface);
}

// Checks every operation of VEKIZOLBaseObject on `base` (any pointer type
// that reaches them). `base` must lead to a relation with id "r1", no ref
// id and the one attribute "weight" = 2.5.
template <typename Reached>
void ExpectBaseObjectAnswers(Reached* base) {
  EXPECT_EQ("r1", base->GetID());
  CString text("previous");
  EXPECT_EQ(S_OK, base->GetID(text));
  EXPECT_EQ("r1", text);
  EXPECT_EQ("", base->GetRefID());
  text = "previous";
  EXPECT_EQ(S_OK, base->GetRefID(text));
  EXPECT_EQ("", text);
  CComVariant value("caller's");
  EXPECT_EQ(S_OK, base->GetAttribute("weight", value));
  EXPECT_EQ(VT_R8, value.vt);
  EXPECT_EQ(2.5, value.dblVal);
  CComVariant untouched(5);
  EXPECT_EQ(E_FAIL, base->GetAttribute("Weight", untouched));
  EXPECT_EQ(E_INVALIDARG, base->GetAttribute("", untouched));
  EXPECT_EQ(VT_I4, untouched.vt);
  EXPECT_EQ(5, untouched.lVal);
  EXPECT_EQ("VEKZOLRelationImpl", base->IsA());
}

// Checks the relation's own operations on `relation`, which must reach a
// relation from `source` to `target` of type "uses".
void ExpectRelationAnswers(VEKIZOLRelation* relation, VEKIZOLObject* source,
                           VEKIZOLObject* target) {
  VEKIZOLObject* end = nullptr;
  EXPECT_EQ(S_OK, relation->GetSourceObject(end));
  EXPECT_EQ(source, end);
  EXPECT_EQ(S_OK, relation->GetTargetObject(end));
  EXPECT_EQ(target, end);
  CString type;
  EXPECT_EQ(S_OK, relation->GetRelationType(type));
  EXPECT_EQ("uses", type);
}

TEST(VEKZOLRelationImplTest, EveryOperationAnswersTheSameThroughEitherBase) {
  VEKZOLObjectImpl source("a");
  VEKZOLObjectImpl target("b");
  VEKZOLRelationImpl relation(&source, &target, "uses", "r1");
  relation.SetAttribute("weight", CComVariant(2.5));

  VEKIZOLRelation* asInterface = &relation;
  VEKZOLBaseObjectImpl* asImpl = &relation;
  {
    SCOPED_TRACE("VEKIZOLRelation*");
    ExpectBaseObjectAnswers(asInterface);
    ExpectRelationAnswers(asInterface, &source, &target);
  }
  {
    SCOPED_TRACE("VEKIZOLBaseObject* reached through VEKIZOLRelation");
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
    SCOPED_TRACE("VEKZOLRelationImpl*");
    ExpectBaseObjectAnswers(&relation);
    ExpectRelationAnswers(&relation, &source, &target);
  }
}

}  // namespace
