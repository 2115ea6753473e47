// File: LibraryState.cpp
// Every process-wide object of the library that needs construction at load
// time is defined here, in one translation unit, because C++ constructs the
// objects of one translation unit in the order of their definitions and
// destroys them in reverse. The order below is the library's load order:
//
//   1. the two lists of the error services
//   2. the session path of the file-system services
//   3. the two strings of the trace log
//   4. the option store
//   5. the eleven static timers, six of the string-list services and then
//      five of blob compression, each taking the next slot of the timer
//      table (slots 0 to 10), so the first timer a host builds gets slot 11
//
// Statics with constant initialisation (flags, counters) need no place in
// this order and live beside their classes.
#include <vekzol/diagnostics/VEKZOLErrorServices.h>
#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/diagnostics/VEKZOLOptionsMgr.h>
#include <vekzol/diagnostics/VEKZOLTimer.h>
#include <vekzol/services/VEKZOLFileSystemServices.h>
#include <vekzol/services/VEKZOLSTLServices.h>
#include <vekzol/services/VEKZOLZip.h>

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
