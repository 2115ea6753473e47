// Tests of the tool's own model objects and relations: they answer the
// library's object and relation interfaces as the library's own classes
// answer them for the same texts.
#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

#include "ModelObject.h"
#include "ModelRelation.h"

namespace vekzol_tool {
namespace {

TEST(ModelObject, AnswersItsIdAndNameAndEmptyTextsForWhatTheFileLeftOut) {
  ModelObject object(CString("PRC-1"), CString("Weld"));
  VEKIZOLObject& asked = object;
  EXPECT_STREQ("PRC-1", asked.GetID().GetString());
  CString id;
  EXPECT_EQ(S_OK, asked.GetID(id));
  EXPECT_STREQ("PRC-1", id.GetString());
  EXPECT_STREQ("Weld", asked.GetDisplayName().GetString());
  CString text("x");
  EXPECT_EQ(S_OK, asked.GetRefID(text));
  EXPECT_STREQ("", text.GetString());
  EXPECT_STREQ("", asked.GetSCIID().GetString());
  EXPECT_STREQ("ModelObject", asked.IsA().GetString());
  EXPECT_FALSE(object.HasBackupName());
  EXPECT_FALSE(object.HasIdentPath());
}

TEST(ModelObject, KeepsRefIdSciidBackupNameAndIdentPath) {
  ModelObject object(CString("PRC-1"), CString("Weld"));
  object.SetRefID(CString("REF"));
  EXPECT_EQ(S_OK, object.SetSCIID(CString("S-9")));
  object.SetBackupName(CString("Old weld"));
  object.SetIdentPath(CString("/A/PRC-1"));
  EXPECT_STREQ("REF", object.GetRefID().GetString());
  CString sciid;
  EXPECT_EQ(S_OK, object.GetSCIID(sciid));
  EXPECT_STREQ("S-9", sciid.GetString());
  EXPECT_TRUE(object.HasBackupName());
  EXPECT_STREQ("Old weld", object.BackupName().GetString());
  EXPECT_STREQ("/A/PRC-1", object.IdentPath().GetString());
}

TEST(ModelObject, AnswersAttributesWithTheLibraryStatuses) {
  ModelObject object(CString("PRC-1"), CString());
  CComVariant value(7);
  EXPECT_EQ(E_FAIL, object.GetAttribute(CString("station"), value));
  EXPECT_EQ(E_INVALIDARG, object.GetAttribute(CString(), value));
  object.SetAttribute(CString("station"), CComVariant(CString("S1")));
  object.SetAttribute(CString("duration"), CComVariant(12));
  object.SetAttribute(CString("station"), CComVariant(CString("S2")));  // the last one stays
  EXPECT_EQ(S_OK, object.GetAttribute(CString("duration"), value));
  EXPECT_EQ(VT_I4, value.vt);
  EXPECT_EQ(12, value.lVal);
  CComVariant station;
  EXPECT_EQ(S_OK, object.GetAttribute(CString("station"), station));
  EXPECT_EQ(CComVariant(CString("S2")), station);
  EXPECT_EQ(E_FAIL, object.GetAttribute(CString("Station"), value));
  EXPECT_EQ(E_INVALIDARG, object.GetAttribute(CString(), value));
  EXPECT_EQ(12, value.lVal);  // untouched by the refusals
}

TEST(ModelRelation, AnswersItsIdTypeAndEnds) {
  ModelObject source(CString("A"), CString());
  ModelRelation relation(CString("R-1"), CString("precedes"), &source, nullptr);
  VEKIZOLRelation& asked = relation;
  EXPECT_STREQ("R-1", asked.GetID().GetString());
  VEKIZOLObject* end = nullptr;
  EXPECT_EQ(S_OK, asked.GetSourceObject(end));
  EXPECT_EQ(&source, end);
  end = &source;
  EXPECT_EQ(S_OK, asked.GetTargetObject(end));
  EXPECT_EQ(nullptr, end);
  CString type;
  EXPECT_EQ(S_OK, asked.GetRelationType(type));
  EXPECT_STREQ("precedes", type.GetString());
  CString refId("x");
  EXPECT_EQ(S_OK, asked.GetRefID(refId));
  EXPECT_STREQ("", refId.GetString());
  CComVariant value;
  EXPECT_EQ(E_FAIL, asked.GetAttribute(CString("station"), value));
  EXPECT_EQ(E_INVALIDARG, asked.GetAttribute(CString(), value));
  EXPECT_STREQ("ModelRelation", asked.IsA().GetString());
}

}  // namespace
}  // namespace vekzol_tool
