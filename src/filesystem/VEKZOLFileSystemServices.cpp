// File: VEKZOLFileSystemServices.cpp
// The existence tests, the name part of a path, the system's error texts
// and the small helpers that every other file of the class uses. Every
// system call goes through the platform seam, which answers with Windows
// error codes and attribute bits on every platform.
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include <string>

#include <vekzol/platform/Status.h>

#include "filesystem/FileSystemSupport.h"
#include "platform/System.h"

namespace vekzol {
namespace filesystem {

using platform::Sys;

CString JoinPath(const CString& directory, const CString& name) {
  CString path = directory;
  path += Sys().PathSeparator();
  path += name;
  return path;
}

bool IsExistingDirectory(const CString& path) {
  uint32_t attributes = platform::kInvalidFileAttributes;
  return Sys().FileAttributes(path, &attributes) == platform::kErrorSuccess &&
         (attributes & platform::kAttributeDirectory) != 0;
}

bool IsMissingCode(uint32_t code) {
  return code == platform::kErrorFileNotFound || code == platform::kErrorPathNotFound;
}

CString ErrorMessageOf(uint32_t code) {
  if (code == platform::kErrorSuccess) {
    return CString();
  }
  const std::string text = Sys().ErrorText(code);
  // The text up to its first NUL, as the system's buffer reads.
  CString message(text.c_str());
  message.Replace('\n', '.');
  message.Replace('\t', '.');
  return message;
}

void FillHandler(VEKZOLFileSystemServices::ErrorHandler* handler, uint32_t code,
                 const CString& context) {
  if (handler == nullptr) {
    return;
  }
  // Composed before anything is stored, so a failing string operation
  // leaves the handler as it was.
  CString message = ErrorMessageOf(code);
  CString contextCopy = context;
  handler->_ErrorCode = code;
  handler->_ErrorMessage = message;
  handler->_ErrorContext = contextCopy;
}

CString ContextOf(const char* format, const CString& first) {
  CString context;
  context.Format(format, first);
  return context;
}

CString ContextOf(const char* format, const CString& first, const CString& second) {
  CString context;
  context.Format(format, first, second);
  return context;
}

}  // namespace filesystem
}  // namespace vekzol

namespace {

using vekzol::platform::Sys;

// The attribute read of `path`: the system's code, attributes in `*found`.
uint32_t ReadAttributes(const CString& path, uint32_t* found) {
  *found = vekzol::platform::kInvalidFileAttributes;
  return Sys().FileAttributes(path, found);
}

bool HasDirectoryBit(uint32_t attributes) {
  return (attributes & vekzol::platform::kAttributeDirectory) != 0;
}

}  // namespace

// The session path and its creation flag are defined with the library's
// process-wide state (src/state), the path at its place in the load order.

VEKZOLFileSystemServices::VEKZOLFileSystemServices() = default;

VEKZOLFileSystemServices::~VEKZOLFileSystemServices() = default;

long VEKZOLFileSystemServices::DirectoryExists(CString& path) {
  if (path.IsEmpty()) {
    return E_INVALIDARG;
  }
  uint32_t attributes = 0;
  const uint32_t code = ReadAttributes(path, &attributes);
  if (code == vekzol::platform::kErrorSuccess) {
    return HasDirectoryBit(attributes) ? S_OK : S_FALSE;
  }
  return vekzol::filesystem::IsMissingCode(code) ? S_FALSE : E_FAIL;
}

long VEKZOLFileSystemServices::FileExists(CString& path) {
  uint32_t attributes = 0;
  const uint32_t code = ReadAttributes(path, &attributes);
  if (code == vekzol::platform::kErrorSuccess) {
    return HasDirectoryBit(attributes) ? S_FALSE : S_OK;
  }
  return vekzol::filesystem::IsMissingCode(code) ? S_FALSE : E_FAIL;
}

long VEKZOLFileSystemServices::PathExists(CString& path, bool& isDirectory) {
  uint32_t attributes = 0;
  const uint32_t code = ReadAttributes(path, &attributes);
  if (code == vekzol::platform::kErrorSuccess) {
    isDirectory = HasDirectoryBit(attributes);
    return S_OK;
  }
  return vekzol::filesystem::IsMissingCode(code) ? S_FALSE : E_FAIL;
}

long VEKZOLFileSystemServices::GetFileNameFromPath(CString& path, CString& name) {
  if (path.IsEmpty()) {
    return E_INVALIDARG;
  }
  name.Empty();
  CString trimmed = path;
  trimmed.TrimRight("./\\");
  // The last run of characters between separators; runs of separators
  // count as one, so only a non-empty token replaces the name.
  const int length = trimmed.GetLength();
  int index = 0;
  while (index < length) {
    while (index < length && (trimmed[index] == '/' || trimmed[index] == '\\')) {
      ++index;
    }
    const int start = index;
    while (index < length && trimmed[index] != '/' && trimmed[index] != '\\') {
      ++index;
    }
    if (index > start) {
      name = trimmed.Mid(start, index - start);
    }
  }
  return S_OK;
}

CString VEKZOLFileSystemServices::GetErrorMsg(unsigned long& code) {
  return vekzol::filesystem::ErrorMessageOf(static_cast<uint32_t>(code));
}
