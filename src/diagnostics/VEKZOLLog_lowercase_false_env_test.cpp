// File: VEKZOLLog_lowercase_false_env_test.cpp
// Runs with VEK_ZOL_LOG_ENABLED=false: only "FALSE" in capitals turns
// logging off, so lines are written as usual.
#include <gtest/gtest.h>

#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace {

using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::kHeader;
using vekzol_log_test::kStamp;
using vekzol_log_test::Line;
using vekzol_log_test::ReadFile;
using vekzol_log_test::RemoveTraceFiles;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;
using vekzol_log_test::TracePath;

TEST(VEKZOLLogLowercaseFalseEnvTest, LowercaseFalseLeavesLoggingOn) {
  RemoveTraceFiles(TestTempDir());
  VEKZOLLogTestPeer::Reset();
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
