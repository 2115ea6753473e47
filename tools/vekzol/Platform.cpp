// File: Platform.cpp
// The tool's only platform-specific code.
#include "Platform.h"

#include <cstdio>
#include <filesystem>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
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

}  // namespace vekzol_tool
