// The option store as a host sees it: this program links the shared library,
// so every member and static used here must be exported from it. Runs with
// VZOLOPT_SHARED=tRuE.
#include <gtest/gtest.h>

#include <vekzol/VEKZOLBase.h>

namespace {

TEST(VEKZOLOptionsMgrSharedTest, TheOptionStoreIsReachable) {
  EXPECT_STREQ(VEKZOLOptionsMgr::GetValue("VZOLOPT_SHARED"), "TRUE");
  VEKZOLOptionsMgr::SetValue("VZOLOPT_SHARED_SET", "value");
  EXPECT_STREQ(VEKZOLOptionsMgr::GetValue("VZOLOPT_SHARED_SET"), "value");
  EXPECT_EQ(VEKZOLOptionsMgr::_OptionValueMap.size(), 2u);
  EXPECT_EQ(VEKZOLOptionsMgr::PrintAllOptions(), E_FAIL);
  VEKZOLOptionsMgr first;
  VEKZOLOptionsMgr second;
  first = second;
}

}  // namespace
