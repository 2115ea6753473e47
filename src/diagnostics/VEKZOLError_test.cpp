// Tests of the error-list record: its defaults and member-by-member copies
// that share the pointers.
#include <vekzol/diagnostics/VEKZOLError.h>

#include <gtest/gtest.h>

#include "diagnostics/VEKZOLErrorTestSupport.h"

namespace {

using error_test::CountingObject;
using error_test::CountingRelation;

TEST(VEKZOLErrorTest, DefaultRecordHasEmptyTextsNullPointersAndKindZero) {
  VEKZOLError record;
  EXPECT_EQ(static_cast<int>(record.m_ErrType), 0);
  EXPECT_EQ(record.m_ErrorObject, nullptr);
  EXPECT_EQ(record.m_ErrorRelation, nullptr);
  EXPECT_STREQ(record.m_Message, "");
  EXPECT_STREQ(record.m_Solution, "");
}

TEST(VEKZOLErrorTest, ErrTypeValuesAreTheFourNumbers) {
  EXPECT_EQ(static_cast<int>(ErrTypeErrorA), 1);
  EXPECT_EQ(static_cast<int>(ErrTypeErrorB), 2);
  EXPECT_EQ(static_cast<int>(ErrTypeWarning), 3);
  EXPECT_EQ(static_cast<int>(ErrTypeInfo), 4);
  EXPECT_EQ(sizeof(VEKZOLErrType), 4u);
}

TEST(VEKZOLErrorTest, CopyAndAssignmentShareThePointersAndCopyTheTexts) {
  CountingObject object("OBJ-1");
  CountingRelation relation("REL-1");
  VEKZOLError source;
  source.m_ErrType = static_cast<VEKZOLErrType>(-7);
  source.m_ErrorObject = &object;
  source.m_ErrorRelation = &relation;
  source.m_Message = "message";
  source.m_Solution = "solution";

  VEKZOLError copy(source);
  VEKZOLError assigned;
  assigned = source;
  for (const VEKZOLError* record : {&copy, &assigned}) {
    EXPECT_EQ(static_cast<int>(record->m_ErrType), -7);
    EXPECT_EQ(record->m_ErrorObject, &object);
    EXPECT_EQ(record->m_ErrorRelation, &relation);
    EXPECT_STREQ(record->m_Message, "message");
    EXPECT_STREQ(record->m_Solution, "solution");
  }
  // Nothing is asked of the pointed-to things.
  EXPECT_EQ(object.idCalls + object.idByReferenceCalls, 0);
  EXPECT_EQ(relation.idCalls + relation.idByReferenceCalls, 0);

  copy.m_Message = "changed";
  EXPECT_STREQ(source.m_Message, "message");
}

}  // namespace
