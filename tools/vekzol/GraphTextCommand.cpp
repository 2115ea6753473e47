// File: GraphTextCommand.cpp
// vekzol dump MODEL and vekzol show MODEL: the graph's own text forms.
//
// The text is measured before it is made (GraphTextSize.h): a tree shows
// each vertex once per path from a root, indented by its level, so a deep
// or much-shared graph can ask for more than any memory holds. Above the
// limit of --max-output, or above what the library's CString can hold,
// the command refuses with the size and why it is so large, and writes
// nothing.
//
// `show --format dot|svg` draws the model instead (DrawingFormats.h).
#include <CLI/CLI.hpp>

#include <climits>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "DrawingFormats.h"
#include "FileIO.h"
#include "GraphTextSize.h"
#include "ModelFile.h"
#include "Phases.h"
#include "Platform.h"
#include "ProcessExit.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

// `show`: the graph's ToString; `dump`: its Dump.
struct GraphTextOptions {
  std::string model;
  std::string output;
  bool full = false;  // ToString rather than Dump
  // The largest text written; a larger one is refused before it is made.
  uint64_t maxOutput = 1073741824;  // 1 GiB
  // `show`: "text" (the listing), or a drawing, "dot" or "svg".
  std::string format = "text";
  size_t maxDrawn = kDefaultMaxDrawn;
};

// The most a CString holds: a longer text cannot be made at all.
constexpr std::uint64_t kLargestText = INT_MAX;

// Throws the refusal of a text of `size` above `limit` (or above what a
// CString holds), naming the file, the size, the limit and what makes the
// tree so large.
[[noreturn]] void RefuseText(const std::string& path, bool listing, const GraphTextSize& size,
                             std::uint64_t limit) {
  std::string message = path + ": the " + (listing ? "listing" : "dump") + " would take " +
                        SizeText(size.bytes) + " bytes, ";
  if (limit < size.bytes && limit <= kLargestText) {
    message += "more than --max-output allows (" + std::to_string(limit) + ")";
  } else {
    message +=
        "more than the " + std::to_string(kLargestText) + " bytes a text of the library can hold";
  }
  message += ": its tree has " + SizeText(size.treeLines) + " lines for " +
             std::to_string(size.vertices) + " vertices (one per vertex and path from a root), " +
             "up to " + SizeText(size.depth) + " levels deep, and their indentation alone takes " +
             SizeText(size.indentBytes) + " bytes";
  throw ToolError(message);
}

int RunGraphText(const GraphTextOptions& options, const CommonOptions& common) {
  Output output(options.output);
  Phases phases(StandardErrorIsTerminal() && !common.quiet, common.timings);
  auto file = std::make_unique<ModelFile>(options.model);
  ModelFile& model = *file;
  phases.Begin("reading " + model.Path());
  PhaseTimes times;
  model.Load(times);
  phases.Record(times);
  phases.NoteElements(model.Elements());
  phases.End("load " + model.Path());
  phases.Begin("building graph");
  model.Build();
  phases.End("build");
  if (!common.quiet) model.ReportTolerated();

  if (options.format != "text") {
    phases.Begin("drawing");
    const std::string drawn = DrawModelAs(options.format, model, options.maxDrawn, common.quiet);
    phases.End("draw");
    output.Write(drawn);
    output.Commit();
    LeaveToProcessExit(std::move(file));
    phases.PrintTimings();
    return kExitSame;
  }

  phases.Begin("rendering");
  const GraphTextSize size = MeasureGraphText(model.Graph(), model.GraphName(), options.full);
  if (size.cycle) {
    // The graph's tree walk would stop there with E_FAIL.
    throw ToolError(model.Path() +
                    ": the graph has a cycle reachable from a root, so its tree cannot be written");
  }
  if (size.bytes > options.maxOutput || size.bytes > kLargestText) {
    RefuseText(model.Path(), options.full, size, options.maxOutput);
  }
  // Any failure now (memory) is no cycle: main reports it as it is.
  const CString text = options.full ? model.Graph().ToString() : model.Graph().Dump();
  phases.End("render");
  output.Write(text.GetString(), static_cast<size_t>(text.GetLength()));
  output.Commit();
  LeaveToProcessExit(std::move(file));
  phases.PrintTimings();
  return kExitSame;
}

// Adds `dump` or `show`, which differ in their text only.
RegisteredCommand RegisterGraphText(CLI::App& app, const CommonOptions& common, bool full) {
  auto options = std::make_shared<GraphTextOptions>();
  options->full = full;
  CLI::App* command =
      full ? app.add_subcommand(
                 "show",
                 "Print the full listing of the graph of a model file (the graph's ToString)")
           : app.add_subcommand("dump",
                                "Print the graph of a model file as a tree (the graph's Dump)");
  command->add_option("MODEL", options->model, "The JSON model file")
      ->type_name("FILE")
      ->required();
  command->add_option("-o,--output", options->output, "Write to FILE instead of standard output")
      ->type_name("FILE");
  command
      ->add_option("--max-output", options->maxOutput,
                   "Refuse, with its size and why, a text larger than BYTES (measured before it "
                   "is made; texts above 2147483647 bytes cannot be made at all)")
      ->type_name("BYTES")
      ->capture_default_str();
  if (full) {
    command
        ->add_option("--format", options->format,
                     "Output format: the listing (text) or the model drawn (dot: Graphviz's DOT; "
                     "svg)")
        ->check(CLI::IsMember({"text", "dot", "svg"}))
        ->capture_default_str();
    AddMaxDrawnOption(*command, options->maxDrawn);
  }
  command->footer(kModelHelp);
  return {command, [options, &common] { return RunGraphText(*options, common); }};
}

}  // namespace

RegisteredCommand RegisterDump(CLI::App& app, const CommonOptions& common) {
  return RegisterGraphText(app, common, false);
}

RegisteredCommand RegisterShow(CLI::App& app, const CommonOptions& common) {
  return RegisterGraphText(app, common, true);
}

}  // namespace vekzol_tool
