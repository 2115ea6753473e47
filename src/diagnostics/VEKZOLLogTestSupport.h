// File: VEKZOLLogTestSupport.h
// Shared pieces of the trace log's test programs: the peer that resets the
// log's static state between tests, a platform backend with a fixed clock
// and a switchable open failure, and small file helpers. Each test program
// is its own process, so each includes this header once.
#ifndef VEKZOL_SRC_DIAGNOSTICS_VEKZOLLOGTESTSUPPORT_H_
#define VEKZOL_SRC_DIAGNOSTICS_VEKZOLLOGTESTSUPPORT_H_

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "platform/ScopedSystemTesting.h"
#include "platform/System.h"
#include "state/LibraryState.h"

// Reaches the log's private state: a fresh process's start values, the
// cached switches and the private GetLogFile.
class VEKZOLLogTestPeer {
 public:
  // Back to the state of a process that has written nothing yet: the
  // library's one reset of its process-wide state, except that the timers'
  // answer stays as it was, since the static timers of the services that
  // these tests run live on across the reset and the timers have a reset of
  // their own (VEKZOLTimerTestPeer::ForgetTimersEnabled).
  static void Reset() {
    const vekzol::state::CachedSwitches kept = vekzol::state::Switches();
    vekzol::state::ResetForTesting();
    vekzol::state::Switches().timersEnabled = kept.timersEnabled;
    vekzol::state::Switches().timersEnabledRead = kept.timersEnabledRead;
  }
  static long GetLogFile(std::FILE** stream) { return VEKZOLLog::GetLogFile(stream); }
  static bool LogEnabled() { return vekzol::state::Switches().logEnabled; }
  static bool LogEnabledRead() { return vekzol::state::Switches().logEnabledRead; }
  static bool RQTMode() { return vekzol::state::Switches().batchRun; }
  static bool RQTModeRead() { return vekzol::state::Switches().batchRunRead; }
  static bool Verbose() { return vekzol::state::Switches().verbose; }
  static bool VerboseRead() { return vekzol::state::Switches().verboseRead; }
  static void SetVerbose(bool verbose) { vekzol::state::Switches().verbose = verbose; }
};

namespace vekzol_log_test {

// The fixed moment of FixedClockSystem: Saturday 7 November 2026, 09:35:12
// UTC, which its local time conversion also gives.
constexpr int64_t kNow = 1794044112;
constexpr const char* kDateText = "Sat Nov 07 09:35:12 2026\n";
constexpr const char* kStamp = "Sat_2026_Nov_07_hh09_mm35_ss12";
constexpr const char* kCutDate = "Nov 07 09:35:12";
constexpr const char* kHeader = "Log created: Sat_2026_Nov_07_hh09_mm35_ss12\n\n";

// The real backend with a fixed clock, a recording and failing OpenFile,
// and a local time conversion that can be made to fail. FormatTime stays
// the real one, so the stamp's format string is exercised for real. With
// `realClock` the three clock calls go to the real backend too.
class FixedClockSystem : public vekzol::platform::ForwardingSystem {
 public:
  FixedClockSystem() : ForwardingSystem(vekzol::platform::DefaultSystem()) {}

  int64_t Now() override {
    ++nowCalls;
    return realClock ? ForwardingSystem::Now() : kNow;
  }
  bool LocalTime(int64_t seconds, std::tm* out) override {
    localTimeArgs.push_back(seconds);
    if (realClock) {
      return ForwardingSystem::LocalTime(seconds, out);
    }
    if (failLocalTime) {
      return false;
    }
    std::tm fixed{};
    fixed.tm_year = 2026 - 1900;
    fixed.tm_mon = 10;
    fixed.tm_mday = 7;
    fixed.tm_hour = 9;
    fixed.tm_min = 35;
    fixed.tm_sec = 12;
    fixed.tm_wday = 6;
    fixed.tm_yday = 310;
    *out = fixed;
    return true;
  }
  std::string DateText(int64_t seconds) override {
    dateTextArgs.push_back(seconds);
    return realClock ? ForwardingSystem::DateText(seconds) : dateText;
  }
  std::string FormatTime(const char* format, const std::tm& time, size_t capacity) override {
    formatTimeCalls.emplace_back(format, capacity);
    return ForwardingSystem::FormatTime(format, time, capacity);
  }
  std::FILE* OpenFile(const char* path, const char* mode) override {
    opens.emplace_back(path, mode);
    if (failOpen) {
      return nullptr;
    }
    return ForwardingSystem::OpenFile(path, mode);
  }
  char PathSeparator() override {
    return separator != '\0' ? separator : ForwardingSystem::PathSeparator();
  }

  std::string dateText = kDateText;
  bool failLocalTime = false;
  bool failOpen = false;
  bool realClock = false;
  // '\0' keeps the platform's separator.
  char separator = '\0';

  int nowCalls = 0;
  std::vector<int64_t> localTimeArgs;
  std::vector<int64_t> dateTextArgs;
  std::vector<std::pair<std::string, size_t>> formatTimeCalls;
  std::vector<std::pair<std::string, std::string>> opens;
};

// Installs a backend for the life of the object and restores the previous
// one after.
using vekzol::platform::ScopedSystem;

// The whole file as bytes; empty when it cannot be read.
//
// The trace log writes through a text-mode stream. On Windows that puts
// "\r\n" in the file for every "\n" written, and this undoes exactly that,
// so the tests state one expected text for every platform. A "\n" without
// its "\r" cannot come from a text-mode stream; it is shown as "<LF>" so
// that the comparison fails.
inline std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
#if defined(_WIN32)
  std::string text;
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n') {
      continue;
    }
    if (bytes[i] == '\n' && (i == 0 || bytes[i - 1] != '\r')) {
      text += "<LF>";
      continue;
    }
    text += bytes[i];
  }
  return text;
#else
  return bytes;
#endif
}

inline bool FileExists(const std::string& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

// The test process's private directory (VEKZOL_TEST_TEMP, else TEMP).
inline std::string TestTempDir() {
  for (const char* name : {"VEKZOL_TEST_TEMP", "TEMP"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') {
      return value;
    }
  }
  return std::filesystem::temp_directory_path().string();
}

// Removes the trace files that an earlier run left in `directory`.
inline void RemoveTraceFiles(const std::string& directory) {
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
    if (entry.path().filename().string().rfind("VZOL_Traces_", 0) == 0) {
      std::filesystem::remove(entry.path(), error);
    }
  }
}

// Names of the entries of `directory`, in no particular order.
inline std::vector<std::string> ListDirectory(const std::string& directory) {
  std::vector<std::string> names;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
    names.push_back(entry.path().filename().string());
  }
  return names;
}

// The trace file that `stamp` gives in `directory`.
inline std::string TracePath(const std::string& directory, const std::string& stamp) {
  return directory + vekzol::platform::DefaultSystem()->PathSeparator() + "VZOL_Traces_" + stamp +
         ".log";
}

// One line as the fixed clock dates it.
inline std::string Line(const std::string& message) {
  return std::string(kCutDate) + "\t" + message + "\n";
}

// What the fixed-clock trace file in the test's temporary directory holds
// after its header; "" when there is no file.
inline std::string TraceBody() {
  const std::string text = ReadFile(TracePath(TestTempDir(), kStamp));
  const std::string header = kHeader;
  if (text.compare(0, header.size(), header) != 0) {
    return text;
  }
  return text.substr(header.size());
}

// Writes verbose lines (verbosity 1, 2 and -1) around a plain one, asks
// IsVerbosityEnabled once, expecting `answer`, then writes the same again.
// Returns what the trace file must hold: the verbose lines are dropped
// before the ask whatever the environment says, and after it only kept
// when verbosity is on.
inline std::string WriteVerboseScenario(bool answer) {
  VEKZOLLog::WriteMsg("verbose 1", 1);
  VEKZOLLog::WriteMsg("verbose 2", 2);
  VEKZOLLog::WriteMsg("verbose -1", -1);
  VEKZOLLog::WriteMsg("plain", 0);
  EXPECT_FALSE(VEKZOLLogTestPeer::VerboseRead());
  EXPECT_EQ(VEKZOLLog::IsVerbosityEnabled(), answer);
  VEKZOLLog::WriteMsg("verbose 1", 1);
  VEKZOLLog::WriteMsg("verbose 2", 2);
  VEKZOLLog::WriteMsg("verbose -1", -1);
  VEKZOLLog::WriteMsg("plain", 0);

  std::string expected = kHeader + Line("plain");
  if (answer) {
    expected += Line("verbose 1") + Line("verbose 2") + Line("verbose -1");
  }
  return expected + Line("plain");
}

}  // namespace vekzol_log_test

#endif  // VEKZOL_SRC_DIAGNOSTICS_VEKZOLLOGTESTSUPPORT_H_
