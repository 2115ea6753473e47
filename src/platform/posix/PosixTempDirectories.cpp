// File: PosixTempDirectories.cpp
// Temporary directories on POSIX: TEMP, then TMPDIR, then /tmp.
#include "platform/TempDirectories.h"

namespace vekzol {
namespace platform {

const std::vector<const char*>& TempDirectoryVariables() {
  static const std::vector<const char*> names = {"TEMP", "TMPDIR"};
  return names;
}

const char* DefaultTraceDirectory() { return "/tmp"; }

const char* DefaultSessionBase() { return "/tmp"; }

}  // namespace platform
}  // namespace vekzol
