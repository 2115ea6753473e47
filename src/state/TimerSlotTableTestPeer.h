// File: TimerSlotTableTestPeer.h
// Test-only access to the shared timer slot table, which tests read and into
// which they put the states a host cannot reach (a non-zero baseline, an
// index at the bound, a failing allocation); and a platform backend whose
// tick count and processor times the test sets. Not installed.
#ifndef VEKZOL_SRC_STATE_TIMERSLOTTABLETESTPEER_H_
#define VEKZOL_SRC_STATE_TIMERSLOTTABLETESTPEER_H_

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/System.h"
#include "state/LibraryState.h"

class TimerSlotTableTestPeer {
 public:
  using TimerSlot = vekzol::state::TimerSlot;
  using TimerSlotTable = vekzol::state::TimerSlotTable;
  using Reallocator = void* (*)(void* block, size_t bytes);

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

namespace vekzol_state_test {

// `Base`, a platform backend, with a tick count and processor times that the
// test sets. Processor times are in 100-nanosecond units, as the platform
// gives them.
template <class Base>
class SettableProcessClock : public Base {
 public:
  using Base::Base;

  uint32_t TickCountMs() override {
    ++tickReads;
    return ticks;
  }
  bool ProcessTimes(uint64_t* kernel100ns, uint64_t* user100ns) override {
    ++processTimesReads;
    if (failProcessTimes) {
      return false;
    }
    *kernel100ns = kernel;
    *user100ns = user;
    return true;
  }

  uint32_t ticks = 1000;
  uint64_t kernel = 0;
  uint64_t user = 0;
  bool failProcessTimes = false;
  int tickReads = 0;
  int processTimesReads = 0;
};

// The real backend, as a base for SettableProcessClock.
class RealSystem : public vekzol::platform::ForwardingSystem {
 public:
  RealSystem() : ForwardingSystem(vekzol::platform::DefaultSystem()) {}
};

}  // namespace vekzol_state_test

#endif  // VEKZOL_SRC_STATE_TIMERSLOTTABLETESTPEER_H_
