// Tests of VEKZOLBaseObjectImpl on its own, through the smallest class a
// host can derive from it: ids, the attribute map and its copies.
#include <vekzol/objects/VEKZOLBaseObjectImpl.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// The base class leaves IsA open; this one names itself and exposes the
// attribute map.
class PlainObject : public VEKZOLBaseObjectImpl {
 public:
  using VEKZOLBaseObjectImpl::VEKZOLBaseObjectImpl;

  CString IsA() override { return "PlainObject"; }
  CComVariant& Stored(const CString& key) { return m_Attributes.at(key); }
  size_t AttributeCount() const { return m_Attributes.size(); }
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

TEST(VEKZOLBaseObjectImplTest, IdConstructorLeavesRefIdEmptyAndNoAttributes) {
  PlainObject object("id");
  EXPECT_EQ("id", object.GetID());
  EXPECT_EQ("", object.GetRefID());
  EXPECT_EQ(0u, object.AttributeCount());
  EXPECT_EQ("PlainObject", object.IsA());
}

TEST(VEKZOLBaseObjectImplTest, TwoStringConstructorKeepsBothIds) {
  PlainObject object("id", "ref");
  CString id;
  CString refId;
  EXPECT_EQ(S_OK, object.GetID(id));
  EXPECT_EQ(S_OK, object.GetRefID(refId));
  EXPECT_EQ("id", id);
  EXPECT_EQ("ref", refId);
  EXPECT_EQ(0u, object.AttributeCount());
}

TEST(VEKZOLBaseObjectImplTest, SetAttributeAnswersSOkForNewAndSFalseForOverwrittenKeys) {
  PlainObject object("id");
  EXPECT_EQ(S_OK, object.SetAttribute("k", CComVariant(1)));
  EXPECT_EQ(S_OK, object.SetAttribute("K", CComVariant(2)));
  EXPECT_EQ(S_FALSE, object.SetAttribute("k", CComVariant(3)));
  EXPECT_EQ(E_INVALIDARG, object.SetAttribute("", CComVariant(4)));
  EXPECT_EQ(2u, object.AttributeCount());
  EXPECT_EQ(3, object.Stored("k").lVal);
  EXPECT_EQ(2, object.Stored("K").lVal);
}

TEST(VEKZOLBaseObjectImplTest, CopyConstructorDuplicatesIdsAndEveryValue) {
  PlainObject original("id", "ref");
  original.SetAttribute("text", CComVariant("value"));
  original.SetAttribute("number", CComVariant(8));

  PlainObject copy(original);
  EXPECT_EQ("id", copy.GetID());
  EXPECT_EQ("ref", copy.GetRefID());
  EXPECT_EQ(2u, copy.AttributeCount());
  EXPECT_EQ("value", AsciiText(copy.Stored("text")));
  EXPECT_NE(original.Stored("text").bstrVal, copy.Stored("text").bstrVal);
  EXPECT_EQ(VT_I4, copy.Stored("number").vt);
  EXPECT_EQ(8, copy.Stored("number").lVal);
}

TEST(VEKZOLBaseObjectImplTest, AssignmentTakesBothIdsAndACopyOfTheWholeMap) {
  PlainObject source("s", "rs");
  source.SetAttribute("a", CComVariant("from source"));
  PlainObject target("t", "rt");
  target.SetAttribute("a", CComVariant("from target"));
  target.SetAttribute("b", CComVariant(2));

  VEKZOLBaseObjectImpl& result = (target = source);
  EXPECT_EQ(&target, &result);
  EXPECT_EQ("s", target.GetID());
  EXPECT_EQ("rs", target.GetRefID());
  EXPECT_EQ(1u, target.AttributeCount());
  EXPECT_EQ("from source", AsciiText(target.Stored("a")));
  EXPECT_NE(source.Stored("a").bstrVal, target.Stored("a").bstrVal);
}

TEST(VEKZOLBaseObjectImplTest, AssignmentFromAnObjectWithoutRefIdEmptiesTheRefId) {
  PlainObject source("s");
  PlainObject target("t", "rt");
  target = source;
  EXPECT_EQ("s", target.GetID());
  EXPECT_EQ("", target.GetRefID());
  EXPECT_EQ(0u, target.AttributeCount());
}

TEST(VEKZOLBaseObjectImplTest, AssignmentTakesTheIdsBeforeTheMapSoAFailedValueCopyKeepsThem) {
  PlainObject source("s", "rs");
  source.SetAttribute("a", CComVariant(1));
  source.Stored("a").vt = 15;  // no variant type: VariantCopy refuses it
  PlainObject target("t", "rt");
  target.SetAttribute("own", CComVariant("kept"));

  EXPECT_THROW(target = source, CAtlException);
  EXPECT_EQ("s", target.GetID());
  EXPECT_EQ("rs", target.GetRefID());
  // The new map is built aside, so the old one is still whole.
  EXPECT_EQ(1u, target.AttributeCount());
  EXPECT_EQ("kept", AsciiText(target.Stored("own")));
  source.Stored("a").vt = VT_I4;
}

}  // namespace
