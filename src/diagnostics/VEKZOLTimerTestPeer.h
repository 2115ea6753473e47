// File: VEKZOLTimerTestPeer.h
// Test-only access to the timers' private state: the fields of a timer, the
// cached switches and the shared slot table, which tests read, and into
// which they put the states a host cannot reach (a non-zero baseline, an
// index at the bound, a failing allocation). Not installed.
#ifndef VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTPEER_H_
#define VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTPEER_H_

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <vekzol/diagnostics/VEKZOLTimer.h>

#include "state/LibraryState.h"

class VEKZOLTimerTestPeer {
 public:
  using TimerSlot = vekzol::state::TimerSlot;
  using TimerSlotTable = vekzol::state::TimerSlotTable;
  using Reallocator = void* (*)(void* block, size_t bytes);

  // A timer's fields.
  static uint32_t SlotId(const VEKZOLTimer& timer) { return timer.m_SlotId; }
  static long StartCount(const VEKZOLTimer& timer) { return timer.m_StartCount; }
  static long StopCount(const VEKZOLTimer& timer) { return timer.m_StopCount; }
  static long CurrentCPU(const VEKZOLTimer& timer) { return timer.m_CurrentCPU; }
  static long CurrentElapsed(const VEKZOLTimer& timer) { return timer.m_CurrentElapsed; }
  static long TotalCPU(const VEKZOLTimer& timer) { return timer.m_TotalCPU; }
  static long TotalElapsed(const VEKZOLTimer& timer) { return timer.m_TotalElapsed; }
  static bool JustACounterField(const VEKZOLTimer& timer) { return timer.m_IsJustACounter; }

  // The switches: the cached answer, whether the environment has been read,
  // and a way back to the state before the first read.
  static bool AreTimersEnabled() { return VEKZOLTimer::AreTimersEnabled(); }
  static bool TimersEnabledFlag() { return vekzol::state::Switches().timersEnabled; }
  static bool TimersEnabledRead() { return vekzol::state::Switches().timersEnabledRead; }
  static void ForgetTimersEnabled() {
    vekzol::state::Switches().timersEnabled = false;
    vekzol::state::Switches().timersEnabledRead = false;
  }

  // The slot table.
  static TimerSlot* Slots() { return TimerSlotTable::s_TimerSlots; }
  static uint32_t Capacity() { return TimerSlotTable::s_TimerSlotCapacity; }
  static uint32_t Used() { return TimerSlotTable::s_TimerSlotsUsed; }
  static TimerSlot* FreeList() { return TimerSlotTable::s_TimerFreeList; }
  static TimerSlot& Slot(uint32_t index) { return TimerSlotTable::s_TimerSlots[index]; }
  // The indexes of the free list from its head, at most `limit` of them.
  static size_t FreeListLength(size_t limit) {
    size_t length = 0;
    for (TimerSlot* slot = FreeList(); slot != nullptr && length < limit; slot = slot->nextFree) {
      ++length;
    }
    return length;
  }
  static Reallocator SetReallocator(Reallocator reallocate) {
    Reallocator previous = TimerSlotTable::s_Reallocate;
    TimerSlotTable::s_Reallocate = reallocate;
    return previous;
  }

  // Puts a table of the test's own in place of the process's table for the
  // life of the object, starting from the state before the first timer; the
  // process's table comes back afterwards and the test's table is freed.
  // Timers built inside the scope must be gone before it ends.
  class ScopedEmptyTable {
   public:
    ScopedEmptyTable()
        : slots_(TimerSlotTable::s_TimerSlots),
          capacity_(TimerSlotTable::s_TimerSlotCapacity),
          used_(TimerSlotTable::s_TimerSlotsUsed),
          freeList_(TimerSlotTable::s_TimerFreeList),
          reallocate_(TimerSlotTable::s_Reallocate) {
      TimerSlotTable::s_TimerSlots = nullptr;
      TimerSlotTable::s_TimerSlotCapacity = 0;
      TimerSlotTable::s_TimerSlotsUsed = 0;
      TimerSlotTable::s_TimerFreeList = nullptr;
    }
    ~ScopedEmptyTable() {
      std::free(TimerSlotTable::s_TimerSlots);
      TimerSlotTable::s_TimerSlots = slots_;
      TimerSlotTable::s_TimerSlotCapacity = capacity_;
      TimerSlotTable::s_TimerSlotsUsed = used_;
      TimerSlotTable::s_TimerFreeList = freeList_;
      TimerSlotTable::s_Reallocate = reallocate_;
    }
    ScopedEmptyTable(const ScopedEmptyTable&) = delete;
    ScopedEmptyTable& operator=(const ScopedEmptyTable&) = delete;

   private:
    TimerSlot* slots_;
    uint32_t capacity_;
    uint32_t used_;
    TimerSlot* freeList_;
    Reallocator reallocate_;
  };
};

#endif  // VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTPEER_H_
