// File: Platform.h
// The few operating-system questions the vekzol tool asks, kept in one
// place: whether standard error is a terminal, how to put a finished file
// in place of another, how to switch the standard streams to binary, how
// to read and set a variable of the process's environment, the test seam
// that makes the steps of writing an output file fail, and loading a
// library's plugin.
#ifndef VEKZOL_TOOLS_VEKZOL_PLATFORM_H_
#define VEKZOL_TOOLS_VEKZOL_PLATFORM_H_

#include <cstddef>
#include <string>

namespace vekzol_tool {

// True when standard error is an interactive terminal (progress goes there
// only then).
bool StandardErrorIsTerminal();

// Moves `from` over `to`, replacing it where it exists. False with the
// system's message, taken when the rename failed, in `error` when the
// system refuses.
bool ReplaceFile(const std::string& from, const std::string& to, std::string& error);

// The steps of writing an output file that the test seam can fail.
enum class OutputStep { kOpen, kWrite, kFlush, kClose, kRename };

// Test seam: 0 to let `step` run, or the errno it is to fail with, as if
// the system had failed it. A test sets the environment variable
// VEKZOL_TOOL_TESTING_FAULT to "<step>:<error>", with a step of "open",
// "write", "flush", "close" or "rename" and an error of "ENOSPC",
// "EFBIG", "EIO", "EACCES" or "EXDEV"; that step then fails for every
// output file of the run. It is read once. Without it, and with a value
// of another form, nothing fails: a disk that fills cannot be had on
// demand on every machine the tests run on, this can.
int InjectedOutputFault(OutputStep step);

// Standard input and output carry blobs byte for byte (no text-mode
// translation on Windows).
void SetBinaryStandardStreams();

// True when the environment variable `name` is set in this process, also
// when it is set to an empty value. Asks the same environment the library
// reads its switches from.
bool EnvironmentVariableIsSet(const char* name);

// Sets the environment variable `name` to `value` in this process's own
// environment, where the library reads it; the parent's is not touched.
// False when the system refuses.
bool SetEnvironmentVariableOfProcess(const char* name, const char* value);

// A file's bytes mapped into memory read-only, for a parser that reads a
// few bytes past the end of its input: a model file is read by the page as
// the parser gets to it, not copied into a buffer of the process first.
// Only a regular, non-empty file whose last page leaves room for those
// bytes is mapped (the room reads as zeros); otherwise, and on systems
// where the tool does not map files, Map answers false and the caller
// reads the file as usual. A file cut short by another process while it
// is mapped ends the process with a bus error, as for any program that
// maps its input.
class MappedFile {
 public:
  MappedFile() = default;
  ~MappedFile();
  MappedFile(const MappedFile&) = delete;
  MappedFile& operator=(const MappedFile&) = delete;

  bool Map(const std::string& path, size_t bytesPastTheEnd);
  const char* Data() const { return static_cast<const char*>(address_); }
  size_t Size() const { return size_; }

 private:
  void* address_ = nullptr;
  size_t size_ = 0;
};

// The folder of the shared library that holds `function` (a function of
// it), ending in a separator; "" when the system cannot tell.
std::string LibraryFolderOf(void (*function)());

// Loads the shared library at `path`, which stays loaded for the rest of
// the process, and finds `symbol` in it. Null, with why in `error`, when
// either fails, and on systems where the tool does not load libraries.
void* LoadLibrarySymbol(const std::string& path, const char* symbol, std::string& error);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_PLATFORM_H_
