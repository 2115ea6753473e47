// Tests of the session data directory: the base of each flavour, the name,
// the four states of the session path and every transition between them.
// Directories are real, below the test's own directory; the environment
// and the clock come through the platform seam, so each case sets exactly
// the variables it needs.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "filesystem/VEKZOLFileSystemServicesTestSupport.h"

namespace {

using Peer = VEKZOLFileSystemServicesTestPeer;
using vekzol_fs_test::Exists;
using vekzol_fs_test::ExpectUntouched;
using vekzol_fs_test::FakeSystem;
using vekzol_fs_test::FileSystemTest;
using vekzol_fs_test::Handler;
using vekzol_fs_test::IsDir;
using vekzol_fs_test::Join;
using vekzol_fs_test::MakeDir;
using vekzol_fs_test::Names;
using vekzol_fs_test::ScopedSystem;
using vekzol_fs_test::UntouchedHandler;
using vekzol_fs_test::WriteFile;

#if defined(_WIN32)
constexpr const char* kDefaultBase = "C:\\temp";
#else
constexpr const char* kDefaultBase = "/tmp";
#endif

// The stamp of the fake clock with the session's own markers.
constexpr const char* kClockStamp = "Sat_2026_Nov_07_HH09_MM35_SS12";
// A stamp as the trace log forms it.
constexpr const char* kLogStamp = "Sat_2026_Nov_14_hh09_mm40_ss46";

class SessionTest : public FileSystemTest {
 protected:
  void SetUp() override {
    FileSystemTest::SetUp();
    base_ = At("base");
    MakeDir(base_);
  }
  std::string Get() {
    CString path = "junk";
    VEKZOLFileSystemServices::GetVZOLSessionDataDirectory(path);
    return path.GetString();
  }
  std::string GetRQT() {
    CString path = "junk";
    VEKZOLFileSystemServices::GetRQTSessionDataDirectory(path);
    return path.GetString();
  }
  long Create(const char* id, std::string* path, Handler* handler) {
    CString text = id;
    CString out = "junk";
    const long status =
        VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory(text, out, handler);
    *path = out.GetString();
    return status;
  }
  long CreateRQT(const char* name, std::string* path, Handler* handler) {
    CString text = name;
    CString out = "junk";
    const long status = VEKZOLFileSystemServices::CreateRQTSessionDataDirectory(text, out, handler);
    *path = out.GetString();
    return status;
  }
  void Set(const std::string& path) {
    CString text = path.c_str();
    VEKZOLFileSystemServices::SetVZOLSessionDataDirectory(text);
  }
  void ExpectState(const std::string& path, bool created) {
    EXPECT_EQ(std::string(Peer::SessionPath()), path);
    EXPECT_EQ(Peer::SessionDirCreated(), created);
  }
  std::string SessionDir(const char* stamp, const char* id) {
    return Join(base_, std::string("VZOL_Session_") + stamp + "_ID" + id);
  }

  FakeSystem system_;
  std::string base_;
};

// ------------------------------------------------------------ bases

TEST_F(SessionTest, GetTakesTempAsTheBaseAndKeepsIt) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  system_.env["TMPDIR"] = root_;
  EXPECT_EQ(Get(), base_);
  ExpectState(base_, false);
  system_.env["TEMP"] = root_;
  EXPECT_EQ(Get(), base_);
}

TEST_F(SessionTest, ASetVariableNamingAMissingDirectoryEndsTheSearch) {
  ScopedSystem scoped(&system_);
  system_.fakeDirectories[kDefaultBase] = true;
  system_.env["TEMP"] = At("missing");
  system_.env["TMPDIR"] = base_;
  EXPECT_EQ(Get(), "");
  ExpectState("", false);
  std::string path;
  EXPECT_EQ(Create("17", &path, nullptr), E_FAIL);
  EXPECT_EQ(path, "");
  for (const std::string& read : system_.attributeReads) {
    EXPECT_NE(read, kDefaultBase);
    EXPECT_NE(read, base_);
  }
}

TEST_F(SessionTest, ASetButEmptyVariableEndsTheSearchWithNoBase) {
  ScopedSystem scoped(&system_);
  system_.fakeDirectories[kDefaultBase] = true;
  system_.env["TEMP"] = "";
  EXPECT_EQ(Get(), "");
  system_.env["JBM_RQT_OUT"] = "";
  system_.env["JBM_RQT_TEMP"] = base_;
  EXPECT_EQ(GetRQT(), "");
}

TEST_F(SessionTest, AFileIsNoBase) {
  ScopedSystem scoped(&system_);
  WriteFile(At("file"), "");
  system_.env["TEMP"] = At("file");
  EXPECT_EQ(Get(), "");
}

TEST_F(SessionTest, WithoutTempAndWithoutTheDefaultDirectoryThereIsNoSession) {
  ScopedSystem scoped(&system_);
  system_.attributeFailures[kDefaultBase] = 2;
  EXPECT_EQ(Get(), "");
  std::string path = "junk";
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create("17", &path, &handler), E_FAIL);
  EXPECT_EQ(path, "");
  ExpectUntouched(handler);
  ExpectState("", false);
  EXPECT_TRUE(system_.makes.empty());
}

TEST_F(SessionTest, WithoutTempTheDefaultDirectoryIsTheBase) {
  ScopedSystem scoped(&system_);
  system_.fakeDirectories[kDefaultBase] = true;
#if !defined(_WIN32)
  // TMPDIR comes between them here.
  system_.env["TMPDIR"] = base_;
  EXPECT_EQ(Get(), base_);
  VEKZOLFileSystemServices::Cleanup();
  system_.env.erase("TMPDIR");
#endif
  EXPECT_EQ(Get(), kDefaultBase);
}

TEST_F(SessionTest, TheBatchBaseIsRqtOutThenRqtTempThenTheDefault) {
  ScopedSystem scoped(&system_);
  system_.fakeDirectories[kDefaultBase] = true;
  system_.env["TEMP"] = root_;
  system_.env["JBM_RQT_OUT"] = base_;
  system_.env["JBM_RQT_TEMP"] = root_;
  EXPECT_EQ(GetRQT(), base_);
  VEKZOLFileSystemServices::Cleanup();
  system_.env.erase("JBM_RQT_OUT");
  EXPECT_EQ(GetRQT(), root_);
  VEKZOLFileSystemServices::Cleanup();
  system_.env["JBM_RQT_OUT"] = At("missing");
  EXPECT_EQ(GetRQT(), "");
  system_.env.erase("JBM_RQT_OUT");
  system_.env.erase("JBM_RQT_TEMP");
  EXPECT_EQ(GetRQT(), kDefaultBase);
}

TEST_F(SessionTest, ABaseEndingInASeparatorGivesADoubledOne) {
  ScopedSystem scoped(&system_);
  VEKZOLLog::_CreationTimeStamp = kLogStamp;
  const std::string slashed = base_ + vekzol_fs_test::Sep();
  system_.env["TEMP"] = slashed;
  std::string path;
  EXPECT_EQ(Create("1", &path, nullptr), S_OK);
  EXPECT_EQ(path, slashed + vekzol_fs_test::Sep() + "VZOL_Session_" + kLogStamp + "_ID1");
  EXPECT_TRUE(IsDir(SessionDir(kLogStamp, "1")));
}

// ------------------------------------------------------------ names

TEST_F(SessionTest, TheNameTakesTheTraceLogsStamp) {
  ScopedSystem scoped(&system_);
  VEKZOLLog::_CreationTimeStamp = kLogStamp;
  CString id = "17";
  CString name = "old";
  EXPECT_EQ(Peer::GenerateName(id, name), S_OK);
  EXPECT_STREQ(name, "VZOL_Session_Sat_2026_Nov_14_hh09_mm40_ss46_ID17");
  EXPECT_TRUE(system_.formats.empty());
}

TEST_F(SessionTest, WithoutTheLogsStampTheLocalTimeWithUpperCaseMarkers) {
  ScopedSystem scoped(&system_);
  CString id = "17";
  CString name;
  EXPECT_EQ(Peer::GenerateName(id, name), S_OK);
  EXPECT_STREQ(name, "VZOL_Session_Sat_2026_Nov_07_HH09_MM35_SS12_ID17");
  EXPECT_EQ(system_.formats, std::vector<std::string>({"%a_%Y_%b_%d_HH%H_MM%M_SS%S"}));
  EXPECT_EQ(system_.capacities, std::vector<size_t>({128}));
}

TEST_F(SessionTest, AnEmptyIdGivesANameEndingInId) {
  ScopedSystem scoped(&system_);
  CString id;
  CString name;
  EXPECT_EQ(Peer::GenerateName(id, name), S_OK);
  EXPECT_STREQ(name, "VZOL_Session_Sat_2026_Nov_07_HH09_MM35_SS12_ID");
}

TEST_F(SessionTest, AStampOfSixCharactersAtMostNeedsAnId) {
  ScopedSystem scoped(&system_);
  CString empty;
  CString id = "5";
  CString name = "old";
  VEKZOLLog::_CreationTimeStamp = "abcdef";
  EXPECT_EQ(Peer::GenerateName(empty, name), E_FAIL);
  EXPECT_STREQ(name, "");
  EXPECT_EQ(Peer::GenerateName(id, name), S_OK);
  EXPECT_STREQ(name, "VZOL_Session_abcdef_ID5");
  VEKZOLLog::_CreationTimeStamp = "abcdefg";
  EXPECT_EQ(Peer::GenerateName(empty, name), S_OK);
  EXPECT_STREQ(name, "VZOL_Session_abcdefg_ID");
}

TEST_F(SessionTest, ATimeThatCannotBeConvertedGivesAnEmptyStamp) {
  ScopedSystem scoped(&system_);
  system_.failLocalTime = true;
  CString empty;
  CString id = "9";
  CString name = "old";
  EXPECT_EQ(Peer::GenerateName(empty, name), E_FAIL);
  EXPECT_STREQ(name, "");
  EXPECT_EQ(Peer::GenerateName(id, name), S_OK);
  EXPECT_STREQ(name, "VZOL_Session__ID9");
}

// ------------------------------------------------------------ create

TEST_F(SessionTest, CreateMakesTheDirectoryAndMarksItAsMade) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create("17", &path, &handler), S_OK);
  EXPECT_EQ(path, SessionDir(kClockStamp, "17"));
  EXPECT_TRUE(IsDir(path));
  ExpectState(path, true);
  ExpectUntouched(handler);
  EXPECT_EQ(Get(), path);
}

TEST_F(SessionTest, CreateWithAnEmptyIdMakesANameEndingInId) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  EXPECT_EQ(Create("", &path, nullptr), S_OK);
  EXPECT_EQ(path, SessionDir(kClockStamp, ""));
  EXPECT_TRUE(IsDir(path));
}

TEST_F(SessionTest, ASecondCreateAnswersSFalseWithTheSamePathAndIgnoresItsId) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string first;
  std::string second;
  EXPECT_EQ(Create("17", &first, nullptr), S_OK);
  EXPECT_EQ(Create("18", &second, nullptr), S_FALSE);
  EXPECT_EQ(second, first);
  EXPECT_EQ(Names(base_),
            std::vector<std::string>({"VZOL_Session_" + std::string(kClockStamp) + "_ID17"}));
  ExpectState(first, true);
}

TEST_F(SessionTest, AGetBeforeCreateFixesTheSessionOnTheBase) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  EXPECT_EQ(Get(), base_);
  std::string path;
  EXPECT_EQ(Create("17", &path, nullptr), S_FALSE);
  EXPECT_EQ(path, base_);
  EXPECT_TRUE(Names(base_).empty());
  ExpectState(base_, false);
}

TEST_F(SessionTest, TheSameSecondAndIdTwiceFailsAndStaysOnTheBase) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  VEKZOLLog::_CreationTimeStamp = kLogStamp;
  const std::string taken = SessionDir(kLogStamp, "17");
  MakeDir(taken);
  WriteFile(Join(taken, "other.txt"), "other process");
  std::string path;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create("17", &path, &handler), E_FAIL);
  EXPECT_EQ(path, base_);
  ExpectState(base_, false);
  EXPECT_EQ(handler._ErrorCode, 183u);
#if defined(_WIN32)
  EXPECT_STREQ(handler._ErrorMessage, "File already exists.\r.");
#else
  EXPECT_STREQ(handler._ErrorMessage, "File exists.");
#endif
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory( " + taken + " )");
  // Not ours: Delete refuses, the other process's files stay.
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), E_FAIL);
  EXPECT_EQ(Names(taken), std::vector<std::string>({"other.txt"}));
}

TEST_F(SessionTest, ACreateWithoutAUsableNameStaysOnTheBaseWithSFalse) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  system_.failLocalTime = true;
  std::string path;
  EXPECT_EQ(Create("", &path, nullptr), S_FALSE);
  EXPECT_EQ(path, base_);
  ExpectState(base_, false);
  EXPECT_TRUE(system_.makes.empty());
}

TEST_F(SessionTest, OneLevelOnlyIsMadeUnderTheBase) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  EXPECT_EQ(Create(Join("nested", "17").c_str(), &path, nullptr), E_FAIL);
  EXPECT_EQ(path, base_);
  EXPECT_TRUE(Names(base_).empty());
}

// ------------------------------------------------------------ batch create

TEST_F(SessionTest, ABatchCreateMakesTheGivenNameAsItStands) {
  ScopedSystem scoped(&system_);
  system_.env["JBM_RQT_OUT"] = base_;
  std::string path;
  EXPECT_EQ(CreateRQT("run-42", &path, nullptr), S_OK);
  EXPECT_EQ(path, Join(base_, "run-42"));
  EXPECT_TRUE(IsDir(path));
  ExpectState(path, true);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), S_OK);
  EXPECT_FALSE(Exists(path));
  ExpectState("", false);
}

TEST_F(SessionTest, ABatchCreateOnAnExistingDirectoryAdoptsItAndDeleteRefuses) {
  ScopedSystem scoped(&system_);
  system_.env["JBM_RQT_OUT"] = base_;
  const std::string existing = Join(base_, "run-42");
  MakeDir(existing);
  WriteFile(Join(existing, "input.xml"), "x");
  std::string path;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(CreateRQT("run-42", &path, &handler), S_FALSE);
  EXPECT_EQ(path, existing);
  ExpectState(existing, false);
  ExpectUntouched(handler);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(&handler), E_FAIL);
  ExpectUntouched(handler);
  ExpectState(existing, false);
  EXPECT_EQ(Names(existing), std::vector<std::string>({"input.xml"}));
}

TEST_F(SessionTest, ABatchCreateWithAnEmptyNameStaysOnTheBase) {
  ScopedSystem scoped(&system_);
  system_.env["JBM_RQT_TEMP"] = base_;
  std::string path;
  EXPECT_EQ(CreateRQT("", &path, nullptr), S_FALSE);
  EXPECT_EQ(path, base_);
  ExpectState(base_, false);
}

TEST_F(SessionTest, ABatchCreateThatFailsOtherwiseFillsTheHandler) {
  ScopedSystem scoped(&system_);
  system_.env["JBM_RQT_OUT"] = base_;
  const std::string attempted = Join(Join(base_, "missing"), "run");
  std::string path;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(CreateRQT(Join("missing", "run").c_str(), &path, &handler), E_FAIL);
  EXPECT_EQ(path, base_);
  ExpectState(base_, false);
  EXPECT_EQ(handler._ErrorCode, 3u);
#if defined(_WIN32)
  EXPECT_STREQ(handler._ErrorMessage, "Path not found.\r.");
#else
  EXPECT_STREQ(handler._ErrorMessage, "No such file or directory.");
#endif
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::CreateRQTSessionDataDirectory( " + attempted + " )");
}

TEST_F(SessionTest, ABatchCreateWithoutABaseFails) {
  ScopedSystem scoped(&system_);
  system_.env["JBM_RQT_OUT"] = At("missing");
  std::string path = "junk";
  EXPECT_EQ(CreateRQT("run", &path, nullptr), E_FAIL);
  EXPECT_EQ(path, "");
  ExpectState("", false);
}

// ------------------------------------------------------------ set, delete, cleanup

TEST_F(SessionTest, SetAdoptsAnyPathWithoutCheckAndLeavesTheFlag) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  Set(At("nowhere"));
  ExpectState(At("nowhere"), false);
  EXPECT_EQ(Get(), At("nowhere"));
  EXPECT_FALSE(Exists(At("nowhere")));
  std::string path;
  EXPECT_EQ(Create("17", &path, nullptr), S_FALSE);
  EXPECT_EQ(path, At("nowhere"));
  CString other = root_.c_str();
  VEKZOLFileSystemServices::SetRQTSessionDataDirectory(other);
  ExpectState(root_, false);
}

TEST_F(SessionTest, DeleteRemovesTheMadeDirectoryWithItsContents) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  ASSERT_EQ(Create("17", &path, nullptr), S_OK);
  MakeDir(Join(path, "sub"));
  WriteFile(Join(Join(path, "sub"), "data.txt"), "d");
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(&handler), S_OK);
  EXPECT_FALSE(Exists(path));
  ExpectState("", false);
  ExpectUntouched(handler);
  // Unset again: the next Delete has nothing.
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(&handler), E_FAIL);
}

TEST_F(SessionTest, DeleteRightAfterGetFailsAndThePathStays) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  WriteFile(Join(base_, "keep.txt"), "k");
  EXPECT_EQ(Get(), base_);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), E_FAIL);
  ExpectState(base_, false);
  EXPECT_EQ(Names(base_), std::vector<std::string>({"keep.txt"}));
}

TEST_F(SessionTest, DeleteWhenUnsetFails) {
  ExpectState("", false);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), E_FAIL);
  ExpectState("", false);
}

TEST_F(SessionTest, DeleteAfterCleanupFailsAndTheDirectoryStays) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  ASSERT_EQ(Create("17", &path, nullptr), S_OK);
  VEKZOLFileSystemServices::Cleanup();
  ExpectState("", false);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), E_FAIL);
  EXPECT_TRUE(IsDir(path));
}

TEST_F(SessionTest, AfterAFailedClearingTheStaticsAreEmptyButTheDirectoryStays) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  ASSERT_EQ(Create("17", &path, nullptr), S_OK);
  WriteFile(Join(path, "locked.txt"), "l");
  system_.deleteFailures[Join(path, "locked.txt")] = 32;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(&handler), E_FAIL);
  ExpectUntouched(handler);
  ExpectState("", false);
  EXPECT_EQ(Names(path), std::vector<std::string>({"locked.txt"}));
  // The next Create starts afresh and meets the directory still there.
  EXPECT_EQ(Create("17", &path, &handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 183u);
}

TEST_F(SessionTest, AFailedRemovalFillsTheHandlerAndForgetsThePath) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  ASSERT_EQ(Create("17", &path, nullptr), S_OK);
  system_.removeFailures[path] = 32;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(&handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 32u);
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::DeleteDirectory( " + path + " )");
  ExpectState("", false);
  EXPECT_TRUE(IsDir(path));
}

TEST_F(SessionTest, AnAdoptedPathIsDeletedWhenTheFlagWasStillSet) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  ASSERT_EQ(Create("17", &path, nullptr), S_OK);
  const std::string other = At("other");
  MakeDir(other);
  Set(other);
  ExpectState(other, true);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(nullptr), S_OK);
  EXPECT_FALSE(Exists(other));
  EXPECT_TRUE(IsDir(path));
  ExpectState("", false);
}

TEST_F(SessionTest, CleanupForgetsWithoutTouchingTheDisk) {
  ScopedSystem scoped(&system_);
  system_.env["TEMP"] = base_;
  std::string path;
  ASSERT_EQ(Create("17", &path, nullptr), S_OK);
  VEKZOLFileSystemServices::Cleanup();
  ExpectState("", false);
  EXPECT_TRUE(IsDir(path));
  // Unset: the next Get resolves the base again.
  EXPECT_EQ(Get(), base_);
}

}  // namespace
