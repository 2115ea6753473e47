// File: VEKZOLTimerSlotTable.h
// The table of running start points that all timers of the process share.
// A timer holds the index of one slot; the slot holds the tick count of the
// timer's last restart and a processor-time baseline. Released slots go to a
// free list and are handed out again before the table grows.
//
// Contract:
// - The table grows by one slot at a time, with plain malloc and realloc,
//   and is never freed. The number of slots handed out never goes down.
// - An index equal to the number of slots handed out passes the bound of
//   RestartSlot, ReadSlot and ReleaseSlot, one above the last slot handed
//   out. The memory behind the table always holds one spare slot past the
//   capacity, so that index stays inside the table's own memory.
// - Fresh slots are zero. Only ReleaseSlot clears the processor-time
//   baseline, and nothing stores one, so a reading's processor figure is the
//   processor time of the whole process so far.
// - Not synchronised: one thread at a time, like the rest of the library.
#ifndef VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERSLOTTABLE_H_
#define VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERSLOTTABLE_H_

#include <cstddef>
#include <cstdint>

class VEKZOLTimerTestPeer;

namespace vekzol {
namespace diagnostics {

// The index of no slot.
constexpr uint32_t kNoTimerSlot = 0xFFFFFFFFu;

struct TimerSlot {
  // Millisecond tick count at the last restart.
  uint32_t startTicks;
  // Processor-time baseline, kernel and user part, in 100-nanosecond units.
  uint64_t baseKernelTime;
  uint64_t baseUserTime;
  // The slot's own index.
  uint32_t slotId;
  // Next entry of the free list, or null.
  TimerSlot* nextFree;
};

class TimerSlotTable {
 public:
  // A slot for a new timer, restarted now: the head of the free list, else
  // a new slot. kNoTimerSlot when the table cannot be allocated or grown.
  static uint32_t AcquireSlot();
  // Restarts the slot `index` now. kNoTimerSlot takes a new slot (which the
  // caller does not keep); an index above the slots handed out, or a table
  // lost to a failed growth, gives kNoTimerSlot and changes nothing.
  // Returns the slot restarted.
  static uint32_t RestartSlot(uint32_t index);
  // The processor time of the process in milliseconds, less the slot's
  // baseline, and the milliseconds since the slot's restart. S_OK, or
  // E_FAIL with both results untouched when the index is out of bounds, the
  // table is missing or the platform cannot tell the processor time.
  static long ReadSlot(uint32_t index, long& cpuMs, long& elapsedMs);
  // Clears the slot and puts it at the head of the free list; kNoTimerSlot,
  // an index out of bounds or a missing table change nothing.
  static void ReleaseSlot(uint32_t index);

 private:
  friend class ::VEKZOLTimerTestPeer;

  // Allocates the table with its first slot; false when that fails.
  static bool MakeTable();
  // The free list's head, else a new slot at the end of the table (which
  // grows when full); kNoTimerSlot when the growth fails.
  static uint32_t TakeSlot();
  // Marks the slot as held and starts it now.
  static void StampSlot(uint32_t index);

  static TimerSlot* s_TimerSlots;
  static uint32_t s_TimerSlotCapacity;
  static uint32_t s_TimerSlotsUsed;
  static TimerSlot* s_TimerFreeList;
  // malloc (null block) or realloc: the seam through which tests make the
  // allocation fail.
  static void* (*s_Reallocate)(void* block, size_t bytes);
};

}  // namespace diagnostics
}  // namespace vekzol

#endif  // VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERSLOTTABLE_H_
