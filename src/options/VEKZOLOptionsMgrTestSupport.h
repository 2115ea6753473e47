// File: VEKZOLOptionsMgrTestSupport.h
// Shared pieces of the option store's test programs: the peer that takes the
// store back to the state of a fresh process, a way to put a variable into
// the process environment, and the trace file dated by the trace log's
// fixed clock. Not installed.
#ifndef VEKZOL_SRC_OPTIONS_VEKZOLOPTIONSMGRTESTSUPPORT_H_
#define VEKZOL_SRC_OPTIONS_VEKZOLOPTIONSMGRTESTSUPPORT_H_

#include <initializer_list>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>

#include "diagnostics/VEKZOLLogTestSupport.h"
#include "platform/ProcessEnvironmentTesting.h"

class VEKZOLOptionsMgrTestPeer {
 public:
  // Back to a process that has neither asked, set nor printed an option.
  static void Reset() {
    VEKZOLOptionsMgr::_OptionValueMap.clear();
    VEKZOLOptionsMgr::s_OptionsPrinted = false;
  }
  static bool OptionsPrinted() { return VEKZOLOptionsMgr::s_OptionsPrinted; }
};

namespace options_test {

// The store as (key, value) pairs in its order.
inline std::vector<std::pair<std::string, std::string>> StoreContents() {
  std::vector<std::pair<std::string, std::string>> contents;
  for (const auto& entry : VEKZOLOptionsMgr::_OptionValueMap) {
    contents.emplace_back(entry.first.GetString(), entry.second.GetString());
  }
  return contents;
}

// Puts `name` into the environment of this process, as a host or a library
// beside it could do after start-up.
using vekzol::platform::PutEnvironmentVariable;

// A backend that counts the environment reads of each name and otherwise
// forwards to the trace log's fixed clock.
class CountingEnvironmentSystem : public vekzol_log_test::FixedClockSystem {
 public:
  bool GetEnv(const char* name, std::string* value) override {
    ++reads[name];
    return FixedClockSystem::GetEnv(name, value);
  }

  std::map<std::string, int> reads;
};

// Installs a CountingEnvironmentSystem for the life of the object, on a log
// that has written nothing yet and a store as in a fresh process.
class FreshProcess {
 public:
  FreshProcess() : scoped_(&system_) {
    vekzol_log_test::RemoveTraceFiles(vekzol_log_test::TestTempDir());
    VEKZOLLogTestPeer::Reset();
    VEKZOLOptionsMgrTestPeer::Reset();
  }

  // How often the environment variable `name` was read.
  int ReadsOf(const std::string& name) const {
    const auto found = system_.reads.find(name);
    return found == system_.reads.end() ? 0 : found->second;
  }

  // What the trace file holds after its header; "" when there is no file.
  std::string TraceBody() const { return vekzol_log_test::TraceBody(); }

  bool TraceFileExists() const {
    return vekzol_log_test::FileExists(
        vekzol_log_test::TracePath(vekzol_log_test::TestTempDir(), vekzol_log_test::kStamp));
  }

 private:
  CountingEnvironmentSystem system_;
  vekzol_log_test::ScopedSystem scoped_;
};

// The trace lines of `messages` as the fixed clock dates them.
inline std::string Lines(std::initializer_list<std::string> messages) {
  std::string lines;
  for (const std::string& message : messages) {
    lines += vekzol_log_test::Line(message);
  }
  return lines;
}

}  // namespace options_test

#endif  // VEKZOL_SRC_OPTIONS_VEKZOLOPTIONSMGRTESTSUPPORT_H_
