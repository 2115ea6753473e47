// File: Parallel.h
// Two pieces of work at once: the second on a thread of its own, the first
// on the calling thread. Used to read two files at the same time.
#ifndef VEKZOL_TOOLS_VEKZOL_PARALLEL_H_
#define VEKZOL_TOOLS_VEKZOL_PARALLEL_H_

#include <exception>
#include <thread>

namespace vekzol_tool {

// Runs `first` here and `second` on another thread, and waits for both.
// When both fail, the first one's exception is thrown, as when they ran one
// after the other; otherwise the one that failed.
template <typename First, typename Second>
void RunBoth(First&& first, Second&& second) {
  std::exception_ptr secondFailure;
  std::thread thread([&second, &secondFailure] {
    try {
      second();
    } catch (...) {
      secondFailure = std::current_exception();
    }
  });
  try {
    first();
  } catch (...) {
    thread.join();
    throw;
  }
  thread.join();
  if (secondFailure) std::rethrow_exception(secondFailure);
}

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_PARALLEL_H_
