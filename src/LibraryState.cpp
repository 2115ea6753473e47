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
//   5. the static timers: eleven of the timer class, six of the string-list
//      services, five of blob compression, each taking the next slot of the
//      timer table
//
// Statics with constant initialisation (flags, counters) need no place in
// this order and live beside their classes.
#include <vekzol/diagnostics/VEKZOLLog.h>

// 3. The trace log: path of the trace file and the stamp in its name.
CString VEKZOLLog::_LogFilePath;
CString VEKZOLLog::_CreationTimeStamp;
