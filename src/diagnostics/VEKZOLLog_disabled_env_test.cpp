// File: VEKZOLLog_disabled_env_test.cpp
// Runs with VEK_ZOL_LOG_ENABLED=FALSE, in batch mode and with verbosity
// asked for: logging is off, so nothing is written anywhere.
#include <gtest/gtest.h>

#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace {

using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::ListDirectory;
using vekzol_log_test::RemoveTraceFiles;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;

TEST(VEKZOLLogDisabledEnvTest, ExactFALSEWritesNoFileAndNothingToStdoutInBatchMode) {
  RemoveTraceFiles(TestTempDir());
  VEKZOLLogTestPeer::Reset();
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  EXPECT_FALSE(VEKZOLLog::IsLogEnabled());
  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("plain", 0);
  VEKZOLLog::WriteMsg("verbose", 1);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");

  // WriteMsg returned at once: no clock, no file, not even batch mode asked.
  EXPECT_EQ(system.nowCalls, 0);
  EXPECT_TRUE(system.opens.empty());
  EXPECT_FALSE(VEKZOLLogTestPeer::RQTModeRead());
  EXPECT_TRUE(ListDirectory(TestTempDir()).empty());
  CString path("left over");
  CString stamp("left over");
  VEKZOLLog::GetLogFilePath(path);
  VEKZOLLog::GetCreationTimeStamp(stamp);
  EXPECT_EQ(path.str(), "");
  EXPECT_EQ(stamp.str(), "");
  EXPECT_FALSE(VEKZOLLog::_bIsInitialized);

  // The other switches still answer from the environment.
  EXPECT_TRUE(VEKZOLLog::IsRQTMode());
  EXPECT_TRUE(VEKZOLLog::IsVerbosityEnabled());
  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("plain", 0);
  VEKZOLLog::WriteMsg("verbose", 1);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_TRUE(system.opens.empty());
  EXPECT_TRUE(ListDirectory(TestTempDir()).empty());
}

}  // namespace
