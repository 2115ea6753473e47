// Tests of the existence tests, the name part of a path and the system's
// error texts, on real files and directories below the test's own
// directory; other failures of the attribute read come through the seam.
#include <string>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "filesystem/VEKZOLFileSystemServicesTestSupport.h"

namespace {

using vekzol_fs_test::FakeSystem;
using vekzol_fs_test::FileSystemTest;
using vekzol_fs_test::ScopedSystem;
using vekzol_fs_test::WriteFile;

class ExistenceTest : public FileSystemTest {};

TEST_F(ExistenceTest, DirectoryExistsTellsDirectoryFileMissingAndEmpty) {
  WriteFile(At("file.txt"), "x");
  CString dir = root_.c_str();
  CString file = At("file.txt").c_str();
  CString missing = At("missing").c_str();
  CString missingParent = vekzol_fs_test::Join(At("missing"), "child").c_str();
  CString fileAsParent = vekzol_fs_test::Join(At("file.txt"), "child").c_str();
  CString empty;
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(dir), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(file), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(missing), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(missingParent), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(fileAsParent), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(empty), E_INVALIDARG);
}

TEST_F(ExistenceTest, FileExistsTellsFileDirectoryMissingAndAsksForAnEmptyPath) {
  WriteFile(At("file.txt"), "x");
  CString dir = root_.c_str();
  CString file = At("file.txt").c_str();
  CString missing = At("missing").c_str();
  CString empty;
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(file), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(dir), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(missing), S_FALSE);

  FakeSystem system;
  ScopedSystem scoped(&system);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(empty), S_FALSE);
  ASSERT_EQ(system.attributeReads.size(), 1u);
  EXPECT_EQ(system.attributeReads[0], "");
}

TEST_F(ExistenceTest, PathExistsSetsTheFlagOnlyWhenThePathExists) {
  WriteFile(At("file.txt"), "x");
  CString dir = root_.c_str();
  CString file = At("file.txt").c_str();
  CString missing = At("missing").c_str();
  bool isDirectory = false;
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(dir, isDirectory), S_OK);
  EXPECT_TRUE(isDirectory);
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(file, isDirectory), S_OK);
  EXPECT_FALSE(isDirectory);
  isDirectory = true;
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(missing, isDirectory), S_FALSE);
  EXPECT_TRUE(isDirectory);
}

TEST_F(ExistenceTest, AnyOtherFailureOfTheAttributeReadIsEFail) {
  FakeSystem system;
  ScopedSystem scoped(&system);
  CString path = At("denied").c_str();
  system.attributeFailures[At("denied")] = 5;
  bool isDirectory = true;
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(path), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(path), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(path, isDirectory), E_FAIL);
  EXPECT_TRUE(isDirectory);
}

#if !defined(_WIN32)
TEST_F(ExistenceTest, ALoopOfLinksIsAnotherFailureNotAMissingPath) {
  std::filesystem::create_symlink(At("loop"), At("loop"));
  CString path = At("loop").c_str();
  bool isDirectory = false;
  EXPECT_EQ(VEKZOLFileSystemServices::DirectoryExists(path), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::FileExists(path), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::PathExists(path, isDirectory), E_FAIL);
}
#endif

// ------------------------------------------------------------ names

long NameOf(const char* path, CString& name) {
  CString text = path;
  return VEKZOLFileSystemServices::GetFileNameFromPath(text, name);
}

TEST(GetFileNameFromPathTest, KeepsTheLastComponentAfterTrimmingDotsAndSeparators) {
  CString name = "old";
  EXPECT_EQ(NameOf("C:\\dir\\file.txt", name), S_OK);
  EXPECT_STREQ(name, "file.txt");
  EXPECT_EQ(NameOf("/dir/sub/file.tar.gz", name), S_OK);
  EXPECT_STREQ(name, "file.tar.gz");
  EXPECT_EQ(NameOf("a.txt.", name), S_OK);
  EXPECT_STREQ(name, "a.txt");
  EXPECT_EQ(NameOf("dir\\..", name), S_OK);
  EXPECT_STREQ(name, "dir");
  EXPECT_EQ(NameOf("dir//\\\\sub\\/", name), S_OK);
  EXPECT_STREQ(name, "sub");
  EXPECT_EQ(NameOf("plain", name), S_OK);
  EXPECT_STREQ(name, "plain");
  EXPECT_EQ(NameOf("mixed/a\\b", name), S_OK);
  EXPECT_STREQ(name, "b");
}

TEST(GetFileNameFromPathTest, APathOfOnlyDotsAndSeparatorsGivesAnEmptyName) {
  CString name = "old";
  EXPECT_EQ(NameOf("./\\..", name), S_OK);
  EXPECT_STREQ(name, "");
  name = "old";
  EXPECT_EQ(NameOf("/", name), S_OK);
  EXPECT_STREQ(name, "");
}

TEST(GetFileNameFromPathTest, AnEmptyPathIsInvalidAndLeavesTheName) {
  CString name = "old";
  EXPECT_EQ(NameOf("", name), E_INVALIDARG);
  EXPECT_STREQ(name, "old");
}

// ------------------------------------------------------------ error texts

TEST(GetErrorMsgTest, CodeZeroGivesTheEmptyText) {
  EXPECT_STREQ(VEKZOLFileSystemServicesTestPeer::GetErrorMsg(0), "");
}

TEST(GetErrorMsgTest, TheSystemTextWithLineFeedsAndTabsAsDots) {
#if defined(_WIN32)
  EXPECT_STREQ(VEKZOLFileSystemServicesTestPeer::GetErrorMsg(2), "File not found.\r.");
  EXPECT_STREQ(VEKZOLFileSystemServicesTestPeer::GetErrorMsg(183), "File already exists.\r.");
#else
  EXPECT_STREQ(VEKZOLFileSystemServicesTestPeer::GetErrorMsg(2), "No such file or directory.");
  EXPECT_STREQ(VEKZOLFileSystemServicesTestPeer::GetErrorMsg(183), "File exists.");
#endif
}

// A backend whose texts carry tabs, inner line ends and carriage returns.
class TextSystem : public vekzol::platform::ForwardingSystem {
 public:
  TextSystem() : ForwardingSystem(vekzol::platform::DefaultSystem()) {}
  std::string ErrorText(uint32_t code) override {
    if (code == 7) return "first\tpart\r\nsecond\n";
    if (code == 9) return "";
    return ForwardingSystem::ErrorText(code);
  }
};

TEST(GetErrorMsgTest, OnlyLineFeedsAndTabsAreReplacedAndNoTextGivesEmpty) {
  TextSystem system;
  ScopedSystem scoped(&system);
  EXPECT_STREQ(VEKZOLFileSystemServicesTestPeer::GetErrorMsg(7), "first.part\r.second.");
  EXPECT_STREQ(VEKZOLFileSystemServicesTestPeer::GetErrorMsg(9), "");
}

}  // namespace
