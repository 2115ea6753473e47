// File: ToolError.h
// The one exception of the vekzol tool: a failure that ends the command
// with exit status 2 and a message on standard error. The message names
// what went wrong and where (file, and line and column for JSON); main()
// prefixes it with "vekzol: ".
#ifndef VEKZOL_TOOLS_VEKZOL_TOOLERROR_H_
#define VEKZOL_TOOLS_VEKZOL_TOOLERROR_H_

#include <stdexcept>
#include <string>

namespace vekzol_tool {

// Exit statuses, as `diff` has them.
constexpr int kExitSame = 0;
constexpr int kExitDifferent = 1;
constexpr int kExitError = 2;

class ToolError : public std::runtime_error {
 public:
  explicit ToolError(const std::string& message) : std::runtime_error(message) {}
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_TOOLERROR_H_
