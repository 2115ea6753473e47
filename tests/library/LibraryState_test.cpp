// File: LibraryState_test.cpp
// The process-wide state on its own: the two value rules of the switches,
// the search of the directory variables, the cached answers and the one
// reset that takes a test back to a fresh process.
#include "state/LibraryState.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "platform/System.h"
#include "platform/TempDirectories.h"

namespace {

namespace state = vekzol::state;

// The real backend with an environment of the test's own, which counts the
// reads of each name.
class EnvironmentSystem : public vekzol::platform::ForwardingSystem {
 public:
  EnvironmentSystem() : ForwardingSystem(vekzol::platform::DefaultSystem()) {}
  bool GetEnv(const char* name, std::string* value) override {
    ++reads[name];
    const auto found = env.find(name);
    if (found == env.end()) {
      return false;
    }
    *value = found->second;
    return true;
  }
  std::map<std::string, std::string> env;
  std::map<std::string, int> reads;
};

class LibraryStateTest : public ::testing::Test {
 protected:
  void SetUp() override {
    previous_ = vekzol::platform::SetSystemForTesting(&system_);
    state::ResetForTesting();
  }
  void TearDown() override {
    state::ResetForTesting();
    vekzol::platform::SetSystemForTesting(previous_);
  }

  EnvironmentSystem system_;
  vekzol::platform::System* previous_ = nullptr;
};

TEST(LibraryStateValueRules, TrueIsExactlyUpperTRUEOrOne) {
  EXPECT_TRUE(state::IsTrueSwitchValue("TRUE"));
  EXPECT_TRUE(state::IsTrueSwitchValue("1"));
  for (const char* value : {"true", "True", "11", " 1", "TRUE ", "", "yes", "FALSE", "0"}) {
    EXPECT_FALSE(state::IsTrueSwitchValue(value)) << value;
  }
}

TEST(LibraryStateValueRules, FalseIsExactlyUpperFALSE) {
  EXPECT_TRUE(state::IsFalseSwitchValue("FALSE"));
  for (const char* value : {"false", "False", "0", "", "FALSE ", "TRUE"}) {
    EXPECT_FALSE(state::IsFalseSwitchValue(value)) << value;
  }
}

TEST_F(LibraryStateTest, EachSwitchIsReadOnceAndKept) {
  system_.env["VEK_ZOL_LOG_ENABLED"] = "FALSE";
  system_.env["VEK_ZOL_LOG_VERBOSE"] = "1";
  system_.env["JBM_RQT_IN"] = "request.xml";
  EXPECT_FALSE(state::LogEnabled());
  EXPECT_TRUE(state::Verbose());
  EXPECT_TRUE(state::BatchRun());
  EXPECT_TRUE(state::TimersEnabled());
  system_.env.clear();
  EXPECT_FALSE(state::LogEnabled());
  EXPECT_TRUE(state::Verbose());
  EXPECT_TRUE(state::BatchRun());
  EXPECT_TRUE(state::TimersEnabled());
  EXPECT_EQ(system_.reads["VEK_ZOL_LOG_ENABLED"], 1);
  EXPECT_EQ(system_.reads["VEK_ZOL_LOG_VERBOSE"], 1);
  EXPECT_EQ(system_.reads["VEK_ZOL_TIMERS_ENABLED"], 1);
  // The trace log's batch answer and the timers' each read the variable.
  EXPECT_EQ(system_.reads["JBM_RQT_IN"], 2);
}

TEST_F(LibraryStateTest, VerboseAsCachedDoesNotReadTheEnvironment) {
  system_.env["VEK_ZOL_LOG_VERBOSE"] = "TRUE";
  EXPECT_FALSE(state::VerboseAsCached());
  EXPECT_EQ(system_.reads["VEK_ZOL_LOG_VERBOSE"], 0);
  EXPECT_TRUE(state::Verbose());
  EXPECT_TRUE(state::VerboseAsCached());
}

TEST_F(LibraryStateTest, BlobDumpIsReadAtEachCall) {
  EXPECT_FALSE(state::DumpDecompressedBlobs());
  system_.env["VEK_ZOL_DUMP_DECOMPRESSED_BLOBS"] = "";
  EXPECT_FALSE(state::DumpDecompressedBlobs());
  system_.env["VEK_ZOL_DUMP_DECOMPRESSED_BLOBS"] = "1";
  EXPECT_TRUE(state::DumpDecompressedBlobs());
  EXPECT_EQ(system_.reads["VEK_ZOL_DUMP_DECOMPRESSED_BLOBS"], 3);
}

TEST_F(LibraryStateTest, ASetVariableEndsTheSearchEvenWhenEmpty) {
  EXPECT_EQ(state::BatchSessionBase().str(), vekzol::platform::DefaultSessionBase());
  system_.env["JBM_RQT_TEMP"] = "temp";
  EXPECT_EQ(state::BatchSessionBase().str(), "temp");
  system_.env["JBM_RQT_OUT"] = "";
  EXPECT_EQ(state::BatchSessionBase().str(), "");
  EXPECT_EQ(state::TraceDirectory().str(), vekzol::platform::DefaultTraceDirectory());
  EXPECT_EQ(state::InteractiveSessionBase().str(), vekzol::platform::DefaultSessionBase());
  const char* first = vekzol::platform::TempDirectoryVariables().front();
  system_.env[first] = "first";
  EXPECT_EQ(state::TraceDirectory().str(), "first");
  EXPECT_EQ(state::InteractiveSessionBase().str(), "first");
}

TEST_F(LibraryStateTest, ResetGivesTheStateOfAFreshProcess) {
  system_.env["VEK_ZOL_LOG_ENABLED"] = "FALSE";
  EXPECT_FALSE(state::LogEnabled());
  state::Switches().verbose = true;
  VEKZOLLog::_LogFilePath = "trace.log";
  VEKZOLLog::_CreationTimeStamp = "stamp";
  VEKZOLLog::_bIsInitialized = true;
  CString session("session");
  VEKZOLFileSystemServices::SetVZOLSessionDataDirectory(session);

  state::ResetForTesting();

  const state::CachedSwitches& switches = state::Switches();
  EXPECT_TRUE(switches.logEnabled);
  EXPECT_FALSE(switches.logEnabledRead);
  EXPECT_FALSE(switches.verbose);
  EXPECT_FALSE(switches.verboseRead);
  EXPECT_FALSE(switches.batchRunRead);
  EXPECT_FALSE(switches.timersEnabledRead);
  EXPECT_TRUE(VEKZOLLog::_LogFilePath.IsEmpty());
  EXPECT_TRUE(state::TraceStamp().IsEmpty());
  EXPECT_FALSE(VEKZOLLog::_bIsInitialized);
  system_.env.clear();
  CString path;
  VEKZOLFileSystemServices::GetRQTSessionDataDirectory(path);
  EXPECT_NE(path.str(), "session");
}

}  // namespace
