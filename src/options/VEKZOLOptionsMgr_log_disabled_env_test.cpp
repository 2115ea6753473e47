// Runs in verbose mode with the trace log off: the listing still runs its
// loop and counts as done, and its lines are lost.
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "options/VEKZOLOptionsMgrTestSupport.h"

namespace {

TEST(VEKZOLOptionsMgrLogDisabledEnvTest, ListingRunsItsLoopWritesNoFileAndCountsAsDone) {
  options_test::FreshProcess process;
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_TRUE(VEKZOLOptionsMgrTestPeer::OptionsPrinted());
  EXPECT_FALSE(process.TraceFileExists());
  EXPECT_EQ(process.ReadsOf("KRN_VIEW_WORKINSTRUCTIONLIBRARY"), 1);
  EXPECT_EQ(process.ReadsOf("KRN_REVISION_PRODUCT_FILE"), 1);
  EXPECT_TRUE(options_test::StoreContents().empty());

  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_EQ(process.ReadsOf("KRN_VIEW_WORKINSTRUCTIONLIBRARY"), 1);
}

}  // namespace
