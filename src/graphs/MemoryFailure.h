// File: MemoryFailure.h
// Memory exhaustion leaves the graph's operations as the library's own
// exception, CAtlException(E_OUTOFMEMORY), whichever container ran out:
// the graph's maps and edge lists already raise it, while a new vertex or
// edge, a walk's path and the caller's deques come from the standard
// allocator, which raises std::bad_alloc (and std::length_error for a
// container asked to grow beyond its limit). Each public operation of the
// graph classes runs its body through RaiseMemoryFailure, so the host meets
// one exception for one cause. Exceptions of any other kind (a host's
// object raising, a cycle found by a walk) pass through unchanged.
#ifndef VEKZOL_SRC_GRAPHS_MEMORYFAILURE_H_
#define VEKZOL_SRC_GRAPHS_MEMORYFAILURE_H_

#include <new>
#include <stdexcept>
#include <utility>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>

namespace vekzol {
namespace graphs {

// Runs `body` and answers what it answers; a failure of the standard
// allocator becomes CAtlException(E_OUTOFMEMORY). What `body` changed
// before it failed stays as it is: the callers leave their objects sound
// at every allocation.
template <typename Body>
auto RaiseMemoryFailure(Body&& body) -> decltype(std::forward<Body>(body)()) {
  try {
    return std::forward<Body>(body)();
  } catch (const std::bad_alloc&) {
    AtlThrow(E_OUTOFMEMORY);
  } catch (const std::length_error&) {
    AtlThrow(E_OUTOFMEMORY);
  }
}

}  // namespace graphs
}  // namespace vekzol

#endif  // VEKZOL_SRC_GRAPHS_MEMORYFAILURE_H_
