// File: FileIO.h
// Reading inputs and writing outputs safely. Every file the tool reads
// whole is read through InputFile: model files that cannot be mapped, and
// the inputs of the blob commands. An output is either
// standard output or a file given with -o; a file is written beside its
// destination under a temporary name and renamed over it only when the
// command has succeeded, so a failed command leaves the destination as it
// was, and leaves no temporary file behind.
#ifndef VEKZOL_TOOLS_VEKZOL_FILEIO_H_
#define VEKZOL_TOOLS_VEKZOL_FILEIO_H_

#include <cstdio>
#include <string>

namespace vekzol_tool {

// An input opened for reading whole: a file, or standard input. Failures
// throw ToolError "<name>: cannot open: <why>" or "<name>: cannot read:
// <why>", where the name is the file's path, or "<stdin>".
class InputFile {
 public:
  // Standard input, which is never closed.
  InputFile();
  // The file `path`, opened in binary mode.
  explicit InputFile(const std::string& path);
  ~InputFile();
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;

  // The size of a file that can be positioned, asked before reading; the
  // input is left at its start.
  size_t Size();
  // Reads exactly `size` bytes into `buffer`: a file with fewer is "the
  // file got shorter".
  void ReadExactly(char* buffer, size_t size);
  // Reads everything up to the end of the input, in blocks; for inputs
  // whose size cannot be asked, such as a pipe.
  std::string ReadToEnd();

 private:
  std::FILE* file_;
  std::string name_;
};

// The bytes of `path`, or of standard input when `path` is empty or "-".
// Throws ToolError naming the file when it cannot be read.
std::string ReadWholeInput(const std::string& path);

// Where a command writes its result.
class Output {
 public:
  // Empty or "-": standard output. Otherwise the file `path`, written
  // through "<path>.vekzol-tmp" until Commit; a `path` that exists and is
  // a device or a pipe is written directly, and one that is a directory is
  // refused when the output is first written.
  explicit Output(std::string path);
  // Removes the temporary file when Commit was not reached.
  ~Output();
  Output(const Output&) = delete;
  Output& operator=(const Output&) = delete;

  // The stream to write to; opens the temporary file on first use.
  std::FILE* Stream();
  void Write(const char* data, size_t size);
  void Write(const std::string& text) { Write(text.data(), text.size()); }
  // Flushes and, for a file, renames it into place. Throws ToolError when
  // writing failed at any point, naming the file and the error of the
  // first step that failed; the temporary file is gone by then.
  void Commit();

 private:
  std::string path_;
  std::string destination_;  // the file that Commit replaces
  std::string temporary_;
  bool direct_ = false;
  bool directory_ = false;  // `path` names a directory
  std::FILE* file_ = nullptr;
  int error_ = 0;  // errno of the first failed write, taken when it failed
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_FILEIO_H_
