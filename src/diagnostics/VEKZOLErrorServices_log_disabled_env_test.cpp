// Runs with VEK_ZOL_LOG_ENABLED=FALSE: with the trace log off, GenerateError
// still records its entry and answers E_FAIL.
#include <vekzol/diagnostics/VEKZOLErrorServices.h>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLErrorTestSupport.h"

namespace {

TEST(VEKZOLErrorServicesLogDisabledEnvTest, EntryIsRecordedWithoutATraceFile) {
  error_test::FixedTrace trace;
  EXPECT_EQ(VEKZOLErrorServices::GenerateError(ErrTypeErrorA, "x", "", nullptr, nullptr), E_FAIL);
  ASSERT_EQ(VEKZOLErrorServices::_ListErrors.size(), 1u);
  ASSERT_EQ(VEKZOLErrorServices::_ListErrMsgs.size(), 1u);
  EXPECT_STREQ(VEKZOLErrorServices::_ListErrMsgs[0],
               "****** ERROR:\t x. Please Contact Your Administrator");
  EXPECT_FALSE(trace.FileExists());
  EXPECT_EQ(VEKZOLErrorServices::ClearErrors(), S_OK);
}

}  // namespace
