// File: Commands.h
// The commands of the vekzol tool. Each command's file adds it to the
// tool's CLI11 app with its options and help (a Register function) and
// runs it: a run writes its result to its output and returns the exit
// status (0, 1 for a comparison that found differences); failures are
// thrown as ToolError. main() only makes the app, registers the commands
// in the order --help lists them, parses and runs the one chosen.
#ifndef VEKZOL_TOOLS_VEKZOL_COMMANDS_H_
#define VEKZOL_TOOLS_VEKZOL_COMMANDS_H_

#include <functional>
#include <string>

namespace CLI {
class App;
}  // namespace CLI

namespace vekzol_tool {

// The options of the whole tool that commands heed; main() adds them.
struct CommonOptions {
  bool quiet = false;
  bool timings = false;
};

// The footer of the tool's help and of the commands that read model files.
inline constexpr char kModelHelp[] =
    "A model file is JSON: {\"objects\": [{\"id\": ..., \"name\", \"refId\", \"sciid\",\n"
    "\"attributes\": {...}, \"backupName\", \"identPath\"}], \"relations\": [{\"id\": ...,\n"
    "\"source\", \"target\", \"type\"}]}; only \"id\" is required. Duplicate ids (the first\n"
    "wins) and relation ends that name no object are counted on standard error.\n"
    "The library's trace is off unless you pass --trace or set VEK_ZOL_LOG_ENABLED\n"
    "(any value: the library's own rule then applies). The trace file goes to TEMP\n"
    "(on POSIX then TMPDIR, then /tmp); --trace prints its path on standard error at\n"
    "the end. While the trace is on, JBM_RQT_IN set (batch mode) also copies its\n"
    "lines to standard output: use -o FILE to keep the result apart.";

// A command added to the app.
struct RegisteredCommand {
  // Its subcommand, true once the arguments have named it.
  CLI::App* command = nullptr;
  // Runs it with the options parsed into it; `common` is read only then.
  std::function<int()> run;
};

// Adds -o/--output to a command that writes its result through Output
// (FileIO.h), so only when it succeeds.
void AddOutputOption(CLI::App& command, std::string& output);

// Adds the positionals OLD and NEW, the two model files that compare and
// diff read.
void AddModelPair(CLI::App& command, std::string& oldModel, std::string& newModel);

// Each adds its command to `app`. The options a command parses live as
// long as the returned run does.
RegisteredCommand RegisterCompare(CLI::App& app, const CommonOptions& common);
RegisteredCommand RegisterDiff(CLI::App& app, const CommonOptions& common);
RegisteredCommand RegisterApply(CLI::App& app, const CommonOptions& common);
RegisteredCommand RegisterDump(CLI::App& app, const CommonOptions& common);
RegisteredCommand RegisterShow(CLI::App& app, const CommonOptions& common);
RegisteredCommand RegisterCompress(CLI::App& app);
RegisteredCommand RegisterDecompress(CLI::App& app);
RegisteredCommand RegisterGenerate(CLI::App& app, const CommonOptions& common);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_COMMANDS_H_
