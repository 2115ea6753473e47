// File: VEKZOLFileSystemServicesFiles.cpp
// Copying, moving, renaming, deleting and listing files.
//
// The operations over several files differ on purpose in how they report
// "nothing matched": the one-pattern copy and the deletes pass the
// listing's S_FALSE on, the list forms of FindFiles, CopyFiles and
// MoveFiles swallow it. Callers test these answers, so each keeps its own.
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include <vector>

#include <vekzol/platform/Status.h>

#include "filesystem/FileSystemSupport.h"
#include "platform/System.h"

namespace {

using vekzol::filesystem::IsExistingDirectory;
using vekzol::filesystem::JoinPath;
using vekzol::platform::FindEntry;
using vekzol::platform::Sys;

constexpr uint32_t kSuccess = vekzol::platform::kErrorSuccess;

// The checks that CopyFiles and MoveFiles make of their two directories:
// the source passes the directory test, the target DirectoryExists.
bool DirectoriesUsable(CString& source, CString& target) {
  return IsExistingDirectory(source) && VEKZOLFileSystemServices::DirectoryExists(target) == S_OK;
}

// The files of `directory` that the patterns match, by bare name, and the
// listing's status; sub-directories are dropped.
long CollectFiles(CString& directory, std::deque<CString>& patterns, std::deque<CString>& files) {
  std::deque<CString> directories;
  return VEKZOLFileSystemServices::FindFiles(directory, patterns, files, directories);
}

enum class Transfer { kCopy, kMove };

// Copies (over an existing file) or moves (never over one) each of `files`
// by bare name from one directory to the other, all of them even after a
// failure. The backend leaves a target as it was when its copy or move
// fails, so nothing is undone here.
// `status` as the listing left it, or E_FAIL when any one failed.
long TransferEach(const CString& sourceDirectory, const CString& targetDirectory,
                  const std::deque<CString>& files, Transfer transfer, long status) {
  for (const CString& file : files) {
    const CString from = JoinPath(sourceDirectory, file);
    const CString to = JoinPath(targetDirectory, file);
    const uint32_t code = transfer == Transfer::kCopy ? Sys().CopyOneFile(from, to, false)
                                                      : Sys().MoveOneFile(from, to);
    if (code != kSuccess) {
      status = E_FAIL;
    }
  }
  return status;
}

}  // namespace

long VEKZOLFileSystemServices::CopyFileA(CString& source, CString& target, bool overwrite,
                                         ErrorHandler* handler) {
  if (source.IsEmpty() || target.IsEmpty()) {
    return E_INVALIDARG;
  }
  CString finalTarget;
  CString bareName;
  GetFileNameFromPath(source, bareName);
  CString trimmed = target;
  trimmed.TrimRight("./\\");

  uint32_t attributes = vekzol::platform::kInvalidFileAttributes;
  if (Sys().FileAttributes(trimmed, &attributes) == kSuccess) {
    const bool isDirectory = (attributes & vekzol::platform::kAttributeDirectory) != 0;
    finalTarget = isDirectory ? JoinPath(trimmed, bareName) : trimmed;
  } else {
    const CString ending2 = target.Right(2);
    const char last = target[target.GetLength() - 1];
    const bool meansDirectory = last == '\\' || last == '/' || ending2 == "\\." || ending2 == "/.";
    if (!meansDirectory) {
      // A name that ends in a dot loses it here.
      finalTarget = trimmed;
    } else if (CreateDirectoryA(trimmed, nullptr) >= 0) {
      finalTarget = JoinPath(trimmed, bareName);
    }
  }
  if (finalTarget.IsEmpty()) {
    return E_FAIL;
  }

  const uint32_t code = Sys().CopyOneFile(source, finalTarget, !overwrite);
  if (code == kSuccess) {
    return S_OK;
  }
  vekzol::filesystem::FillHandler(
      handler, code,
      vekzol::filesystem::ContextOf("VEKZOLFileSystemServices::CopyFile( %s, %s )", source,
                                    finalTarget));
  return E_FAIL;
}

long VEKZOLFileSystemServices::CopyFiles(CString& sourceDirectory, CString& targetDirectory,
                                         CString& name, ErrorHandler* /*handler*/) {
  if (sourceDirectory.IsEmpty() || targetDirectory.IsEmpty() || name.IsEmpty()) {
    return E_INVALIDARG;
  }
  if (!DirectoriesUsable(sourceDirectory, targetDirectory) || name == "." || name == "..") {
    return E_INVALIDARG;
  }
  if (name.Find('*') < 0) {
    // One file, '?' included as it stands.
    const uint32_t code =
        Sys().CopyOneFile(JoinPath(sourceDirectory, name), JoinPath(targetDirectory, name), false);
    return code == kSuccess ? S_OK : E_FAIL;
  }
  std::deque<CString> files;
  std::deque<CString> directories;
  CString pattern = JoinPath(sourceDirectory, name);
  long status = FindFiles(pattern, files, directories);
  if (status < 0) {
    return status;
  }
  return TransferEach(sourceDirectory, targetDirectory, files, Transfer::kCopy, status);
}

long VEKZOLFileSystemServices::CopyFiles(CString& sourceDirectory, CString& targetDirectory,
                                         std::deque<CString>& patterns, ErrorHandler* /*handler*/) {
  if (sourceDirectory.IsEmpty() || targetDirectory.IsEmpty() || patterns.empty()) {
    return E_INVALIDARG;
  }
  if (!DirectoriesUsable(sourceDirectory, targetDirectory)) {
    return E_INVALIDARG;
  }
  std::deque<CString> files;
  long status = CollectFiles(sourceDirectory, patterns, files);
  if (status < 0) {
    return status;
  }
  return TransferEach(sourceDirectory, targetDirectory, files, Transfer::kCopy, status);
}

long VEKZOLFileSystemServices::MoveFiles(CString& sourceDirectory, CString& targetDirectory,
                                         std::deque<CString>& patterns, ErrorHandler* /*handler*/) {
  if (sourceDirectory.IsEmpty() || targetDirectory.IsEmpty() || patterns.empty()) {
    return E_INVALIDARG;
  }
  if (!DirectoriesUsable(sourceDirectory, targetDirectory)) {
    return E_INVALIDARG;
  }
  std::deque<CString> files;
  long status = CollectFiles(sourceDirectory, patterns, files);
  if (status < 0) {
    return status;
  }
  return TransferEach(sourceDirectory, targetDirectory, files, Transfer::kMove, status);
}

long VEKZOLFileSystemServices::RenameFile(CString& directory, CString& oldName, CString& newName,
                                          ErrorHandler* /*handler*/) {
  const uint32_t code =
      Sys().MoveOneFile(JoinPath(directory, oldName), JoinPath(directory, newName));
  return code == kSuccess ? S_OK : E_FAIL;
}

long VEKZOLFileSystemServices::DeleteFiles(CString& directory, CString& name,
                                           ErrorHandler* /*handler*/) {
  if (directory.IsEmpty() || name.IsEmpty() || !IsExistingDirectory(directory)) {
    return E_INVALIDARG;
  }
  if (name.FindOneOf("*?") < 0) {
    const uint32_t code = Sys().DeleteOneFile(JoinPath(directory, name));
    if (code == kSuccess) {
      return S_OK;
    }
    return vekzol::filesystem::IsMissingCode(code) ? S_FALSE : E_FAIL;
  }
  std::deque<CString> files;
  std::deque<CString> directories;
  CString pattern = JoinPath(directory, name);
  long status = FindFiles(pattern, files, directories);
  if (status < 0) {
    return status;
  }
  for (const CString& file : files) {
    if (Sys().DeleteOneFile(JoinPath(directory, file)) != kSuccess) {
      status = E_FAIL;
    }
  }
  return status;
}

long VEKZOLFileSystemServices::DeleteFiles(CString& directory, std::deque<CString>& names,
                                           ErrorHandler* handler) {
  if (directory.IsEmpty() || !IsExistingDirectory(directory) || names.empty()) {
    return E_INVALIDARG;
  }
  long status = S_OK;
  for (CString& name : names) {
    if (DeleteFiles(directory, name, handler) < 0) {
      status = E_FAIL;
    }
  }
  return status;
}

long VEKZOLFileSystemServices::FindFiles(CString& pattern, std::deque<CString>& files,
                                         std::deque<CString>& directories) {
  if (pattern.IsEmpty()) {
    return E_INVALIDARG;
  }
  std::vector<FindEntry> entries;
  const uint32_t code = Sys().FindFiles(pattern, &entries);
  if (code != kSuccess && entries.empty()) {
    return S_FALSE;  // the listing could not start
  }
  int count = 0;
  for (const FindEntry& entry : entries) {
    if (entry.name.empty() || entry.name == "." || entry.name == "..") {
      continue;
    }
    ++count;
    if ((entry.attributes & vekzol::platform::kAttributeDirectory) != 0) {
      directories.push_back(CString(entry.name.c_str()));
    } else {
      files.push_back(CString(entry.name.c_str()));
    }
  }
  return count > 0 ? S_OK : S_FALSE;
}

long VEKZOLFileSystemServices::FindFiles(CString& directory, std::deque<CString>& patterns,
                                         std::deque<CString>& files,
                                         std::deque<CString>& directories) {
  if (directory.IsEmpty() || !IsExistingDirectory(directory)) {
    return E_INVALIDARG;
  }
  long status = S_OK;
  for (const CString& pattern : patterns) {
    CString full = JoinPath(directory, pattern);
    const long found = FindFiles(full, files, directories);
    if (found < 0) {
      status = found;
    }
  }
  return status;
}
