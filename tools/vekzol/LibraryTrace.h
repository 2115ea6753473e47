// File: LibraryTrace.h
// The library's trace file, as the tool handles it. A host that loads the
// library gets one trace file per process in the temporary directory; for
// a command-line tool that is a file left behind by every run that nobody
// reads. The tool therefore turns the trace off for its own process,
// unless the user asks for it with --trace or has set VEK_ZOL_LOG_ENABLED
// (whatever its value: then the library's own rule decides).
#ifndef VEKZOL_TOOLS_VEKZOL_LIBRARYTRACE_H_
#define VEKZOL_TOOLS_VEKZOL_LIBRARYTRACE_H_

namespace vekzol_tool {

// Settles the trace for this process. Must run before the first call into
// the library: the library reads its switches from the environment once,
// at first use, and keeps them. With `keep` false and VEK_ZOL_LOG_ENABLED
// unset, sets VEK_ZOL_LOG_ENABLED=FALSE in the process's environment, which
// also keeps trace lines off standard output in batch mode (JBM_RQT_IN).
// With `keep` true nothing changes, and ReportLibraryTrace will tell where
// the trace went.
void PrepareLibraryTrace(bool keep);

// At the end of a run that asked for --trace: prints the trace file's path
// on standard error ("vekzol: trace written to PATH"), or why there is
// none. Does nothing otherwise. Never throws.
void ReportLibraryTrace();

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_LIBRARYTRACE_H_
