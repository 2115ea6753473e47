// Runs with the VZOLOPT_* variables of its CMake entry set: GetValue turns
// "1" and "true" in any case into "TRUE", "0" and "false" in any case into
// "FALSE", and keeps every other value exactly as it is.
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>

#include <string>

#include <gtest/gtest.h>

#include "options/VEKZOLOptionsMgrTestSupport.h"

namespace {

using options_test::FreshProcess;

std::string ValueOf(const char* key) { return VEKZOLOptionsMgr::GetValue(key).GetString(); }

TEST(VEKZOLOptionsMgrEnvTest, OneAndTrueInAnyCaseBecomeUppercaseTRUE) {
  FreshProcess process;
  EXPECT_EQ(ValueOf("VZOLOPT_ONE"), "TRUE");
  EXPECT_EQ(ValueOf("VZOLOPT_TRUE_CAPITAL"), "TRUE");
  EXPECT_EQ(ValueOf("VZOLOPT_TRUE_MIXED"), "TRUE");
  EXPECT_EQ(ValueOf("VZOLOPT_TRUE_UPPER"), "TRUE");
  EXPECT_EQ(ValueOf("VZOLOPT_TRUE_LOWER"), "TRUE");
}

TEST(VEKZOLOptionsMgrEnvTest, ZeroAndFalseInAnyCaseBecomeUppercaseFALSE) {
  FreshProcess process;
  EXPECT_EQ(ValueOf("VZOLOPT_ZERO"), "FALSE");
  EXPECT_EQ(ValueOf("VZOLOPT_FALSE_CAPITAL"), "FALSE");
  EXPECT_EQ(ValueOf("VZOLOPT_FALSE_UPPER"), "FALSE");
  EXPECT_EQ(ValueOf("VZOLOPT_FALSE_MIXED"), "FALSE");
}

TEST(VEKZOLOptionsMgrEnvTest, OtherValuesStayExactlyAsTheyAre) {
  FreshProcess process;
  EXPECT_EQ(ValueOf("VZOLOPT_DOUBLE_ZERO"), "00");
  EXPECT_EQ(ValueOf("VZOLOPT_ZERO_ONE"), "01");
  EXPECT_EQ(ValueOf("VZOLOPT_TWO"), "2");
  EXPECT_EQ(ValueOf("VZOLOPT_YES"), "yes");
  EXPECT_EQ(ValueOf("VZOLOPT_ON"), "on");
  EXPECT_EQ(ValueOf("VZOLOPT_BLANK_TRUE"), " true");
  EXPECT_EQ(ValueOf("VZOLOPT_FALSE_BLANK"), "false ");
  EXPECT_EQ(ValueOf("VZOLOPT_TEXT"), "Work Instruction Library");
}

TEST(VEKZOLOptionsMgrEnvTest, TheFirstAnswerIsKeptAndTheEnvironmentReadOnce) {
  FreshProcess process;
  EXPECT_EQ(ValueOf("VZOLOPT_ONE"), "TRUE");
  EXPECT_EQ(ValueOf("VZOLOPT_ONE"), "TRUE");
  EXPECT_EQ(ValueOf("VZOLOPT_TWO"), "2");
  EXPECT_EQ(ValueOf("VZOLOPT_TWO"), "2");
  EXPECT_EQ(process.ReadsOf("VZOLOPT_ONE"), 1);
  EXPECT_EQ(process.ReadsOf("VZOLOPT_TWO"), 1);
  EXPECT_EQ(options_test::StoreContents(), (std::vector<std::pair<std::string, std::string>>(
                                               {{"VZOLOPT_ONE", "TRUE"}, {"VZOLOPT_TWO", "2"}})));
}

TEST(VEKZOLOptionsMgrEnvTest, SetValueWinsOverTheEnvironment) {
  FreshProcess process;
  VEKZOLOptionsMgr::SetValue("VZOLOPT_ONE", "0");
  EXPECT_EQ(ValueOf("VZOLOPT_ONE"), "0");
  EXPECT_EQ(process.ReadsOf("VZOLOPT_ONE"), 0);
}

TEST(VEKZOLOptionsMgrEnvTest, AnEmptyVariableGivesEmptyTextAndIsKept) {
  FreshProcess process;
  EXPECT_EQ(ValueOf("VZOLOPT_EMPTY"), "");
  EXPECT_EQ(ValueOf("VZOLOPT_EMPTY"), "");
  EXPECT_EQ(process.ReadsOf("VZOLOPT_EMPTY"), 1);
}

}  // namespace
