// File: VEKZOLSTLServices_timers_env_test.cpp
// Runs with VEK_ZOL_TIMERS_ENABLED=1: the six service timers run behind the
// argument checks, their report comes in order and clears them, and the
// sort prints its own timer at each call.
#include <vekzol/services/VEKZOLSTLServices.h>

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>

#include <vekzol/objects/VEKZOLObjectImpl.h>
#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "stringlists/VEKZOLSTLServicesTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_stl_test::List;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TimerClockSystem;
using vekzol_timer_test::TraceBody;
using Peer = VEKZOLTimerTestPeer;

class VEKZOLSTLServicesTimersEnvTest : public ::testing::Test {
 protected:
  void SetUp() override {
    system_.ticks = 500;
    // Earlier tests of this program leave counts in the static timers.
    VEKZOLSTLServices::PrintAndResetCummulativeTimes();
    FreshTrace();
  }

  // Runs `call` and tells whether it started and stopped `timer` once each,
  // or neither.
  static void ExpectTimed(const VEKZOLTimer& timer, const std::function<long()>& call,
                          long expectedStatus, long expectedRuns) {
    const long starts = Peer::StartCount(timer);
    const long stops = Peer::StopCount(timer);
    const long samples = timer.GetCounter();
    EXPECT_EQ(call(), expectedStatus);
    EXPECT_EQ(Peer::StartCount(timer), starts + expectedRuns);
    EXPECT_EQ(Peer::StopCount(timer), stops + expectedRuns);
    EXPECT_EQ(timer.GetCounter(), samples + expectedRuns);
  }

  TimerClockSystem system_;
  ScopedSystem scoped_{&system_};
};

TEST_F(VEKZOLSTLServicesTimersEnvTest, TimersRunOnlyBehindTheArgumentChecks) {
  std::deque<CString> some = List({"b", "a"});
  std::deque<CString> none;
  std::deque<CString> result;
  const VEKZOLTimer& find = VEKZOLSTLServices::_FindInDequeTimer;
  ExpectTimed(
      find, [&] { return VEKZOLSTLServices::FindInDeque("", some); }, E_INVALIDARG, 0);
  ExpectTimed(
      find, [&] { return VEKZOLSTLServices::FindInDeque("a", none); }, E_INVALIDARG, 0);
  ExpectTimed(
      find, [&] { return VEKZOLSTLServices::FindInDeque("a", some); }, S_OK, 1);
  ExpectTimed(
      find, [&] { return VEKZOLSTLServices::FindInDeque("c", some); }, E_FAIL, 1);

  const VEKZOLTimer& append = VEKZOLSTLServices::_AppendToDequeTimer;
  ExpectTimed(
      append, [&] { return VEKZOLSTLServices::AppendToDeque(result, none); }, E_INVALIDARG, 0);
  ExpectTimed(
      append, [&] { return VEKZOLSTLServices::AppendToDeque(result, some); }, E_FAIL, 1);

  const VEKZOLTimer& intersection = VEKZOLSTLServices::_IntersectionTimer;
  ExpectTimed(
      intersection, [&] { return VEKZOLSTLServices::Intersection(some, none, result); },
      E_INVALIDARG, 0);
  ExpectTimed(
      intersection, [&] { return VEKZOLSTLServices::Intersection(some, some, result); }, S_OK, 1);

  const VEKZOLTimer& difference = VEKZOLSTLServices::_DifferenceTimer;
  ExpectTimed(
      difference, [&] { return VEKZOLSTLServices::Difference(none, none, result); }, E_INVALIDARG,
      0);
  ExpectTimed(
      difference, [&] { return VEKZOLSTLServices::Difference(none, some, result); }, S_OK, 1);
  ExpectTimed(
      difference, [&] { return VEKZOLSTLServices::Difference(some, none, result); }, S_OK, 1);
  ExpectTimed(
      difference, [&] { return VEKZOLSTLServices::Difference(some, some, result); }, S_OK, 1);

  const VEKZOLTimer& symmetric = VEKZOLSTLServices::_SymmetricDifferenceTimer;
  ExpectTimed(
      symmetric, [&] { return VEKZOLSTLServices::SymmetricDifference(none, some, result); },
      E_INVALIDARG, 0);
  ExpectTimed(
      symmetric, [&] { return VEKZOLSTLServices::SymmetricDifference(some, some, result); }, S_OK,
      1);

  const VEKZOLTimer& duplicates = VEKZOLSTLServices::_RemoveDuplicatesTimer;
  ExpectTimed(
      duplicates, [&] { return VEKZOLSTLServices::RemoveDuplicates(none); }, E_INVALIDARG, 0);
  ExpectTimed(
      duplicates, [&] { return VEKZOLSTLServices::RemoveDuplicates(result); }, E_FAIL, 1);
  EXPECT_TRUE(TraceBody().empty());
}

TEST_F(VEKZOLSTLServicesTimersEnvTest, PrintAndResetReportsTheSixTimersInOrderAndClearsThem) {
  std::deque<CString> some = List({"a"});
  std::deque<CString> result;
  system_.kernel = 20000;  // 2 ms of processor time so far
  system_.ticks = 600;
  VEKZOLSTLServices::FindInDeque("a", some);
  VEKZOLSTLServices::Intersection(some, some, result);
  VEKZOLSTLServices::Intersection(some, some, result);
  VEKZOLSTLServices::RemoveDuplicates(result);
  VEKZOLSTLServices::_DifferenceTimer.StartTimer();  // left running
  VEKZOLSTLServices::PrintAndResetCummulativeTimes();

  // The wall figure of each run is 0: the tick count does not move inside a
  // call, and each timer's slot was restarted at 500 by the reset before
  // the test and at 600 by its own start.
  const std::string prefix = "Timer:\t STL Services - ";
  std::string expected =
      Line(prefix +
           "Find In Deque Timer\tCummulative CPU Time:\t2\tCummulative Elapsed Time:\t0"
           "\tNb Calls:\t1") +
      Line(prefix +
           "Append To Deque Timer\tCummulative CPU Time:\t0\tCummulative Elapsed Time:\t0"
           "\tNb Calls:\t0") +
      Line(prefix +
           "Intersection Timer\tCummulative CPU Time:\t4\tCummulative Elapsed Time:\t0"
           "\tNb Calls:\t2") +
      Line(prefix +
           "Difference Timer\tCummulative CPU Time:\t0\tCummulative Elapsed Time:\t0"
           "\tNb Calls:\t1\tERROR: Mismatch in Start & Stop Count\t") +
      Line(prefix +
           "Symmetric Difference Timer\tCummulative CPU Time:\t0\tCummulative Elapsed Time:\t0"
           "\tNb Calls:\t0") +
      Line(prefix +
           "Remove Duplicates Timer\tCummulative CPU Time:\t2\tCummulative Elapsed Time:\t0"
           "\tNb Calls:\t1");
  EXPECT_EQ(TraceBody(), expected);

  FreshTrace();
  VEKZOLSTLServices::PrintAndResetCummulativeTimes();
  std::string cleared;
  for (const char* name : {"Find In Deque", "Append To Deque", "Intersection", "Difference",
                           "Symmetric Difference", "Remove Duplicates"}) {
    cleared += Line(prefix + name +
                    " Timer\tCummulative CPU Time:\t0\tCummulative Elapsed Time:\t0"
                    "\tNb Calls:\t0");
  }
  EXPECT_EQ(TraceBody(), cleared);
}

TEST_F(VEKZOLSTLServicesTimersEnvTest, SortPrintsItsOwnTimerAtEachCallAndGivesItsSlotBack) {
  VEKZOLObjectImpl first("ID-1");
  first.SetDisplayName("b");
  VEKZOLObjectImpl second("ID-2");
  second.SetDisplayName("a");
  std::deque<VEKIZOLObject*> list = {&first, &second};
  system_.user = 30000;
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 0), S_OK);
  const uint32_t used = Peer::Used();
  EXPECT_EQ(VEKZOLSTLServices::SortListObjects(list, 7), S_OK);
  EXPECT_EQ(Peer::Used(), used);
  EXPECT_EQ(list[0], &second);
  const std::string line =
      Line("Timer:\t STLServices - Sort List Objects Timer\tCPU Time:\t3\tElapsed Time:\t0");
  EXPECT_EQ(TraceBody(), line + line);
}

}  // namespace
