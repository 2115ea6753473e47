// File: TimerSlotTable.cpp
// The shared slot table of the timers. The statics are constant-initialised,
// so the table works for the static timers that are built while the library
// loads, whatever the order of the translation units.
#include "state/LibraryState.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#include <vekzol/platform/Status.h>

#include "platform/System.h"

namespace vekzol {
namespace state {

namespace {

void* Reallocate(void* block, size_t bytes) {
  return block == nullptr ? std::malloc(bytes) : std::realloc(block, bytes);
}

// The bytes behind a table of `capacity` slots: the slots and one spare.
size_t BytesFor(uint32_t capacity) {
  return (static_cast<size_t>(capacity) + 1) * sizeof(TimerSlot);
}

// Starts the lifetime of the slots [first, last] as zero.
void ClearSlots(TimerSlot* slots, uint32_t first, uint32_t last) {
  for (uint32_t i = first; i <= last; ++i) {
    new (&slots[i]) TimerSlot{};
  }
}

}  // namespace

TimerSlot* TimerSlotTable::s_TimerSlots = nullptr;
uint32_t TimerSlotTable::s_TimerSlotCapacity = 0;
uint32_t TimerSlotTable::s_TimerSlotsUsed = 0;
TimerSlot* TimerSlotTable::s_TimerFreeList = nullptr;
void* (*TimerSlotTable::s_Reallocate)(void*, size_t) = &Reallocate;

bool TimerSlotTable::MakeTable() {
  s_TimerFreeList = nullptr;
  s_TimerSlots = static_cast<TimerSlot*>(s_Reallocate(nullptr, BytesFor(1)));
  if (s_TimerSlots == nullptr) {
    return false;
  }
  ClearSlots(s_TimerSlots, 0, 1);
  s_TimerSlotCapacity = 1;
  return true;
}

uint32_t TimerSlotTable::TakeSlot() {
  if (s_TimerFreeList != nullptr) {
    TimerSlot* head = s_TimerFreeList;
    s_TimerFreeList = head->nextFree;
    return head->slotId;
  }
  if (s_TimerSlotsUsed == s_TimerSlotCapacity) {
    // Growth happens only with an empty free list, so no pointer into the
    // old block survives a move. The table is assigned before the test: a
    // failed realloc leaves it null (and the old block with it).
    TimerSlot* const previous = s_TimerSlots;
    s_TimerSlots =
        static_cast<TimerSlot*>(s_Reallocate(previous, BytesFor(s_TimerSlotCapacity + 1)));
    if (s_TimerSlots == nullptr) {
      return kNoTimerSlot;
    }
    // The old spare becomes a slot as it stands; only the new spare is
    // fresh, unless the table had been lost and this is a new block.
    ClearSlots(s_TimerSlots, previous == nullptr ? 0 : s_TimerSlotCapacity + 1,
               s_TimerSlotCapacity + 1);
    ++s_TimerSlotCapacity;
  }
  return s_TimerSlotsUsed++;
}

void TimerSlotTable::StampSlot(uint32_t index) {
  TimerSlot& slot = s_TimerSlots[index];
  slot.nextFree = nullptr;
  slot.slotId = index;
  slot.startTicks = vekzol::platform::Sys().TickCountMs();
}

uint32_t TimerSlotTable::AcquireSlot() {
  if (s_TimerSlotCapacity == 0 && !MakeTable()) {
    return kNoTimerSlot;
  }
  const uint32_t index = TakeSlot();
  if (index != kNoTimerSlot) {
    StampSlot(index);
  }
  return index;
}

uint32_t TimerSlotTable::RestartSlot(uint32_t index) {
  if (s_TimerSlotCapacity == 0 && !MakeTable()) {
    return kNoTimerSlot;
  }
  if (index == kNoTimerSlot) {
    index = TakeSlot();
    if (index == kNoTimerSlot) {
      return kNoTimerSlot;
    }
  } else if (index > s_TimerSlotsUsed) {
    return kNoTimerSlot;
  }
  // After a failed growth the timers still hold their indexes, but there is
  // no table to write to.
  if (s_TimerSlots == nullptr) {
    return kNoTimerSlot;
  }
  StampSlot(index);
  return index;
}

long TimerSlotTable::ReadSlot(uint32_t index, long& cpuMs, long& elapsedMs) {
  if (index > s_TimerSlotsUsed || s_TimerSlots == nullptr) {
    return E_FAIL;
  }
  uint64_t kernel = 0;
  uint64_t user = 0;
  if (!vekzol::platform::Sys().ProcessTimes(&kernel, &user)) {
    return E_FAIL;
  }
  const TimerSlot& slot = s_TimerSlots[index];
  const int64_t baseline = static_cast<int64_t>(slot.baseKernelTime + slot.baseUserTime);
  const int64_t current = static_cast<int64_t>(kernel + user);
  // 100-nanosecond units to milliseconds, truncated toward zero.
  cpuMs = static_cast<long>((current - baseline) / 10000);
  // Unsigned 32-bit arithmetic: a wrap of the tick count between the
  // restart and now still gives the right difference.
  const uint32_t elapsed = vekzol::platform::Sys().TickCountMs() - slot.startTicks;
  elapsedMs = static_cast<long>(elapsed);
  return S_OK;
}

void TimerSlotTable::ReleaseSlot(uint32_t index) {
  if (index == kNoTimerSlot || index > s_TimerSlotsUsed || s_TimerSlots == nullptr) {
    return;
  }
  TimerSlot& slot = s_TimerSlots[index];
  slot = TimerSlot{};
  slot.slotId = index;
  slot.nextFree = s_TimerFreeList;
  s_TimerFreeList = &slot;
}

}  // namespace state
}  // namespace vekzol
