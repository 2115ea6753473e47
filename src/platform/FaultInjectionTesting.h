// File: FaultInjectionTesting.h
// Test seam inside the backends: the system calls behind the file
// operations of System (creating, reading, writing and finishing a copy,
// giving it its name, renaming, removing a moved file's source) first ask a
// hook, so that a test can make one of them fail part-way through an
// operation, with the error code it chooses, and check that the operation
// cleans up and reports as it would after a real failure (a disk that fills
// during a copy, a read error, a rename that the system refuses).
//
// Where ForwardingSystem makes a whole System call fail, this seam reaches
// inside one: the backend runs its own failure path, cleanup included.
//
// The hook answers 0 to let the call run, or a Windows system error code
// (112 disk full, 29 write fault, 17 not same device, ...) to fail it: the
// POSIX backend then behaves as if the call had failed with the matching
// errno, the Win32 backend as if it had failed with that last error.
//
// Unused, the seam costs one test of a pointer per system call. Null
// restores the default. Not synchronised; for tests only.
#ifndef VEKZOL_SRC_PLATFORM_FAULTINJECTIONTESTING_H_
#define VEKZOL_SRC_PLATFORM_FAULTINJECTIONTESTING_H_

#include <cstdint>

namespace vekzol {
namespace platform {

// The system calls that the seam can fail.
enum class FaultSite {
  kCreateCopy,    // the new file that receives a copy
  kReadCopy,      // one read of a copy's source
  kWriteCopy,     // one write of a copy's contents
  kFinishCopy,    // closing the written copy (delayed write errors)
  kPublishCopy,   // giving the finished copy its final name
  kRename,        // the rename of MoveOneFile
  kRemoveSource,  // removing the source of a move done by copying
};

// `path` is the file the call works on, when there is one; null otherwise.
using FaultHook = uint32_t (*)(FaultSite site, const char* path);

// Puts `hook` in place and returns the one it replaces.
FaultHook SetFaultHookForTesting(FaultHook hook);

namespace internal {
extern FaultHook g_faultHook;
}  // namespace internal

// For the backends: 0 to go on, or the error code to fail the call with.
inline uint32_t InjectedFault(FaultSite site, const char* path) {
  return internal::g_faultHook == nullptr ? 0u : internal::g_faultHook(site, path);
}

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_FAULTINJECTIONTESTING_H_
