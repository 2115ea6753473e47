// File: TempDirectories.h
// Where the platform keeps temporary files, for the trace file and the
// interactive session directories: the environment variables that name
// such a directory, in the order they are asked (the first one that is set
// wins, even when empty), and what stands in when none is set. Each backend
// defines these: Windows asks TEMP alone, POSIX asks TEMP and then TMPDIR,
// as most POSIX systems leave TEMP unset.
#ifndef VEKZOL_SRC_PLATFORM_TEMPDIRECTORIES_H_
#define VEKZOL_SRC_PLATFORM_TEMPDIRECTORIES_H_

#include <vector>

namespace vekzol {
namespace platform {

// The variables to ask, in order.
const std::vector<const char*>& TempDirectoryVariables();

// The trace file's directory when no variable is set: "" on Windows (the
// file then goes to the root of the current drive), "/tmp" on POSIX.
const char* DefaultTraceDirectory();

// The base of session directories when no variable of a flavour is set:
// "C:\\temp" on Windows, "/tmp" on POSIX.
const char* DefaultSessionBase();

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_TEMPDIRECTORIES_H_
