// Tests of the option store outside verbose mode: the map asked before the
// environment, values stored as given, empty answers kept, the listing that
// stays silent, and the values of the VZOLOPT_* variables that the program
// is started with (its CMake entry): GetValue turns "1" and "true" in any
// case into "TRUE", "0" and "false" in any case into "FALSE", and keeps
// every other value exactly as it is. Each case starts from a store and a
// log as in a fresh process.
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "options/VEKZOLOptionsMgrTestSupport.h"

namespace {

using options_test::FreshProcess;
using options_test::PutEnvironmentVariable;
using options_test::StoreContents;
using Store = std::vector<std::pair<std::string, std::string>>;

std::string Text(const CString& text) { return text.GetString(); }

TEST(VEKZOLOptionsMgrTest, UnsetVariableGivesEmptyTextAndTheKeyIsKeptWithIt) {
  FreshProcess process;
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_NEVER_SET")), "");
  EXPECT_EQ(StoreContents(), Store({{"VZOLOPT_NEVER_SET", ""}}));
  EXPECT_EQ(process.ReadsOf("VZOLOPT_NEVER_SET"), 1);
}

TEST(VEKZOLOptionsMgrTest, AVariablePutIntoTheEnvironmentAfterTheFirstAskIsNotSeen) {
  FreshProcess process;
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_LATE")), "");
  PutEnvironmentVariable("VZOLOPT_LATE", "1");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_LATE")), "");
  EXPECT_EQ(process.ReadsOf("VZOLOPT_LATE"), 1);
}

TEST(VEKZOLOptionsMgrTest, AVariablePutIntoTheEnvironmentBeforeTheFirstAskIsSeenAndNormalised) {
  FreshProcess process;
  PutEnvironmentVariable("VZOLOPT_EARLY", "True");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_EARLY")), "TRUE");
  PutEnvironmentVariable("VZOLOPT_EARLY", "0");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_EARLY")), "TRUE");
  EXPECT_EQ(process.ReadsOf("VZOLOPT_EARLY"), 1);
}

TEST(VEKZOLOptionsMgrTest, SetValueStoresTheTextAsGivenWhateverTheEnvironmentSays) {
  FreshProcess process;
  PutEnvironmentVariable("VZOLOPT_SET_FIRST", "1");
  VEKZOLOptionsMgr::SetValue("VZOLOPT_SET_FIRST", "true");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_SET_FIRST")), "true");
  EXPECT_EQ(process.ReadsOf("VZOLOPT_SET_FIRST"), 0);
  VEKZOLOptionsMgr::SetValue("VZOLOPT_SET_FIRST", " 0 ");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_SET_FIRST")), " 0 ");
}

TEST(VEKZOLOptionsMgrTest, SetValueNeitherReadsNorWritesTheEnvironment) {
  FreshProcess process;
  VEKZOLOptionsMgr::SetValue("VZOLOPT_NOT_EXPORTED", "value");
  EXPECT_EQ(process.ReadsOf("VZOLOPT_NOT_EXPORTED"), 0);
  std::string value;
  EXPECT_FALSE(vekzol::platform::Sys().GetEnv("VZOLOPT_NOT_EXPORTED", &value));
}

TEST(VEKZOLOptionsMgrTest, SetValueAfterGetValueReplacesTheAnswer) {
  FreshProcess process;
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_REPLACED")), "");
  VEKZOLOptionsMgr::SetValue("VZOLOPT_REPLACED", "new value");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_REPLACED")), "new value");
  VEKZOLOptionsMgr::SetValue("VZOLOPT_REPLACED", "");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_REPLACED")), "");
  EXPECT_EQ(StoreContents(), Store({{"VZOLOPT_REPLACED", ""}}));
  EXPECT_EQ(process.ReadsOf("VZOLOPT_REPLACED"), 1);
}

TEST(VEKZOLOptionsMgrTest, EmptyKeyGivesEmptyTextAndAddsAnEntryWithTheEmptyKey) {
  FreshProcess process;
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("")), "");
  EXPECT_EQ(StoreContents(), Store({{"", ""}}));
}

TEST(VEKZOLOptionsMgrTest, KeysThatDifferInCaseAreTwoEntries) {
  FreshProcess process;
  VEKZOLOptionsMgr::SetValue("VZOLOPT_CASE", "upper");
  VEKZOLOptionsMgr::SetValue("vzolopt_case", "lower");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("VZOLOPT_CASE")), "upper");
  EXPECT_EQ(Text(VEKZOLOptionsMgr::GetValue("vzolopt_case")), "lower");
  EXPECT_EQ(StoreContents(), Store({{"VZOLOPT_CASE", "upper"}, {"vzolopt_case", "lower"}}));
}

TEST(VEKZOLOptionsMgrTest, PrintAllOptionsOutsideVerboseModeAnswersEFailAndPrintsNothing) {
  FreshProcess process;
  VEKZOLOptionsMgr::SetValue("VZOLOPT_HOST", "value");
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_FALSE(VEKZOLOptionsMgrTestPeer::OptionsPrinted());
  EXPECT_FALSE(process.TraceFileExists());
  EXPECT_EQ(process.ReadsOf("KRN_KEEP_SESSION_DIR"), 0);
  EXPECT_EQ(StoreContents(), Store({{"VZOLOPT_HOST", "value"}}));
}

TEST(VEKZOLOptionsMgrTest, AssignmentOperatorLeavesTheStoreAlone) {
  FreshProcess process;
  VEKZOLOptionsMgr::SetValue("VZOLOPT_KEPT", "value");
  VEKZOLOptionsMgr first;
  VEKZOLOptionsMgr second;
  first = second;
  EXPECT_EQ(StoreContents(), Store({{"VZOLOPT_KEPT", "value"}}));
}

// The variables the program is started with.

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
