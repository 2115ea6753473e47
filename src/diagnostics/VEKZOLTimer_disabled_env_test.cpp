// File: VEKZOLTimer_disabled_env_test.cpp
// Runs with both switches empty: timers are off. Every gated operation is
// silent, and only PrintCummulativeTimes writes, with zeros.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"

namespace {

using vekzol_log_test::FileExists;
using vekzol_log_test::kStamp;
using vekzol_log_test::ScopedSystem;
using vekzol_log_test::TestTempDir;
using vekzol_log_test::TracePath;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TimerClockSystem;
using vekzol_timer_test::TraceBody;
using Peer = VEKZOLTimerTestPeer;

class VEKZOLTimerDisabledEnvTest : public ::testing::Test {
 protected:
  void SetUp() override { FreshTrace(); }

  TimerClockSystem system_;
  ScopedSystem scopedSystem_{&system_};
};

TEST_F(VEKZOLTimerDisabledEnvTest, TimersAreOffWithBothSwitchesEmpty) {
  EXPECT_FALSE(Peer::AreTimersEnabled());
}

TEST_F(VEKZOLTimerDisabledEnvTest, StartStopAndPrintChangeNothingAndPrintNothing) {
  system_.ticks = 1000;
  VEKZOLTimer timer("Silent Timer");
  const int ticksAtConstruction = system_.tickReads;
  system_.ticks = 2000;
  system_.kernel = 500000;
  timer.StartTimer();
  timer.StopTimer();
  long cpu = 7;
  long elapsed = 9;
  timer.StopTimer(cpu, elapsed);
  EXPECT_EQ(cpu, 7);
  EXPECT_EQ(elapsed, 9);
  timer.StopAndPrintTimer();
  timer.AddCurrentTime();
  timer.Reset();
  timer.GetCurrentTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 7);
  EXPECT_EQ(elapsed, 9);
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 7);
  EXPECT_EQ(elapsed, 9);

  EXPECT_EQ(timer.GetCounter(), 0);
  EXPECT_EQ(Peer::StartCount(timer), 0);
  EXPECT_EQ(Peer::StopCount(timer), 0);
  EXPECT_EQ(Peer::TotalCPU(timer), 0);
  EXPECT_EQ(Peer::TotalElapsed(timer), 0);
  // No slot was restarted or read.
  EXPECT_EQ(system_.tickReads, ticksAtConstruction);
  EXPECT_EQ(system_.processTimesReads, 0);
  EXPECT_EQ(Peer::Slot(Peer::SlotId(timer)).startTicks, 1000u);
  EXPECT_FALSE(FileExists(TracePath(TestTempDir(), kStamp)));
}

TEST_F(VEKZOLTimerDisabledEnvTest, CounterDoesNotCountAndIsNoCounter) {
  VEKZOLTimer counter("Silent Counter", true);
  EXPECT_EQ(counter.IncrementCounter(), E_FAIL);
  EXPECT_EQ(counter.GetCounter(), 0);
  EXPECT_FALSE(counter.IsJustACounter());
  counter.TotalReset();
  EXPECT_TRUE(Peer::JustACounterField(counter));
}

TEST_F(VEKZOLTimerDisabledEnvTest, PrintCummulativeTimesStillWritesALineOfZeros) {
  VEKZOLTimer timer("Off Timer");
  timer.StartTimer();
  timer.StartTimer();
  timer.StopTimer();
  timer.PrintCummulativeTimes();
  EXPECT_EQ(TraceBody(),
            Line("Timer:\t Off Timer\tCummulative CPU Time:\t0\tCummulative Elapsed Time:\t0"
                 "\tNb Calls:\t0"));
}

}  // namespace
