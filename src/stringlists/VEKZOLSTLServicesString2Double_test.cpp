// File: VEKZOLSTLServicesString2Double_test.cpp
// Reading numbers whatever the user's decimal separator: the first call
// fetches the separator and converts under the "C" numeric locale, later
// calls take the fast path. Each test starts as a fresh process does, with
// a separator of its choosing and a recorded locale switch.
#include <vekzol/services/VEKZOLSTLServices.h>

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <vector>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLLogTestSupport.h"
#include "stringlists/VEKZOLSTLServicesTestPeer.h"
#include "stringlists/VEKZOLSTLServicesTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_stl_test::SeparatorSystem;
using Peer = VEKZOLSTLServicesTestPeer;
using Strings = std::vector<std::string>;

class VEKZOLSTLServicesString2DoubleTest : public ::testing::Test {
 protected:
  void SetUp() override { Peer::ForgetDecimalSeparator(); }
  void TearDown() override { Peer::ForgetDecimalSeparator(); }

  SeparatorSystem system_;
  ScopedSystem scoped_{&system_};
};

TEST_F(VEKZOLSTLServicesString2DoubleTest, FirstCallConvertsUnderTheCLocaleAndPutsTheOldBack) {
  system_.separator = ",";
  double number = 0.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), S_OK);
  EXPECT_EQ(number, 1.5);
  EXPECT_EQ(system_.separatorReads, 1);
  EXPECT_EQ(system_.localeCalls, (Strings{"(null)", "C", "host-locale"}));
  EXPECT_EQ(system_.fakeLocale, "host-locale");
  EXPECT_TRUE(Peer::DecimalSeparatorKnown());
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, LaterCallsNeitherAskNorSwitch) {
  system_.separator = ",";
  double number = 0.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), S_OK);
  system_.separator = ";";
  EXPECT_EQ(VEKZOLSTLServices::String2Double("2,25", number), S_OK);
  EXPECT_EQ(number, 2.25);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("-7,5e2", number), S_OK);
  EXPECT_EQ(number, -750.0);
  EXPECT_EQ(system_.separatorReads, 1);
  EXPECT_EQ(system_.localeCalls.size(), 3u);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, PointInATextIsReadWhenTheSeparatorIsAComma) {
  system_.separator = ",";
  double number = 0.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1.5", number), S_OK);
  EXPECT_EQ(number, 1.5);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1.5", number), S_OK);
  EXPECT_EQ(number, 1.5);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, GroupingBecomesASecondPointAndEndsTheNumber) {
  system_.separator = ",";
  double number = 0.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,234.5", number), S_OK);
  EXPECT_EQ(number, 1.234);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,234.5", number), S_OK);
  EXPECT_EQ(number, 1.234);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, PointSeparatorLeavesCommasAlone) {
  double number = 0.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), S_OK);
  EXPECT_EQ(number, 1.0);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("3,75", number), S_OK);
  EXPECT_EQ(number, 3.0);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, TextWithoutANumberIsZeroAndTrailingTextIsIgnored) {
  double number = 42.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("abc", number), S_OK);
  EXPECT_EQ(number, 0.0);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("3.5kg", number), S_OK);
  EXPECT_EQ(number, 3.5);
  number = 42.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("", number), S_OK);
  EXPECT_EQ(number, 0.0);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("  12", number), S_OK);
  EXPECT_EQ(number, 12.0);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, OnlyTheFirstByteOfTheSeparatorCounts) {
  // A two-byte separator: its lead byte becomes "." and the second byte
  // stays, which ends the number.
  system_.separator = "\xD9\xAB";
  double number = 0.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1\xD9\xAB"
                                             "5",
                                             number),
            S_OK);
  EXPECT_EQ(number, 1.0);
  EXPECT_EQ(VEKZOLSTLServices::String2Double("2\xD9\xAB"
                                             "5",
                                             number),
            S_OK);
  EXPECT_EQ(number, 2.0);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, SeparatorThatCannotBeToldFailsAndIsAskedAgain) {
  system_.failSeparator = true;
  double number = 42.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1.5", number), E_FAIL);
  EXPECT_EQ(number, 42.0);
  EXPECT_FALSE(Peer::DecimalSeparatorKnown());
  EXPECT_TRUE(system_.localeCalls.empty());
  system_.failSeparator = false;
  system_.separator = ",";
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), S_OK);
  EXPECT_EQ(number, 1.5);
  EXPECT_EQ(system_.separatorReads, 2);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, FailedSwitchToCFailsOnceAndLaterCallsTakeTheFastPath) {
  system_.separator = ",";
  system_.failSwitch = true;
  double number = 42.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), E_FAIL);
  EXPECT_EQ(number, 42.0);
  EXPECT_TRUE(Peer::DecimalSeparatorKnown());
  EXPECT_EQ(system_.localeCalls, (Strings{"(null)", "C"}));
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), S_OK);
  EXPECT_EQ(number, 1.5);
  EXPECT_EQ(system_.localeCalls.size(), 2u);
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, FailedSwitchBackFailsWithTheNumberStored) {
  system_.separator = ",";
  system_.failRestore = true;
  double number = 42.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), E_FAIL);
  EXPECT_EQ(number, 1.5);
  EXPECT_EQ(system_.localeCalls, (Strings{"(null)", "C", "host-locale"}));
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, UnknownCurrentLocaleCannotBePutBack) {
  // Without a saved name the switch back only asks again, which fails as
  // the first ask did: the number is stored and the "C" locale stays.
  system_.separator = ",";
  system_.failQuery = true;
  double number = 42.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("1,5", number), E_FAIL);
  EXPECT_EQ(number, 1.5);
  EXPECT_EQ(system_.localeCalls, (Strings{"(null)", "C", "(null)"}));
  EXPECT_EQ(system_.fakeLocale, "C");
}

TEST_F(VEKZOLSTLServicesString2DoubleTest, PlatformLocaleIsSwitchedToCAndBack) {
#if defined(_WIN32)
  const char* const hostLocale = "";  // the user's settings
#else
  const char* const hostLocale = "C.UTF-8";
#endif
  ASSERT_NE(std::setlocale(LC_NUMERIC, hostLocale), nullptr);
  const std::string before = std::setlocale(LC_NUMERIC, nullptr);
  system_.separator = ",";
  system_.passLocaleOn = true;
  double number = 0.0;
  EXPECT_EQ(VEKZOLSTLServices::String2Double("0,125", number), S_OK);
  EXPECT_EQ(number, 0.125);
  EXPECT_EQ(system_.localeCalls, (Strings{"(null)", "C", before}));
  EXPECT_EQ(std::string(std::setlocale(LC_NUMERIC, nullptr)), before);
  std::setlocale(LC_NUMERIC, "C");
}

}  // namespace
