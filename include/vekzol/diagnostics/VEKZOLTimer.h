// File: VEKZOLTimer.h
// VEKZOLTimer: a named stopwatch that measures stretches of work in
// processor time and wall time, in milliseconds, and sums them over calls.
// In every pair of times the processor time comes first and the wall time
// second.
//
// Switches, read from the environment once per process at first use:
// timers are on when VEK_ZOL_TIMERS_ENABLED is exactly "TRUE" or "1", or
// when JBM_RQT_IN is not empty (a batch run), whatever the first says.
// With timers off every operation but the constructors, the copies, the
// destructor, GetName, GetCounter and PrintCummulativeTimes does nothing,
// and IsJustACounter answers false and IncrementCounter E_FAIL.
//
// Each timer keeps its sums in itself and its running start point in one
// slot of a table shared by all timers of the process; it takes the slot at
// construction, with timers on or off, and gives it back at destruction.
// A sample's wall figure is that of the stretch since the last restart; its
// processor figure is the processor time of the whole process so far.
//
// Usage: StartTimer and StopTimer (or StopAndPrintTimer) around each
// measured stretch, PrintCummulativeTimes at the end. Nothing tells a
// running timer from a stopped one: a second StartTimer restarts it, a
// second StopTimer takes another sample from the last restart, and a
// pairing error only shows as the mismatch text of PrintCummulativeTimes.
//
// Report lines go to the trace log with verbosity 0:
//   "Timer:\t <name>\tCPU Time:\t<cpu>\tElapsed Time:\t<elapsed>"
//   "Timer:\t <name>\tCummulative CPU Time:\t<cpu>\tCummulative Elapsed
//    Time:\t<elapsed>\tNb Calls:\t<starts>" and, when starts and stops
//    differ, "\tERROR: Mismatch in Start & Stop Count\t".
// Numbers are the plain decimal text of a 32-bit integer.
//
// Copies share the slot of the original and do not take one of their own;
// destroying both gives the slot back twice. Timers are therefore not meant
// to be copied while both live on.
//
// Not synchronised: timers are created, used and destroyed on one thread at
// a time.
#ifndef VEKZOL_DIAGNOSTICS_VEKZOLTIMER_H_
#define VEKZOL_DIAGNOSTICS_VEKZOLTIMER_H_

#include <cstdint>

#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLTimer {
 public:
  // Both forms take a slot, also with timers off, and start with all times
  // and counts at 0. The first is a timer, the second a timer or, with
  // `isJustACounter`, a counter driven by IncrementCounter.
  VEKZOLTimer(const CString& name);  // NOLINT(google-explicit-constructor): hosts convert names
  VEKZOLTimer(const CString& name, bool isJustACounter);
  // Every field is copied, the slot index included.
  VEKZOLTimer(const VEKZOLTimer& other);
  VEKZOLTimer& operator=(const VEKZOLTimer& other);
  // Gives the slot back.
  virtual ~VEKZOLTimer();

  CString GetName() const;
  // The number of samples taken or of counted increments; not a status.
  long GetCounter() const;
  bool IsJustACounter() const;
  // On a counter timer with timers on: adds 1 to the count and returns
  // S_OK. Otherwise E_FAIL, and nothing changes.
  long IncrementCounter();

  // Restarts the stretch and counts a start.
  void StartTimer();
  // Takes a sample of the stretch into the sums, counts a stop and
  // restarts, so that the current times read 0 again afterwards. The second
  // form hands the sample out first; with timers off it leaves its
  // arguments as they were.
  void StopTimer();
  void StopTimer(long& cpu, long& elapsed);
  // StopTimer, then one report line with the sample.
  void StopAndPrintTimer();
  // One report line with the sums and the number of starts, with timers on
  // or off; nothing is reset.
  void PrintCummulativeTimes() const;
  // Restarts the stretch and sets the current times to 0.
  void Reset();
  // Reset, then all times and counts to 0, and the timer is no counter any
  // more.
  void TotalReset();
  // Takes a sample of the stretch into the current times and the sums and
  // adds 1 to the counter. A timer without a slot, or a failed reading,
  // samples 0 and 0.
  void AddCurrentTime();
  // The last sample / the sums; with timers off the arguments stay as they
  // were.
  void GetCurrentTimes(long& cpu, long& elapsed) const;
  void GetTotalTimes(long& cpu, long& elapsed) const;

 private:
  friend class VEKZOLTimerTestPeer;
  // The comparison asks whether timers count, to call the intersection
  // service for each vertex only then.
  friend class VEKZOLGraphComparator;

  // The cached answer of the two switches, read on the first call and kept
  // in the library's process-wide state.
  static bool AreTimersEnabled();

  CString m_TimerName;
  // Index of the timer's slot, 0xFFFFFFFF for none.
  uint32_t m_SlotId;
  long m_CurrentCPU;
  long m_TotalCPU;
  long m_CurrentElapsed;
  long m_TotalElapsed;
  long m_Counter;
  bool m_IsJustACounter;
  long m_StartCount;
  long m_StopCount;
};

#endif  // VEKZOL_DIAGNOSTICS_VEKZOLTIMER_H_
