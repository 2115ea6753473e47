// File: ProcessExit.h
// What a command has built for its output (two graphs of a million
// vertices and the model objects behind them) is given back to the system
// by the end of the process. Destroying it piece by piece first frees
// millions of small blocks and takes seconds that the user waits for after
// the result is written, for nothing. A command therefore hands such
// objects over here once its output is committed, and they are left to the
// process's end.
//
// Builds under AddressSanitizer destroy them as usual, so that its leak
// check still sees every block of the library freed by its owner.
#ifndef VEKZOL_TOOLS_VEKZOL_PROCESSEXIT_H_
#define VEKZOL_TOOLS_VEKZOL_PROCESSEXIT_H_

#include <memory>

#if defined(__SANITIZE_ADDRESS__)
#define VEKZOL_TOOL_FREES_AT_EXIT 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define VEKZOL_TOOL_FREES_AT_EXIT 1
#endif
#endif

namespace vekzol_tool {

template <typename Object>
void LeaveToProcessExit(std::unique_ptr<Object> object) {
#if defined(VEKZOL_TOOL_FREES_AT_EXIT)
  object.reset();
#else
  (void)object.release();  // reclaimed with the process
#endif
}

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_PROCESSEXIT_H_
