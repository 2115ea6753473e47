// File: LibraryFailure.h
// The message that names why the library failed, from the status its
// exception carries: exhausted memory as such, the other statuses by the
// name and meaning that the library's table of statuses gives them, with
// the value in hexadecimal. main() prefixes it with "vekzol: ".
#ifndef VEKZOL_TOOLS_VEKZOL_LIBRARYFAILURE_H_
#define VEKZOL_TOOLS_VEKZOL_LIBRARYFAILURE_H_

#include <cstdio>
#include <string>

#include <vekzol/platform/Status.h>

namespace vekzol_tool {

// What std::bad_alloc and CAtlException(E_OUTOFMEMORY) both say.
inline const char* OutOfMemoryMessage() { return "out of memory"; }

inline std::string LibraryFailureMessage(HRESULT status) {
  if (status == E_OUTOFMEMORY) return OutOfMemoryMessage();
  const char* meaning = "a status outside the library's table";
  if (status == S_OK) {
    meaning = "S_OK: done, or yes, or found";
  } else if (status == S_FALSE) {
    meaning = "S_FALSE: succeeded with nothing to report";
  } else if (status == E_INVALIDARG) {
    meaning = "E_INVALIDARG: an argument is empty or null, or a path is unusable";
  } else if (status == E_FAIL) {
    meaning = "E_FAIL: everything else that is not success";
  }
  char value[16];
  std::snprintf(value, sizeof value, "0x%08lx", static_cast<unsigned long>(status) & 0xFFFFFFFFul);
  return std::string("the library failed with status ") + value + " (" + meaning + ")";
}

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_LIBRARYFAILURE_H_
