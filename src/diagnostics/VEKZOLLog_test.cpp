// File: VEKZOLLog_test.cpp
// Unit tests of the trace log against an injected backend: a private
// environment table, a fixed clock and a switchable open failure. Whole file
// contents are compared byte for byte. Behaviour that depends on the real
// process environment is tested by the VEKZOLLog_*env_test programs.
#include <vekzol/diagnostics/VEKZOLLog.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <map>
#include <regex>
#include <string>
#include <utility>
#include <vector>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace {

using vekzol_log_test::FileExists;
using vekzol_log_test::FixedClockSystem;
using vekzol_log_test::kHeader;
using vekzol_log_test::kNow;
using vekzol_log_test::kStamp;
using vekzol_log_test::Line;
using vekzol_log_test::ListDirectory;
using vekzol_log_test::ReadFile;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;
using vekzol_log_test::WriteVerboseScenario;

using OpenCall = std::pair<std::string, std::string>;

// FixedClockSystem whose environment is a private table, so that the
// developer's own variables never reach these tests, and which counts the
// reads of each variable.
class FakeSystem : public FixedClockSystem {
 public:
  bool GetEnv(const char* name, std::string* value) override {
    ++envReads[name];
    const auto found = env.find(name);
    if (found == env.end()) {
      return false;
    }
    *value = found->second;
    return true;
  }

  std::map<std::string, std::string> env;
  std::map<std::string, int> envReads;
};

std::string LogPath() {
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  return path.str();
}

std::string Stamp() {
  CString stamp;
  VEKZOLLog::GetCreationTimeStamp(stamp);
  return stamp.str();
}

// Each test gets a fresh log state and its own trace directory, named after
// the test, as TEMP of the fake environment.
class VEKZOLLogTest : public ::testing::Test {
 protected:
  void SetUp() override {
    VEKZOLLogTestPeer::Reset();
    const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
    std::string name = std::string(info->test_suite_name()) + "." + info->name();
    for (char& ch : name) {
      if (ch == '/') {
        ch = '_';
      }
    }
    dir_ = TestTempDir() + separator_ + name;
    std::filesystem::remove_all(dir_);
    std::filesystem::create_directories(dir_);
    fake_.env["TEMP"] = dir_;
  }
  void TearDown() override { VEKZOLLogTestPeer::Reset(); }

  // The trace file that a stamp gives in this test's directory.
  std::string PathIn(const std::string& directory, const std::string& stamp) const {
    return directory + separator_ + "VZOL_Traces_" + stamp + ".log";
  }
  std::string ExpectedPath(const std::string& stamp = kStamp) const { return PathIn(dir_, stamp); }

  const std::string separator_ = std::string(1, vekzol::platform::DefaultSystem()->PathSeparator());
  FakeSystem fake_;
  ScopedSystem scoped_{&fake_};
  std::string dir_;
};

TEST_F(VEKZOLLogTest, PathAndStampAreEmptyBeforeTheFirstLine) {
  CString path("left over");
  CString stamp("left over");
  VEKZOLLog::GetLogFilePath(path);
  VEKZOLLog::GetCreationTimeStamp(stamp);
  EXPECT_EQ(path.str(), "");
  EXPECT_EQ(stamp.str(), "");
  EXPECT_TRUE(VEKZOLLog::IsLogEnabled());
  EXPECT_FALSE(VEKZOLLog::IsRQTMode());
  EXPECT_FALSE(VEKZOLLog::IsVerbosityEnabled());
  EXPECT_EQ(LogPath(), "");
  EXPECT_EQ(Stamp(), "");
  EXPECT_TRUE(fake_.opens.empty());
  EXPECT_TRUE(ListDirectory(dir_).empty());
}

TEST_F(VEKZOLLogTest, FirstLineWritesHeaderEmptyLineAndTimedLine) {
  VEKZOLLog::WriteMsg("hello", 0);

  EXPECT_EQ(Stamp(), kStamp);
  EXPECT_EQ(LogPath(), ExpectedPath());
  EXPECT_EQ(ReadFile(LogPath()),
            "Log created: Sat_2026_Nov_07_hh09_mm35_ss12\n\nNov 07 09:35:12\thello\n");
  EXPECT_EQ(ListDirectory(dir_),
            std::vector<std::string>{"VZOL_Traces_Sat_2026_Nov_07_hh09_mm35_ss12.log"});
  EXPECT_TRUE(VEKZOLLog::_bIsInitialized);
}

TEST_F(VEKZOLLogTest, CreationFormatsLocalTimeOfNowWithTheStampFormat) {
  VEKZOLLog::WriteMsg("hello", 0);

  EXPECT_EQ(fake_.localTimeArgs, std::vector<int64_t>{kNow});
  ASSERT_EQ(fake_.formatTimeCalls.size(), 1u);
  EXPECT_EQ(fake_.formatTimeCalls[0].first, "%a_%Y_%b_%d_hh%H_mm%M_ss%S");
  EXPECT_EQ(fake_.formatTimeCalls[0].second, 1024u);
  // The date text is asked once, for the line; creation did not need it.
  EXPECT_EQ(fake_.dateTextArgs, std::vector<int64_t>{kNow});
  EXPECT_EQ(fake_.opens, std::vector<OpenCall>{OpenCall(ExpectedPath(), "w+")});
}

TEST_F(VEKZOLLogTest, LaterLinesAreAppendedToTheSameFileWithoutHeader) {
  VEKZOLLog::WriteMsg("one", 0);
  // A later clock failure changes nothing: the file and its stamp are kept.
  fake_.failLocalTime = true;
  VEKZOLLog::WriteMsg("two", 0);
  VEKZOLLog::WriteMsg("three", 0);

  EXPECT_EQ(LogPath(), ExpectedPath());
  EXPECT_EQ(Stamp(), kStamp);
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader + Line("one") + Line("two") + Line("three"));
  EXPECT_EQ(fake_.opens,
            (std::vector<OpenCall>{OpenCall(ExpectedPath(), "w+"), OpenCall(ExpectedPath(), "a+"),
                                   OpenCall(ExpectedPath(), "a+")}));
  EXPECT_EQ(fake_.localTimeArgs.size(), 1u);
}

TEST_F(VEKZOLLogTest, CreationEmptiesAnExistingFileOfTheSameName) {
  {
    std::FILE* old = std::fopen(ExpectedPath().c_str(), "w");
    ASSERT_NE(old, nullptr);
    std::fputs("an older run's lines\n", old);
    std::fclose(old);
  }
  VEKZOLLog::WriteMsg("fresh", 0);
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader + Line("fresh"));
}

TEST_F(VEKZOLLogTest, EmptyMessageGivesCutDateAndTab) {
  VEKZOLLog::WriteMsg("", 0);
  EXPECT_EQ(ReadFile(ExpectedPath()), std::string(kHeader) + "Nov 07 09:35:12\t\n");
}

TEST_F(VEKZOLLogTest, PercentSignsInMessageAreWrittenAsData) {
  VEKZOLLog::WriteMsg("100% done %s %d %n %%", 0);
  EXPECT_EQ(ReadFile(ExpectedPath()),
            std::string(kHeader) + "Nov 07 09:35:12\t100% done %s %d %n %%\n");
}

TEST_F(VEKZOLLogTest, EmbeddedNewlinesStayAsTheyAre) {
  VEKZOLLog::WriteMsg("first\nsecond\n", 0);
  EXPECT_EQ(ReadFile(ExpectedPath()), std::string(kHeader) + "Nov 07 09:35:12\tfirst\nsecond\n\n");
}

TEST_F(VEKZOLLogTest, KindMarkersOfTheCallerAreWrittenUnchanged) {
  VEKZOLLog::WriteMsg("****** ERROR:\t bad input", 0);
  VEKZOLLog::WriteMsg("Info:\t note", 0);
  EXPECT_EQ(ReadFile(ExpectedPath()), std::string(kHeader) +
                                          "Nov 07 09:35:12\t****** ERROR:\t bad input\n" +
                                          "Nov 07 09:35:12\tInfo:\t note\n");
}

// The date text of a line, and the part of it that stands before the tab.
struct DateCut {
  const char* label;
  const char* dateText;
  const char* cut;
};

class VEKZOLLogDateCutTest : public VEKZOLLogTest, public ::testing::WithParamInterface<DateCut> {};

TEST_P(VEKZOLLogDateCutTest, LineStartsWithTheCutDateText) {
  fake_.dateText = GetParam().dateText;
  VEKZOLLog::WriteMsg("m", 0);
  EXPECT_EQ(ReadFile(ExpectedPath()), std::string(kHeader) + GetParam().cut + "\tm\n");
}

INSTANTIATE_TEST_SUITE_P(
    DateTexts, VEKZOLLogDateCutTest,
    ::testing::Values(
        DateCut{"WindowsForm", "Sat Nov 07 09:35:12 2026\n", "Nov 07 09:35:12"},
        DateCut{"BlankPaddedDay", "Sat Nov  7 09:35:12 2026\n", "Nov  7 09:35:12"},
        DateCut{"MultiByteWeekday", "Sa\xC3\xA9 Nov 07 09:35:12 2026\n", "Nov 07 09:35:12"},
        DateCut{"NoLineEndLosesLastCharacter", "Sat Nov 07 09:35:12 2026", "Nov 07 09:35:12"},
        DateCut{"Empty", "", ""}, DateCut{"OnlyLineEnd", "\n", ""},
        DateCut{"OneCharacter", "X", ""}, DateCut{"NoBlank", "NoBlankAtAll\n", "NoBlankAtAll"},
        DateCut{"LeadingBlankStopsWeekdayCut", " leading blank\n", " leading"},
        DateCut{"OnlyBlankAtStartKeepsAll", " x\n", " x"},
        DateCut{"TwoWordsKeepFirst", "a b\n", "a"}, DateCut{"TrailingBlank", "x \n", "x"},
        DateCut{"DoubleBlankLeavesNothing", "a  b\n", ""},
        DateCut{"TwoBlanksKeepOne", "  \n", " "}),
    [](const ::testing::TestParamInfo<DateCut>& info) { return std::string(info.param.label); });

TEST_F(VEKZOLLogTest, LocalTimeFailureUsesTheDateTextForStampAndHeader) {
  fake_.failLocalTime = true;
  VEKZOLLog::WriteMsg("msg", 0);

  EXPECT_EQ(Stamp(), "Sat_Nov_07_09_35_12_2026");
  EXPECT_EQ(LogPath(), ExpectedPath("Sat_Nov_07_09_35_12_2026"));
  // The header keeps the unchanged date text, line end included.
  EXPECT_EQ(ReadFile(LogPath()),
            "Log created: Sat Nov 07 09:35:12 2026\n\n\nNov 07 09:35:12\tmsg\n");
  EXPECT_TRUE(fake_.formatTimeCalls.empty());
  EXPECT_EQ(fake_.dateTextArgs, (std::vector<int64_t>{kNow, kNow}));
}

// A date text seen by the fallback, the stamp it gives and the whole file.
struct Fallback {
  const char* label;
  const char* dateText;
  const char* stamp;
  const char* contents;
};

class VEKZOLLogFallbackTest : public VEKZOLLogTest,
                              public ::testing::WithParamInterface<Fallback> {};

TEST_P(VEKZOLLogFallbackTest, StampReplacesBlanksAndColonsOfTheDateText) {
  fake_.failLocalTime = true;
  fake_.dateText = GetParam().dateText;
  VEKZOLLog::WriteMsg("msg", 0);

  EXPECT_EQ(Stamp(), GetParam().stamp);
  EXPECT_EQ(LogPath(), ExpectedPath(GetParam().stamp));
  EXPECT_EQ(ReadFile(ExpectedPath(GetParam().stamp)), GetParam().contents);
}

INSTANTIATE_TEST_SUITE_P(
    DateTexts, VEKZOLLogFallbackTest,
    ::testing::Values(
        Fallback{"BlankPaddedDay", "Sat Nov  7 09:35:12 2026\n", "Sat_Nov__7_09_35_12_2026",
                 "Log created: Sat Nov  7 09:35:12 2026\n\n\nNov  7 09:35:12\tmsg\n"},
        Fallback{"Empty", "", "", "Log created: \n\n\tmsg\n"},
        Fallback{"NoLineEnd", "abc d:e", "abc_d_", "Log created: abc d:e\n\nabc\tmsg\n"},
        Fallback{"MultiByteCharactersKept",
                 "Sam\xC3\xA9"
                 "di 07 nov. 09:35:12\n",
                 "Sam\xC3\xA9"
                 "di_07_nov._09_35_12",
                 "Log created: Sam\xC3\xA9"
                 "di 07 nov. 09:35:12\n\n\n07 nov.\tmsg\n"}),
    [](const ::testing::TestParamInfo<Fallback>& info) { return std::string(info.param.label); });

TEST_F(VEKZOLLogTest, OpenFailureLosesTheLineAndLaterLinesRetryWithAppend) {
  fake_.failOpen = true;
  VEKZOLLog::WriteMsg("lost", 0);

  // The creation step has run: path and stamp are known, no file exists.
  EXPECT_TRUE(VEKZOLLog::_bIsInitialized);
  EXPECT_EQ(LogPath(), ExpectedPath());
  EXPECT_EQ(Stamp(), kStamp);
  EXPECT_FALSE(FileExists(ExpectedPath()));
  // Nothing was formatted for a line that had no stream.
  EXPECT_TRUE(fake_.dateTextArgs.empty());

  VEKZOLLog::WriteMsg("lost again", 0);
  fake_.failOpen = false;
  VEKZOLLog::WriteMsg("kept", 0);

  EXPECT_EQ(fake_.opens,
            (std::vector<OpenCall>{OpenCall(ExpectedPath(), "w+"), OpenCall(ExpectedPath(), "a+"),
                                   OpenCall(ExpectedPath(), "a+")}));
  // The retry appends: the header belonged to the failed creation.
  EXPECT_EQ(ReadFile(ExpectedPath()), Line("kept"));
}

TEST_F(VEKZOLLogTest, OpenFailurePrintsNothingInBatchMode) {
  fake_.env["JBM_RQT_IN"] = "request.xml";
  fake_.failOpen = true;

  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("lost", 0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  // The line stopped before batch mode was even asked.
  EXPECT_EQ(fake_.envReads["JBM_RQT_IN"], 0);

  fake_.failOpen = false;
  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("kept", 0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), Line("kept"));
  EXPECT_EQ(ReadFile(ExpectedPath()), Line("kept"));
}

TEST_F(VEKZOLLogTest, BatchModePrintsTheSameLinesWithoutTheHeader) {
  fake_.env["JBM_RQT_IN"] = "request.xml";

  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("first", 0);
  VEKZOLLog::WriteMsg("100% %s", 0);
  VEKZOLLog::WriteMsg("", 0);
  const std::string printed = ::testing::internal::GetCapturedStdout();

  const std::string lines = Line("first") + Line("100% %s") + Line("");
  EXPECT_EQ(printed, lines);
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader + lines);
}

TEST_F(VEKZOLLogTest, InteractiveModePrintsNothing) {
  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("quiet", 0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader + Line("quiet"));
}

// A value of one switch variable (null: not set) and the answer it gives.
struct Switch {
  const char* label;
  const char* value;
  bool answer;
};

std::string SwitchName(const ::testing::TestParamInfo<Switch>& info) { return info.param.label; }

class VEKZOLLogEnabledTest : public VEKZOLLogTest, public ::testing::WithParamInterface<Switch> {};

TEST_P(VEKZOLLogEnabledTest, OnlyExactFALSETurnsLoggingOff) {
  if (GetParam().value != nullptr) {
    fake_.env["VEK_ZOL_LOG_ENABLED"] = GetParam().value;
  }
  fake_.env["JBM_RQT_IN"] = "1";
  fake_.env["VEK_ZOL_LOG_VERBOSE"] = "TRUE";

  EXPECT_EQ(VEKZOLLog::IsLogEnabled(), GetParam().answer);
  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("line", 0);
  const std::string printed = ::testing::internal::GetCapturedStdout();

  if (GetParam().answer) {
    EXPECT_EQ(printed, Line("line"));
    EXPECT_EQ(ReadFile(ExpectedPath()), kHeader + Line("line"));
  } else {
    // Off: WriteMsg returns at once, touching neither clock, file nor stdout.
    EXPECT_EQ(printed, "");
    EXPECT_TRUE(fake_.opens.empty());
    EXPECT_EQ(fake_.nowCalls, 0);
    EXPECT_EQ(fake_.envReads["JBM_RQT_IN"], 0);
    EXPECT_EQ(fake_.envReads["TEMP"], 0);
    EXPECT_TRUE(ListDirectory(dir_).empty());
    EXPECT_EQ(LogPath(), "");
    EXPECT_EQ(Stamp(), "");
    EXPECT_FALSE(VEKZOLLog::_bIsInitialized);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Values, VEKZOLLogEnabledTest,
    ::testing::Values(Switch{"Unset", nullptr, true}, Switch{"UpperFALSE", "FALSE", false},
                      Switch{"LowerFalse", "false", true}, Switch{"MixedFalse", "False", true},
                      Switch{"Zero", "0", true}, Switch{"Empty", "", true},
                      Switch{"TrailingBlank", "FALSE ", true}, Switch{"TRUE", "TRUE", true}),
    SwitchName);

class VEKZOLLogVerboseTest : public VEKZOLLogTest, public ::testing::WithParamInterface<Switch> {};

TEST_P(VEKZOLLogVerboseTest, VerboseLinesNeedExactTRUEOrOneAndAnEarlierAsk) {
  if (GetParam().value != nullptr) {
    fake_.env["VEK_ZOL_LOG_VERBOSE"] = GetParam().value;
  }
  const std::string expected = WriteVerboseScenario(GetParam().answer);
  EXPECT_EQ(ReadFile(ExpectedPath()), expected);
  // Only the explicit ask read the environment, once.
  EXPECT_EQ(fake_.envReads["VEK_ZOL_LOG_VERBOSE"], 1);
}

INSTANTIATE_TEST_SUITE_P(
    Values, VEKZOLLogVerboseTest,
    ::testing::Values(Switch{"Unset", nullptr, false}, Switch{"UpperTRUE", "TRUE", true},
                      Switch{"One", "1", true}, Switch{"LowerTrue", "true", false},
                      Switch{"MixedTrue", "True", false}, Switch{"Yes", "yes", false},
                      Switch{"Eleven", "11", false}, Switch{"BlankOne", " 1", false},
                      Switch{"Empty", "", false}),
    SwitchName);

class VEKZOLLogRQTModeTest : public VEKZOLLogTest, public ::testing::WithParamInterface<Switch> {};

TEST_P(VEKZOLLogRQTModeTest, AnyNonEmptyValueIsABatchRun) {
  if (GetParam().value != nullptr) {
    fake_.env["JBM_RQT_IN"] = GetParam().value;
  }
  EXPECT_EQ(VEKZOLLog::IsRQTMode(), GetParam().answer);
  ::testing::internal::CaptureStdout();
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), GetParam().answer ? Line("line") : "");
}

INSTANTIATE_TEST_SUITE_P(
    Values, VEKZOLLogRQTModeTest,
    ::testing::Values(Switch{"Unset", nullptr, false}, Switch{"Empty", "", false},
                      Switch{"Path", "C:\\jobs\\in.xml", true}, Switch{"Zero", "0", true},
                      Switch{"FALSE", "FALSE", true}, Switch{"Blank", " ", true}),
    SwitchName);

TEST_F(VEKZOLLogTest, VerboseLineBeforeAnyOtherDoesNotCreateTheFile) {
  fake_.env["VEK_ZOL_LOG_VERBOSE"] = "TRUE";
  VEKZOLLog::WriteMsg("verbose", 1);
  EXPECT_TRUE(fake_.opens.empty());
  EXPECT_EQ(LogPath(), "");
  EXPECT_FALSE(VEKZOLLog::_bIsInitialized);
  EXPECT_TRUE(ListDirectory(dir_).empty());
}

TEST_F(VEKZOLLogTest, WriteMsgReadsTheCachedVerboseFlagItself) {
  // The flag is on although the environment was never read.
  VEKZOLLogTestPeer::SetVerbose(true);
  VEKZOLLog::WriteMsg("verbose", 1);
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader + Line("verbose"));
  EXPECT_FALSE(VEKZOLLogTestPeer::VerboseRead());
  EXPECT_EQ(fake_.envReads["VEK_ZOL_LOG_VERBOSE"], 0);
}

TEST_F(VEKZOLLogTest, EachSwitchReadsTheEnvironmentOncePerProcess) {
  fake_.env["VEK_ZOL_LOG_ENABLED"] = "TRUE";
  fake_.env["JBM_RQT_IN"] = "in.xml";
  fake_.env["VEK_ZOL_LOG_VERBOSE"] = "1";
  EXPECT_TRUE(VEKZOLLog::IsLogEnabled());
  EXPECT_TRUE(VEKZOLLog::IsRQTMode());
  EXPECT_TRUE(VEKZOLLog::IsVerbosityEnabled());
  EXPECT_TRUE(VEKZOLLogTestPeer::LogEnabledRead());
  EXPECT_TRUE(VEKZOLLogTestPeer::RQTModeRead());
  EXPECT_TRUE(VEKZOLLogTestPeer::VerboseRead());

  // Later changes of the variables have no effect.
  fake_.env["VEK_ZOL_LOG_ENABLED"] = "FALSE";
  fake_.env.erase("JBM_RQT_IN");
  fake_.env["VEK_ZOL_LOG_VERBOSE"] = "0";
  ::testing::internal::CaptureStdout();
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(VEKZOLLog::IsLogEnabled());
    EXPECT_TRUE(VEKZOLLog::IsRQTMode());
    EXPECT_TRUE(VEKZOLLog::IsVerbosityEnabled());
    VEKZOLLog::WriteMsg("line", 1);
  }
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), Line("line") + Line("line") + Line("line"));

  EXPECT_EQ(fake_.envReads["VEK_ZOL_LOG_ENABLED"], 1);
  EXPECT_EQ(fake_.envReads["JBM_RQT_IN"], 1);
  EXPECT_EQ(fake_.envReads["VEK_ZOL_LOG_VERBOSE"], 1);
  // The directory is read once, when the file is created.
  EXPECT_EQ(fake_.envReads["TEMP"], 1);
}

TEST_F(VEKZOLLogTest, GetLogFileReturnsEFailOnEveryPath) {
  std::FILE* stream = nullptr;
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);  // creation
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader);

  stream = nullptr;
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);  // append
  ASSERT_NE(stream, nullptr);
  std::fclose(stream);

  fake_.failOpen = true;
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);  // append fails
  EXPECT_EQ(stream, nullptr);

  VEKZOLLogTestPeer::Reset();
  EXPECT_EQ(VEKZOLLogTestPeer::GetLogFile(&stream), E_FAIL);  // creation fails
  EXPECT_EQ(stream, nullptr);
  EXPECT_TRUE(VEKZOLLog::_bIsInitialized);
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader);
}

TEST_F(VEKZOLLogTest, InitialisedWithEmptyPathCreatesTheFileAgain) {
  VEKZOLLog::_bIsInitialized = true;
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(fake_.opens, std::vector<OpenCall>{OpenCall(ExpectedPath(), "w+")});
  EXPECT_EQ(ReadFile(ExpectedPath()), kHeader + Line("line"));
}

TEST_F(VEKZOLLogTest, PathWithoutInitialisationIsReplacedByCreation) {
  VEKZOLLog::_LogFilePath = "elsewhere.log";
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), ExpectedPath());
  EXPECT_EQ(fake_.opens, std::vector<OpenCall>{OpenCall(ExpectedPath(), "w+")});
  EXPECT_FALSE(FileExists("elsewhere.log"));
}

TEST_F(VEKZOLLogTest, PercentSignsInTheDirectoryAreData) {
  const std::string directory = dir_ + separator_ + "pct%s%n%d";
  std::filesystem::create_directories(directory);
  fake_.env["TEMP"] = directory;
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), PathIn(directory, kStamp));
  EXPECT_EQ(ReadFile(PathIn(directory, kStamp)), kHeader + Line("line"));
}

TEST_F(VEKZOLLogTest, DirectoryIsJoinedWithoutLookingAtItsEnd) {
  fake_.env["TEMP"] = dir_ + separator_;
  fake_.failOpen = true;
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), dir_ + separator_ + separator_ + "VZOL_Traces_" + kStamp + ".log");
}

TEST_F(VEKZOLLogTest, DirectoryIsJoinedWithThePlatformSeparator) {
  fake_.separator = '\\';
  fake_.env["TEMP"] = "C:\\Users\\me\\Temp";
  fake_.failOpen = true;
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), std::string("C:\\Users\\me\\Temp\\VZOL_Traces_") + kStamp + ".log");

  VEKZOLLogTestPeer::Reset();
  fake_.separator = '/';
  fake_.env["TEMP"] = "/var/tmp";
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), std::string("/var/tmp/VZOL_Traces_") + kStamp + ".log");
}

TEST_F(VEKZOLLogTest, EmptyTempPutsTheFileAtTheRoot) {
  fake_.env["TEMP"] = "";
  fake_.env["TMPDIR"] = dir_;
  fake_.failOpen = true;
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), separator_ + "VZOL_Traces_" + kStamp + ".log");
  EXPECT_EQ(fake_.envReads["TMPDIR"], 0);
}

#if defined(_WIN32)
TEST_F(VEKZOLLogTest, UnsetTempPutsTheFileAtTheRootOfTheDrive) {
  fake_.env.erase("TEMP");
  fake_.env["TMPDIR"] = dir_;
  fake_.failOpen = true;
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), std::string("\\VZOL_Traces_") + kStamp + ".log");
}
#else
TEST_F(VEKZOLLogTest, TempWinsOverTmpdir) {
  fake_.env["TMPDIR"] = "/nowhere";
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), ExpectedPath());
  EXPECT_EQ(fake_.envReads["TMPDIR"], 0);
}

TEST_F(VEKZOLLogTest, UnsetTempFallsBackToTmpdir) {
  const std::string tmpdir = dir_ + "/tmpdir";
  std::filesystem::create_directories(tmpdir);
  fake_.env.erase("TEMP");
  fake_.env["TMPDIR"] = tmpdir;
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), PathIn(tmpdir, kStamp));
  EXPECT_EQ(ReadFile(PathIn(tmpdir, kStamp)), kHeader + Line("line"));
}

TEST_F(VEKZOLLogTest, UnsetTempAndTmpdirFallBackToSlashTmp) {
  fake_.env.erase("TEMP");
  fake_.failOpen = true;  // the path is what counts; /tmp is shared
  VEKZOLLog::WriteMsg("line", 0);
  EXPECT_EQ(LogPath(), std::string("/tmp/VZOL_Traces_") + kStamp + ".log");
  EXPECT_EQ(fake_.opens, std::vector<OpenCall>{OpenCall(LogPath(), "w+")});
}
#endif

TEST_F(VEKZOLLogTest, RealClockGivesAStampThatNamesTheFile) {
  fake_.realClock = true;
  VEKZOLLog::WriteMsg("real", 0);

  const std::string stamp = Stamp();
  EXPECT_TRUE(std::regex_match(
      stamp, std::regex("(Mon|Tue|Wed|Thu|Fri|Sat|Sun)_[0-9]{4}_"
                        "(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec)_[0-9]{2}_"
                        "hh[0-9]{2}_mm[0-9]{2}_ss[0-9]{2}")))
      << stamp;
  EXPECT_EQ(LogPath(), ExpectedPath(stamp));
  const std::string contents = ReadFile(ExpectedPath(stamp));
  const std::string header = "Log created: " + stamp + "\n\n";
  ASSERT_EQ(contents.substr(0, header.size()), header);
  EXPECT_TRUE(std::regex_match(contents.substr(header.size()),
                               std::regex("(Jan|Feb|Mar|Apr|May|Jun|Jul|Aug|Sep|Oct|Nov|Dec) "
                                          "[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}\treal\n")))
      << contents;
}

TEST_F(VEKZOLLogTest, InstancesCarryNoState) {
  VEKZOLLog first;
  VEKZOLLog second;
  EXPECT_EQ(&(second = first), &second);
  EXPECT_TRUE(fake_.opens.empty());
  EXPECT_EQ(LogPath(), "");
}

}  // namespace
