// The error services as a host sees them: this program links the shared
// library, so every member and static used here must be exported from it.
#include <deque>

#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

namespace {

TEST(VEKZOLDiagnosticsSharedTest, ErrorRecordsAndTheErrorListAreReachable) {
  VEKZOLObjectImpl object("OBJ-1");
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeWarning, "Check", "", &object, nullptr),
            E_FAIL);
  std::deque<VEKZOLError*> errors;
  std::deque<CString> messages;
  EXPECT_EQ(VEKZOLErrorServices::GetErrorList(errors), S_OK);
  EXPECT_EQ(VEKZOLErrorServices::GetListErrMsgs(messages), S_OK);
  ASSERT_EQ(errors.size(), 1u);
  ASSERT_EQ(VEKZOLErrorServices::_ListErrMsgs.size(), 1u);
  EXPECT_STREQ(messages[0], "****** WARNING:\t Check. Please Contact Your Administrator");

  VEKZOLError copy(*errors[0]);
  VEKZOLError assigned;
  assigned = copy;
  EXPECT_EQ(assigned.m_ErrType, ErrTypeWarning);
  EXPECT_EQ(assigned.m_ErrorObject, &object);
  EXPECT_EQ(assigned.m_ErrorRelation, nullptr);
  EXPECT_STREQ(assigned.m_Message, "Check");
  EXPECT_STREQ(assigned.m_Solution, "Please Contact Your Administrator");

  {
    VEKZOLErrorServices service;
    VEKZOLErrorServices other;
    other = service;
  }
  EXPECT_TRUE(VEKZOLErrorServices::_ListErrors.empty());
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
}

}  // namespace
