// File: main.cpp
// vekzol: the library's main job from the command line. Compares two
// states of a model exported as JSON files, prints graphs, compresses
// blobs and generates test models. Exit status: 0 success (for compare: no
// difference), 1 compare found differences, 2 any error.
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

const char* const kModelHelp =
    "A model file is JSON: {\"objects\": [{\"id\": ..., \"name\", \"refId\", \"sciid\",\n"
    "\"attributes\": {...}, \"backupName\", \"identPath\"}], \"relations\": [{\"id\": ...,\n"
    "\"source\", \"target\", \"type\"}]}; only \"id\" is required. Duplicate ids (the first\n"
    "wins) and relation ends that name no object are counted on standard error.\n"
    "The library's trace is off unless you pass --trace or set VEK_ZOL_LOG_ENABLED\n"
    "(any value: the library's own rule then applies). The trace file goes to TEMP\n"
    "(on POSIX then TMPDIR, then /tmp); --trace prints its path on standard error at\n"
    "the end. While the trace is on, JBM_RQT_IN set (batch mode) also copies its\n"
    "lines to standard output: use -o FILE to keep the result apart.";

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

  CompareOptions compare;
  CLI::App* compareCommand = app.add_subcommand(
      "compare",
      "Compare two model files: prints what to add, remove, move and rename to turn OLD into "
      "NEW. Exit status 0 when they are the same, 1 when they differ, 2 on error.");
  compareCommand->add_option("OLD", compare.oldModel, "The old state (JSON model file)")
      ->type_name("FILE")
      ->required();
  compareCommand->add_option("NEW", compare.newModel, "The new state (JSON model file)")
      ->type_name("FILE")
      ->required();
  compareCommand->add_flag("--check-names", compare.checkNames,
                           "Report vertices whose old name differs from their backup name, and "
                           "carry ident paths from old to new");
  compareCommand->add_flag("--roots", compare.roots,
                           "Also report the entry points of what is added and removed");
  compareCommand->add_option("--format", compare.format, "Output format")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();
  compareCommand
      ->add_option("-o,--output", compare.output,
                   "Write to FILE (only when the command succeeds) instead of "
                   "standard output")
      ->type_name("FILE");
  compareCommand->footer(kModelHelp);

  GraphTextOptions dump;
  CLI::App* dumpCommand =
      app.add_subcommand("dump", "Print the graph of a model file as a tree (the graph's Dump)");
  dumpCommand->add_option("MODEL", dump.model, "The JSON model file")
      ->type_name("FILE")
      ->required();
  dumpCommand->add_option("-o,--output", dump.output, "Write to FILE instead of standard output")
      ->type_name("FILE");
  dumpCommand
      ->add_option("--max-output", dump.maxOutput,
                   "Refuse, with its size and why, a text larger than BYTES (measured before it "
                   "is made; texts above 2147483647 bytes cannot be made at all)")
      ->type_name("BYTES")
      ->capture_default_str();
  dumpCommand->footer(kModelHelp);

  GraphTextOptions show;
  show.full = true;
  CLI::App* showCommand = app.add_subcommand(
      "show", "Print the full listing of the graph of a model file (the graph's ToString)");
  showCommand->add_option("MODEL", show.model, "The JSON model file")
      ->type_name("FILE")
      ->required();
  showCommand->add_option("-o,--output", show.output, "Write to FILE instead of standard output")
      ->type_name("FILE");
  showCommand
      ->add_option("--max-output", show.maxOutput,
                   "Refuse, with its size and why, a text larger than BYTES (measured before it "
                   "is made; texts above 2147483647 bytes cannot be made at all)")
      ->type_name("BYTES")
      ->capture_default_str();
  showCommand->footer(kModelHelp);

  ZipOptions compress;
  CLI::App* compressCommand = app.add_subcommand(
      "compress",
      "Turn a text into a blob. Refuses input holding a NUL byte (a blob keeps text only up to "
      "the first NUL) and input under 20 bytes (it would not decompress).");
  compressCommand->add_option("IN", compress.input, "Input file; standard input when absent or -")
      ->type_name("FILE");
  compressCommand
      ->add_option("-o,--output", compress.output, "Write to FILE instead of standard output")
      ->type_name("FILE");

  ZipOptions decompress;
  CLI::App* decompressCommand = app.add_subcommand(
      "decompress", "Turn a blob back into its text. A blob that does not decompress is an error.");
  decompressCommand
      ->add_option("IN", decompress.input, "Input file; standard input when absent or -")
      ->type_name("FILE");
  decompressCommand
      ->add_option("-o,--output", decompress.output, "Write to FILE instead of standard output")
      ->type_name("FILE");

  compressCommand->footer("");
  decompressCommand->footer("");

  GenerateOptions generate;
  CLI::App* generateCommand = app.add_subcommand(
      "generate",
      "Write two related model files (a forest of processes, products and resources and a "
      "changed copy of it) for trying the tool at scale");
  generateCommand->add_option("--vertices", generate.vertices, "Elements of the old state")
      ->required();
  generateCommand
      ->add_option("--changes", generate.changes,
                   "Percentage of elements removed, added, moved and renamed (each)")
      ->capture_default_str();
  generateCommand->add_option("--seed", generate.seed, "Seed of the random choices")
      ->capture_default_str();
  generateCommand
      ->add_option("--id-bytes", generate.idBytes,
                   "Length of the ids: 11 (\"PRD-0446620\") or 40 (a kind and a GUID)")
      ->capture_default_str();
  generateCommand
      ->add_option("--expected", generate.expected,
                   "Also write the comparison that `compare --check-names --roots "
                   "--format json OLD NEW` must print")
      ->type_name("FILE");
  generateCommand->add_option("OLD", generate.oldModel, "Old state to write")
      ->type_name("FILE")
      ->required();
  generateCommand->add_option("NEW", generate.newModel, "New state to write")
      ->type_name("FILE")
      ->required();

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

  if (*compareCommand) return RunCompare(compare, common);
  if (*dumpCommand) return RunGraphText(dump, common);
  if (*showCommand) return RunGraphText(show, common);
  if (*compressCommand) return RunCompress(compress);
  if (*decompressCommand) return RunDecompress(decompress);
  return RunGenerate(generate, common);
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
