// File: Platform.h
// The few operating-system questions the vekzol tool asks, kept in one
// place: whether standard error is a terminal, how to put a finished file
// in place of another, and how to switch the standard streams to binary.
#ifndef VEKZOL_TOOLS_VEKZOL_PLATFORM_H_
#define VEKZOL_TOOLS_VEKZOL_PLATFORM_H_

#include <string>

namespace vekzol_tool {

// True when standard error is an interactive terminal (progress goes there
// only then).
bool StandardErrorIsTerminal();

// Moves `from` over `to`, replacing it where it exists. False with a
// message in `error` when the system refuses.
bool ReplaceFile(const std::string& from, const std::string& to, std::string& error);

// Standard input and output carry blobs byte for byte (no text-mode
// translation on Windows).
void SetBinaryStandardStreams();

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_PLATFORM_H_
