// File: ProcessEnvironmentTesting.h
// Test-only: puts a variable into the environment of this process, as a host
// or a library beside it could do after start-up, for the tests of reads
// that go to the real environment. Not installed.
#ifndef VEKZOL_SRC_PLATFORM_PROCESSENVIRONMENTTESTING_H_
#define VEKZOL_SRC_PLATFORM_PROCESSENVIRONMENTTESTING_H_

#include <cstdlib>

namespace vekzol {
namespace platform {

inline void PutEnvironmentVariable(const char* name, const char* value) {
#if defined(_WIN32)
  _putenv_s(name, value);
#else
  setenv(name, value, 1);
#endif
}

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_PROCESSENVIRONMENTTESTING_H_
