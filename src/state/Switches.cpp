// File: Switches.cpp
// The environment as the library reads it for itself: the value rules of
// the switches, their cached answers, and the search of the directory
// variables. Every read goes through the platform seam, so tests can give
// a process any environment.
#include <string>
#include <vector>

#include "platform/MbString.h"
#include "platform/System.h"
#include "platform/TempDirectories.h"
#include "state/LibraryState.h"

namespace vekzol {
namespace state {

namespace {

using vekzol::platform::Sys;

// Not read yet: constant initialisation, so the switches hold before any
// static object is built.
CachedSwitches g_switches;

// The variable's value when it is set; false when it is not.
bool ReadVariable(const char* name, std::string* value) { return Sys().GetEnv(name, value); }

// Set to a non-empty value.
bool IsNonEmpty(const char* name) {
  std::string value;
  return ReadVariable(name, &value) && !value.empty();
}

// The first of `names` that the environment reports set, or `fallback` when
// none is. A variable that is set ends the search, even when its value is
// empty or names no directory: the next one is not tried.
CString FirstSetVariable(const std::vector<const char*>& names, const char* fallback) {
  std::string value;
  for (const char* name : names) {
    if (ReadVariable(name, &value)) {
      return CString(value.c_str());
    }
  }
  return CString(fallback);
}

}  // namespace

bool IsTrueSwitchValue(const std::string& value) {
  return vekzol::platform::Mbscmp(value.c_str(), "TRUE") == 0 ||
         vekzol::platform::Mbscmp(value.c_str(), "1") == 0;
}

bool IsFalseSwitchValue(const std::string& value) {
  return vekzol::platform::Mbscmp(value.c_str(), "FALSE") == 0;
}

CachedSwitches& Switches() { return g_switches; }

bool LogEnabled() {
  if (!g_switches.logEnabledRead) {
    std::string value;
    if (ReadVariable("VEK_ZOL_LOG_ENABLED", &value) && IsFalseSwitchValue(value)) {
      g_switches.logEnabled = false;
    }
    g_switches.logEnabledRead = true;
  }
  return g_switches.logEnabled;
}

bool BatchRun() {
  if (!g_switches.batchRunRead) {
    if (IsNonEmpty("JBM_RQT_IN")) {
      g_switches.batchRun = true;
    }
    g_switches.batchRunRead = true;
  }
  return g_switches.batchRun;
}

bool Verbose() {
  if (!g_switches.verboseRead) {
    std::string value;
    if (ReadVariable("VEK_ZOL_LOG_VERBOSE", &value) && IsTrueSwitchValue(value)) {
      g_switches.verbose = true;
    }
    g_switches.verboseRead = true;
  }
  return g_switches.verbose;
}

bool VerboseAsCached() { return g_switches.verbose; }

bool TimersEnabled() {
  if (!g_switches.timersEnabledRead) {
    std::string value;
    if (ReadVariable("VEK_ZOL_TIMERS_ENABLED", &value) && IsTrueSwitchValue(value)) {
      g_switches.timersEnabled = true;
    }
    // A batch run has timers on whatever the first switch says. The timers
    // read the variable for themselves, apart from the trace log's cache.
    if (IsNonEmpty("JBM_RQT_IN")) {
      g_switches.timersEnabled = true;
    }
    g_switches.timersEnabledRead = true;
  }
  return g_switches.timersEnabled;
}

bool DumpDecompressedBlobs() { return IsNonEmpty("VEK_ZOL_DUMP_DECOMPRESSED_BLOBS"); }

CString TraceDirectory() {
  return FirstSetVariable(vekzol::platform::TempDirectoryVariables(),
                          vekzol::platform::DefaultTraceDirectory());
}

CString InteractiveSessionBase() {
  return FirstSetVariable(vekzol::platform::TempDirectoryVariables(),
                          vekzol::platform::DefaultSessionBase());
}

CString BatchSessionBase() {
  return FirstSetVariable({"JBM_RQT_OUT", "JBM_RQT_TEMP"}, vekzol::platform::DefaultSessionBase());
}

}  // namespace state
}  // namespace vekzol
