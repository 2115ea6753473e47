// File: BstrAllocatorTesting.h
// Test seam of the library's own BSTR functions (POSIX backend): the
// allocator behind every BSTR, std::malloc by default, so that a test can
// make an allocation fail. Blocks are released with std::free, so a
// replacement must hand out malloc memory or null. Null restores the
// default. Returns the allocator it replaces. On Windows the BSTR functions
// are the system's and there is no such seam.
#ifndef VEKZOL_SRC_PLATFORM_BSTRALLOCATORTESTING_H_
#define VEKZOL_SRC_PLATFORM_BSTRALLOCATORTESTING_H_

#include <cstddef>

namespace vekzol {
namespace platform {

using BstrAllocator = void* (*)(size_t);
BstrAllocator SetBstrAllocatorForTesting(BstrAllocator allocator);

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_BSTRALLOCATORTESTING_H_
