// File: AbsolutePaths.h
// How the directory-making scan reads an absolute path on this platform.
// Each backend defines it: Windows knows a drive letter with either slash
// and a root or UNC path begun with a backslash or with two forward
// slashes; POSIX knows a path begun with '/', scanned as a rooted Windows
// path is.
#ifndef VEKZOL_SRC_PLATFORM_ABSOLUTEPATHS_H_
#define VEKZOL_SRC_PLATFORM_ABSOLUTEPATHS_H_

#include <vekzol/platform/CString.h>

namespace vekzol {
namespace platform {

// The index where the scan of `path` for its levels starts, or -1 for a
// path that is not absolute: "C:\\a" 4, "C:/a" 3, "\\a" and "//a" 2 on
// Windows; "/a" 2 on POSIX.
int DirectoryScanStart(const CString& path);

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_ABSOLUTEPATHS_H_
