// File: VEKZOLLog_batch_env_test.cpp
// Runs with JBM_RQT_IN set: a batch run, in which every line written to the
// trace file is printed to standard output as well, without the header.
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

TEST(VEKZOLLogBatchEnvTest, StdoutHoldsTheFileLinesWithoutTheHeader) {
  RemoveTraceFiles(TestTempDir());
  VEKZOLLogTestPeer::Reset();
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  EXPECT_TRUE(VEKZOLLog::IsRQTMode());
  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("first", 0);
  VEKZOLLog::WriteMsg("dropped, verbosity not asked", 1);
  VEKZOLLog::WriteMsg("", 0);
  VEKZOLLog::WriteMsg("50% of %s done", 0);
  const std::string printed = ::testing::internal::GetCapturedStdout();

  const std::string lines = Line("first") + Line("") + Line("50% of %s done");
  EXPECT_EQ(printed, lines);
  EXPECT_EQ(ReadFile(TracePath(TestTempDir(), kStamp)), kHeader + lines);
}

}  // namespace
