// File: VEKZOLTimer_batch_env_test.cpp
// Runs with JBM_RQT_IN set and VEK_ZOL_TIMERS_ENABLED=true: a batch run has
// timers on whatever the switch says, and its report lines also go to
// standard output, as every trace line of a batch run does.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <string>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TimerClockSystem;
using vekzol_timer_test::TraceBody;
using Peer = VEKZOLTimerTestPeer;

TEST(VEKZOLTimerBatchEnvTest, TimersAreOnAndReportToTheTraceAndStandardOutput) {
  FreshTrace();
  TimerClockSystem system;
  ScopedSystem scoped(&system);
  VEKZOLTimer timer("Batch Timer");
  VEKZOLTimer counter("Batch Counter", true);
  EXPECT_EQ(counter.IncrementCounter(), S_OK);

  system.ticks = 100;
  timer.StartTimer();
  system.ticks = 142;
  system.user = 70000;
  ::testing::internal::CaptureStdout();
  timer.StopAndPrintTimer();
  timer.PrintCummulativeTimes();
  const std::string printed = ::testing::internal::GetCapturedStdout();

  const std::string lines =
      Line("Timer:\t Batch Timer\tCPU Time:\t7\tElapsed Time:\t42") +
      Line(
          "Timer:\t Batch Timer\tCummulative CPU Time:\t7\tCummulative Elapsed Time:\t42"
          "\tNb Calls:\t1");
  EXPECT_EQ(printed, lines);
  EXPECT_EQ(TraceBody(), lines);
  EXPECT_TRUE(Peer::TimersEnabledFlag());
}

}  // namespace
