// File: LibraryState.cpp
// The load order of the library. Every process-wide object that needs
// construction at load time is defined here, in one translation unit,
// because C++ constructs the objects of one translation unit in the order of
// their definitions and destroys them in reverse, while the order between
// translation units is left open. The order below is therefore behaviour:
//
//   1. The two lists of the error services.
//   2. The session path of the file-system services, empty until someone
//      asks.
//   3. The trace file's path and the stamp in its name, empty until the
//      first line is written. The session name takes the same stamp.
//   4. The option store's map.
//   5. The eleven static timers: six of the string-list services, then five
//      of blob compression. Each takes the next slot of the timer slot table
//      as it is built, so they hold slots 0 to 10 in this order, and the
//      first timer a host builds gets slot 11. At unload they go first, in
//      reverse, each giving its slot back to the free list.
//
// Everything else of the process-wide state is constant-initialised (the
// cached switches, the trace log's creation flag, the session's creation
// flag, the slot table's statics) and so holds before step 1 runs: a static
// timer finds its slot table ready whatever the order of the translation
// units.
#include "state/LibraryState.h"

#include <vekzol/diagnostics/VEKZOLErrorServices.h>
#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>
#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>
#include <vekzol/services/VEKZOLSTLServices.h>
#include <vekzol/services/VEKZOLZip.h>

// Constant initialisation: these hold before any constructor below runs.
bool VEKZOLLog::_bIsInitialized = false;
bool VEKZOLFileSystemServices::_bSessionDirCreated = false;

// 1. The error services: the records and their composed texts.
std::deque<VEKZOLError*> VEKZOLErrorServices::_ListErrors;
std::deque<CString> VEKZOLErrorServices::_ListErrMsgs;

// 2. The file-system services: the session path, empty until someone asks.
CString VEKZOLFileSystemServices::_VZOLSessionDataDirPath;

// 3. The trace log: path of the trace file and the stamp in its name.
CString VEKZOLLog::_LogFilePath;
CString VEKZOLLog::_CreationTimeStamp;

// 4. The option store: every key asked or set so far, with its value.
std::map<CString, CString> VEKZOLOptionsMgr::_OptionValueMap;

// 5. The static timers, in the order in which they take their slots.
VEKZOLTimer VEKZOLSTLServices::_FindInDequeTimer("STL Services - Find In Deque Timer");
VEKZOLTimer VEKZOLSTLServices::_AppendToDequeTimer("STL Services - Append To Deque Timer");
VEKZOLTimer VEKZOLSTLServices::_IntersectionTimer("STL Services - Intersection Timer");
VEKZOLTimer VEKZOLSTLServices::_DifferenceTimer("STL Services - Difference Timer");
VEKZOLTimer VEKZOLSTLServices::_SymmetricDifferenceTimer(
    "STL Services - Symmetric Difference Timer");
VEKZOLTimer VEKZOLSTLServices::_RemoveDuplicatesTimer("STL Services - Remove Duplicates Timer");

VEKZOLTimer VEKZOLZip::_CompressStringTimer("VEKZOLZip - Compress String Timer");
VEKZOLTimer VEKZOLZip::_DecompressBStringTimer("Blob Mgmt - Decompress B String Timer");
VEKZOLTimer VEKZOLZip::_DecompressCStringTimer("Blob Mgmt - Decompress C String Timer");
VEKZOLTimer VEKZOLZip::_ZlibCompressBlobTimer("Blob Mgmt - zlib Compress Blob Timer");
VEKZOLTimer VEKZOLZip::_ZlibDecompressBlobTimer("Blob Mgmt - zlib Decompress Blob Timer");

namespace vekzol {
namespace state {

const CString& TraceStamp() { return VEKZOLLog::_CreationTimeStamp; }

void ResetForTesting() {
  Switches() = CachedSwitches{};
  VEKZOLLog::_LogFilePath.Empty();
  VEKZOLLog::_CreationTimeStamp.Empty();
  VEKZOLLog::_bIsInitialized = false;
  // Empties the session path and its creation flag, disk untouched.
  VEKZOLFileSystemServices::Cleanup();
}

}  // namespace state
}  // namespace vekzol
