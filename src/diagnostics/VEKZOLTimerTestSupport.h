// File: VEKZOLTimerTestSupport.h
// Shared pieces of the timers' test programs: a platform backend whose tick
// count and processor times the test sets, on top of the trace log's fixed
// clock, so that report lines can be compared byte for byte; and the reading
// of the trace file's lines.
#ifndef VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTSUPPORT_H_
#define VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTSUPPORT_H_

#include <cstdint>
#include <string>

#include <vekzol/diagnostics/VEKZOLLog.h>

#include "diagnostics/VEKZOLLogTestSupport.h"
#include "state/TimerSlotTableTestPeer.h"

namespace vekzol_timer_test {

// The trace log's fixed clock, plus a tick count and processor times that
// the test sets.
using TimerClockSystem = vekzol_state_test::SettableProcessClock<vekzol_log_test::FixedClockSystem>;

// Starts a fresh trace file for the test: the log's state goes back to that
// of a process that has written nothing, and earlier trace files go.
inline void FreshTrace() {
  vekzol_log_test::RemoveTraceFiles(vekzol_log_test::TestTempDir());
  VEKZOLLogTestPeer::Reset();
}

// What the trace file holds after its header, or "" when it does not exist.
inline std::string TraceBody() { return vekzol_log_test::TraceBody(); }

// One trace line as the fixed clock dates it.
inline std::string Line(const std::string& message) { return vekzol_log_test::Line(message); }

}  // namespace vekzol_timer_test

#endif  // VEKZOL_SRC_DIAGNOSTICS_VEKZOLTIMERTESTSUPPORT_H_
