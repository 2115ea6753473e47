// Tests of copying, moving, renaming, deleting and listing files, on real
// files below the test's own directory.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "filesystem/VEKZOLFileSystemServicesTestSupport.h"

namespace {

using vekzol_fs_test::Exists;
using vekzol_fs_test::ExpectUntouched;
using vekzol_fs_test::FakeSystem;
using vekzol_fs_test::FileSystemTest;
using vekzol_fs_test::Handler;
using vekzol_fs_test::IsDir;
using vekzol_fs_test::Join;
using vekzol_fs_test::MakeDir;
using vekzol_fs_test::Names;
using vekzol_fs_test::ReadFile;
using vekzol_fs_test::ScopedSystem;
using vekzol_fs_test::Strings;
using vekzol_fs_test::UntouchedHandler;
using vekzol_fs_test::WriteFile;

// The listing's names, sorted: the system's order is not the same on every
// file system.
std::vector<std::string> Sorted(const Strings& list) {
  std::vector<std::string> names = vekzol_fs_test::ToStrings(list);
  std::sort(names.begin(), names.end());
  return names;
}

Strings List(std::initializer_list<const char*> items) {
  Strings list;
  for (const char* item : items) list.push_back(item);
  return list;
}

// ------------------------------------------------------------ CopyFileA

class CopyFileTest : public FileSystemTest {
 protected:
  void SetUp() override {
    FileSystemTest::SetUp();
    source_ = At("source.txt");
    WriteFile(source_, "source contents");
  }
  long Copy(const std::string& target, bool overwrite, Handler* handler) {
    CString from = source_.c_str();
    CString to = target.c_str();
    return VEKZOLFileSystemServices::CopyFileA(from, to, overwrite, handler);
  }
  std::string source_;
};

TEST_F(CopyFileTest, AMissingTargetEndingInASeparatorIsMadeAsADirectory) {
  const std::string directory = At("made");
  EXPECT_EQ(Copy(directory + vekzol_fs_test::Sep(), false, nullptr), S_OK);
  EXPECT_EQ(ReadFile(Join(directory, "source.txt")), "source contents");
}

TEST_F(CopyFileTest, EveryDirectoryEndingMakesTheDirectory) {
  int n = 0;
  for (const char* ending : {"\\", "/", "\\.", "/."}) {
    const std::string directory = At("dir" + std::to_string(++n));
    EXPECT_EQ(Copy(directory + ending, false, nullptr), S_OK) << ending;
    EXPECT_EQ(ReadFile(Join(directory, "source.txt")), "source contents") << ending;
  }
}

TEST_F(CopyFileTest, TheSameTargetWithoutTheSeparatorIsAFileOfThatName) {
  EXPECT_EQ(Copy(At("made"), false, nullptr), S_OK);
  EXPECT_FALSE(IsDir(At("made")));
  EXPECT_EQ(ReadFile(At("made")), "source contents");
}

TEST_F(CopyFileTest, ATargetThatEndsInADotLosesTheDot) {
  EXPECT_EQ(Copy(At("copy.."), false, nullptr), S_OK);
  EXPECT_EQ(ReadFile(At("copy")), "source contents");
  EXPECT_EQ(Names(root_), std::vector<std::string>({"copy", "source.txt"}));
}

TEST_F(CopyFileTest, AnExistingDirectoryReceivesTheFileUnderItsOwnName) {
  MakeDir(At("existing"));
  EXPECT_EQ(Copy(At("existing"), false, nullptr), S_OK);
  EXPECT_EQ(ReadFile(Join(At("existing"), "source.txt")), "source contents");
}

TEST_F(CopyFileTest, AnExistingFileIsReplacedOnlyWithOverwrite) {
  WriteFile(At("target.txt"), "old");
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Copy(At("target.txt"), false, &handler), E_FAIL);
  EXPECT_EQ(ReadFile(At("target.txt")), "old");
  EXPECT_EQ(handler._ErrorCode, 80u);
#if defined(_WIN32)
  EXPECT_STREQ(handler._ErrorMessage, "File exists.\r.");
#else
  EXPECT_STREQ(handler._ErrorMessage, "File exists.");
#endif
  EXPECT_EQ(std::string(handler._ErrorContext),
            "VEKZOLFileSystemServices::CopyFile( " + source_ + ", " + At("target.txt") + " )");

  handler = UntouchedHandler();
  EXPECT_EQ(Copy(At("target.txt"), true, &handler), S_OK);
  EXPECT_EQ(ReadFile(At("target.txt")), "source contents");
  ExpectUntouched(handler);
}

TEST_F(CopyFileTest, TheContextNamesTheFinalTargetInsideADirectory) {
  MakeDir(At("existing"));
  WriteFile(Join(At("existing"), "source.txt"), "old");
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Copy(At("existing") + vekzol_fs_test::Sep() + ".", false, &handler), E_FAIL);
  EXPECT_EQ(std::string(handler._ErrorContext), "VEKZOLFileSystemServices::CopyFile( " + source_ +
                                                    ", " + Join(At("existing"), "source.txt") +
                                                    " )");
}

TEST_F(CopyFileTest, ADirectoryThatCannotBeMadeFailsWithoutTheHandler) {
  WriteFile(At("file"), "x");
  Handler handler = UntouchedHandler();
  EXPECT_EQ(Copy(Join(Join(At("file"), "sub"), ""), false, &handler), E_FAIL);
  ExpectUntouched(handler);
  // A target of dots and separators only trims to nothing.
  EXPECT_EQ(Copy(".", false, &handler), E_FAIL);
  EXPECT_EQ(Copy("/", false, &handler), E_FAIL);
  ExpectUntouched(handler);
}

TEST_F(CopyFileTest, EmptyArgumentsAreInvalid) {
  CString empty;
  CString some = source_.c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(empty, some, true, nullptr), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(some, empty, true, nullptr), E_INVALIDARG);
}

TEST_F(CopyFileTest, AMissingSourceFillsTheHandlerWithFileNotFound) {
  CString from = At("missing.txt").c_str();
  CString to = At("target.txt").c_str();
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(from, to, true, &handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 2u);
  EXPECT_EQ(
      std::string(handler._ErrorContext),
      "VEKZOLFileSystemServices::CopyFile( " + At("missing.txt") + ", " + At("target.txt") + " )");
  EXPECT_FALSE(Exists(At("target.txt")));
}

TEST_F(CopyFileTest, ADirectoryAsSourceLeavesNothingUnderTheTargetName) {
  MakeDir(At("folder"));
  CString from = At("folder").c_str();
  CString to = At("target.txt").c_str();
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(from, to, true, &handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 5u);
  EXPECT_EQ(Names(root_), std::vector<std::string>({"folder", "source.txt"}));
}

#if defined(__linux__)
TEST_F(CopyFileTest, ASourceThatCannotBeReadToItsEndLeavesNoPartialFile) {
  // Opening works, the first read fails: the copy must not appear, and an
  // existing target keeps its contents.
  CString from = "/proc/self/mem";
  CString to = At("target.txt").c_str();
  Handler handler = UntouchedHandler();
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(from, to, false, &handler), E_FAIL);
  EXPECT_EQ(handler._ErrorCode, 29u);
  EXPECT_STREQ(handler._ErrorMessage, "Input/output error.");
  EXPECT_EQ(Names(root_), std::vector<std::string>({"source.txt"}));

  WriteFile(At("target.txt"), "old");
  EXPECT_EQ(VEKZOLFileSystemServices::CopyFileA(from, to, true, &handler), E_FAIL);
  EXPECT_EQ(ReadFile(At("target.txt")), "old");
  EXPECT_EQ(Names(root_), std::vector<std::string>({"source.txt", "target.txt"}));
}
#endif

// ------------------------------------------------------------ CopyFiles

class CopyFilesTest : public FileSystemTest {
 protected:
  void SetUp() override {
    FileSystemTest::SetUp();
    from_ = At("from");
    to_ = At("to");
    MakeDir(from_);
    MakeDir(to_);
    WriteFile(Join(from_, "a.txt"), "a");
    WriteFile(Join(from_, "b.txt"), "b");
    WriteFile(Join(from_, "c.dat"), "c");
    MakeDir(Join(from_, "sub.txt"));
  }
  long CopyName(const std::string& name) {
    CString from = from_.c_str();
    CString to = to_.c_str();
    CString text = name.c_str();
    return VEKZOLFileSystemServices::CopyFiles(from, to, text, nullptr);
  }
  long CopyList(Strings patterns) {
    CString from = from_.c_str();
    CString to = to_.c_str();
    return VEKZOLFileSystemServices::CopyFiles(from, to, patterns, nullptr);
  }
  long MoveList(Strings patterns) {
    CString from = from_.c_str();
    CString to = to_.c_str();
    return VEKZOLFileSystemServices::MoveFiles(from, to, patterns, nullptr);
  }
  std::string from_;
  std::string to_;
};

TEST_F(CopyFilesTest, APatternCopiesTheMatchingFilesAndDropsDirectories) {
  WriteFile(Join(to_, "a.txt"), "old");
  EXPECT_EQ(CopyName("*.txt"), S_OK);
  EXPECT_EQ(Names(to_), std::vector<std::string>({"a.txt", "b.txt"}));
  EXPECT_EQ(ReadFile(Join(to_, "a.txt")), "a");
}

TEST_F(CopyFilesTest, APatternWithoutAMatchIsSFalse) {
  EXPECT_EQ(CopyName("*.none"), S_FALSE);
  EXPECT_TRUE(Names(to_).empty());
}

TEST_F(CopyFilesTest, AListOfPatternsWithoutAMatchIsSOk) {
  EXPECT_EQ(CopyList(List({"*.none", "zz*"})), S_OK);
  EXPECT_EQ(MoveList(List({"*.none"})), S_OK);
  EXPECT_TRUE(Names(to_).empty());
}

TEST_F(CopyFilesTest, OneNameIsCopiedOverwritingAndAQuestionMarkIsNoWildcard) {
  WriteFile(Join(to_, "c.dat"), "old");
  EXPECT_EQ(CopyName("c.dat"), S_OK);
  EXPECT_EQ(ReadFile(Join(to_, "c.dat")), "c");
  EXPECT_EQ(CopyName("?.txt"), E_FAIL);
  EXPECT_EQ(CopyName("missing.txt"), E_FAIL);
  EXPECT_EQ(Names(to_), std::vector<std::string>({"c.dat"}));
}

TEST_F(CopyFilesTest, AMissingTargetDirectoryIsInvalidAndNotMade) {
  to_ = At("absent");
  EXPECT_EQ(CopyName("*.txt"), E_INVALIDARG);
  EXPECT_EQ(CopyList(List({"*.txt"})), E_INVALIDARG);
  EXPECT_EQ(MoveList(List({"*.txt"})), E_INVALIDARG);
  EXPECT_FALSE(Exists(to_));
}

TEST_F(CopyFilesTest, BadArgumentsAreInvalid) {
  EXPECT_EQ(CopyName("."), E_INVALIDARG);
  EXPECT_EQ(CopyName(".."), E_INVALIDARG);
  EXPECT_EQ(CopyName(""), E_INVALIDARG);
  EXPECT_EQ(CopyList(Strings()), E_INVALIDARG);
  EXPECT_EQ(MoveList(Strings()), E_INVALIDARG);
  const std::string file = Join(from_, "a.txt");
  to_ = file;  // a file is no target directory
  EXPECT_EQ(CopyName("b.txt"), E_INVALIDARG);
  to_ = At("to");
  from_ = At("absent");
  EXPECT_EQ(CopyName("b.txt"), E_INVALIDARG);
  EXPECT_EQ(CopyList(List({"*"})), E_INVALIDARG);
  EXPECT_EQ(MoveList(List({"*"})), E_INVALIDARG);
  from_ = "";
  EXPECT_EQ(CopyName("b.txt"), E_INVALIDARG);
  EXPECT_TRUE(Names(to_).empty());
}

TEST_F(CopyFilesTest, AFailedCopyIsEFailAndTheOthersAreStillCopied) {
  FakeSystem system;
  ScopedSystem scoped(&system);
  system.copyFailures[Join(to_, "a.txt")] = 112;
  EXPECT_EQ(CopyName("*.txt"), E_FAIL);
  EXPECT_EQ(Names(to_), std::vector<std::string>({"b.txt"}));
  EXPECT_EQ(CopyList(List({"*.dat", "a*"})), E_FAIL);
  EXPECT_EQ(Names(to_), std::vector<std::string>({"b.txt", "c.dat"}));
}

TEST_F(CopyFilesTest, AFileMatchedByTwoPatternsIsCopiedTwice) {
  EXPECT_EQ(CopyList(List({"a*", "*.txt"})), S_OK);
  EXPECT_EQ(Names(to_), std::vector<std::string>({"a.txt", "b.txt"}));
  // The second move of the same file fails: it is gone by then.
  EXPECT_EQ(MoveList(List({"*.dat", "c*"})), E_FAIL);
  EXPECT_EQ(Names(to_), std::vector<std::string>({"a.txt", "b.txt", "c.dat"}));
}

TEST_F(CopyFilesTest, MoveFilesMovesAndAnExistingTargetFailsOnlyItsOwnMove) {
  WriteFile(Join(to_, "a.txt"), "old");
  EXPECT_EQ(MoveList(List({"*.txt"})), E_FAIL);
  EXPECT_EQ(ReadFile(Join(to_, "a.txt")), "old");
  EXPECT_EQ(ReadFile(Join(to_, "b.txt")), "b");
  EXPECT_EQ(Names(from_), std::vector<std::string>({"a.txt", "c.dat", "sub.txt"}));
  EXPECT_EQ(MoveList(List({"c.dat"})), S_OK);
  EXPECT_EQ(Names(from_), std::vector<std::string>({"a.txt", "sub.txt"}));
}

// ------------------------------------------------------------ RenameFile

class RenameFileTest : public FileSystemTest {};

TEST_F(RenameFileTest, MovesInsideTheDirectoryAndFailsOnMissingOrExisting) {
  WriteFile(At("old.txt"), "o");
  WriteFile(At("taken.txt"), "t");
  CString dir = root_.c_str();
  CString oldName = "old.txt";
  CString newName = "new.txt";
  CString taken = "taken.txt";
  CString missing = "missing.txt";
  EXPECT_EQ(VEKZOLFileSystemServices::RenameFile(dir, oldName, newName, nullptr), S_OK);
  EXPECT_EQ(ReadFile(At("new.txt")), "o");
  EXPECT_EQ(VEKZOLFileSystemServices::RenameFile(dir, missing, newName, nullptr), E_FAIL);
  EXPECT_EQ(VEKZOLFileSystemServices::RenameFile(dir, newName, taken, nullptr), E_FAIL);
  EXPECT_EQ(Names(root_), std::vector<std::string>({"new.txt", "taken.txt"}));
}

// ------------------------------------------------------------ DeleteFiles

class DeleteFilesTest : public FileSystemTest {
 protected:
  void SetUp() override {
    FileSystemTest::SetUp();
    WriteFile(At("a1.txt"), "");
    WriteFile(At("a2.txt"), "");
    WriteFile(At("b.log"), "");
    MakeDir(At("adir"));
  }
  long DeleteName(const std::string& name) {
    CString dir = root_.c_str();
    CString text = name.c_str();
    return VEKZOLFileSystemServices::DeleteFiles(dir, text, nullptr);
  }
};

TEST_F(DeleteFilesTest, AMissingPlainNameIsSFalse) {
  EXPECT_EQ(DeleteName("missing.txt"), S_FALSE);
  EXPECT_EQ(DeleteName(Join("nodir", "missing.txt")), S_FALSE);
}

TEST_F(DeleteFilesTest, APatternWithoutAMatchIsSFalse) {
  EXPECT_EQ(DeleteName("*.none"), S_FALSE);
  EXPECT_EQ(DeleteName("z?"), S_FALSE);
  EXPECT_EQ(Names(root_).size(), 4u);
}

TEST_F(DeleteFilesTest, PatternsWithStarOrQuestionMarkDeleteTheMatchingFiles) {
  EXPECT_EQ(DeleteName("a?.txt"), S_OK);
  EXPECT_EQ(Names(root_), std::vector<std::string>({"adir", "b.log"}));
  // Only a directory matches: found, nothing to delete.
  EXPECT_EQ(DeleteName("a*"), S_OK);
  EXPECT_EQ(DeleteName("b.log"), S_OK);
  EXPECT_EQ(Names(root_), std::vector<std::string>({"adir"}));
}

TEST_F(DeleteFilesTest, ADirectoryNamedAsAFileIsEFail) {
  EXPECT_EQ(DeleteName("adir"), E_FAIL);
  EXPECT_TRUE(IsDir(At("adir")));
}

TEST_F(DeleteFilesTest, AFailedDeleteInAPatternIsEFailAndTheOthersGo) {
  FakeSystem system;
  ScopedSystem scoped(&system);
  system.deleteFailures[At("a1.txt")] = 32;
  EXPECT_EQ(DeleteName("a*.txt"), E_FAIL);
  EXPECT_EQ(Names(root_), std::vector<std::string>({"a1.txt", "adir", "b.log"}));
}

TEST_F(DeleteFilesTest, BadDirectoriesAndEmptyNamesAreInvalid) {
  CString empty;
  CString name = "a1.txt";
  CString missing = At("missing").c_str();
  CString file = At("b.log").c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(empty, name, nullptr), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(missing, name, nullptr), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(file, name, nullptr), E_INVALIDARG);
  EXPECT_EQ(DeleteName(""), E_INVALIDARG);
  Strings names = List({"a1.txt"});
  Strings none;
  CString dir = root_.c_str();
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(missing, names, nullptr), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(empty, names, nullptr), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, none, nullptr), E_INVALIDARG);
  EXPECT_EQ(Names(root_).size(), 4u);
}

TEST_F(DeleteFilesTest, AListOfMissingNamesIsSOk) {
  CString dir = root_.c_str();
  Strings names = List({"x.txt", "y*", "z?"});
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, names, nullptr), S_OK);
}

TEST_F(DeleteFilesTest, AListGoesOnPastAFailureAndReportsIt) {
  CString dir = root_.c_str();
  Strings names = List({"adir", "a1.txt", "", "*.log"});
  EXPECT_EQ(VEKZOLFileSystemServices::DeleteFiles(dir, names, nullptr), E_FAIL);
  EXPECT_EQ(Names(root_), std::vector<std::string>({"a2.txt", "adir"}));
}

// ------------------------------------------------------------ FindFiles

class FindFilesTest : public FileSystemTest {};

TEST_F(FindFilesTest, AnEmptyDirectoryWithStarIsSFalseAndAddsNothing) {
  MakeDir(At("empty"));
  CString pattern = Join(At("empty"), "*").c_str();
  Strings files = List({"kept"});
  Strings dirs;
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(pattern, files, dirs), S_FALSE);
  EXPECT_EQ(vekzol_fs_test::ToStrings(files), std::vector<std::string>({"kept"}));
  EXPECT_TRUE(dirs.empty());
}

TEST_F(FindFilesTest, FilesAndDirectoriesGoToTheirListsAndAccumulate) {
  WriteFile(At("one.txt"), "");
  WriteFile(At("two.txt"), "");
  MakeDir(At("three.txt"));
  WriteFile(At("four.log"), "");
  CString pattern = Join(root_, "*.txt").c_str();
  Strings files = List({"kept"});
  Strings dirs;
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(pattern, files, dirs), S_OK);
  EXPECT_EQ(Sorted(files), std::vector<std::string>({"kept", "one.txt", "two.txt"}));
  EXPECT_EQ(Sorted(dirs), std::vector<std::string>({"three.txt"}));
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(pattern, files, dirs), S_OK);
  EXPECT_EQ(files.size(), 5u);
  EXPECT_EQ(dirs.size(), 2u);
}

TEST_F(FindFilesTest, AMissingDirectoryIsSFalseAndAnEmptyPatternInvalid) {
  CString pattern = Join(At("missing"), "*").c_str();
  CString empty;
  Strings files;
  Strings dirs;
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(pattern, files, dirs), S_FALSE);
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(empty, files, dirs), E_INVALIDARG);
  EXPECT_TRUE(files.empty());
}

TEST_F(FindFilesTest, SeveralPatternsSwallowNoMatchAndNeedADirectory) {
  WriteFile(At("one.txt"), "");
  WriteFile(At("two.log"), "");
  CString dir = root_.c_str();
  CString missing = At("missing").c_str();
  CString empty;
  Strings patterns = List({"*.none", "*.txt", "two.*", "*.txt"});
  Strings none;
  Strings files;
  Strings dirs;
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(dir, patterns, files, dirs), S_OK);
  EXPECT_EQ(vekzol_fs_test::ToStrings(files),
            std::vector<std::string>({"one.txt", "two.log", "one.txt"}));
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(dir, none, files, dirs), S_OK);
  Strings noMatch = List({"*.none"});
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(dir, noMatch, files, dirs), S_OK);
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(missing, patterns, files, dirs), E_INVALIDARG);
  EXPECT_EQ(VEKZOLFileSystemServices::FindFiles(empty, patterns, files, dirs), E_INVALIDARG);
  EXPECT_EQ(files.size(), 3u);
  EXPECT_TRUE(dirs.empty());
}

}  // namespace
