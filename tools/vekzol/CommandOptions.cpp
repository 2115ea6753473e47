// File: CommandOptions.cpp
// Options that several commands share, with one wording.
#include <CLI/CLI.hpp>

#include <string>

#include "Commands.h"

namespace vekzol_tool {

void AddOutputOption(CLI::App& command, std::string& output) {
  command
      .add_option("-o,--output", output,
                  "Write to FILE (only when the command succeeds) instead of "
                  "standard output")
      ->type_name("FILE");
}

}  // namespace vekzol_tool
