// File: VEKZOLFileSystemServicesSession.cpp
// The session data directory: the base directory of each flavour, the
// directory's name, its creation and its removal, and the process-wide
// path that records where the session is.
//
// The path holds one of three kinds of value, and nothing here tells them
// apart by looking at it: empty (no one has asked yet), the base directory
// (a Get came first, or the directory could not be made) or the session
// directory. Only a directory that this process made is ever deleted.
#include <vekzol/services/VEKZOLFileSystemServices.h>

#include <ctime>

#include <vekzol/platform/Status.h>

#include "filesystem/FileSystemSupport.h"
#include "platform/System.h"
#include "state/LibraryState.h"

namespace {

using vekzol::platform::Sys;

constexpr uint32_t kSuccess = vekzol::platform::kErrorSuccess;

// The candidate counts only if it is non-empty and an existing directory.
CString UsableBase(const CString& candidate) {
  if (candidate.IsEmpty() || !vekzol::filesystem::IsExistingDirectory(candidate)) {
    return CString();
  }
  return candidate;
}

// Interactive sessions: the platform's temporary-directory variables (TEMP;
// on POSIX, where TEMP is often unset, then TMPDIR, as for the trace file).
// A variable that is set ends the search, even when it names no directory.
CString InteractiveBase() { return UsableBase(vekzol::state::InteractiveSessionBase()); }

// Batch runs: the output directory of the run, then its temporary one.
CString BatchBase() { return UsableBase(vekzol::state::BatchSessionBase()); }

// The stamp of a session made before the trace log has one: local time
// with upper-case markers, formatted into 128 bytes; empty when the time
// cannot be converted or does not fit.
CString LocalTimeStamp() {
  std::tm local{};
  if (!Sys().LocalTime(Sys().Now(), &local)) {
    return CString();
  }
  return CString(Sys().FormatTime("%a_%Y_%b_%d_HH%H_MM%M_SS%S", local, 128).c_str());
}

}  // namespace

void VEKZOLFileSystemServices::GetVZOLSessionDataDirectory(CString& path) {
  if (_VZOLSessionDataDirPath.IsEmpty()) {
    const CString base = InteractiveBase();
    if (!base.IsEmpty()) {
      _VZOLSessionDataDirPath = base;
    }
  }
  path = _VZOLSessionDataDirPath;
}

void VEKZOLFileSystemServices::GetRQTSessionDataDirectory(CString& path) {
  if (_VZOLSessionDataDirPath.IsEmpty()) {
    const CString base = BatchBase();
    if (!base.IsEmpty()) {
      _VZOLSessionDataDirPath = base;
    }
  }
  path = _VZOLSessionDataDirPath;
}

void VEKZOLFileSystemServices::SetVZOLSessionDataDirectory(CString& path) {
  _VZOLSessionDataDirPath = path;
}

void VEKZOLFileSystemServices::SetRQTSessionDataDirectory(CString& path) {
  SetVZOLSessionDataDirectory(path);
}

long VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory(CString& id, CString& path,
                                                              ErrorHandler* handler) {
  long status = E_FAIL;
  path.Empty();
  if (!_VZOLSessionDataDirPath.IsEmpty()) {
    // Already fixed, by an earlier Create, a Get or a Set: nothing is made
    // and the id is not looked at.
    status = S_FALSE;
  } else {
    const CString base = InteractiveBase();
    if (!base.IsEmpty()) {
      _VZOLSessionDataDirPath = base;
      status = S_FALSE;
      CString name;
      GenerateVZOLSessionDataDirectoryName(id, name);
      if (!name.IsEmpty()) {
        const CString sessionPath = vekzol::filesystem::JoinPath(base, name);
        // One level only: the base exists. A directory of the same name,
        // left by a process of the same second and id, is a failure too.
        const uint32_t code = Sys().MakeDirectory(sessionPath);
        if (code == kSuccess) {
          _VZOLSessionDataDirPath = sessionPath;
          _bSessionDirCreated = true;
          status = S_OK;
        } else {
          status = E_FAIL;
          vekzol::filesystem::FillHandler(
              handler, code,
              vekzol::filesystem::ContextOf(
                  "VEKZOLFileSystemServices::CreateVZOLSessionDataDirectory( %s )", sessionPath));
        }
      }
    }
  }
  path = _VZOLSessionDataDirPath;
  return status;
}

long VEKZOLFileSystemServices::CreateRQTSessionDataDirectory(CString& name, CString& path,
                                                             ErrorHandler* handler) {
  long status = E_FAIL;
  path.Empty();
  if (!_VZOLSessionDataDirPath.IsEmpty()) {
    status = S_FALSE;
  } else {
    const CString base = BatchBase();
    if (!base.IsEmpty()) {
      _VZOLSessionDataDirPath = base;
      status = S_FALSE;
      if (!name.IsEmpty()) {
        const CString sessionPath = vekzol::filesystem::JoinPath(base, name);
        const uint32_t code = Sys().MakeDirectory(sessionPath);
        if (code == kSuccess) {
          _VZOLSessionDataDirPath = sessionPath;
          _bSessionDirCreated = true;
          status = S_OK;
        } else if (code == vekzol::platform::kErrorFileExists ||
                   code == vekzol::platform::kErrorAlreadyExists) {
          // A batch run may be given the directory of an earlier run: it is
          // used, but the flag stays as it is, so Delete will not remove
          // what this process did not make.
          _VZOLSessionDataDirPath = sessionPath;
        } else {
          status = E_FAIL;
          vekzol::filesystem::FillHandler(
              handler, code,
              vekzol::filesystem::ContextOf(
                  "VEKZOLFileSystemServices::CreateRQTSessionDataDirectory( %s )", sessionPath));
        }
      }
    }
  }
  path = _VZOLSessionDataDirPath;
  return status;
}

long VEKZOLFileSystemServices::DeleteVZOLSessionDataDirectory(ErrorHandler* handler) {
  if (!_bSessionDirCreated || _VZOLSessionDataDirPath.IsEmpty()) {
    return E_FAIL;
  }
  long status = E_FAIL;
  CString sessionPath = _VZOLSessionDataDirPath;
  if (ClearDirectory(sessionPath, nullptr) >= 0) {
    const uint32_t code = Sys().RemoveEmptyDirectory(sessionPath);
    if (code == kSuccess) {
      status = S_OK;
    } else {
      vekzol::filesystem::FillHandler(
          handler, code,
          vekzol::filesystem::ContextOf("VEKZOLFileSystemServices::DeleteDirectory( %s )",
                                        sessionPath));
    }
  }
  // Forgotten in every case: the next Get or Create starts afresh, even if
  // the directory is still on disk.
  Cleanup();
  return status;
}

void VEKZOLFileSystemServices::Cleanup() {
  _VZOLSessionDataDirPath.Empty();
  _bSessionDirCreated = false;
}

long VEKZOLFileSystemServices::GenerateVZOLSessionDataDirectoryName(CString& id, CString& name) {
  long status = E_FAIL;
  name.Empty();
  // The trace log's stamp, so that a session's directory and its trace
  // file carry the same time.
  CString stamp = vekzol::state::TraceStamp();
  if (stamp.IsEmpty()) {
    stamp = LocalTimeStamp();
  }
  if (stamp.GetLength() > 6 || !id.IsEmpty()) {
    name = "VZOL_Session_";
    name += stamp;
    name += "_ID";
    name += id;
    status = S_OK;
  }
  return status;
}
