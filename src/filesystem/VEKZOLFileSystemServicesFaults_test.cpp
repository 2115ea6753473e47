// Tests of copies and moves that fail part-way: the platform backend is
// made to fail one of its own system calls (a write when the disk fills, a
// read, the rename that gives a copy its name, the rename of a move, the
// steps of a move done by copying) through its fault-injection seam. Each
// operation must answer with its failure status, leave the target as it
// was (absent stays absent, an existing file keeps its bytes) and leave no
// partial or temporary file behind.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include "filesystem/VEKZOLFileSystemServicesTestSupport.h"
#include "platform/FaultInjectionTesting.h"

namespace {

using vekzol::platform::FaultHook;
using vekzol::platform::FaultSite;
using vekzol_fs_test::Exists;
using vekzol_fs_test::FileSystemTest;
using vekzol_fs_test::Handler;
using vekzol_fs_test::Join;
using vekzol_fs_test::MakeDir;
using vekzol_fs_test::Names;
using vekzol_fs_test::ReadFile;
using vekzol_fs_test::Strings;
using vekzol_fs_test::WriteFile;

constexpr uint32_t kWriteFault = 29;
constexpr uint32_t kAccessDenied = 5;
constexpr uint32_t kNotSameDevice = 17;
constexpr uint32_t kDiskFull = 112;

// One planned fault: the calls at `site` pass `passing` times, then the
// next `failing` ones (all of them when negative) fail with `code`.
struct Fault {
  FaultSite site;
  int passing;
  uint32_t code;
  int failing;
  int seen;
};

// The faults of the running test, and what the backend asked.
struct FaultPlan {
  std::vector<Fault> faults;
  std::vector<FaultSite> calls;
  int failed = 0;
};

FaultPlan g_plan;

uint32_t PlannedFault(FaultSite site, const char* /*path*/) {
  g_plan.calls.push_back(site);
  for (Fault& fault : g_plan.faults) {
    if (fault.site != site) continue;
    const int call = fault.seen++;
    if (call >= fault.passing && (fault.failing < 0 || call < fault.passing + fault.failing)) {
      ++g_plan.failed;
      return fault.code;
    }
  }
  return 0;
}

int CallsAt(FaultSite site) {
  int count = 0;
  for (FaultSite call : g_plan.calls) count += call == site ? 1 : 0;
  return count;
}

// Puts the plan's hook in place for one scope, with its first fault.
class ScopedFault {
 public:
  ScopedFault(FaultSite site, int passing, uint32_t code, int failing = -1) {
    g_plan = FaultPlan();
    Then(site, passing, code, failing);
    previous_ = vekzol::platform::SetFaultHookForTesting(&PlannedFault);
  }
  // A further fault, for operations that go through two failing steps.
  void Then(FaultSite site, int passing, uint32_t code, int failing = -1) {
    g_plan.faults.push_back(Fault{site, passing, code, failing, 0});
  }
  ~ScopedFault() { vekzol::platform::SetFaultHookForTesting(previous_); }
  ScopedFault(const ScopedFault&) = delete;
  ScopedFault& operator=(const ScopedFault&) = delete;

 private:
  FaultHook previous_;
};

// 200 KiB of bytes that differ from place to place: several reads and
// writes of the backends' 64 KiB buffer, so a fault after the first lands
// in the middle of the copy.
std::string LargeContents() {
  std::string bytes(200 * 1024, '\0');
  for (size_t i = 0; i < bytes.size(); ++i)
    bytes[i] = static_cast<char>((i * 131 + i / 977) & 0xFF);
  return bytes;
}

std::vector<std::string> List(std::initializer_list<const char*> names) {
  return std::vector<std::string>(names.begin(), names.end());
}

// The handler as a failed system copy leaves it.
void ExpectCopyHandler(const Handler& handler, uint32_t code, const std::string& source,
                       const std::string& target) {
  EXPECT_EQ(handler._ErrorCode, code);
  EXPECT_STREQ(handler._ErrorMessage, VEKZOLFileSystemServicesTestPeer::GetErrorMsg(code));
  EXPECT_EQ(std::string(handler._ErrorContext.GetString()),
            "VEKZOLFileSystemServices::CopyFile( " + source + ", " + target + " )");
}

class FaultTest : public FileSystemTest {
 protected:
  void SetUp() override {
    FileSystemTest::SetUp();
    contents_ = LargeContents();
    source_ = At("source.bin");
    target_ = At("target.bin");
    WriteFile(source_, contents_);
  }
  long Copy(bool overwrite, Handler* handler) {
    CString from = source_.c_str();
    CString to = target_.c_str();
    return VEKZOLFileSystemServices::CopyFileA(from, to, overwrite, handler);
  }

  std::string contents_;
  std::string source_;
  std::string target_;
};

// ------------------------------------------------------------ CopyFileA

TEST_F(FaultTest, CopyFileWhenTheDiskFillsMidCopyFailsAndLeavesNoTarget) {
  Handler handler;
  {
    ScopedFault fault(FaultSite::kWriteCopy, 1, kDiskFull);
    EXPECT_EQ(Copy(false, &handler), E_FAIL);
    EXPECT_EQ(g_plan.failed, 1);
  }
  ExpectCopyHandler(handler, kDiskFull, source_, target_);
#ifndef _WIN32
  EXPECT_STREQ(handler._ErrorMessage, "No space left on device.");
#endif
  EXPECT_FALSE(Exists(target_));
  EXPECT_EQ(Names(root_), List({"source.bin"}));
  EXPECT_EQ(ReadFile(source_), contents_);
}

TEST_F(FaultTest, OverwritingCopyWhenTheDiskFillsMidCopyKeepsTheOldTarget) {
  WriteFile(target_, "old target bytes");
  Handler handler;
  {
    ScopedFault fault(FaultSite::kWriteCopy, 1, kDiskFull);
    EXPECT_EQ(Copy(true, &handler), E_FAIL);
  }
  ExpectCopyHandler(handler, kDiskFull, source_, target_);
  EXPECT_EQ(ReadFile(target_), "old target bytes");
  EXPECT_EQ(Names(root_), List({"source.bin", "target.bin"}));
}

TEST_F(FaultTest, OverwritingCopyWithAReadErrorKeepsTheOldTarget) {
  WriteFile(target_, "old target bytes");
  Handler handler;
  {
    ScopedFault fault(FaultSite::kReadCopy, 1, kWriteFault);
    EXPECT_EQ(Copy(true, &handler), E_FAIL);
    EXPECT_EQ(g_plan.failed, 1);
    EXPECT_GE(CallsAt(FaultSite::kWriteCopy), 1);  // the first chunk was written
  }
  ExpectCopyHandler(handler, kWriteFault, source_, target_);
  EXPECT_EQ(ReadFile(target_), "old target bytes");
  EXPECT_EQ(Names(root_), List({"source.bin", "target.bin"}));
}

TEST_F(FaultTest, CopyWithAReadErrorLeavesNoTarget) {
  {
    ScopedFault fault(FaultSite::kReadCopy, 2, kWriteFault);
    EXPECT_EQ(Copy(false, nullptr), E_FAIL);
  }
  EXPECT_EQ(Names(root_), List({"source.bin"}));
}

TEST_F(FaultTest, OverwritingCopyWhoseRenameIsRefusedKeepsTheOldTarget) {
  WriteFile(target_, "old target bytes");
  Handler handler;
  {
    ScopedFault fault(FaultSite::kPublishCopy, 0, kAccessDenied);
    EXPECT_EQ(Copy(true, &handler), E_FAIL);
    EXPECT_EQ(g_plan.failed, 1);
  }
  ExpectCopyHandler(handler, kAccessDenied, source_, target_);
  EXPECT_EQ(ReadFile(target_), "old target bytes");
  EXPECT_EQ(Names(root_), List({"source.bin", "target.bin"}));
}

TEST_F(FaultTest, CopyWhoseFinalNameIsRefusedLeavesNoTarget) {
  Handler handler;
  {
    ScopedFault fault(FaultSite::kPublishCopy, 0, kAccessDenied);
    EXPECT_EQ(Copy(false, &handler), E_FAIL);
  }
  ExpectCopyHandler(handler, kAccessDenied, source_, target_);
  EXPECT_EQ(Names(root_), List({"source.bin"}));
}

TEST_F(FaultTest, CopyWhoseDelayedWriteErrorShowsAtCloseKeepsTheOldTarget) {
  WriteFile(target_, "old target bytes");
  Handler handler;
  {
    ScopedFault fault(FaultSite::kFinishCopy, 0, kDiskFull);
    EXPECT_EQ(Copy(true, &handler), E_FAIL);
    EXPECT_EQ(g_plan.failed, 1);
  }
  ExpectCopyHandler(handler, kDiskFull, source_, target_);
  EXPECT_EQ(ReadFile(target_), "old target bytes");
  EXPECT_EQ(Names(root_), List({"source.bin", "target.bin"}));
}

TEST_F(FaultTest, CopyThatCannotCreateItsFileLeavesNothing) {
  Handler handler;
  {
    ScopedFault fault(FaultSite::kCreateCopy, 0, kDiskFull);
    EXPECT_EQ(Copy(false, &handler), E_FAIL);
  }
  ExpectCopyHandler(handler, kDiskFull, source_, target_);
  EXPECT_EQ(Names(root_), List({"source.bin"}));
}

TEST_F(FaultTest, CopyAfterAFailedOneSucceedsWithTheWholeContents) {
  WriteFile(target_, "old target bytes");
  {
    ScopedFault fault(FaultSite::kWriteCopy, 1, kDiskFull);
    EXPECT_EQ(Copy(true, nullptr), E_FAIL);
  }
  EXPECT_EQ(Copy(true, nullptr), S_OK);
  EXPECT_EQ(ReadFile(target_), contents_);
  EXPECT_EQ(Names(root_), List({"source.bin", "target.bin"}));
}

// ------------------------------------------------------------ CopyFiles

class TransferFaultTest : public FaultTest {
 protected:
  void SetUp() override {
    FaultTest::SetUp();
    from_ = At("from");
    to_ = At("to");
    MakeDir(from_);
    MakeDir(to_);
    WriteFile(Join(from_, "a.bin"), contents_);
    WriteFile(Join(from_, "b.bin"), "b contents");
  }
  long CopyOne(const char* name) {
    CString from = from_.c_str();
    CString to = to_.c_str();
    CString file = name;
    return VEKZOLFileSystemServices::CopyFiles(from, to, file, nullptr);
  }
  long CopyList(std::initializer_list<const char*> patterns) {
    CString from = from_.c_str();
    CString to = to_.c_str();
    Strings list;
    for (const char* pattern : patterns) list.push_back(pattern);
    return VEKZOLFileSystemServices::CopyFiles(from, to, list, nullptr);
  }
  long Move(std::initializer_list<const char*> patterns) {
    CString from = from_.c_str();
    CString to = to_.c_str();
    Strings list;
    for (const char* pattern : patterns) list.push_back(pattern);
    return VEKZOLFileSystemServices::MoveFiles(from, to, list, nullptr);
  }
  void ExpectSourcesIntact() {
    EXPECT_EQ(Names(from_), List({"a.bin", "b.bin"}));
    EXPECT_EQ(ReadFile(Join(from_, "a.bin")), contents_);
    EXPECT_EQ(ReadFile(Join(from_, "b.bin")), "b contents");
  }

  std::string from_;
  std::string to_;
};

TEST_F(TransferFaultTest, CopyFilesOfOneNameWhenTheDiskFillsKeepsTheOldTarget) {
  WriteFile(Join(to_, "a.bin"), "old a");
  {
    ScopedFault fault(FaultSite::kWriteCopy, 1, kDiskFull);
    EXPECT_EQ(CopyOne("a.bin"), E_FAIL);
  }
  EXPECT_EQ(Names(to_), List({"a.bin"}));
  EXPECT_EQ(ReadFile(Join(to_, "a.bin")), "old a");
  ExpectSourcesIntact();
}

TEST_F(TransferFaultTest, CopyFilesOfAPatternWhenTheDiskIsFullCopiesNothing) {
  WriteFile(Join(to_, "b.bin"), "old b");
  {
    ScopedFault fault(FaultSite::kWriteCopy, 0, kDiskFull);
    EXPECT_EQ(CopyOne("*.bin"), E_FAIL);
    EXPECT_EQ(g_plan.failed, 2);  // both files were tried
  }
  EXPECT_EQ(Names(to_), List({"b.bin"}));
  EXPECT_EQ(ReadFile(Join(to_, "b.bin")), "old b");
  ExpectSourcesIntact();
}

TEST_F(TransferFaultTest, CopyFilesOfAListGoesOnPastAFileThatFillsTheDisk) {
  WriteFile(Join(to_, "a.bin"), "old a");
  {
    // a.bin (200 KiB) comes first and fails on its second write; b.bin
    // is copied after it.
    ScopedFault fault(FaultSite::kWriteCopy, 1, kDiskFull, 1);
    EXPECT_EQ(CopyList({"*.bin"}), E_FAIL);
    EXPECT_EQ(g_plan.failed, 1);
  }
  EXPECT_EQ(Names(to_), List({"a.bin", "b.bin"}));
  EXPECT_EQ(ReadFile(Join(to_, "a.bin")), "old a");
  EXPECT_EQ(ReadFile(Join(to_, "b.bin")), "b contents");
  ExpectSourcesIntact();
}

// ------------------------------------------------------------ MoveFiles

TEST_F(TransferFaultTest, MoveFilesWhoseRenameIsRefusedLeavesBothSidesAsTheyWere) {
  {
    ScopedFault fault(FaultSite::kRename, 0, kAccessDenied);
    EXPECT_EQ(Move({"a.bin"}), E_FAIL);
    EXPECT_EQ(g_plan.failed, 1);
  }
  EXPECT_EQ(Names(to_), List({}));
  ExpectSourcesIntact();
}

TEST_F(TransferFaultTest, MoveFilesFallingBackToACopyThatFillsTheDiskLeavesNoTarget) {
  {
    // Another volume: the rename says "not the same device"; where the
    // backend then copies and deletes, the copy fills the disk.
    ScopedFault fault(FaultSite::kRename, 0, kNotSameDevice);
    fault.Then(FaultSite::kWriteCopy, 1, kDiskFull);
    EXPECT_EQ(Move({"a.bin"}), E_FAIL);
#ifndef _WIN32
    EXPECT_EQ(g_plan.failed, 2);  // the rename, then the copy's write
#endif
  }
  EXPECT_EQ(Names(to_), List({}));
  ExpectSourcesIntact();
}

TEST_F(TransferFaultTest, MoveFilesWhoseSourceCannotBeRemovedAfterTheCopyLeavesNoTarget) {
  {
    ScopedFault fault(FaultSite::kRename, 0, kNotSameDevice);
    fault.Then(FaultSite::kRemoveSource, 0, kAccessDenied);
    EXPECT_EQ(Move({"a.bin"}), E_FAIL);
#ifndef _WIN32
    EXPECT_EQ(g_plan.failed, 2);  // the rename, then the removal of the source
#endif
  }
  EXPECT_EQ(Names(to_), List({}));
  ExpectSourcesIntact();
}

#ifndef _WIN32
// The POSIX backend moves a file to another file system by copying it and
// deleting the original, as the Windows move does by itself.
TEST_F(TransferFaultTest, MoveFilesAcrossDevicesCopiesThenRemovesTheSource) {
  {
    ScopedFault fault(FaultSite::kRename, 0, kNotSameDevice);
    EXPECT_EQ(Move({"a.bin"}), S_OK);
    EXPECT_EQ(CallsAt(FaultSite::kRemoveSource), 1);
  }
  EXPECT_EQ(Names(from_), List({"b.bin"}));
  EXPECT_EQ(Names(to_), List({"a.bin"}));
  EXPECT_EQ(ReadFile(Join(to_, "a.bin")), contents_);
}
#endif

TEST_F(TransferFaultTest, MoveFilesGoesOnPastAFailedMove) {
  {
    // Only the first rename, that of a.bin, fails.
    ScopedFault fault(FaultSite::kRename, 0, kAccessDenied, 1);
    EXPECT_EQ(Move({"a.bin", "b.bin"}), E_FAIL);
  }
  EXPECT_EQ(Names(from_), List({"a.bin"}));
  EXPECT_EQ(ReadFile(Join(from_, "a.bin")), contents_);
  EXPECT_EQ(Names(to_), List({"b.bin"}));
  EXPECT_EQ(ReadFile(Join(to_, "b.bin")), "b contents");
}

// ------------------------------------------------------------ RenameFile

TEST_F(TransferFaultTest, RenameFileThatTheSystemRefusesKeepsTheOldName) {
  CString directory = from_.c_str();
  CString oldName = "a.bin";
  CString newName = "c.bin";
  {
    ScopedFault fault(FaultSite::kRename, 0, kAccessDenied);
    EXPECT_EQ(VEKZOLFileSystemServices::RenameFile(directory, oldName, newName, nullptr), E_FAIL);
  }
  ExpectSourcesIntact();
}

}  // namespace
