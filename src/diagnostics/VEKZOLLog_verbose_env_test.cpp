// File: VEKZOLLog_verbose_env_test.cpp
// Runs with VEK_ZOL_LOG_VERBOSE=TRUE: verbose lines are written once IsVerbosityEnabled has been
// asked. Verbosity 2 and -1 count as 1.
#include <gtest/gtest.h>

#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace {

using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::kStamp;
using vekzol_log_test::ReadFile;
using vekzol_log_test::RemoveTraceFiles;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;
using vekzol_log_test::TracePath;
using vekzol_log_test::WriteVerboseScenario;

TEST(VEKZOLLogVerboseEnvTest, UppercaseTRUEWritesVerboseLinesOnlyAfterAnAsk) {
  RemoveTraceFiles(TestTempDir());
  VEKZOLLogTestPeer::Reset();
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  const std::string expected = WriteVerboseScenario(true);
  EXPECT_EQ(ReadFile(TracePath(TestTempDir(), kStamp)), expected);
}

}  // namespace
