// File: VEKZOLSTLServicesSort_test.cpp
// Sorting object lists by display name, alphabetically and by number, with
// timers off (both switches are empty in this program's environment).
#include <vekzol/services/VEKZOLSTLServices.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "stringlists/VEKZOLSTLServicesTestPeer.h"
#include "stringlists/VEKZOLSTLServicesTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_stl_test::SeparatorSystem;
using vekzol_timer_test::FreshTrace;
using Strings = std::vector<std::string>;

// Objects named by the test, owned here; the list holds their pointers.
class Objects {
 public:
  VEKIZOLObject* Add(const std::string& displayName) {
    objects_.push_back(std::make_unique<VEKZOLObjectImpl>(CString("ID-") + displayName.c_str()));
    objects_.back()->SetDisplayName(CString(displayName));
    return objects_.back().get();
  }
  std::deque<VEKIZOLObject*> List(const std::vector<std::string>& names) {
    std::deque<VEKIZOLObject*> list;
    for (const std::string& name : names) list.push_back(Add(name));
    return list;
  }

 private:
  std::vector<std::unique_ptr<VEKZOLObjectImpl>> objects_;
};

Strings Names(const std::deque<VEKIZOLObject*>& list) {
  Strings names;
  for (VEKIZOLObject* object : list) {
    names.push_back(object == nullptr ? "(null)" : object->GetDisplayName().str());
  }
  return names;
}

// Each test starts before the separator is known, with a separator of its
// choosing.
class VEKZOLSTLServicesSortTest : public ::testing::Test {
 protected:
  void SetUp() override {
    FreshTrace();
    VEKZOLSTLServicesTestPeer::ForgetDecimalSeparator();
  }
  void TearDown() override { VEKZOLSTLServicesTestPeer::ForgetDecimalSeparator(); }

  Objects objects_;
  SeparatorSystem system_;
  ScopedSystem scoped_{&system_};
};

TEST_F(VEKZOLSTLServicesSortTest, ModeZeroSortsByNameInByteOrder) {
  std::deque<VEKIZOLObject*> list = objects_.List({"b", "a", "C", "c", "10", "9", "\xC3\xA9"});
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 0), S_OK);
  EXPECT_EQ(Names(list), (Strings{"10", "9", "C", "a", "b", "c", "\xC3\xA9"}));
}

TEST_F(VEKZOLSTLServicesSortTest, ModeOneSortsByTheNumberInTheName) {
  system_.separator = ",";
  std::deque<VEKIZOLObject*> list = objects_.List({"10", "9", "2,5", "abc", "-1", "2.25"});
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 1), S_OK);
  // "abc" holds no number and counts as 0.
  EXPECT_EQ(Names(list), (Strings{"-1", "abc", "2.25", "2,5", "9", "10"}));
}

TEST_F(VEKZOLSTLServicesSortTest, ModeOneWithoutASeparatorComparesZeros) {
  system_.failSeparator = true;
  std::deque<VEKIZOLObject*> list = objects_.List({"3", "1"});
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 1), S_OK);
  EXPECT_EQ(Names(list), (Strings{"3", "1"}));
  // Each conversion asked for the separator again, and it is still unknown.
  EXPECT_GE(system_.separatorReads, 2);
  EXPECT_FALSE(VEKZOLSTLServicesTestPeer::DecimalSeparatorKnown());
}

TEST_F(VEKZOLSTLServicesSortTest, OtherModesLeaveTheOrder) {
  std::deque<VEKIZOLObject*> list = objects_.List({"b", "a", "c"});
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 5), S_OK);
  EXPECT_EQ(Names(list), (Strings{"b", "a", "c"}));
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, -1), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 2), S_OK);
  EXPECT_EQ(Names(list), (Strings{"b", "a", "c"}));
  EXPECT_EQ(system_.separatorReads, 0);
}

TEST_F(VEKZOLSTLServicesSortTest, EmptyListIsFine) {
  std::deque<VEKIZOLObject*> list;
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 0), S_OK);
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 1), S_OK);
  EXPECT_TRUE(list.empty());
}

TEST_F(VEKZOLSTLServicesSortTest, NullPointersAndNumberlessNamesKeepTheListWhole) {
  // Null pointers and NaN compare as neither less nor greater than
  // anything; the sort must still only permute the list.
  for (int mode = 0; mode < 2; ++mode) {
    std::deque<VEKIZOLObject*> list;
    for (int i = 0; i < 300; ++i) {
      if (i % 7 == 3) {
        list.push_back(nullptr);
      } else if (i % 11 == 5) {
        list.push_back(objects_.Add("nan"));
      } else {
        list.push_back(objects_.Add(std::to_string((i * 7919) % 1000)));
      }
    }
    std::vector<VEKIZOLObject*> before(list.begin(), list.end());
    EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, mode), S_OK);
    std::vector<VEKIZOLObject*> after(list.begin(), list.end());
    std::sort(before.begin(), before.end());
    std::sort(after.begin(), after.end());
    EXPECT_EQ(after, before) << "mode " << mode;
  }
}

TEST_F(VEKZOLSTLServicesSortTest, TimerDoesNotPrintWithTimersOff) {
  std::deque<VEKIZOLObject*> list = objects_.List({"b", "a"});
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 0), S_OK);
  // No line was written, so the trace file was never made.
  CString path;
  VEKZOLLog::GetLogFilePath(path);
  EXPECT_TRUE(path.IsEmpty());
}

}  // namespace
