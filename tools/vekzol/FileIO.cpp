// File: FileIO.cpp
#include "FileIO.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "Platform.h"
#include "ToolError.h"

namespace vekzol_tool {

InputFile::InputFile() : file_(stdin), name_("<stdin>") {}

InputFile::InputFile(const std::string& path) : file_(std::fopen(path.c_str(), "rb")), name_(path) {
  if (file_ == nullptr) {
    const int error = errno;
    throw ToolError(name_ + ": cannot open: " + std::strerror(error));
  }
  // Some systems open a directory for reading; its size and its reads then
  // answer nonsense (a huge size, "Bad address"). Its true fault is named.
  std::error_code code;
  if (std::filesystem::is_directory(std::filesystem::u8path(path), code)) {
    std::fclose(file_);
    file_ = nullptr;
    throw ToolError(name_ + ": cannot read: " + std::strerror(EISDIR));
  }
}

InputFile::~InputFile() {
  if (file_ != stdin) std::fclose(file_);
}

size_t InputFile::Size() {
  long size = -1;
  if (std::fseek(file_, 0, SEEK_END) == 0) size = std::ftell(file_);
  if (size < 0 || std::fseek(file_, 0, SEEK_SET) != 0) {
    const int error = errno;
    throw ToolError(name_ + ": cannot read: " + std::strerror(error));
  }
  return static_cast<size_t>(size);
}

void InputFile::ReadExactly(char* buffer, size_t size) {
  const size_t got = std::fread(buffer, 1, size, file_);
  if (got == size) return;
  const std::string error = std::ferror(file_) ? std::strerror(errno) : "the file got shorter";
  throw ToolError(name_ + ": cannot read: " + error);
}

std::string InputFile::ReadToEnd() {
  std::string content;
  char buffer[1 << 16];
  size_t got = 0;
  while ((got = std::fread(buffer, 1, sizeof buffer, file_)) > 0) content.append(buffer, got);
  if (std::ferror(file_) != 0) {
    const int error = errno;
    throw ToolError(name_ + ": cannot read: " + std::strerror(error));
  }
  return content;
}

std::string ReadWholeInput(const std::string& path) {
  if (path.empty() || path == "-") return InputFile().ReadToEnd();
  return InputFile(path).ReadToEnd();
}

Output::Output(std::string path) : path_(std::move(path)) {
  if (path_ == "-") path_.clear();
  if (path_.empty()) return;
  std::error_code code;
  const std::filesystem::path target = std::filesystem::u8path(path_);
  const std::filesystem::file_status status = std::filesystem::status(target, code);
  if (std::filesystem::is_directory(status)) {
    // Neither written through nor replaced: Stream refuses it before any
    // file is made beside it.
    directory_ = true;
    return;
  }
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
    // A device or a pipe (/dev/null, a FIFO) is written to directly: it
    // cannot be replaced, and must not be.
    direct_ = true;
    return;
  }
  // Through a symbolic link, the file it names is replaced, not the link.
  std::string destination = path_;
  if (std::filesystem::is_symlink(std::filesystem::symlink_status(target, code))) {
    const std::filesystem::path resolved = std::filesystem::weakly_canonical(target, code);
    if (!code) destination = resolved.u8string();
  }
  destination_ = destination;
  temporary_ = destination + ".vekzol-tmp";
}

Output::~Output() {
  if (file_ != nullptr && file_ != stdout) {
    std::fclose(file_);
    if (!direct_) std::remove(temporary_.c_str());
  }
}

std::FILE* Output::Stream() {
  if (file_ == nullptr) {
    if (path_.empty()) {
      file_ = stdout;
    } else if (directory_) {
      throw ToolError(path_ + ": cannot write: " + std::strerror(EISDIR));
    } else {
      const char* name = direct_ ? path_.c_str() : temporary_.c_str();
      const int injected = InjectedOutputFault(OutputStep::kOpen);
      file_ = injected != 0 ? nullptr : std::fopen(name, "wb");
      if (file_ == nullptr) {
        const int error = injected != 0 ? injected : errno;
        throw ToolError(path_ + ": cannot write: " + std::strerror(error));
      }
    }
  }
  return file_;
}

void Output::Write(const char* data, size_t size) {
  std::FILE* stream = Stream();
  if (size == 0 || error_ != 0) return;  // after a failure the output is lost anyway
  if (const int injected = InjectedOutputFault(OutputStep::kWrite)) {
    error_ = injected;
    return;
  }
  errno = 0;
  if (std::fwrite(data, 1, size, stream) != size) error_ = errno != 0 ? errno : EIO;
}

void Output::Commit() {
  std::FILE* stream = Stream();  // an empty result still makes its file
  const std::string shown = path_.empty() ? std::string("<stdout>") : path_;
  // The first failure is the one reported: its errno is taken at once,
  // before a later call (the close, the removal of the temporary file) can
  // change it.
  if (error_ == 0) {
    errno = 0;
    if (const int injected = InjectedOutputFault(OutputStep::kFlush)) {
      error_ = injected;
    } else if (std::fflush(stream) != 0 || std::ferror(stream) != 0) {
      error_ = errno != 0 ? errno : EIO;
    }
  }
  if (stream == stdout) {
    file_ = nullptr;
    if (error_ != 0) throw ToolError(shown + ": cannot write: " + std::strerror(error_));
    return;
  }
  errno = 0;
  const int closed = std::fclose(stream);
  const int closeError = errno != 0 ? errno : EIO;
  file_ = nullptr;
  if (error_ == 0 && closed != 0) error_ = closeError;
  if (error_ == 0) error_ = InjectedOutputFault(OutputStep::kClose);
  if (error_ != 0) {
    if (!direct_) std::remove(temporary_.c_str());
    throw ToolError(shown + ": cannot write: " + std::strerror(error_));
  }
  if (direct_) return;
  std::string error;
  if (!ReplaceFile(temporary_, destination_, error)) {
    std::remove(temporary_.c_str());
    throw ToolError(shown + ": cannot replace: " + error);
  }
}

}  // namespace vekzol_tool
