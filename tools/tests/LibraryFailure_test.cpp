// The message of a library failure names its cause from the status: the
// out-of-memory status reads as a failed allocation does, and every other
// status by its name and meaning in the library's table of statuses, with
// its value.
#include "LibraryFailure.h"

#include <string>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

namespace {

using vekzol_tool::LibraryFailureMessage;
using vekzol_tool::OutOfMemoryMessage;

TEST(LibraryFailureMessageTest, OutOfMemoryReadsAsAFailedAllocation) {
  EXPECT_EQ(std::string("out of memory"), OutOfMemoryMessage());
  EXPECT_EQ("out of memory", LibraryFailureMessage(E_OUTOFMEMORY));
}

TEST(LibraryFailureMessageTest, FailNamesItsMeaningAndValue) {
  EXPECT_EQ(
      "the library failed with status 0x80004005 (E_FAIL: everything else that is not success)",
      LibraryFailureMessage(E_FAIL));
}

TEST(LibraryFailureMessageTest, InvalidArgumentNamesItsMeaningAndValue) {
  EXPECT_EQ(
      "the library failed with status 0x80070057 (E_INVALIDARG: an argument is empty or null, or "
      "a path is unusable)",
      LibraryFailureMessage(E_INVALIDARG));
}

TEST(LibraryFailureMessageTest, SuccessStatusesNameTheirMeaning) {
  EXPECT_EQ("the library failed with status 0x00000000 (S_OK: done, or yes, or found)",
            LibraryFailureMessage(S_OK));
  EXPECT_EQ("the library failed with status 0x00000001 (S_FALSE: succeeded with nothing to report)",
            LibraryFailureMessage(S_FALSE));
}

// A variant conversion may raise a system status of its own.
TEST(LibraryFailureMessageTest, OtherStatusKeepsItsValue) {
  EXPECT_EQ("the library failed with status 0x8002000a (a status outside the library's table)",
            LibraryFailureMessage(static_cast<HRESULT>(static_cast<int>(0x8002000Au))));
}

}  // namespace
