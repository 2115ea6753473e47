// File: Win32AbsolutePaths.cpp
// Absolute paths on Windows: a drive letter with either slash, a root or
// UNC path begun with a backslash or with two forward slashes.
#include "platform/AbsolutePaths.h"

namespace vekzol {
namespace platform {

int DirectoryScanStart(const CString& path) {
  if (path.Find(":\\") == 1) return 4;
  if (path.Find(":/") == 1) return 3;
  if (path.Find('\\') == 0) return 2;
  if (path.Find("//") == 0) return 2;
  return -1;
}

}  // namespace platform
}  // namespace vekzol
