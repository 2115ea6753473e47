// File: PosixAbsolutePaths.cpp
// Absolute paths on POSIX: those begun with '/'.
#include "platform/AbsolutePaths.h"

namespace vekzol {
namespace platform {

int DirectoryScanStart(const CString& path) { return path.Find('/') == 0 ? 2 : -1; }

}  // namespace platform
}  // namespace vekzol
