// File: Platform.cpp
// The tool's only platform-specific code.
#include "Platform.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// <windows.h> maps ReplaceFile to ReplaceFileA; the tool's own function of
// that name is meant below.
#undef ReplaceFile
#else
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace vekzol_tool {

bool StandardErrorIsTerminal() {
#ifdef _WIN32
  return _isatty(_fileno(stderr)) != 0;
#else
  return isatty(fileno(stderr)) != 0;
#endif
}

namespace {

struct InjectedFault {
  OutputStep step;
  int error;  // 0: none
};

// The seam's setting, parsed once.
InjectedFault ReadInjectedFault() {
  static const struct {
    const char* name;
    OutputStep step;
  } kSteps[] = {{"open", OutputStep::kOpen},
                {"write", OutputStep::kWrite},
                {"flush", OutputStep::kFlush},
                {"close", OutputStep::kClose},
                {"rename", OutputStep::kRename}};
  static const struct {
    const char* name;
    int error;
  } kErrors[] = {
      {"ENOSPC", ENOSPC}, {"EFBIG", EFBIG}, {"EIO", EIO}, {"EACCES", EACCES}, {"EXDEV", EXDEV}};
  InjectedFault none{OutputStep::kOpen, 0};
  const char* value = std::getenv("VEKZOL_TOOL_TESTING_FAULT");
  if (value == nullptr) return none;
  const std::string text(value);
  const size_t colon = text.find(':');
  if (colon == std::string::npos) return none;
  for (const auto& step : kSteps) {
    if (text.compare(0, colon, step.name) != 0) continue;
    for (const auto& error : kErrors) {
      if (text.compare(colon + 1, std::string::npos, error.name) == 0) {
        return InjectedFault{step.step, error.error};
      }
    }
  }
  return none;
}

}  // namespace

int InjectedOutputFault(OutputStep step) {
  static const InjectedFault fault = ReadInjectedFault();
  return fault.error != 0 && fault.step == step ? fault.error : 0;
}

bool ReplaceFile(const std::string& from, const std::string& to, std::string& error) {
  if (const int injected = InjectedOutputFault(OutputStep::kRename)) {
    error = std::strerror(injected);
    return false;
  }
  std::error_code code;
  std::filesystem::rename(std::filesystem::u8path(from), std::filesystem::u8path(to), code);
  if (code) {
    error = code.message();
    return false;
  }
  return true;
}

void SetBinaryStandardStreams() {
#ifdef _WIN32
  _setmode(_fileno(stdin), _O_BINARY);
  _setmode(_fileno(stdout), _O_BINARY);
#endif
}

// On Windows the library reads the process's environment block
// (GetEnvironmentVariableA), not the runtime's copy behind getenv, so both
// functions work on that block there.
bool EnvironmentVariableIsSet(const char* name) {
#ifdef _WIN32
  char value[1];
  ::SetLastError(ERROR_SUCCESS);
  // 0 with ERROR_ENVVAR_NOT_FOUND is the only answer for a variable that
  // is not set; a set one answers its size or 0 with another error.
  return ::GetEnvironmentVariableA(name, value, 1) != 0 ||
         ::GetLastError() != ERROR_ENVVAR_NOT_FOUND;
#else
  return std::getenv(name) != nullptr;
#endif
}

bool SetEnvironmentVariableOfProcess(const char* name, const char* value) {
#ifdef _WIN32
  return ::SetEnvironmentVariableA(name, value) != 0;
#else
  return ::setenv(name, value, 1) == 0;
#endif
}

MappedFile::~MappedFile() {
#ifndef _WIN32
  if (address_ != nullptr) ::munmap(address_, size_);
#endif
}

bool MappedFile::Map(const std::string& path, size_t bytesPastTheEnd) {
#ifdef _WIN32
  (void)path;
  (void)bytesPastTheEnd;
  return false;
#else
  if (address_ != nullptr) return false;
  const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return false;
  struct stat status {};
  const long pageSize = ::sysconf(_SC_PAGESIZE);
  bool mappable = ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
                  status.st_size > 0 && pageSize > 0;
  const size_t size = mappable ? static_cast<size_t>(status.st_size) : 0;
  if (mappable) {
    const size_t usedOfLastPage = size % static_cast<size_t>(pageSize);
    mappable =
        usedOfLastPage != 0 && static_cast<size_t>(pageSize) - usedOfLastPage >= bytesPastTheEnd;
  }
  void* address = MAP_FAILED;
  if (mappable) {
    int flags = MAP_PRIVATE;
#ifdef MAP_POPULATE
    flags |= MAP_POPULATE;  // all pages at once, not a fault each
#endif
    address = ::mmap(nullptr, size, PROT_READ, flags, descriptor, 0);
  }
  ::close(descriptor);
  if (address == MAP_FAILED) return false;
  address_ = address;
  size_ = size;
  return true;
#endif
}

std::string LibraryFolderOf(void (*function)()) {
#ifdef _WIN32
  (void)function;
  return std::string();
#else
  Dl_info info{};
  if (dladdr(reinterpret_cast<void*>(function), &info) == 0 || info.dli_fname == nullptr) {
    return std::string();
  }
  const std::string path = info.dli_fname;
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
#endif
}

void* LoadLibrarySymbol(const std::string& path, const char* symbol, std::string& error) {
#ifdef _WIN32
  (void)path;
  (void)symbol;
  error = "loading libraries is not supported on this system";
  return nullptr;
#else
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  void* address = library != nullptr ? dlsym(library, symbol) : nullptr;
  if (address == nullptr) {
    const char* why = dlerror();
    error = why != nullptr ? why : "not found";
  }
  return address;
#endif
}

}  // namespace vekzol_tool
