// File: VEKZOLLog_slash_tmp_env_test.cpp
// Runs with neither TEMP nor TMPDIR: the trace file goes to /tmp.
//
// The test runner always sets TEMP and cannot remove a variable, so the
// test removes both itself with unsetenv before any call of the library.
// /tmp is shared with every other program, so the file gets a name no one
// else uses: local time is made to fail and the date text carries a random
// token, which the fallback stamp puts into the file name. The file is
// removed at the end.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <utility>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace {

using vekzol_log_test::FileExists;
using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::Line;
using vekzol_log_test::ReadFile;
using vekzol_log_test::ScopedSystem;

// Removes a file when the test leaves, also after a failed assertion.
class RemoveAtExit {
 public:
  explicit RemoveAtExit(std::string path) : path_(std::move(path)) {}
  ~RemoveAtExit() { std::remove(path_.c_str()); }
  RemoveAtExit(const RemoveAtExit&) = delete;
  RemoveAtExit& operator=(const RemoveAtExit&) = delete;

 private:
  std::string path_;
};

TEST(VEKZOLLogSlashTmpEnvTest, UnsetTempAndTmpdirFallBackToSlashTmp) {
  ASSERT_EQ(unsetenv("TEMP"), 0);
  ASSERT_EQ(unsetenv("TMPDIR"), 0);
  VEKZOLLogTestPeer::Reset();
  FixedClockSystem system;
  ScopedSystem scoped(&system);

  const std::string token = "Run" + std::to_string(std::random_device()());
  system.failLocalTime = true;
  system.dateText = token + " Nov 07 09:35:12 2026\n";
  const std::string path = "/tmp/VZOL_Traces_" + token + "_Nov_07_09_35_12_2026.log";
  ASSERT_FALSE(FileExists(path));
  RemoveAtExit cleanup(path);

  VEKZOLLog::WriteMsg("in /tmp", 0);

  CString logPath;
  VEKZOLLog::GetLogFilePath(logPath);
  EXPECT_EQ(logPath.str(), path);
  EXPECT_EQ(ReadFile(path),
            "Log created: " + token + " Nov 07 09:35:12 2026\n\n\n" + Line("in /tmp"));
  // JBM_RQT_IN is set but empty here: not a batch run.
  EXPECT_FALSE(VEKZOLLog::IsRQTMode());
}

}  // namespace
