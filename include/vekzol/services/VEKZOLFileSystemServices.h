// File: VEKZOLFileSystemServices.h
// VEKZOLFileSystemServices: the library's one door to the file system
// (existence tests, directory creation with parents, recursive clearing,
// copying, moving, renaming, deleting and listing with wildcards, the name
// part of a path) and the owner of the process's session data directory.
//
// Contract:
// - Everything is static; nothing makes an instance. Paths are CString in
//   the narrow code page, taken by reference and never changed unless a
//   method says so. A directory and a name are joined with one separator
//   ('\\' on Windows, '/' elsewhere) whatever the directory ends in.
// - Statuses: S_OK for done or yes; S_FALSE for not found, none matched,
//   nothing to do or already there; E_INVALIDARG for an argument that fails
//   the method's checks, found before anything is touched; E_FAIL for a
//   system call that failed. Test success with a status that is not
//   negative.
// - Methods that loop go on past a failed element and report it at the
//   end; nothing is rolled back. Nothing here writes to the trace log or to
//   the error services, sleeps or retries.
// - An ErrorHandler is owned by the caller and may be null. Only
//   CopyFileA, CreateDirectoryA, DeleteDirectory and the session methods
//   write into it, all three fields together, and only when a system call
//   fails as their comments say; the other methods take one and never
//   write it.
// - Wildcards are '*' and '?' with the Windows meaning ("*.*" matches
//   every name); listings skip "." and "..".
// - The session path is process-wide and unprotected: create and delete
//   the session directory from one thread.
#ifndef VEKZOL_SERVICES_VEKZOLFILESYSTEMSERVICES_H_
#define VEKZOL_SERVICES_VEKZOLFILESYSTEMSERVICES_H_

#include <cstdint>
#include <deque>

#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLFileSystemServices {
 public:
  // Why a system call failed: the system's code, its message (GetErrorMsg)
  // and the operation with its arguments.
  struct ErrorHandler {
    uint32_t _ErrorCode = 0;
    CString _ErrorMessage;
    CString _ErrorContext;
  };

  // ------------------------------------------------------------ tests
  // S_OK for a directory; S_FALSE for a missing path or a file;
  // E_INVALIDARG for an empty path; E_FAIL for any other error of the
  // attribute read.
  static long DirectoryExists(CString& path);
  // S_OK for something that is not a directory; S_FALSE for a missing path
  // or a directory; E_FAIL for any other error. An empty path is asked like
  // any other.
  static long FileExists(CString& path);
  // S_OK with `isDirectory` set when the path exists; S_FALSE when it is
  // missing and E_FAIL for any other error, both leaving `isDirectory`.
  static long PathExists(CString& path, bool& isDirectory);

  // ------------------------------------------------------------ directories
  // Makes the missing levels of an absolute path ("C:\\...", "C:/...",
  // "\\..." and "//..." on Windows; "/..." elsewhere). S_OK when the last
  // level tried was made now, S_FALSE when the path or the last level tried
  // was already a directory, E_INVALIDARG for an empty or relative path or
  // one whose level is a file, E_FAIL when a create fails (handler filled
  // with "VEKZOLFileSystemServices::CreateDirectory( <level> )") or when no
  // level could be tried. The scan steps two places past each separator, so
  // a last component of one character is never made.
  static long CreateDirectoryA(CString& path, ErrorHandler* handler);
  // Clears the directory, then removes it. S_OK; E_FAIL when the clearing
  // failed (handler untouched) or the removal failed (handler filled with
  // "VEKZOLFileSystemServices::DeleteDirectory( <path> )").
  static long DeleteDirectory(CString& path, ErrorHandler* handler);
  // Deletes the contents and keeps the directory. S_OK; S_FALSE when it
  // cannot be listed; E_INVALIDARG for an empty path or no directory;
  // E_FAIL when an entry of this level could not be deleted. A failure
  // deeper down leaves its sub-directory in place and is not reported here.
  static long ClearDirectory(CString& path, ErrorHandler* handler);

  // ------------------------------------------------------------ files
  // Copies one file. An existing directory as `target` receives the file
  // under its own name; a missing target that ends in a separator (or a
  // separator and ".") is made as a directory first; any other target is
  // the new file's name, trailing ".", "/" and "\\" removed. S_OK;
  // E_INVALIDARG for an empty argument; E_FAIL when the target directory
  // could not be made (handler untouched) or the copy failed (handler
  // filled with "VEKZOLFileSystemServices::CopyFile( <source>, <target> )").
  // Without `overwrite` an existing target file fails the copy.
  static long CopyFileA(CString& source, CString& target, bool overwrite, ErrorHandler* handler);
  // Copies one file, or every file that a name with '*' matches, from one
  // existing directory to another under the same name, overwriting. S_OK;
  // S_FALSE when a pattern matched nothing; E_INVALIDARG for an empty
  // argument, a missing directory or a name of "." or ".."; E_FAIL when a
  // copy failed. '?' is no wildcard here.
  static long CopyFiles(CString& sourceDirectory, CString& targetDirectory, CString& name,
                        ErrorHandler* handler);
  // The same for a list of patterns; no match at all is S_OK.
  static long CopyFiles(CString& sourceDirectory, CString& targetDirectory,
                        std::deque<CString>& patterns, ErrorHandler* handler);
  // Moves the files that the patterns match; an existing target file fails
  // its move. S_OK; E_INVALIDARG as for CopyFiles; E_FAIL when a move
  // failed (the others stay moved).
  static long MoveFiles(CString& sourceDirectory, CString& targetDirectory,
                        std::deque<CString>& patterns, ErrorHandler* handler);
  // Moves `directory`/`oldName` to `directory`/`newName`, with no check of
  // its own. S_OK or E_FAIL.
  static long RenameFile(CString& directory, CString& oldName, CString& newName,
                         ErrorHandler* handler);
  // Deletes one file, or every file that a name with '*' or '?' matches.
  // S_OK; S_FALSE when the file is missing or nothing matched;
  // E_INVALIDARG for an empty argument or a missing directory; E_FAIL when
  // a delete failed.
  static long DeleteFiles(CString& directory, CString& name, ErrorHandler* handler);
  // Each name as above; S_OK unless one answered a failure (E_FAIL): a
  // missing name is no failure. E_INVALIDARG for an empty list.
  static long DeleteFiles(CString& directory, std::deque<CString>& names, ErrorHandler* handler);

  // ------------------------------------------------------------ listings
  // Appends the bare names that a full pattern matches, files to `files`
  // and directories to `directories`, in the system's order; neither list
  // is cleared. S_OK when something was found; S_FALSE when nothing was or
  // the listing could not start; E_INVALIDARG for an empty pattern.
  static long FindFiles(CString& pattern, std::deque<CString>& files,
                        std::deque<CString>& directories);
  // The same for each pattern inside `directory`. S_OK, also when nothing
  // matched; E_INVALIDARG for an empty or missing directory.
  static long FindFiles(CString& directory, std::deque<CString>& patterns,
                        std::deque<CString>& files, std::deque<CString>& directories);
  // The last component of `path`, trailing ".", "/" and "\\" removed first:
  // "a.txt." gives "a.txt", "dir\\.." gives "dir", "./" gives "". S_OK, or
  // E_INVALIDARG for an empty path (and `name` left alone).
  static long GetFileNameFromPath(CString& path, CString& name);

  // ------------------------------------------------------------ session
  // The session path, resolving the base directory when none is set yet:
  // TEMP (on POSIX then TMPDIR, then /tmp; on Windows then "C:\\temp") for
  // the interactive flavour, JBM_RQT_OUT, then JBM_RQT_TEMP, then the same
  // default, for batch runs. A variable that is set ends the search; the
  // base counts only if it is an existing directory. Empty without a base.
  static void GetVZOLSessionDataDirectory(CString& path);
  static void GetRQTSessionDataDirectory(CString& path);
  // Both take `path` as the session path as it stands: no check, nothing on
  // disk, and the "made here" flag left as it is.
  static void SetVZOLSessionDataDirectory(CString& path);
  static void SetRQTSessionDataDirectory(CString& path);
  // Makes <base>/VZOL_Session_<stamp>_ID<id> (the trace log's stamp, else
  // the local time as "%a_%Y_%b_%d_HH%H_MM%M_SS%S") and makes it the session
  // path. S_OK when made now; S_FALSE when a session path was already set
  // (nothing made, the id ignored); E_FAIL without a base, or when the
  // directory could not be made (also when it exists): the session path
  // then stays on the base and the handler gets
  // "VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory( <path> )".
  // `path` receives the session path in every case.
  static long CreateVZOLSessionDataDirectory(CString& id, CString& path, ErrorHandler* handler);
  // The same in the batch base, with `name` as the directory's whole name.
  // An existing directory of that name is taken over (S_FALSE) but not
  // marked as made here, so Delete will refuse it. An empty name leaves the
  // session on the base (S_FALSE). Context text:
  // "VEKZOLFileSystemServices::CreateRQTSessionDataDirectory( <path> )".
  static long CreateRQTSessionDataDirectory(CString& name, CString& path, ErrorHandler* handler);
  // Clears and removes the session directory if this process made it, then
  // forgets the session path. S_OK; E_FAIL when it was not made here
  // (nothing changes), when clearing failed (directory left, handler
  // untouched) or when the removal failed (handler filled with
  // "VEKZOLFileSystemServices::DeleteDirectory( <path> )").
  static long DeleteVZOLSessionDataDirectory(ErrorHandler* handler);
  // Forgets the session path without touching the disk.
  static void Cleanup();

 private:
  friend class VEKZOLFileSystemServicesTestPeer;

  VEKZOLFileSystemServices();
  virtual ~VEKZOLFileSystemServices();

  // The system's text for `code`, line feeds and tabs turned into ".";
  // empty for 0 or a code without text.
  static CString GetErrorMsg(unsigned long& code);
  // "VZOL_Session_<stamp>_ID<id>": S_OK, or E_FAIL with `name` empty when
  // the stamp has at most six characters and the id is empty.
  static long GenerateVZOLSessionDataDirectoryName(CString& id, CString& name);

  // The session path: empty, the base directory, or the session directory.
  static CString _VZOLSessionDataDirPath;
  // This process made the directory that the session path names.
  static bool _bSessionDirCreated;
};

#endif  // VEKZOL_SERVICES_VEKZOLFILESYSTEMSERVICES_H_
