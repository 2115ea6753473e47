// File: CountingAllocatorTesting.h
// A replacement of the global allocator for test programs that count
// allocations or make them fail: include it in exactly one source file of
// the program. Every allocation through operator new adds one to
// `g_allocations`; while `g_failAllocations` is set, or once the count
// passes `g_failBeyond`, each raises std::bad_alloc, so a test can check
// that the library turns it into CAtlException(E_OUTOFMEMORY) and leaves
// its objects as they were.
#ifndef VEKZOL_SRC_PLATFORM_COUNTINGALLOCATORTESTING_H_
#define VEKZOL_SRC_PLATFORM_COUNTINGALLOCATORTESTING_H_

#include <cstddef>
#include <cstdlib>
#include <functional>
#include <new>

#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>

namespace {
bool g_failAllocations = false;
std::size_t g_allocations = 0;
constexpr std::size_t kNoLimit = static_cast<std::size_t>(-1);
std::size_t g_failBeyond = kNoLimit;

// How one run of an operation under a failing allocator ended.
enum class Ending { kCompleted, kOutOfMemory, kOtherStatus, kBadAlloc };

// Runs `operation` with memory running out after `allowed` allocations;
// `status` receives the status of a CAtlException.
inline Ending RunFailingAfter(std::size_t allowed, const std::function<void()>& operation,
                              HRESULT& status) {
  Ending ending = Ending::kCompleted;
  g_failBeyond = g_allocations + allowed;
  try {
    operation();
  } catch (const CAtlException& raised) {
    status = raised.m_hr;
    ending = raised.m_hr == E_OUTOFMEMORY ? Ending::kOutOfMemory : Ending::kOtherStatus;
  } catch (const std::bad_alloc&) {
    ending = Ending::kBadAlloc;
  }
  g_failBeyond = kNoLimit;
  return ending;
}
}  // namespace

// GCC pairs `new` with its own built-in idea of the allocator and, once the
// replacement below is inlined, takes the std::free inside it for a
// mismatch. The pair is matched: both sides are replaced together.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
#endif

// Every form a program may call is replaced, so that each block is freed
// by the allocator that gave it (the standard library takes its temporary
// buffers with the non-throwing form, for one).
void* operator new(std::size_t size) {
  ++g_allocations;
  if (g_failAllocations || g_allocations > g_failBeyond) throw std::bad_alloc();
  if (void* block = std::malloc(size == 0 ? 1 : size)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  ++g_allocations;
  if (g_failAllocations || g_allocations > g_failBeyond) return nullptr;
  return std::malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept {
  return operator new(size, tag);
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { std::free(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { std::free(block); }

#endif  // VEKZOL_SRC_PLATFORM_COUNTINGALLOCATORTESTING_H_
