// File: VEKZOLTimerTestPeer.h
// Test-only access to the timers' private state: the fields of a timer and
// the cached switches, which tests read and set, and (from the slot table's
// peer) the shared slot table. Not installed.
#ifndef VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTPEER_H_
#define VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTPEER_H_

#include <cstdint>

#include <vekzol/diagnostics/VEKZOLTimer.h>

#include "state/LibraryState.h"
#include "state/TimerSlotTableTestPeer.h"

class VEKZOLTimerTestPeer : public TimerSlotTableTestPeer {
 public:
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
};

#endif  // VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTPEER_H_
