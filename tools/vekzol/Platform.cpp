// File: Platform.cpp
// The tool's only platform-specific code.
#include "Platform.h"

#include <cstdio>
#include <cstdlib>
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

bool ReplaceFile(const std::string& from, const std::string& to, std::string& error) {
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

}  // namespace vekzol_tool
