// File: VEKZOLLog_trace_dir_env_test.cpp
// The POSIX fallbacks of the trace directory, read through the real platform
// backend: with TEMP removed the trace file goes to TMPDIR, and with TMPDIR
// removed as well it goes to /tmp.
//
// The program starts with TMPDIR set to a directory of its own. The test
// runner always sets TEMP and cannot remove a variable, so each case removes
// what it needs with unsetenv before any call of the library, and takes the
// library back to a process that has written no trace line; the library
// reads the directory only when it creates the file. Each case puts TEMP and
// TMPDIR back as the program was started with them, so the cases do not
// depend on their order.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <utility>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace {

using vekzol_log_test::FileExists;
using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::kHeader;
using vekzol_log_test::kStamp;
using vekzol_log_test::Line;
using vekzol_log_test::ListDirectory;
using vekzol_log_test::ReadFile;
using vekzol_log_test::RemoveTraceFiles;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TracePath;

// A variable of the process environment as it was, put back when the
// object goes, also after a failed assertion.
class RestoreVariable {
 public:
  explicit RestoreVariable(const char* name) : name_(name) {
    const char* value = std::getenv(name);
    wasSet_ = value != nullptr;
    if (wasSet_) {
      value_ = value;
    }
  }
  ~RestoreVariable() {
    if (wasSet_) {
      setenv(name_, value_.c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }
  RestoreVariable(const RestoreVariable&) = delete;
  RestoreVariable& operator=(const RestoreVariable&) = delete;

 private:
  const char* name_;
  bool wasSet_ = false;
  std::string value_;
};

// Puts TEMP and TMPDIR back after each case.
class TraceDirectoryFallbackTest : public ::testing::Test {
 private:
  RestoreVariable temp_{"TEMP"};
  RestoreVariable tmpdir_{"TMPDIR"};
};

class VEKZOLLogTmpdirEnvTest : public TraceDirectoryFallbackTest {};
class VEKZOLLogSlashTmpEnvTest : public TraceDirectoryFallbackTest {};

TEST_F(VEKZOLLogTmpdirEnvTest, UnsetTempFallsBackToTmpdir) {
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

// /tmp is shared with every other program, so the file gets a name no one
// else uses: local time is made to fail and the date text carries a random
// token, which the fallback stamp puts into the file name. The file is
// removed at the end.
TEST_F(VEKZOLLogSlashTmpEnvTest, UnsetTempAndTmpdirFallBackToSlashTmp) {
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
