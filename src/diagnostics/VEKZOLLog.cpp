// File: VEKZOLLog.cpp
// The trace log. Every line is a complete open, write and close of the trace
// file, so no stream stays open between lines and nothing is lost when the
// host ends abruptly. The first line really written creates the file; the
// three switches are read from the environment once per process, by the
// library's process-wide state, which keeps their answers.
#include <vekzol/diagnostics/VEKZOLLog.h>

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <memory>
#include <string>

#include <vekzol/platform/Status.h>

#include "platform/MbString.h"
#include "platform/System.h"
#include "state/LibraryState.h"

namespace {

using vekzol::platform::Sys;

// Closes the line's stream when WriteMsg leaves, also when composing the
// line raises a string exception.
struct StreamCloser {
  void operator()(std::FILE* stream) const { std::fclose(stream); }
};

// The runtime's date text of `seconds`, as the zeroed buffer holds it: the
// text up to its first NUL, empty when the platform could not form it.
CString DateTextOf(int64_t seconds) { return CString(Sys().DateText(seconds).c_str()); }

// Cuts the date text "Sat Nov 07 09:35:12 2026\n" down to "Nov 07 09:35:12":
// the line end goes, then the year (after the last blank), then the weekday
// (before the first blank). Texts of another shape go through the same
// steps, so a platform's odd text degrades without failing.
CString CutDateText(const CString& dateText) {
  CString text = dateText.Left(dateText.GetLength() - 1);
  const int lastBlank = text.ReverseFind(' ');
  if (lastBlank > 0) {
    text = text.Left(lastBlank);
  }
  const int firstBlank = text.Find(' ');
  if (firstBlank > 0) {
    text = text.Mid(firstBlank + 1);
  }
  return text;
}

// Replaces every `from` in `text` by `to`, one multi-byte character at a
// time, so that no byte inside a character is taken for `from`.
void ReplaceByCharacter(CString& text, char from, char to) {
  const int length = text.GetLength();
  char* const buffer = text.GetBuffer(length);
  int index = 0;
  while (index < length && buffer[index] != '\0') {
    if (buffer[index] == from) {
      buffer[index] = to;
    }
    index = static_cast<int>(vekzol::platform::Mbsinc(buffer + index) - buffer);
  }
  text.ReleaseBuffer(length);
}

// The stamp used when local time is unknown: the date text without its last
// character, blanks and then colons turned into underscores, so that it can
// stand in a file name ("Sat_Nov_07_09_35_12_2026").
CString FallbackStamp(const CString& dateText) {
  CString stamp = dateText.Left(dateText.GetLength() - 1);
  ReplaceByCharacter(stamp, ' ', '_');
  ReplaceByCharacter(stamp, ':', '_');
  return stamp;
}

}  // namespace

VEKZOLLog::VEKZOLLog() = default;

VEKZOLLog::~VEKZOLLog() = default;

VEKZOLLog& VEKZOLLog::operator=(const VEKZOLLog&) { return *this; }

void VEKZOLLog::WriteMsg(CString message, int verbosity) {
  if (!IsLogEnabled()) {
    return;
  }
  // The cached flag, not IsVerbosityEnabled: verbose lines stay off until
  // someone has asked for verbosity once.
  if (verbosity != 0 && !vekzol::state::VerboseAsCached()) {
    return;
  }
  std::FILE* stream = nullptr;
  GetLogFile(&stream);
  if (stream == nullptr) {
    return;
  }
  std::unique_ptr<std::FILE, StreamCloser> closer(stream);

  CString line = CutDateText(DateTextOf(Sys().Now()));
  line += "\t";
  line += message;

  if (IsRQTMode()) {
    std::printf("%s\n", line.GetString());
  }
  std::fprintf(stream, "%s", line.GetString());
  std::fprintf(stream, "\n");
}

long VEKZOLLog::GetLogFile(std::FILE** stream) {
  if (_bIsInitialized && !_LogFilePath.IsEmpty()) {
    *stream = Sys().OpenFile(_LogFilePath, "a+");
    return E_FAIL;
  }

  const CString directory = vekzol::state::TraceDirectory();
  const int64_t now = Sys().Now();
  // The text of the header line: the stamp, or in the fallback the
  // unchanged date text.
  CString buffer;
  std::tm local{};
  if (Sys().LocalTime(now, &local)) {
    buffer = CString(Sys().FormatTime("%a_%Y_%b_%d_hh%H_mm%M_ss%S", local, 1024).c_str());
    _CreationTimeStamp = buffer;
  } else {
    buffer = DateTextOf(now);
    _CreationTimeStamp = FallbackStamp(buffer);
  }

  _LogFilePath = directory;
  _LogFilePath += Sys().PathSeparator();
  _LogFilePath += "VZOL_Traces_";
  _LogFilePath += _CreationTimeStamp;
  _LogFilePath += ".log";

  *stream = Sys().OpenFile(_LogFilePath, "w+");
  if (*stream != nullptr) {
    std::fprintf(*stream, "Log created: %s\n\n", buffer.GetString());
  }
  // Set even when the open failed: later lines retry with "a+" on this path.
  _bIsInitialized = true;
  return E_FAIL;
}

bool VEKZOLLog::IsLogEnabled() { return vekzol::state::LogEnabled(); }

bool VEKZOLLog::IsRQTMode() { return vekzol::state::BatchRun(); }

bool VEKZOLLog::IsVerbosityEnabled() { return vekzol::state::Verbose(); }

void VEKZOLLog::GetLogFilePath(CString& path) { path = _LogFilePath; }

void VEKZOLLog::GetCreationTimeStamp(CString& stamp) { stamp = _CreationTimeStamp; }
