// File: VEKZOLTimer.cpp
// The timer itself: its sums and counts, gated by the two environment
// switches, and its report lines. The running start points live in the
// shared slot table of the library's process-wide state. Every gated operation asks the
// cached switch again, also when another gated one calls it.
#include <vekzol/diagnostics/VEKZOLTimer.h>

#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/CComVariant.h>
#include <vekzol/platform/Status.h>
#include <vekzol/platform/Variant.h>

#include "platform/TextConversion.h"
#include "state/LibraryState.h"

using vekzol::state::kNoTimerSlot;
using vekzol::state::TimerSlotTable;

namespace {

// The decimal text of `value` as a 32-bit integer variant converted to a
// string gives it; a failed conversion raises its status.
CString NumberText(long value) {
  CComVariant number(value);
  const HRESULT status = number.ChangeType(VT_BSTR);
  if (FAILED(status)) {
    AtlThrow(status);
  }
  static_assert(sizeof(char16_t) == sizeof(OLECHAR), "16-bit units");
  const std::string text = vekzol::platform::WideToNarrow(
      reinterpret_cast<const char16_t*>(number.bstrVal), SysStringLen(number.bstrVal));
  return CString(text.c_str());
}

}  // namespace

VEKZOLTimer::VEKZOLTimer(const CString& name)
    : m_TimerName(name),
      m_SlotId(TimerSlotTable::AcquireSlot()),
      m_CurrentCPU(0),
      m_TotalCPU(0),
      m_CurrentElapsed(0),
      m_TotalElapsed(0),
      m_Counter(0),
      m_IsJustACounter(false),
      m_StartCount(0),
      m_StopCount(0) {}

VEKZOLTimer::VEKZOLTimer(const CString& name, bool isJustACounter)
    : m_TimerName(name),
      m_SlotId(TimerSlotTable::AcquireSlot()),
      m_CurrentCPU(0),
      m_TotalCPU(0),
      m_CurrentElapsed(0),
      m_TotalElapsed(0),
      m_Counter(0),
      m_IsJustACounter(isJustACounter),
      m_StartCount(0),
      m_StopCount(0) {}

VEKZOLTimer::VEKZOLTimer(const VEKZOLTimer& other) = default;

VEKZOLTimer& VEKZOLTimer::operator=(const VEKZOLTimer& other) = default;

VEKZOLTimer::~VEKZOLTimer() {
  TimerSlotTable::ReleaseSlot(m_SlotId);
  m_CurrentCPU = 0;
  m_TotalCPU = 0;
  m_CurrentElapsed = 0;
  m_TotalElapsed = 0;
  m_Counter = 0;
  m_IsJustACounter = false;
}

bool VEKZOLTimer::AreTimersEnabled() { return vekzol::state::TimersEnabled(); }

CString VEKZOLTimer::GetName() const { return m_TimerName; }

long VEKZOLTimer::GetCounter() const { return m_Counter; }

bool VEKZOLTimer::IsJustACounter() const {
  if (!AreTimersEnabled()) {
    return false;
  }
  return m_IsJustACounter;
}

long VEKZOLTimer::IncrementCounter() {
  if (AreTimersEnabled() && m_IsJustACounter) {
    ++m_Counter;
    return S_OK;
  }
  return E_FAIL;
}

void VEKZOLTimer::Reset() {
  if (!AreTimersEnabled()) {
    return;
  }
  // The result is not kept: a timer without a slot takes a new one at each
  // restart and never remembers it.
  TimerSlotTable::RestartSlot(m_SlotId);
  m_CurrentCPU = 0;
  m_CurrentElapsed = 0;
}

void VEKZOLTimer::StartTimer() {
  if (!AreTimersEnabled()) {
    return;
  }
  Reset();
  ++m_StartCount;
}

void VEKZOLTimer::AddCurrentTime() {
  if (!AreTimersEnabled()) {
    return;
  }
  long cpu = 0;
  long elapsed = 0;
  if (m_SlotId != kNoTimerSlot) {
    // A failed reading counts as a sample of 0 and 0.
    TimerSlotTable::ReadSlot(m_SlotId, cpu, elapsed);
  }
  m_TotalCPU += cpu;
  m_TotalElapsed += elapsed;
  ++m_Counter;
  m_CurrentCPU = cpu;
  m_CurrentElapsed = elapsed;
}

void VEKZOLTimer::StopTimer() {
  if (!AreTimersEnabled()) {
    return;
  }
  AddCurrentTime();
  Reset();
  ++m_StopCount;
}

void VEKZOLTimer::StopTimer(long& cpu, long& elapsed) {
  if (!AreTimersEnabled()) {
    return;
  }
  AddCurrentTime();
  cpu = m_CurrentCPU;
  elapsed = m_CurrentElapsed;
  Reset();
  ++m_StopCount;
}

void VEKZOLTimer::StopAndPrintTimer() {
  if (!AreTimersEnabled()) {
    return;
  }
  long cpu = 0;
  long elapsed = 0;
  StopTimer(cpu, elapsed);
  CString line("Timer:\t ");
  line += m_TimerName;
  line += "\tCPU Time:\t";
  line += NumberText(cpu);
  line += "\tElapsed Time:\t";
  line += NumberText(elapsed);
  VEKZOLLog::WriteMsg(line, 0);
}

void VEKZOLTimer::PrintCummulativeTimes() const {
  // Not gated: the services print their timers unconditionally, so with
  // timers off this still writes its line, with zeros.
  CString line("Timer:\t ");
  line += m_TimerName;
  line += "\tCummulative CPU Time:\t";
  line += NumberText(m_TotalCPU);
  line += "\tCummulative Elapsed Time:\t";
  line += NumberText(m_TotalElapsed);
  line += "\tNb Calls:\t";
  line += NumberText(m_StartCount);
  if (m_StartCount != m_StopCount) {
    line += "\tERROR: Mismatch in Start & Stop Count\t";
  }
  VEKZOLLog::WriteMsg(line, 0);
}

void VEKZOLTimer::TotalReset() {
  if (!AreTimersEnabled()) {
    return;
  }
  Reset();
  m_CurrentCPU = 0;
  m_TotalCPU = 0;
  m_CurrentElapsed = 0;
  m_TotalElapsed = 0;
  m_Counter = 0;
  m_StartCount = 0;
  m_StopCount = 0;
  // A counter that has been totally reset no longer counts, until it is
  // built anew.
  m_IsJustACounter = false;
}

void VEKZOLTimer::GetCurrentTimes(long& cpu, long& elapsed) const {
  if (!AreTimersEnabled()) {
    return;
  }
  cpu = m_CurrentCPU;
  elapsed = m_CurrentElapsed;
}

void VEKZOLTimer::GetTotalTimes(long& cpu, long& elapsed) const {
  if (!AreTimersEnabled()) {
    return;
  }
  cpu = m_TotalCPU;
  elapsed = m_TotalElapsed;
}
