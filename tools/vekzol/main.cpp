// File: main.cpp
// vekzol: the library's main job from the command line. Compares two
// states of a model exported as JSON files, prints graphs, compresses
// blobs and generates test models. Exit status: 0 success (for compare: no
// difference), 1 compare found differences, 2 any error. Here the app is
// made, the commands are registered from their own files (Commands.h),
// the arguments parsed and the chosen command run.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>
#include <string>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "LibraryFailure.h"
#include "LibraryTrace.h"
#include "ToolError.h"

#ifndef VEKZOL_TOOL_VERSION
#define VEKZOL_TOOL_VERSION "unknown"
#endif

namespace {

using namespace vekzol_tool;

int Run(int argc, char** argv) {
  CLI::App app(
      "vekzol: compare two states of a model, print graphs, compress blobs.\n"
      "Exit status: 0 success (compare: no difference), 1 compare found "
      "differences, 2 error.",
      "vekzol");
  app.set_version_flag("--version", std::string("vekzol ") + VEKZOL_TOOL_VERSION);
  app.require_subcommand(1);
  // -q, --timings and --trace may stand before or after the command.
  app.fallthrough();
  app.footer(kModelHelp);

  CommonOptions common;
  app.add_flag("-q,--quiet", common.quiet,
               "No progress and no counts of duplicate ids and unknown ends");
  app.add_flag("--timings", common.timings, "Print the time of each phase on standard error");
  bool trace = false;
  app.add_flag("--trace", trace,
               "Keep the library's trace file (off otherwise) and print its path on standard "
               "error at the end");

  // In the order --help lists them.
  const RegisteredCommand commands[] = {
      RegisterCompare(app, common), RegisterDiff(app, common),    RegisterApply(app, common),
      RegisterDump(app, common),    RegisterShow(app, common),    RegisterCompress(app),
      RegisterDecompress(app),      RegisterGenerate(app, common)};

  // CLI11 would only say that a command is required.
  if (argc > 1 && argv[1][0] != '-') {
    bool known = false;
    for (const CLI::App* command : app.get_subcommands({}))
      known = known || command->check_name(argv[1]);
    if (!known) {
      std::fprintf(stderr,
                   "vekzol: unknown command \"%s\"\nRun with --help for more information.\n",
                   argv[1]);
      return kExitError;
    }
  }

  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& success) {
    return app.exit(success);  // --help, --version
  } catch (const CLI::ParseError& error) {
    app.exit(error);
    return kExitError;
  }
  // Nothing has called the library yet: it reads its switches at first use.
  PrepareLibraryTrace(trace);

  // The parse has required exactly one command.
  for (const RegisteredCommand& command : commands) {
    if (*command.command) return command.run();
  }
  return kExitError;
}

}  // namespace

int main(int argc, char** argv) {
  int status = kExitError;
  try {
    status = Run(argc, argv);
  } catch (const ToolError& error) {
    std::fprintf(stderr, "vekzol: %s\n", error.what());
  } catch (const CAtlException& error) {
    // The status names the cause: exhausted memory reads as for bad_alloc.
    std::fprintf(stderr, "vekzol: %s\n", LibraryFailureMessage(error.m_hr).c_str());
  } catch (const std::bad_alloc&) {
    std::fprintf(stderr, "vekzol: %s\n", OutOfMemoryMessage());
  } catch (const std::exception& error) {
    std::fprintf(stderr, "vekzol: %s\n", error.what());
  }
  ReportLibraryTrace();
  return status;
}
