// File: VEKZOLTimer_enabled_upper_env_test.cpp
// Runs with VEK_ZOL_TIMERS_ENABLED=TRUE: timers are on.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::TimerClockSystem;
using Peer = VEKZOLTimerTestPeer;

TEST(VEKZOLTimerEnabledUpperEnvTest, TimersAreOnAndCount) {
  TimerClockSystem system;
  ScopedSystem scoped(&system);
  VEKZOLTimer timer("Upper Timer");
  VEKZOLTimer counter("Upper Counter", true);
  system.ticks = 10;
  timer.StartTimer();
  system.ticks = 35;
  timer.StopTimer();
  long cpu = -1;
  long elapsed = -1;
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(elapsed, 25);
  EXPECT_EQ(timer.GetCounter(), 1);
  EXPECT_EQ(counter.IncrementCounter(), S_OK);
  EXPECT_TRUE(Peer::TimersEnabledFlag());
}

}  // namespace
