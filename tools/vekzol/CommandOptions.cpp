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

void AddModelPair(CLI::App& command, std::string& oldModel, std::string& newModel) {
  command.add_option("OLD", oldModel, "The old state (JSON model file)")
      ->type_name("FILE")
      ->required();
  command.add_option("NEW", newModel, "The new state (JSON model file)")
      ->type_name("FILE")
      ->required();
}

}  // namespace vekzol_tool
