// File: VEKZOLLog_switches_env_test.cpp
// The trace log's switches as the process environment gives them, read
// through the real platform backend. The program starts with
// VEK_ZOL_LOG_VERBOSE=TRUE; each further case puts its value into the
// process environment and takes the library back to a process that has
// read no switch, so that one process covers every value form.
//
// - TRUE and 1: verbose lines are written once IsVerbosityEnabled has been
//   asked. Verbosity 2 and -1 count as 1.
// - true: only "TRUE" and "1" turn verbosity on, so verbose lines stay
//   dropped.
// - VEK_ZOL_LOG_ENABLED=false: only "FALSE" in capitals turns logging off,
//   so lines are written as usual.
#include <gtest/gtest.h>

#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"
#include "platform/ProcessEnvironmentTesting.h"

namespace {

using vekzol::platform::PutEnvironmentVariable;
using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::kHeader;
using vekzol_log_test::kStamp;
using vekzol_log_test::Line;
using vekzol_log_test::ReadFile;
using vekzol_log_test::RemoveTraceFiles;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;
using vekzol_log_test::TracePath;
using vekzol_log_test::WriteVerboseScenario;

// A process that has read no switch and written no line, with `name` set
// to `value` in its environment.
void FreshProcessWith(const char* name, const char* value) {
  PutEnvironmentVariable(name, value);
  RemoveTraceFiles(TestTempDir());
  VEKZOLLogTestPeer::Reset();
}

// The switches as the program was started with them, for the cases after.
class VEKZOLLogSwitchesEnvTest : public ::testing::Test {
 protected:
  void TearDown() override {
    PutEnvironmentVariable("VEK_ZOL_LOG_VERBOSE", "TRUE");
    PutEnvironmentVariable("VEK_ZOL_LOG_ENABLED", "");
  }
};

TEST_F(VEKZOLLogSwitchesEnvTest, UppercaseTRUEWritesVerboseLinesOnlyAfterAnAsk) {
  // The value the program was started with.
  RemoveTraceFiles(TestTempDir());
  VEKZOLLogTestPeer::Reset();
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  const std::string expected = WriteVerboseScenario(true);
  EXPECT_EQ(ReadFile(TracePath(TestTempDir(), kStamp)), expected);
}

TEST_F(VEKZOLLogSwitchesEnvTest, OneWritesVerboseLinesOnlyAfterAnAsk) {
  FreshProcessWith("VEK_ZOL_LOG_VERBOSE", "1");
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  const std::string expected = WriteVerboseScenario(true);
  EXPECT_EQ(ReadFile(TracePath(TestTempDir(), kStamp)), expected);
}

TEST_F(VEKZOLLogSwitchesEnvTest, LowercaseTrueLeavesVerboseLinesOff) {
  FreshProcessWith("VEK_ZOL_LOG_VERBOSE", "true");
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  const std::string expected = WriteVerboseScenario(false);
  EXPECT_EQ(ReadFile(TracePath(TestTempDir(), kStamp)), expected);
}

TEST_F(VEKZOLLogSwitchesEnvTest, LowercaseFalseLeavesLoggingOn) {
  PutEnvironmentVariable("VEK_ZOL_LOG_VERBOSE", "");
  FreshProcessWith("VEK_ZOL_LOG_ENABLED", "false");
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  EXPECT_TRUE(VEKZOLLog::IsLogEnabled());
  VEKZOLLog::WriteMsg("still on", 0);

  CString path;
  VEKZOLLog::GetLogFilePath(path);
  EXPECT_EQ(path.str(), TracePath(TestTempDir(), kStamp));
  EXPECT_EQ(ReadFile(TracePath(TestTempDir(), kStamp)), kHeader + Line("still on"));
}

}  // namespace
