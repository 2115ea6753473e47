// Tests of directory creation with parents, clearing and deletion, on real
// directories below the test's own directory. Failures that a test run as
// root cannot provoke for real (a refused create or removal) come through
// the platform seam.
#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "filesystem/VEKZOLFileSystemServicesTestSupport.h"

namespace {

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

class CreateDirectoryTest : public FileSystemTest {
 protected:
  long Create(const std::string& path, Handler* handler) {
    CString text = path.c_str();
    return VEKZOLFileSystemServices::CreateDirectoryA(text, handler);
  }
};

TEST_F(CreateDirectoryTest, MakesTheTwoMissingLevelsBelowAPresentOne) {
  MakeDir(At("aa"));
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create(Join(Join(At("aa"), "bb"), "cc"), &handler), S_OK);
  EXPECT_TRUE(IsDir(Join(Join(At("aa"), "bb"), "cc")));
  ExpectUntouched(handler);
}

TEST_F(CreateDirectoryTest, AnExistingDirectoryIsSFalseAndAnExistingFileInvalid) {
  WriteFile(At("file"), "x");
  EXPECT_EQ(Create(root_, nullptr), S_FALSE);
  EXPECT_EQ(Create(At("file"), nullptr), E_INVALIDARG);
  EXPECT_EQ(Create("", nullptr), E_INVALIDARG);
}

TEST_F(CreateDirectoryTest, ARelativePathIsRefusedAndNothingIsMade) {
  const std::string relative = Join("relative-level-one", "relative-level-two");
  EXPECT_EQ(Create(relative, nullptr), E_INVALIDARG);
  EXPECT_FALSE(vekzol_fs_test::Exists("relative-level-one"));
#if !defined(_WIN32)
  // A backslash root and a drive letter mean nothing here: relative too.
  EXPECT_EQ(Create("\\relative-level-one", nullptr), E_INVALIDARG);
  EXPECT_EQ(Create("C:\\relative-level-one", nullptr), E_INVALIDARG);
#endif
}

TEST_F(CreateDirectoryTest, ALevelThatIsAFileMakesThePathInvalid) {
  WriteFile(At("file"), "x");
  EXPECT_EQ(Create(Join(Join(At("file"), "bb"), "cc"), nullptr), E_INVALIDARG);
  EXPECT_EQ(Names(root_), std::vector<std::string>({"file"}));
}

TEST_F(CreateDirectoryTest, AOneCharacterLevelInTheMiddleIsFound) {
  EXPECT_EQ(Create(Join(Join(At("x"), "y"), "last"), nullptr), S_OK);
  EXPECT_TRUE(IsDir(Join(Join(At("x"), "y"), "last")));
}

TEST_F(CreateDirectoryTest, AOneCharacterLastLevelIsNeverMadeButItsParentIs) {
  // The parent is made now: S_OK, the last level missing.
  EXPECT_EQ(Create(Join(At("made"), "b"), nullptr), S_OK);
  EXPECT_TRUE(IsDir(At("made")));
  EXPECT_FALSE(vekzol_fs_test::Exists(Join(At("made"), "b")));
  // The parent was there: no level was tried, E_FAIL and no handler.
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create(Join(At("made"), "b"), &handler), E_FAIL);
  EXPECT_FALSE(vekzol_fs_test::Exists(Join(At("made"), "b")));
  ExpectUntouched(handler);
}

TEST_F(CreateDirectoryTest, ARootFollowedByOneCharacterEndsTheScanAtOnce) {
  Handler handler = UntouchedHandler();
  FakeSystem system;
  ScopedSystem scoped(&system);
#if defined(_WIN32)
  const std::string path = "Q:\\q";
#else
  const std::string path = "/q";
#endif
  system.attributeFailures[path] = 3;
  EXPECT_EQ(Create(path, &handler), E_FAIL);
  EXPECT_TRUE(system.makes.empty());
  ExpectUntouched(handler);
}

TEST_F(CreateDirectoryTest, AFailedCreateFillsTheHandlerWithTheLevelThatFailed) {
  FakeSystem system;
  ScopedSystem scoped(&system);
  const std::string level = At("refused");
  system.makeFailures[level] = 5;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create(Join(level, "below"), &handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 5u);
#if defined(_WIN32)
  EXPECT_STREQ(handler._ErrorMessage, "Access denied.\r.");
#else
  EXPECT_STREQ(handler._ErrorMessage, "Permission denied.");
#endif
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::CreateDirectory( " + level + " )");
  EXPECT_EQ(system.makes, std::vector<std::string>({level}));
}

TEST_F(CreateDirectoryTest, AnExistsAnswerOfTheCreateIsSFalseAndTheScanGoesOn) {
  FakeSystem system;
  ScopedSystem scoped(&system);
  // The level reads as missing but the create meets it: 183, then 80.
  const std::string first = At("raced");
  const std::string second = Join(first, "again");
  system.attributeFailures[first] = 2;
  system.attributeFailures[second] = 2;
  system.makeFailures[first] = 183;
  system.makeFailures[second] = 80;
  MakeDir(second);
  EXPECT_EQ(Create(second, nullptr), S_FALSE);
  EXPECT_EQ(system.makes, std::vector<std::string>({first, second}));
}

TEST_F(CreateDirectoryTest, AnUnreadableLevelIsPassedOverAndLaterLevelsAreMadeWithoutAsking) {
  FakeSystem system;
  ScopedSystem scoped(&system);
  // As the server of a UNC path: the read fails, but not as missing.
  MakeDir(At("server"));
  system.attributeFailures[At("server")] = 53;
  const std::string share = Join(At("server"), "share");
  const std::string deep = Join(share, "deep");
  EXPECT_EQ(Create(deep, nullptr), S_OK);
  EXPECT_TRUE(IsDir(deep));
  EXPECT_EQ(system.makes, std::vector<std::string>({share, deep}));
  // The whole path once, then each level up to the first create; the level
  // after it is made without being read.
  EXPECT_EQ(system.attributeReads.back(), share);
  EXPECT_EQ(std::count(system.attributeReads.begin(), system.attributeReads.end(), deep), 1);
  EXPECT_EQ(system.attributeReads.front(), deep);
}

#if defined(_WIN32)
TEST_F(CreateDirectoryTest, ForwardSlashesAfterADriveDoNotSplitLevels) {
  // "Z:/..." starts at index 3 and only backslashes split, so the whole
  // path is one level: it is made only when its parent exists.
  std::string slashed = root_;
  for (char& c : slashed) {
    if (c == '\\') c = '/';
  }
  EXPECT_EQ(Create(slashed + "/one", nullptr), S_OK);
  EXPECT_TRUE(IsDir(At("one")));
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create(slashed + "/two/three", &handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 3u);
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::CreateDirectory( " + slashed + "/two/three )");
  EXPECT_FALSE(vekzol_fs_test::Exists(At("two")));
}

TEST_F(CreateDirectoryTest, ABackslashRootStartsTheScanAtIndexTwo) {
  // Without its drive letter the private directory is "\\...": still made.
  const std::string rooted = At("rooted").substr(2);
  EXPECT_EQ(Create(Join(rooted, "leaf"), nullptr), S_OK);
  EXPECT_TRUE(IsDir(Join(At("rooted"), "leaf")));
}
#else
TEST_F(CreateDirectoryTest, ForwardSlashesSplitLevelsAfterTheRoot) {
  // Two leading slashes are the same root: the scan starts at index 2.
  EXPECT_EQ(Create("/" + Join(Join(At("p1"), "p2"), "p3"), nullptr), S_OK);
  EXPECT_TRUE(IsDir(Join(Join(At("p1"), "p2"), "p3")));
}

TEST_F(CreateDirectoryTest, ANameTooLongFailsTheCreateWithItsCode) {
  const std::string level = Join(At("made"), std::string(300, 'n'));
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Create(level, &handler), E_FAIL);
  EXPECT_TRUE(IsDir(At("made")));
  EXPECT_EQ(handler._ErrorCode, 206u);
  EXPECT_STREQ(handler._ErrorMessage, "File name too long.");
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::CreateDirectory( " + level + " )");
}
#endif

// ------------------------------------------------------------ clear and delete

class ClearDirectoryTest : public FileSystemTest {
 protected:
  // root/tree: f1, d1/f2, d1/d2/f3, d1/d2/d3 (empty)
  std::string MakeTree() {
    const std::string tree = At("tree");
    MakeDir(Join(Join(Join(tree, "d1"), "d2"), "d3"));
    WriteFile(Join(tree, "f1"), "1");
    WriteFile(Join(Join(tree, "d1"), "f2"), "2");
    WriteFile(Join(Join(Join(tree, "d1"), "d2"), "f3"), "3");
    return tree;
  }
};

TEST_F(ClearDirectoryTest, DeletesEverythingInsideAndKeepsTheDirectory) {
  CString tree = MakeTree().c_str();
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(tree, &handler), S_OK);
  EXPECT_TRUE(IsDir(At("tree")));
  EXPECT_TRUE(Names(At("tree")).empty());
  ExpectUntouched(handler);
}

TEST_F(ClearDirectoryTest, AnEmptyDirectoryIsSOk) {
  MakeDir(At("empty"));
  CString path = At("empty").c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(path, nullptr), S_OK);
}

TEST_F(ClearDirectoryTest, AMissingDirectoryAFileOrAnEmptyPathIsInvalid) {
  WriteFile(At("file"), "x");
  CString missing = At("missing").c_str();
  CString file = At("file").c_str();
  CString empty;
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(missing, &handler), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(file, &handler), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(empty, &handler), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteDirectory(missing, &handler), E_FAIL);
  ExpectUntouched(handler);
}

TEST_F(ClearDirectoryTest, AFailureDeepDownIsReportedOnlyAtItsOwnLevel) {
  const std::string tree = MakeTree();
  const std::string d1 = Join(tree, "d1");
  const std::string d2 = Join(d1, "d2");
  FakeSystem system;
  ScopedSystem scoped(&system);
  system.deleteFailures[Join(d2, "f3")] = 5;
  // d2 keeps f3 and reports E_FAIL. d1 drops that answer, does not try to
  // remove d2 and reports S_OK; its own removal then fails one level up,
  // where the non-empty d1 shows the failure.
  CString top = tree.c_str();
  CString middle = d1.c_str();
  CString bottom = d2.c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(bottom, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(middle, nullptr), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(top, nullptr), E_FAIL);
  EXPECT_EQ(Names(tree), std::vector<std::string>({"d1"}));
  EXPECT_EQ(Names(d1), std::vector<std::string>({"d2"}));
  EXPECT_EQ(Names(d2), std::vector<std::string>({"f3"}));
}

TEST_F(ClearDirectoryTest, AFailedRemovalOfAClearedSubDirectoryIsEFailHere) {
  const std::string tree = MakeTree();
  FakeSystem system;
  ScopedSystem scoped(&system);
  system.removeFailures[Join(tree, "d1")] = 32;
  CString path = tree.c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(path, nullptr), E_FAIL);
  EXPECT_EQ(Names(tree), std::vector<std::string>({"d1"}));
  EXPECT_TRUE(Names(Join(tree, "d1")).empty());
}

TEST_F(ClearDirectoryTest, AListingThatCannotStartIsSFalse) {
  MakeDir(At("unlistable"));
  class NoListing : public FakeSystem {
   public:
    uint32_t FindFiles(const char*, std::vector<vekzol::platform::FindEntry>*) override {
      return 5;
    }
  } system;
  ScopedSystem scoped(&system);
  CString path = At("unlistable").c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::ClearDirectory(path, nullptr), S_FALSE);
  // The removal is still tried after S_FALSE, and works on the empty one.
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteDirectory(path, nullptr), S_OK);
  EXPECT_FALSE(vekzol_fs_test::Exists(At("unlistable")));
}

TEST_F(ClearDirectoryTest, DeleteDirectoryRemovesTheWholeTree) {
  CString tree = MakeTree().c_str();
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteDirectory(tree, &handler), S_OK);
  EXPECT_FALSE(vekzol_fs_test::Exists(At("tree")));
  ExpectUntouched(handler);
}

TEST_F(ClearDirectoryTest, ADeepFailureShowsWhenTheNonEmptyTopCannotBeRemoved) {
  const std::string tree = MakeTree();
  const std::string stuck = Join(Join(tree, "d1"), "f2");
  FakeSystem system;
  ScopedSystem scoped(&system);
  system.deleteFailures[stuck] = 5;
  CString path = tree.c_str();
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteDirectory(path, &handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 145u);
#if defined(_WIN32)
  EXPECT_STREQ(handler._ErrorMessage, "Directory is not empty.\r.");
#else
  EXPECT_STREQ(handler._ErrorMessage, "Directory not empty.");
#endif
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::DeleteDirectory( " + tree + " )");
  EXPECT_TRUE(vekzol_fs_test::Exists(stuck));
}

TEST_F(ClearDirectoryTest, AFailedClearingLeavesTheDirectoryAndTheHandler) {
  const std::string tree = MakeTree();
  FakeSystem system;
  ScopedSystem scoped(&system);
  system.deleteFailures[Join(tree, "f1")] = 5;
  CString path = tree.c_str();
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteDirectory(path, &handler), E_FAIL);
  ExpectUntouched(handler);
  EXPECT_EQ(Names(tree), std::vector<std::string>({"f1"}));
}

}  // namespace
