// Runs in verbose mode with the 18 known option variables pinned by its
// CMake entry (VEK_ZOL_DEBUG_MODE=1, KRN_KEEP_SESSION_DIR=true,
// PX_7GRUN_YTFGRAPHIC=Yes, the others empty): the listing of all options,
// sorted, once per process. The first case lists at the first read of the
// verbosity switch in a process started with it; each case starts from a
// store and a log as in a fresh process.
//
// The last case turns the trace log off in the process environment as
// well, and takes the library back to a process that has read no switch:
// the listing still runs its loop and counts as done, and its lines are
// lost.
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "options/VEKZOLOptionsMgrTestSupport.h"

namespace {

using options_test::FreshProcess;
using options_test::Lines;
using options_test::PutEnvironmentVariable;
using options_test::StoreContents;
using Store = std::vector<std::pair<std::string, std::string>>;

TEST(VEKZOLOptionsMgrVerboseEnvTest, ListsTheKnownKeysSortedWithRawEnvironmentValues) {
  FreshProcess process;
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_EQ(
      process.TraceBody(),
      Lines(
          {"Option:\t KRN_ENABLE_BLOB_COMPRESSION = ", "Option:\t KRN_ENABLE_LMQ_UPDATE = ",
           "Option:\t KRN_KEEP_SESSION_DIR = true",
           "Option:\t KRN_MANAGE_COLLABORATIONS = ", "Option:\t KRN_REVISION_PRODUCT_FILE = ",
           "Option:\t KRN_SHOW_PMI_ON_LOAD = ", "Option:\t KRN_VIEW_PROCESS_ATTACHMENTS = ",
           "Option:\t KRN_VIEW_WORKINSTRUCTIONLIBRARY = ",
           "Option:\t PX_7GRUN_CONTEXT_YTFGRAPHIC = ", "Option:\t PX_7GRUN_YTFGRAPHIC = Yes",
           "Option:\t VEK_KRN_REPARENTBLOB_EDIT_DISABLED = ",
           "Option:\t VEK_ZOL_BYPASS_ANNOTATION_ANCHOR_MGT = ",
           "Option:\t VEK_ZOL_BYPASS_ANNOTATION_CLEANING = ", "Option:\t VEK_ZOL_DEBUG_MODE = 1",
           "Option:\t VEK_ZOL_DISABLE_LOD = ", "Option:\t VEK_ZOL_DISABLE_PRODUCT_BUILDUP = ",
           "Option:\t VEK_ZOL_IGNORE_DERIVED_WI_TYPES = ", "Option:\t VEK_ZOL_TIMERS_ENABLED = "}));
  // The listing teaches the store nothing.
  EXPECT_TRUE(StoreContents().empty());
  EXPECT_TRUE(VEKZOLOptionsMgrTestPeer::OptionsPrinted());
}

TEST(VEKZOLOptionsMgrVerboseEnvTest, AnOptionAskedBeforeTheListingPrintsItsStoredNormalisedValue) {
  FreshProcess process;
  EXPECT_STREQ(VEKZOLOptionsMgr::GetValue("VEK_ZOL_DEBUG_MODE"), "TRUE");
  EXPECT_STREQ(VEKZOLOptionsMgr::GetValue("KRN_KEEP_SESSION_DIR"), "TRUE");
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  const std::string body = process.TraceBody();
  EXPECT_NE(body.find(Lines({"Option:\t VEK_ZOL_DEBUG_MODE = TRUE"})), std::string::npos);
  EXPECT_NE(body.find(Lines({"Option:\t KRN_KEEP_SESSION_DIR = TRUE"})), std::string::npos);
  EXPECT_NE(body.find(Lines({"Option:\t PX_7GRUN_YTFGRAPHIC = Yes"})), std::string::npos);
  EXPECT_EQ(body.find("= 1\n"), std::string::npos);
  EXPECT_EQ(body.find("= true\n"), std::string::npos);
}

TEST(VEKZOLOptionsMgrVerboseEnvTest, StoredKeysJoinTheListingInTheirSortedPlaceOnceEach) {
  FreshProcess process;
  VEKZOLOptionsMgr::SetValue("AAA_HOST_OPTION", "first");
  VEKZOLOptionsMgr::SetValue("KRN_KEEP_SESSION_DIR", "kept");
  VEKZOLOptionsMgr::SetValue("vek_zol_debug_mode", "lower");
  VEKZOLOptionsMgr::SetValue("VEK_ZOL_DEBUG_MODE", "upper");
  VEKZOLOptionsMgr::SetValue("ZZZ_HOST_OPTION", "");
  // The empty key is in the store but stays out of the listing.
  EXPECT_STREQ(VEKZOLOptionsMgr::GetValue(""), "");
  const Store storeBefore = StoreContents();

  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_EQ(process.TraceBody(), Lines({"Option:\t AAA_HOST_OPTION = first",
                                        "Option:\t KRN_ENABLE_BLOB_COMPRESSION = ",
                                        "Option:\t KRN_ENABLE_LMQ_UPDATE = ",
                                        "Option:\t KRN_KEEP_SESSION_DIR = kept",
                                        "Option:\t KRN_MANAGE_COLLABORATIONS = ",
                                        "Option:\t KRN_REVISION_PRODUCT_FILE = ",
                                        "Option:\t KRN_SHOW_PMI_ON_LOAD = ",
                                        "Option:\t KRN_VIEW_PROCESS_ATTACHMENTS = ",
                                        "Option:\t KRN_VIEW_WORKINSTRUCTIONLIBRARY = ",
                                        "Option:\t PX_7GRUN_CONTEXT_YTFGRAPHIC = ",
                                        "Option:\t PX_7GRUN_YTFGRAPHIC = Yes",
                                        "Option:\t VEK_KRN_REPARENTBLOB_EDIT_DISABLED = ",
                                        "Option:\t VEK_ZOL_BYPASS_ANNOTATION_ANCHOR_MGT = ",
                                        "Option:\t VEK_ZOL_BYPASS_ANNOTATION_CLEANING = ",
                                        "Option:\t VEK_ZOL_DEBUG_MODE = upper",
                                        "Option:\t VEK_ZOL_DISABLE_LOD = ",
                                        "Option:\t VEK_ZOL_DISABLE_PRODUCT_BUILDUP = ",
                                        "Option:\t VEK_ZOL_IGNORE_DERIVED_WI_TYPES = ",
                                        "Option:\t VEK_ZOL_TIMERS_ENABLED = ",
                                        "Option:\t ZZZ_HOST_OPTION = ",
                                        "Option:\t vek_zol_debug_mode = lower"}));
  EXPECT_EQ(StoreContents(), storeBefore);
}

TEST(VEKZOLOptionsMgrVerboseEnvTest, ASecondListingWritesNothingAndAnswersEFail) {
  FreshProcess process;
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  const std::string first = process.TraceBody();
  VEKZOLOptionsMgr::SetValue("AAA_HOST_OPTION", "late");
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_EQ(process.TraceBody(), first);
  EXPECT_EQ(first.find("AAA_HOST_OPTION"), std::string::npos);
}

TEST(VEKZOLOptionsMgrVerboseEnvTest, TheListingReadsTheEnvironmentOnlyForKeysTheStoreLacks) {
  FreshProcess process;
  VEKZOLOptionsMgr::SetValue("VEK_ZOL_DEBUG_MODE", "set");
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  EXPECT_EQ(process.ReadsOf("VEK_ZOL_DEBUG_MODE"), 0);
  EXPECT_EQ(process.ReadsOf("KRN_KEEP_SESSION_DIR"), 1);
  EXPECT_EQ(process.ReadsOf("VEK_ZOL_TIMERS_ENABLED"), 1);
}

// The trace log off, as the process environment gives it to a process
// that has read no switch yet (FreshProcess takes the library back to one);
// put back to the empty value the program was started with afterwards.
class VEKZOLOptionsMgrLogDisabledEnvTest : public ::testing::Test {
 protected:
  void SetUp() override { PutEnvironmentVariable("VEK_ZOL_LOG_ENABLED", "FALSE"); }
  void TearDown() override { PutEnvironmentVariable("VEK_ZOL_LOG_ENABLED", ""); }
};

TEST_F(VEKZOLOptionsMgrLogDisabledEnvTest, ListingRunsItsLoopWritesNoFileAndCountsAsDone) {
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
