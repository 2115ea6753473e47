// File: LibraryState.h
// The library's process-wide state, in one place: the environment switches
// and their cached answers, the trace file's and the session directory's
// paths and stamps, and the slot table that all timers share. Subsystems
// ask this component instead of reading the environment themselves or
// reaching into each other's statics.
//
// Switches. Each on-off switch is read from the environment once, at its
// first use, and kept for the life of the process; the blob dump switch
// alone is read at each call. Two value rules exist and each is written
// once here: "exactly TRUE or 1" (verbosity, timers) and "exactly FALSE"
// (logging), both compared by the multi-byte compare, so case matters;
// the batch run and the blob dump take any non-empty value. Directory
// variables are searched by one loop: the first variable that is set ends
// the search, even when its value is empty.
//
// Load order. The statics that need construction at load are all defined in
// LibraryState.cpp, in the order written there; everything else here is
// constant-initialised and holds before any of them runs.
//
// The public statics that hosts see (VEKZOLLog::_LogFilePath and its
// siblings, VEKZOLFileSystemServices' session path) stay members of their
// classes; this component defines them and is the only code besides their
// own classes that touches them.
//
// Not synchronised: one thread at a time, like the rest of the library.
#ifndef VEKZOL_SRC_STATE_LIBRARYSTATE_H_
#define VEKZOL_SRC_STATE_LIBRARYSTATE_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include <vekzol/platform/CString.h>

class TimerSlotTableTestPeer;

namespace vekzol {
namespace state {

// ---------------------------------------------------------------------------
// Environment switches

// The value rules. `value` is what the environment holds.
// Exactly "TRUE" or exactly "1".
bool IsTrueSwitchValue(const std::string& value);
// Exactly "FALSE".
bool IsFalseSwitchValue(const std::string& value);

// The cached answers and whether the environment has been read for each.
// Constant-initialised with the values of a process that has read nothing.
struct CachedSwitches {
  // VEK_ZOL_LOG_ENABLED: on unless exactly "FALSE".
  bool logEnabled = true;
  bool logEnabledRead = false;
  // JBM_RQT_IN, as the trace log asks it: any non-empty value.
  bool batchRun = false;
  bool batchRunRead = false;
  // VEK_ZOL_LOG_VERBOSE: exactly "TRUE" or "1".
  bool verbose = false;
  bool verboseRead = false;
  // VEK_ZOL_TIMERS_ENABLED exactly "TRUE" or "1", or JBM_RQT_IN not empty.
  bool timersEnabled = false;
  bool timersEnabledRead = false;
};

// The process's cached answers; tests read and set them through this.
CachedSwitches& Switches();

// Each reads its variables on its first call and answers from the cache
// after that.
bool LogEnabled();
bool BatchRun();
bool Verbose();
bool TimersEnabled();
// The cached verbosity without reading the environment: false until
// Verbose() has been called once. The trace log's WriteMsg asks this one.
bool VerboseAsCached();
// VEK_ZOL_DUMP_DECOMPRESSED_BLOBS, read at each call: any non-empty value.
bool DumpDecompressedBlobs();

// ---------------------------------------------------------------------------
// Trace file and session directory

// The directory of the trace file: the first of the platform's
// temporary-directory variables that is set, else the platform's default.
CString TraceDirectory();
// The candidate bases of the two session flavours, before any check that
// they exist: the platform's temporary-directory variables, and for batch
// runs JBM_RQT_OUT then JBM_RQT_TEMP; the platform's default when none is
// set.
CString InteractiveSessionBase();
CString BatchSessionBase();
// The stamp in the trace file's name; empty until the file has been made.
const CString& TraceStamp();

// ---------------------------------------------------------------------------
// Timer slots

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

// The table of running start points that all timers of the process share.
// A timer holds the index of one slot; the slot holds the tick count of the
// timer's last restart and a processor-time baseline. Released slots go to a
// free list and are handed out again before the table grows.
//
// - The table grows by one slot at a time, with plain malloc and realloc,
//   and is never freed. The number of slots handed out never goes down.
// - An index equal to the number of slots handed out passes the bound of
//   RestartSlot, ReadSlot and ReleaseSlot, one above the last slot handed
//   out. The memory behind the table always holds one spare slot past the
//   capacity, so that index stays inside the table's own memory.
// - Fresh slots are zero. Only ReleaseSlot clears the processor-time
//   baseline, and nothing stores one, so a reading's processor figure is the
//   processor time of the whole process so far.
// - Its statics are constant-initialised, so the table works for the static
//   timers that are built while the library loads.
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
  friend class ::TimerSlotTableTestPeer;

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

// ---------------------------------------------------------------------------
// Tests

// Back to the state of a process that has read no switch, written no trace
// line and asked for no session directory: the cached switches, the trace
// file's path, stamp and creation flag, and the session path and its
// creation flag. Nothing on disk is touched. The option store, the error
// lists and the timer slot table are left as they are: the static timers
// hold their slots for the life of the process, and the other two have
// operations of their own.
void ResetForTesting();

}  // namespace state
}  // namespace vekzol

#endif  // VEKZOL_SRC_STATE_LIBRARYSTATE_H_
