// File: VEKZOLTimer_lowercase_env_test.cpp
// Runs with VEK_ZOL_TIMERS_ENABLED=true and no batch input: only the exact
// "TRUE" or "1" turn timers on, so they are off.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"

namespace {

using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::TimerClockSystem;
using Peer = VEKZOLTimerTestPeer;

TEST(VEKZOLTimerLowercaseEnvTest, TimersAreOffAndDoNotCount) {
  TimerClockSystem system;
  ScopedSystem scoped(&system);
  VEKZOLTimer timer("Lower Timer");
  VEKZOLTimer counter("Lower Counter", true);
  timer.StartTimer();
  system.ticks = 2000;
  timer.StopTimer();
  EXPECT_EQ(timer.GetCounter(), 0);
  EXPECT_EQ(Peer::StartCount(timer), 0);
  EXPECT_EQ(counter.IncrementCounter(), E_FAIL);
  EXPECT_FALSE(Peer::TimersEnabledFlag());
  EXPECT_TRUE(Peer::TimersEnabledRead());
}

}  // namespace
