// File: VEKZOLTimer_switches_env_test.cpp
// The timers' switch as the process environment gives it, read through the
// real platform backend, without a batch input. The program starts with
// VEK_ZOL_TIMERS_ENABLED=TRUE; the second case puts "true" into the process
// environment and takes the library back to a process that has read no
// switch.
//
// - TRUE: timers are on.
// - true: only the exact "TRUE" or "1" turn timers on, so they are off.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "platform/ProcessEnvironmentTesting.h"
#include "state/LibraryState.h"

namespace {

using vekzol::platform::PutEnvironmentVariable;
using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::TimerClockSystem;
using Peer = VEKZOLTimerTestPeer;

TEST(VEKZOLTimerSwitchesEnvTest, UppercaseTRUETurnsTimersOnAndTheyCount) {
  // The value the program was started with.
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

TEST(VEKZOLTimerSwitchesEnvTest, LowercaseTrueLeavesTimersOffAndTheyDoNotCount) {
  PutEnvironmentVariable("VEK_ZOL_TIMERS_ENABLED", "true");
  vekzol::state::ResetForTesting();
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
  PutEnvironmentVariable("VEK_ZOL_TIMERS_ENABLED", "TRUE");
}

}  // namespace
