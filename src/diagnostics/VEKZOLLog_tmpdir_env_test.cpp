// File: VEKZOLLog_tmpdir_env_test.cpp
// Runs with TMPDIR set and TEMP removed: the trace file goes to TMPDIR.
//
// The test runner always sets TEMP and cannot remove a variable, so the
// test removes it itself with unsetenv before any call of the library; the
// library reads the directory only when it creates the file.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace {

using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::kHeader;
using vekzol_log_test::kStamp;
using vekzol_log_test::Line;
using vekzol_log_test::ListDirectory;
using vekzol_log_test::ReadFile;
using vekzol_log_test::RemoveTraceFiles;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TracePath;

TEST(VEKZOLLogTmpdirEnvTest, UnsetTempFallsBackToTmpdir) {
  ASSERT_EQ(unsetenv("TEMP"), 0);
  ASSERT_EQ(std::getenv("TEMP"), nullptr);
  const char* tmpdirValue = std::getenv("TMPDIR");
  ASSERT_NE(tmpdirValue, nullptr);
  const std::string tmpdir = tmpdirValue;
  std::filesystem::create_directories(tmpdir);
  RemoveTraceFiles(tmpdir);
  VEKZOLLogTestPeer::Reset();
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  VEKZOLLog::WriteMsg("in TMPDIR", 0);

  CString path;
  VEKZOLLog::GetLogFilePath(path);
  EXPECT_EQ(path.str(), TracePath(tmpdir, kStamp));
  EXPECT_EQ(ReadFile(TracePath(tmpdir, kStamp)), kHeader + Line("in TMPDIR"));
  EXPECT_EQ(ListDirectory(tmpdir).size(), 1u);
}

}  // namespace
