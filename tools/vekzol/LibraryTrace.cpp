// File: LibraryTrace.cpp
// Turning the library's trace off for the tool's process, and telling
// where it went when the user asked for it.
#include "LibraryTrace.h"

#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>

#include <vekzol/VEKZOLBase.h>

#include "Platform.h"

namespace vekzol_tool {
namespace {

const char* const kLogSwitch = "VEK_ZOL_LOG_ENABLED";

// Set by PrepareLibraryTrace when the user asked for --trace.
bool g_report = false;

// The library sets the trace path before it opens the file, so a path
// alone does not mean that the file could be written.
bool Exists(const std::string& path) {
  std::error_code error;
  // The library's paths are in the narrow code page, as the native narrow
  // path constructor takes them.
  return std::filesystem::is_regular_file(std::filesystem::path(path), error);
}

}  // namespace

void PrepareLibraryTrace(bool keep) {
  g_report = keep;
  if (keep || EnvironmentVariableIsSet(kLogSwitch)) return;
  // Exactly "FALSE": the one value the library takes for off. Should the
  // system refuse, the trace simply stays on as for any host.
  SetEnvironmentVariableOfProcess(kLogSwitch, "FALSE");
}

void ReportLibraryTrace() {
  if (!g_report) return;
  try {
    CString libraryPath;
    VEKZOLLog::GetLogFilePath(libraryPath);
    const std::string path(libraryPath.GetString(), static_cast<size_t>(libraryPath.GetLength()));
    if (!path.empty() && Exists(path)) {
      std::fprintf(stderr, "vekzol: trace written to %s\n", path.c_str());
    } else if (!path.empty()) {
      std::fprintf(stderr, "vekzol: the trace file %s could not be written\n", path.c_str());
    } else if (!VEKZOLLog::IsLogEnabled()) {
      std::fprintf(stderr, "vekzol: no trace written: %s is FALSE\n", kLogSwitch);
    } else {
      std::fprintf(stderr, "vekzol: no trace written: the library traced nothing in this run\n");
    }
  } catch (...) {
    // Only a failed allocation of the path's copy can get here; the run's
    // own result and exit status matter more than this note.
  }
}

}  // namespace vekzol_tool
