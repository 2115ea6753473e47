// File: Win32TempDirectories.cpp
// Temporary directories on Windows: TEMP alone; without it the trace file
// goes to the root of the current drive and session directories below
// C:\temp.
#include "platform/TempDirectories.h"

namespace vekzol {
namespace platform {

const std::vector<const char*>& TempDirectoryVariables() {
  static const std::vector<const char*> names = {"TEMP"};
  return names;
}

const char* DefaultTraceDirectory() { return ""; }

const char* DefaultSessionBase() { return "C:\\temp"; }

}  // namespace platform
}  // namespace vekzol
