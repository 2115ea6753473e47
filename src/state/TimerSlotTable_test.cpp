// File: TimerSlotTable_test.cpp
// The shared slot table on its own: growth by one slot, the free list, the
// bound that lets an index equal to the used count pass, the baselines, the
// readings, and failed allocations. Each test works on a table of its own,
// in place of the process's table, with a clock the test sets.
#include "state/LibraryState.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include <vekzol/platform/Status.h>

#include "platform/ScopedSystemTesting.h"
#include "state/TimerSlotTableTestPeer.h"

namespace {

using vekzol::platform::ScopedSystem;
using vekzol::state::kNoTimerSlot;
using vekzol::state::TimerSlot;
using vekzol::state::TimerSlotTable;
using TimerClockSystem = vekzol_state_test::SettableProcessClock<vekzol_state_test::RealSystem>;
using Peer = TimerSlotTableTestPeer;

void* FailingReallocate(void*, size_t) { return nullptr; }

// A failed realloc leaves the old block allocated; the table forgets it, so
// the test keeps it here, reachable, and frees it at the end.
void* g_keptBlock = nullptr;
void* FailingReallocateKeepingBlock(void* block, size_t) {
  g_keptBlock = block;
  return nullptr;
}

// malloc and realloc whose new memory is filled with 0xAB, as memory fresh
// from the allocator may be, so that the tests see what the table clears.
size_t g_garbageBytes = 0;
void* GarbageReallocate(void* block, size_t bytes) {
  void* fresh = std::malloc(bytes);
  if (fresh == nullptr) return nullptr;
  std::memset(fresh, 0xAB, bytes);
  if (block != nullptr) {
    std::memcpy(fresh, block, std::min(g_garbageBytes, bytes));
    std::free(block);
  }
  g_garbageBytes = bytes;
  return fresh;
}

bool IsClear(const TimerSlot& slot) {
  return slot.startTicks == 0 && slot.baseKernelTime == 0 && slot.baseUserTime == 0 &&
         slot.nextFree == nullptr;
}

class TimerSlotTableTest : public ::testing::Test {
 protected:
  TimerClockSystem system_;
  ScopedSystem scopedSystem_{&system_};
  Peer::ScopedEmptyTable table_;
};

TEST_F(TimerSlotTableTest, FirstSlotMakesATableOfOneSlot) {
  system_.ticks = 4321;
  EXPECT_EQ(Peer::Capacity(), 0u);
  EXPECT_EQ(Peer::Slots(), nullptr);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(Peer::Capacity(), 1u);
  EXPECT_EQ(Peer::Used(), 1u);
  ASSERT_NE(Peer::Slots(), nullptr);
  EXPECT_EQ(Peer::Slot(0).startTicks, 4321u);
  EXPECT_EQ(Peer::Slot(0).slotId, 0u);
  EXPECT_EQ(Peer::Slot(0).nextFree, nullptr);
  EXPECT_EQ(Peer::Slot(0).baseKernelTime, 0u);
  EXPECT_EQ(Peer::Slot(0).baseUserTime, 0u);
  EXPECT_EQ(Peer::FreeList(), nullptr);
}

TEST_F(TimerSlotTableTest, TableGrowsByOneSlotForEachNewSlot) {
  for (uint32_t expected = 0; expected < 5; ++expected) {
    system_.ticks = 100 + expected;
    EXPECT_EQ(TimerSlotTable::AcquireSlot(), expected);
    EXPECT_EQ(Peer::Capacity(), expected + 1);
    EXPECT_EQ(Peer::Used(), expected + 1);
  }
  for (uint32_t index = 0; index < 5; ++index) {
    EXPECT_EQ(Peer::Slot(index).slotId, index);
    EXPECT_EQ(Peer::Slot(index).startTicks, 100 + index);
  }
}

TEST_F(TimerSlotTableTest, FreshSlotsAreZeroWhateverTheAllocatorLeftInThem) {
  Peer::SetReallocator(&GarbageReallocate);
  system_.ticks = 77;
  for (uint32_t expected = 0; expected < 3; ++expected) {
    EXPECT_EQ(TimerSlotTable::AcquireSlot(), expected);
    EXPECT_EQ(Peer::Slot(expected).baseKernelTime, 0u);
    EXPECT_EQ(Peer::Slot(expected).baseUserTime, 0u);
    EXPECT_EQ(Peer::Slot(expected).nextFree, nullptr);
    EXPECT_EQ(Peer::Slot(expected).startTicks, 77u);
    // The spare slot behind the capacity is fresh too.
    EXPECT_TRUE(IsClear(Peer::Slot(expected + 1)));
    EXPECT_EQ(Peer::Slot(expected + 1).slotId, 0u);
  }
  // With a zero baseline a reading is the processor time of the process.
  system_.kernel = 250000;
  system_.user = 70000;
  long cpu = -1;
  long elapsed = -1;
  EXPECT_EQ(TimerSlotTable::ReadSlot(2, cpu, elapsed), S_OK);
  EXPECT_EQ(cpu, 32);
  EXPECT_EQ(elapsed, 0);
}

TEST_F(TimerSlotTableTest, ReleasedSlotsAreHandedOutAgainLastReleasedFirst) {
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 1u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 2u);
  TimerSlotTable::ReleaseSlot(1);
  TimerSlotTable::ReleaseSlot(0);
  ASSERT_EQ(Peer::FreeList(), &Peer::Slot(0));
  EXPECT_EQ(Peer::Slot(0).nextFree, &Peer::Slot(1));
  EXPECT_EQ(Peer::Slot(1).nextFree, nullptr);

  system_.ticks = 5000;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(Peer::FreeList(), &Peer::Slot(1));
  EXPECT_EQ(Peer::Slot(0).nextFree, nullptr);
  EXPECT_EQ(Peer::Slot(0).startTicks, 5000u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 1u);
  EXPECT_EQ(Peer::FreeList(), nullptr);
  EXPECT_EQ(Peer::Capacity(), 3u);
  EXPECT_EQ(Peer::Used(), 3u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 3u);
  EXPECT_EQ(Peer::Capacity(), 4u);
}

TEST_F(TimerSlotTableTest, ReleaseClearsTheWholeSlotBaselineIncluded) {
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 1u);
  TimerSlotTable::ReleaseSlot(0);
  Peer::Slot(1).baseKernelTime = 123;
  Peer::Slot(1).baseUserTime = 456;
  Peer::Slot(1).startTicks = 789;
  TimerSlotTable::ReleaseSlot(1);
  EXPECT_EQ(Peer::Slot(1).baseKernelTime, 0u);
  EXPECT_EQ(Peer::Slot(1).baseUserTime, 0u);
  EXPECT_EQ(Peer::Slot(1).startTicks, 0u);
  EXPECT_EQ(Peer::Slot(1).slotId, 1u);
  EXPECT_EQ(Peer::Slot(1).nextFree, &Peer::Slot(0));
  EXPECT_EQ(Peer::FreeList(), &Peer::Slot(1));
  EXPECT_EQ(Peer::Used(), 2u);
}

TEST_F(TimerSlotTableTest, RestartAndAcquireLeaveTheBaselineAlone) {
  system_.ticks = 10;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  Peer::Slot(0).baseKernelTime = 100000;
  Peer::Slot(0).baseUserTime = 20000;
  Peer::Slot(0).nextFree = &Peer::Slot(0);
  system_.ticks = 20;
  EXPECT_EQ(TimerSlotTable::RestartSlot(0), 0u);
  EXPECT_EQ(Peer::Slot(0).startTicks, 20u);
  EXPECT_EQ(Peer::Slot(0).nextFree, nullptr);
  EXPECT_EQ(Peer::Slot(0).baseKernelTime, 100000u);
  EXPECT_EQ(Peer::Slot(0).baseUserTime, 20000u);

  system_.kernel = 300000;
  system_.user = 50000;
  system_.ticks = 95;
  long cpu = 0;
  long elapsed = 0;
  EXPECT_EQ(TimerSlotTable::ReadSlot(0, cpu, elapsed), S_OK);
  EXPECT_EQ(cpu, 23);  // (350000 - 120000) / 10000
  EXPECT_EQ(elapsed, 75);
}

TEST_F(TimerSlotTableTest, ReadingIsTheProcessTimeLessTheBaselineAndTheTicksSinceTheRestart) {
  system_.ticks = 1000;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  Peer::Slot(0).baseKernelTime = 300000;
  Peer::Slot(0).baseUserTime = 4;
  system_.kernel = 123456789;
  system_.user = 1000000;
  system_.ticks = 1250;
  long cpu = 0;
  long elapsed = 0;
  EXPECT_EQ(TimerSlotTable::ReadSlot(0, cpu, elapsed), S_OK);
  EXPECT_EQ(cpu, 12415);  // 124156785 units of 100 ns, truncated
  EXPECT_EQ(elapsed, 250);
  EXPECT_EQ(system_.processTimesReads, 1);
}

TEST_F(TimerSlotTableTest, ProcessorFigureIsTruncatedTowardZero) {
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  Peer::Slot(0).baseKernelTime = 25000;
  system_.kernel = 10000;
  long cpu = 0;
  long elapsed = 0;
  EXPECT_EQ(TimerSlotTable::ReadSlot(0, cpu, elapsed), S_OK);
  EXPECT_EQ(cpu, -1);  // -15000 units: -1.5 ms
}

TEST_F(TimerSlotTableTest, WallFigureSurvivesAWrapOfTheTickCount) {
  system_.ticks = 0xFFFFFFF0u;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  system_.ticks = 0x10;
  long cpu = 0;
  long elapsed = 0;
  EXPECT_EQ(TimerSlotTable::ReadSlot(0, cpu, elapsed), S_OK);
  EXPECT_EQ(elapsed, 32);
}

TEST_F(TimerSlotTableTest, WallFigureOfHalfTheTickRangeIsWhatALongHoldsOfIt) {
  system_.ticks = 5;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  system_.ticks = 0x80000005u;
  long cpu = 0;
  long elapsed = 0;
  EXPECT_EQ(TimerSlotTable::ReadSlot(0, cpu, elapsed), S_OK);
#if defined(_WIN32)
  EXPECT_EQ(elapsed, -2147483647L - 1);  // a 32-bit long
#else
  EXPECT_EQ(elapsed, 2147483648L);
#endif
}

TEST_F(TimerSlotTableTest, FailedProcessTimesLeaveTheResultsAlone) {
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  system_.failProcessTimes = true;
  long cpu = 7;
  long elapsed = 9;
  EXPECT_EQ(TimerSlotTable::ReadSlot(0, cpu, elapsed), E_FAIL);
  EXPECT_EQ(cpu, 7);
  EXPECT_EQ(elapsed, 9);
}

TEST_F(TimerSlotTableTest, IndexEqualToTheUsedCountPassesTheBound) {
  system_.ticks = 10;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 1u);
  ASSERT_EQ(Peer::Used(), 2u);

  long cpu = 7;
  long elapsed = 9;
  EXPECT_EQ(TimerSlotTable::ReadSlot(2, cpu, elapsed), S_OK);
  EXPECT_EQ(cpu, 0);
  EXPECT_EQ(elapsed, 10);  // the spare slot was never started
  cpu = 7;
  elapsed = 9;
  EXPECT_EQ(TimerSlotTable::ReadSlot(3, cpu, elapsed), E_FAIL);
  EXPECT_EQ(cpu, 7);
  EXPECT_EQ(elapsed, 9);

  system_.ticks = 30;
  EXPECT_EQ(TimerSlotTable::RestartSlot(2), 2u);
  EXPECT_EQ(Peer::Slot(2).startTicks, 30u);
  EXPECT_EQ(Peer::Slot(2).slotId, 2u);
  EXPECT_EQ(TimerSlotTable::RestartSlot(3), kNoTimerSlot);
  EXPECT_EQ(Peer::Used(), 2u);
  EXPECT_EQ(Peer::Capacity(), 2u);

  TimerSlotTable::ReleaseSlot(3);
  EXPECT_EQ(Peer::FreeList(), nullptr);
  TimerSlotTable::ReleaseSlot(2);
  ASSERT_EQ(Peer::FreeList(), &Peer::Slot(2));
  // The released index is handed out from the free list without counting as
  // used, and the next new slot gets the same index again.
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 2u);
  EXPECT_EQ(Peer::Used(), 2u);
  EXPECT_EQ(Peer::Capacity(), 2u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 2u);
  EXPECT_EQ(Peer::Used(), 3u);
  EXPECT_EQ(Peer::Capacity(), 3u);
}

TEST_F(TimerSlotTableTest, RestartWithoutAnIndexTakesASlotThatNobodyKeeps) {
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  system_.ticks = 40;
  EXPECT_EQ(TimerSlotTable::RestartSlot(kNoTimerSlot), 1u);
  EXPECT_EQ(Peer::Slot(1).startTicks, 40u);
  EXPECT_EQ(TimerSlotTable::RestartSlot(kNoTimerSlot), 2u);
  EXPECT_EQ(Peer::Used(), 3u);
  TimerSlotTable::ReleaseSlot(0);
  EXPECT_EQ(TimerSlotTable::RestartSlot(kNoTimerSlot), 0u);
  EXPECT_EQ(Peer::FreeList(), nullptr);
  EXPECT_EQ(Peer::Used(), 3u);
}

TEST_F(TimerSlotTableTest, RestartMakesTheTableWhenThereIsNoneYet) {
  system_.ticks = 55;
  EXPECT_EQ(TimerSlotTable::RestartSlot(0), 0u);
  EXPECT_EQ(Peer::Capacity(), 1u);
  EXPECT_EQ(Peer::Used(), 0u);
  EXPECT_EQ(Peer::Slot(0).startTicks, 55u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(Peer::Used(), 1u);
  EXPECT_EQ(Peer::Capacity(), 1u);
}

TEST_F(TimerSlotTableTest, NoSlotIsNeitherReadNorReleased) {
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  TimerSlotTable::ReleaseSlot(kNoTimerSlot);
  EXPECT_EQ(Peer::FreeList(), nullptr);
  long cpu = 7;
  long elapsed = 9;
  EXPECT_EQ(TimerSlotTable::ReadSlot(kNoTimerSlot, cpu, elapsed), E_FAIL);
  EXPECT_EQ(cpu, 7);
  EXPECT_EQ(elapsed, 9);
  EXPECT_EQ(system_.processTimesReads, 0);
}

TEST_F(TimerSlotTableTest, WithoutATableNothingIsReadOrReleased) {
  long cpu = 7;
  long elapsed = 9;
  EXPECT_EQ(TimerSlotTable::ReadSlot(0, cpu, elapsed), E_FAIL);
  EXPECT_EQ(cpu, 7);
  TimerSlotTable::ReleaseSlot(0);
  EXPECT_EQ(Peer::FreeList(), nullptr);
  EXPECT_EQ(Peer::Slots(), nullptr);
}

TEST_F(TimerSlotTableTest, FailedFirstAllocationGivesNoSlotAndTheNextTryMakesTheTable) {
  Peer::SetReallocator(&FailingReallocate);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), kNoTimerSlot);
  EXPECT_EQ(Peer::Capacity(), 0u);
  EXPECT_EQ(Peer::Used(), 0u);
  EXPECT_EQ(Peer::Slots(), nullptr);
  EXPECT_EQ(TimerSlotTable::RestartSlot(kNoTimerSlot), kNoTimerSlot);
  EXPECT_EQ(Peer::Capacity(), 0u);

  Peer::SetReallocator(&GarbageReallocate);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(Peer::Capacity(), 1u);
}

TEST_F(TimerSlotTableTest, FailedGrowthLosesTheTableUntilTheNextGrowthMakesAFreshOne) {
  g_keptBlock = nullptr;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 0u);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 1u);
  Peer::SetReallocator(&FailingReallocateKeepingBlock);
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), kNoTimerSlot);
  EXPECT_NE(g_keptBlock, nullptr);
  EXPECT_EQ(Peer::Slots(), nullptr);
  EXPECT_EQ(Peer::Capacity(), 2u);
  EXPECT_EQ(Peer::Used(), 2u);

  // The timers keep their indexes, but nothing reads, restarts or releases
  // a slot while the table is gone.
  long cpu = 7;
  long elapsed = 9;
  EXPECT_EQ(TimerSlotTable::ReadSlot(1, cpu, elapsed), E_FAIL);
  EXPECT_EQ(TimerSlotTable::RestartSlot(1), kNoTimerSlot);
  TimerSlotTable::ReleaseSlot(1);
  EXPECT_EQ(Peer::FreeList(), nullptr);

  Peer::SetReallocator(&GarbageReallocate);
  g_garbageBytes = 0;
  system_.ticks = 600;
  EXPECT_EQ(TimerSlotTable::AcquireSlot(), 2u);
  EXPECT_EQ(Peer::Capacity(), 3u);
  EXPECT_EQ(Peer::Used(), 3u);
  EXPECT_TRUE(IsClear(Peer::Slot(0)));
  EXPECT_TRUE(IsClear(Peer::Slot(1)));
  EXPECT_EQ(Peer::Slot(2).startTicks, 600u);
  EXPECT_TRUE(IsClear(Peer::Slot(3)));
  std::free(g_keptBlock);
  g_keptBlock = nullptr;
}

}  // namespace
