// File: VEKZOLLog.h
// VEKZOLLog: the single trace channel of the library. Each line written is
// a complete open, append and close of one text file per process, named
// VZOL_Traces_<stamp>.log in the temporary directory (TEMP; on POSIX then
// TMPDIR, then /tmp). The file comes into being with the first line really
// written and starts with "Log created: <stamp>" and an empty line. Each
// line is "<Mon> <dd> <hh:mm:ss>\t<message>". In batch mode (JBM_RQT_IN
// set) every line also goes to standard output.
//
// Switches, each read from the environment once per process at first use:
// - VEK_ZOL_LOG_ENABLED: exactly "FALSE" turns logging off.
// - VEK_ZOL_LOG_VERBOSE: exactly "TRUE" or "1" turns verbose lines on, but
//   WriteMsg reads only the cached answer: verbose lines are dropped until
//   IsVerbosityEnabled has been called once.
// - JBM_RQT_IN: any non-empty value is a batch run.
//
// The cached answers of the switches live in the library's process-wide
// state, with the other switches. All state is static and unprotected:
// call from one thread at a time.
// Nothing here reports a failure: a line that cannot be written is lost.
#ifndef VEKZOL_DIAGNOSTICS_VEKZOLLOG_H_
#define VEKZOL_DIAGNOSTICS_VEKZOLLOG_H_

#include <cstdio>

#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLLog {
 public:
  VEKZOLLog();
  ~VEKZOLLog();
  VEKZOLLog& operator=(const VEKZOLLog& other);

  // Writes `message` as one line. Verbosity 0 is always written; any other
  // value only in verbose mode.
  static void WriteMsg(CString message, int verbosity);
  static bool IsLogEnabled();
  static bool IsRQTMode();
  static bool IsVerbosityEnabled();
  // The trace file's path / the stamp in its name; empty before the first
  // line has been written. Neither creates the file.
  static void GetLogFilePath(CString& path);
  static void GetCreationTimeStamp(CString& stamp);

  // Full path of the trace file, set when the file is created.
  static CString _LogFilePath;
  // The stamp inside the file name, set at the same moment.
  static CString _CreationTimeStamp;
  // The creation step has run, whether the file could be opened or not.
  static bool _bIsInitialized;

 private:
  friend class VEKZOLLogTestPeer;

  // Opens the trace file into `*stream`, creating it on first use. The
  // caller judges by the stream; the status is E_FAIL on every path.
  static long GetLogFile(std::FILE** stream);
};

#endif  // VEKZOL_DIAGNOSTICS_VEKZOLLOG_H_
