// File: ContextTestSupport.h
// Shared pieces of the context records' test programs: a fresh trace file
// dated by the trace log's fixed clock, and its lines read back, so that
// the records' Print output can be compared byte for byte.
#ifndef VEKZOL_SRC_CONTEXT_CONTEXTTESTSUPPORT_H_
#define VEKZOL_SRC_CONTEXT_CONTEXTTESTSUPPORT_H_

#include <initializer_list>
#include <string>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace context_test {

// Installs the fixed clock for the life of the object, on a log that has
// written nothing yet and a directory without earlier trace files.
class FixedTrace {
 public:
  FixedTrace() : scoped_(&system_) {
    vekzol_log_test::RemoveTraceFiles(vekzol_log_test::TestTempDir());
    VEKZOLLogTestPeer::Reset();
  }

  // What the trace file holds after its header; "" when there is no file.
  std::string Body() const {
    const std::string text = vekzol_log_test::ReadFile(
        vekzol_log_test::TracePath(vekzol_log_test::TestTempDir(), vekzol_log_test::kStamp));
    const std::string header = vekzol_log_test::kHeader;
    if (text.compare(0, header.size(), header) != 0) {
      return text;
    }
    return text.substr(header.size());
  }

 private:
  vekzol_log_test::FixedClockSystem system_;
  vekzol_log_test::ScopedSystem scoped_;
};

// The trace lines of `messages`, one after the other, as the fixed clock
// dates them.
inline std::string Lines(std::initializer_list<std::string> messages) {
  std::string lines;
  for (const std::string& message : messages) {
    lines += vekzol_log_test::Line(message);
  }
  return lines;
}

}  // namespace context_test

#endif  // VEKZOL_SRC_CONTEXT_CONTEXTTESTSUPPORT_H_
