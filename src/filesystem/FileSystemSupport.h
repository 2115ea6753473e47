// File: FileSystemSupport.h
// Internal pieces shared by the sources of VEKZOLFileSystemServices: path
// joining, the directory test of the operations that work inside a
// directory, the system's error text and the filling of an ErrorHandler.
// Not installed.
#ifndef VEKZOL_SRC_FILESYSTEM_FILESYSTEMSUPPORT_H_
#define VEKZOL_SRC_FILESYSTEM_FILESYSTEMSUPPORT_H_

#include <cstdint>

#include <vekzol/platform/CString.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>

namespace vekzol {
namespace filesystem {

// `directory`, one separator, `name`: no look at what the directory ends
// in, so a directory that ends in a separator gets a second one.
CString JoinPath(const CString& directory, const CString& name);

// The test of a working directory: the attribute read must succeed and
// show the directory bit.
bool IsExistingDirectory(const CString& path);

// True for the codes that mean "not there": file not found, path not found.
bool IsMissingCode(uint32_t code);

// The system's message of `code` with each line feed and tab replaced by
// "."; empty for 0 or a code without text.
CString ErrorMessageOf(uint32_t code);

// Writes `code`, its message and `context` into `handler`, if there is
// one; all three together.
void FillHandler(VEKZOLFileSystemServices::ErrorHandler* handler, uint32_t code,
                 const CString& context);

// `format` with its one "%s" (or two) filled with the arguments as data.
CString ContextOf(const char* format, const CString& first);
CString ContextOf(const char* format, const CString& first, const CString& second);

}  // namespace filesystem
}  // namespace vekzol

#endif  // VEKZOL_SRC_FILESYSTEM_FILESYSTEMSUPPORT_H_
