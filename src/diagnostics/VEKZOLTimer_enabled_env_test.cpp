// File: VEKZOLTimer_enabled_env_test.cpp
// Runs with VEK_ZOL_TIMERS_ENABLED=1: timers are on. Samples, sums, counts
// and report lines, against a tick count and processor times that the test
// sets, so every figure and every line is exact.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <gtest/gtest.h>

#include <cstdint>

#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLTimerTestPeer.h"
#include "diagnostics/VEKZOLTimerTestSupport.h"
#include "state/LibraryState.h"

namespace {

using vekzol::state::kNoTimerSlot;
using vekzol_log_test::ScopedSystem;
using vekzol_timer_test::FreshTrace;
using vekzol_timer_test::Line;
using vekzol_timer_test::TimerClockSystem;
using vekzol_timer_test::TraceBody;
using Peer = VEKZOLTimerTestPeer;

constexpr const char* kMismatch = "\tERROR: Mismatch in Start & Stop Count\t";

std::string CummulativeLine(const char* name, const char* cpu, const char* elapsed,
                            const char* calls) {
  return std::string("Timer:\t ") + name + "\tCummulative CPU Time:\t" + cpu +
         "\tCummulative Elapsed Time:\t" + elapsed + "\tNb Calls:\t" + calls;
}

// Processor time of the process in milliseconds, as the platform's
// 100-nanosecond units.
uint64_t Ms(uint64_t milliseconds) { return milliseconds * 10000; }

class VEKZOLTimerEnabledEnvTest : public ::testing::Test {
 protected:
  void SetUp() override {
    FreshTrace();
    system_.ticks = 1000;
  }

  // Starts `timer` at `startTicks` and stops it at `stopTicks` with the
  // process at `cpuMs` of processor time.
  void Stretch(VEKZOLTimer& timer, uint32_t startTicks, uint32_t stopTicks, uint64_t cpuMs) {
    system_.ticks = startTicks;
    timer.StartTimer();
    system_.ticks = stopTicks;
    system_.kernel = Ms(cpuMs) / 4;
    system_.user = Ms(cpuMs) - system_.kernel;
    timer.StopTimer();
  }

  TimerClockSystem system_;
  ScopedSystem scopedSystem_{&system_};
};

TEST_F(VEKZOLTimerEnabledEnvTest, TimersAreOnWithTheSwitchAtOne) {
  EXPECT_TRUE(Peer::AreTimersEnabled());
}

TEST_F(VEKZOLTimerEnabledEnvTest, StopSamplesTheStretchIntoTheSums) {
  VEKZOLTimer timer("Build Timer");
  system_.ticks = 2000;
  timer.StartTimer();
  EXPECT_EQ(Peer::Slot(Peer::SlotId(timer)).startTicks, 2000u);
  system_.ticks = 2250;
  system_.kernel = 30000;
  system_.user = 120000;
  timer.StopTimer();
  long cpu = -1;
  long elapsed = -1;
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 15);
  EXPECT_EQ(elapsed, 250);
  timer.GetCurrentTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 0);
  EXPECT_EQ(elapsed, 0);
  EXPECT_EQ(timer.GetCounter(), 1);
  EXPECT_EQ(Peer::StartCount(timer), 1);
  EXPECT_EQ(Peer::StopCount(timer), 1);
  // The stop restarted the slot.
  EXPECT_EQ(Peer::Slot(Peer::SlotId(timer)).startTicks, 2250u);
}

TEST_F(VEKZOLTimerEnabledEnvTest, StopWithArgumentsHandsOutTheSampleAndCurrentTimesReadZero) {
  VEKZOLTimer timer("Sample Timer");
  system_.ticks = 5000;
  timer.StartTimer();
  system_.ticks = 5040;
  system_.kernel = Ms(60);
  system_.user = Ms(9);
  long cpu = -1;
  long elapsed = -1;
  timer.StopTimer(cpu, elapsed);
  EXPECT_EQ(cpu, 69);
  EXPECT_EQ(elapsed, 40);
  timer.GetCurrentTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 0);
  EXPECT_EQ(elapsed, 0);
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 69);
  EXPECT_EQ(elapsed, 40);
}

TEST_F(VEKZOLTimerEnabledEnvTest, ProcessorSumAddsTheWholeProcessTimeOfEachSample) {
  VEKZOLTimer timer("Sum Timer");
  Stretch(timer, 100, 350, 15);
  Stretch(timer, 400, 500, 20);
  long cpu = -1;
  long elapsed = -1;
  timer.GetTotalTimes(cpu, elapsed);
  // Wall time of the stretches, processor time of the process at each stop.
  EXPECT_EQ(cpu, 35);
  EXPECT_EQ(elapsed, 350);
  EXPECT_EQ(timer.GetCounter(), 2);
}

TEST_F(VEKZOLTimerEnabledEnvTest, StopWithoutANewStartRunsFromTheLastStop) {
  VEKZOLTimer timer("Restop Timer");
  Stretch(timer, 2000, 2250, 0);
  system_.ticks = 2300;
  long cpu = -1;
  long elapsed = -1;
  timer.StopTimer(cpu, elapsed);
  EXPECT_EQ(elapsed, 50);
  EXPECT_EQ(Peer::StartCount(timer), 1);
  EXPECT_EQ(Peer::StopCount(timer), 2);
  EXPECT_EQ(timer.GetCounter(), 2);
  timer.PrintCummulativeTimes();
  EXPECT_EQ(TraceBody(), Line(CummulativeLine("Restop Timer", "0", "300", "1") + kMismatch));
}

TEST_F(VEKZOLTimerEnabledEnvTest, TwoStartsAndOneStopReportTwoCallsAndTheMismatch) {
  VEKZOLTimer timer("Pairing Timer");
  system_.ticks = 100;
  timer.StartTimer();
  system_.ticks = 130;
  timer.StartTimer();
  system_.ticks = 200;
  system_.kernel = Ms(3);
  timer.StopTimer();
  EXPECT_EQ(timer.GetCounter(), 1);
  timer.PrintCummulativeTimes();
  EXPECT_EQ(TraceBody(), Line(CummulativeLine("Pairing Timer", "3", "70", "2") + kMismatch));
}

TEST_F(VEKZOLTimerEnabledEnvTest, StopAndPrintTimerWritesTheSampleLine) {
  VEKZOLTimer timer("Print Timer");
  system_.ticks = 2000;
  timer.StartTimer();
  system_.ticks = 2250;
  system_.kernel = 30000;
  system_.user = 120000;
  timer.StopAndPrintTimer();
  system_.ticks = 2260;
  timer.StopAndPrintTimer();
  EXPECT_EQ(TraceBody(), Line("Timer:\t Print Timer\tCPU Time:\t15\tElapsed Time:\t250") +
                             Line("Timer:\t Print Timer\tCPU Time:\t15\tElapsed Time:\t10"));
  EXPECT_EQ(Peer::StopCount(timer), 2);
  EXPECT_EQ(Peer::StartCount(timer), 1);
}

TEST_F(VEKZOLTimerEnabledEnvTest, PrintCummulativeTimesReportsTheStartsAndResetsNothing) {
  VEKZOLTimer timer("Report Timer");
  Stretch(timer, 10, 20, 4);
  Stretch(timer, 30, 45, 4);
  timer.AddCurrentTime();  // a sample that is no call
  timer.PrintCummulativeTimes();
  timer.PrintCummulativeTimes();
  const std::string line = Line(CummulativeLine("Report Timer", "12", "25", "2"));
  EXPECT_EQ(TraceBody(), line + line);
  EXPECT_EQ(timer.GetCounter(), 3);
}

TEST_F(VEKZOLTimerEnabledEnvTest, NumbersAreTheDecimalTextOfA32BitInteger) {
  VEKZOLTimer timer("Wide Timer");
  // 3000000000 ms of processor time is more than a 32-bit integer holds.
  Stretch(timer, 0, 7, 3000000000u);
  long cpu = 0;
  long elapsed = 0;
  timer.GetTotalTimes(cpu, elapsed);
#if defined(_WIN32)
  EXPECT_EQ(cpu, -1294967296L);  // a 32-bit long
#else
  EXPECT_EQ(cpu, 3000000000L);
#endif
  system_.ticks = 7;
  timer.StartTimer();
  system_.kernel = 0;
  system_.user = 0;
  system_.ticks = 7 + 2147483648u;
  timer.StopAndPrintTimer();
  timer.PrintCummulativeTimes();
  EXPECT_EQ(TraceBody(),
            Line("Timer:\t Wide Timer\tCPU Time:\t0\tElapsed Time:\t-2147483648") +
                Line(CummulativeLine("Wide Timer", "-1294967296", "-2147483641", "2")));
}

TEST_F(VEKZOLTimerEnabledEnvTest, CounterTimerCountsIncrements) {
  VEKZOLTimer counter("Counter", true);
  EXPECT_TRUE(counter.IsJustACounter());
  EXPECT_EQ(counter.IncrementCounter(), S_OK);
  EXPECT_EQ(counter.IncrementCounter(), S_OK);
  EXPECT_EQ(counter.GetCounter(), 2);
}

TEST_F(VEKZOLTimerEnabledEnvTest, IncrementCounterOfATimerBuiltWithoutTheFlagIsEFail) {
  VEKZOLTimer timer("Not A Counter");
  VEKZOLTimer flaggedOff("Flagged Off", false);
  EXPECT_EQ(timer.IncrementCounter(), E_FAIL);
  EXPECT_EQ(flaggedOff.IncrementCounter(), E_FAIL);
  EXPECT_EQ(timer.GetCounter(), 0);
  EXPECT_EQ(flaggedOff.GetCounter(), 0);
  EXPECT_FALSE(timer.IsJustACounter());
}

TEST_F(VEKZOLTimerEnabledEnvTest, CounterAfterTotalResetNoLongerCounts) {
  VEKZOLTimer counter("Reset Counter", true);
  EXPECT_EQ(counter.IncrementCounter(), S_OK);
  counter.TotalReset();
  EXPECT_FALSE(counter.IsJustACounter());
  EXPECT_EQ(counter.IncrementCounter(), E_FAIL);
  EXPECT_EQ(counter.GetCounter(), 0);
}

TEST_F(VEKZOLTimerEnabledEnvTest, TotalResetClearsTimesAndCountsAndRestarts) {
  VEKZOLTimer timer("Total Timer");
  Stretch(timer, 10, 60, 8);
  system_.ticks = 70;
  timer.StartTimer();
  system_.ticks = 90;
  timer.TotalReset();
  EXPECT_EQ(Peer::Slot(Peer::SlotId(timer)).startTicks, 90u);
  EXPECT_EQ(timer.GetCounter(), 0);
  EXPECT_EQ(Peer::StartCount(timer), 0);
  EXPECT_EQ(Peer::StopCount(timer), 0);
  long cpu = -1;
  long elapsed = -1;
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 0);
  EXPECT_EQ(elapsed, 0);
  timer.PrintCummulativeTimes();
  EXPECT_EQ(TraceBody(), Line(CummulativeLine("Total Timer", "0", "0", "0")));
}

TEST_F(VEKZOLTimerEnabledEnvTest, ResetRestartsTheStretchWithoutCountingAStart) {
  VEKZOLTimer timer("Reset Timer");
  system_.ticks = 2000;
  timer.StartTimer();
  system_.ticks = 2100;
  timer.AddCurrentTime();
  timer.Reset();
  long cpu = -1;
  long elapsed = -1;
  timer.GetCurrentTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 0);
  EXPECT_EQ(elapsed, 0);
  system_.ticks = 2150;
  timer.StopTimer(cpu, elapsed);
  EXPECT_EQ(elapsed, 50);
  EXPECT_EQ(Peer::StartCount(timer), 1);
  EXPECT_EQ(Peer::StopCount(timer), 1);
}

TEST_F(VEKZOLTimerEnabledEnvTest, AddCurrentTimeSamplesWithoutRestarting) {
  VEKZOLTimer timer("Add Timer");
  system_.ticks = 2000;
  timer.StartTimer();
  system_.ticks = 2100;
  system_.user = Ms(2);
  timer.AddCurrentTime();
  long cpu = -1;
  long elapsed = -1;
  timer.GetCurrentTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 2);
  EXPECT_EQ(elapsed, 100);
  system_.ticks = 2200;
  timer.AddCurrentTime();
  timer.GetCurrentTimes(cpu, elapsed);
  EXPECT_EQ(elapsed, 200);
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 4);
  EXPECT_EQ(elapsed, 300);
  EXPECT_EQ(timer.GetCounter(), 2);
  EXPECT_EQ(Peer::StopCount(timer), 0);
}

TEST_F(VEKZOLTimerEnabledEnvTest, FailedProcessTimesSampleZeroAndZeroAndStillCount) {
  VEKZOLTimer timer("Failing Timer");
  Stretch(timer, 10, 30, 5);
  system_.failProcessTimes = true;
  system_.ticks = 40;
  timer.StartTimer();
  system_.ticks = 90;
  long cpu = -1;
  long elapsed = -1;
  timer.StopTimer(cpu, elapsed);
  EXPECT_EQ(cpu, 0);
  EXPECT_EQ(elapsed, 0);
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 5);
  EXPECT_EQ(elapsed, 20);
  EXPECT_EQ(timer.GetCounter(), 2);
}

TEST_F(VEKZOLTimerEnabledEnvTest, TimerWithoutASlotSamplesZeroAndTakesASlotAtEachRestart) {
  Peer::ScopedEmptyTable table;
  const auto previous = Peer::SetReallocator([](void*, size_t) -> void* { return nullptr; });
  VEKZOLTimer timer("Slotless Timer");
  ASSERT_EQ(Peer::SlotId(timer), kNoTimerSlot);
  Peer::SetReallocator(previous);

  system_.kernel = Ms(40);
  timer.StartTimer();
  EXPECT_EQ(Peer::Used(), 1u);
  system_.ticks = 1500;
  long cpu = -1;
  long elapsed = -1;
  timer.StopTimer(cpu, elapsed);
  EXPECT_EQ(cpu, 0);
  EXPECT_EQ(elapsed, 0);
  EXPECT_EQ(system_.processTimesReads, 0);
  EXPECT_EQ(timer.GetCounter(), 1);
  EXPECT_EQ(Peer::StartCount(timer), 1);
  EXPECT_EQ(Peer::StopCount(timer), 1);
  // The restart of the stop took another slot, and the timer kept neither.
  EXPECT_EQ(Peer::Used(), 2u);
  EXPECT_EQ(Peer::SlotId(timer), kNoTimerSlot);
}

TEST_F(VEKZOLTimerEnabledEnvTest, ReleasedSlotGoesToTheNextTimerWithAClearedBaseline) {
  Peer::ScopedEmptyTable table;
  VEKZOLTimer first("First");
  auto* second = new VEKZOLTimer("Second");
  VEKZOLTimer third("Third");
  ASSERT_EQ(Peer::SlotId(*second), 1u);
  Peer::Slot(1).baseKernelTime = Ms(10);
  Peer::Slot(1).baseUserTime = Ms(1);
  delete second;
  VEKZOLTimer fourth("Fourth");
  EXPECT_EQ(Peer::SlotId(fourth), 1u);
  EXPECT_EQ(Peer::Capacity(), 3u);
  EXPECT_EQ(Peer::Slot(1).baseKernelTime, 0u);
  EXPECT_EQ(Peer::Slot(1).baseUserTime, 0u);
  // The whole process time, as no baseline is left to subtract.
  Stretch(fourth, 100, 120, 15);
  long cpu = -1;
  long elapsed = -1;
  fourth.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 15);
  EXPECT_EQ(elapsed, 20);
}

TEST_F(VEKZOLTimerEnabledEnvTest, RestartKeepsABaselineThatTheSlotHolds) {
  VEKZOLTimer timer("Baseline Timer");
  Peer::Slot(Peer::SlotId(timer)).baseKernelTime = Ms(5);
  Stretch(timer, 100, 150, 30);
  long cpu = -1;
  long elapsed = -1;
  timer.GetTotalTimes(cpu, elapsed);
  EXPECT_EQ(cpu, 25);
  EXPECT_EQ(Peer::Slot(Peer::SlotId(timer)).baseKernelTime, Ms(5));
}

TEST_F(VEKZOLTimerEnabledEnvTest, CopiesSampleFromTheSharedSlot) {
  // Both copies give the slot back at the end: a table of the test's own.
  Peer::ScopedEmptyTable table;
  VEKZOLTimer original("Shared Timer");
  system_.ticks = 100;
  original.StartTimer();
  VEKZOLTimer copy(original);
  EXPECT_EQ(Peer::SlotId(copy), Peer::SlotId(original));
  EXPECT_EQ(Peer::StartCount(copy), 1);
  system_.ticks = 180;
  copy.StartTimer();  // restarts the slot both use
  system_.ticks = 200;
  long cpu = -1;
  long elapsed = -1;
  original.StopTimer(cpu, elapsed);
  EXPECT_EQ(elapsed, 20);
  EXPECT_EQ(Peer::StartCount(original), 1);
  EXPECT_EQ(Peer::StartCount(copy), 2);
  EXPECT_EQ(copy.GetCounter(), 0);
}

}  // namespace
