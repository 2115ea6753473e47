// File: DeliberateLeak.h
// A few blocks are left allocated on purpose: the host relies on the
// library never releasing them (see UnicodeString and VEKZOLZip). Marking
// them keeps the leak checker of the sanitizer builds quiet about exactly
// those blocks and no others. Outside such builds this does nothing.
#ifndef VEKZOL_SRC_PLATFORM_DELIBERATELEAK_H_
#define VEKZOL_SRC_PLATFORM_DELIBERATELEAK_H_

#if defined(__SANITIZE_ADDRESS__)
#define VEKZOL_HAS_LEAK_CHECKER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VEKZOL_HAS_LEAK_CHECKER 1
#endif
#endif

#if defined(VEKZOL_HAS_LEAK_CHECKER)
#include <sanitizer/lsan_interface.h>
#endif

namespace vekzol {
namespace platform {

// `block` points into a heap block that stays allocated for good.
inline void KeepDeliberately(const void* block) {
#if defined(VEKZOL_HAS_LEAK_CHECKER)
  if (block != nullptr) __lsan_ignore_object(block);
#else
  (void)block;
#endif
}

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_DELIBERATELEAK_H_
