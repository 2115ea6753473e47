// File: CompareCommand.cpp
// vekzol compare OLD NEW: both models are read and built, the comparator
// takes the new graph first and the old one second, and its lists are
// printed in its order.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "ComparisonReport.h"
#include "ContentComparison.h"
#include "DrawingFormats.h"
#include "FileIO.h"
#include "ModelFile.h"
#include "Parallel.h"
#include "Phases.h"
#include "Platform.h"
#include "ProcessExit.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

struct CompareOptions {
  std::string oldModel;
  std::string newModel;
  bool checkNames = false;
  bool roots = false;
  bool content = false;
  std::string format = "text";
  std::string output;
  size_t maxDrawn = kDefaultMaxDrawn;  // --format dot, svg, html
};

std::string Counts(const ModelFile& model) {
  return std::to_string(model.Stats().objects) + " objects, " +
         std::to_string(model.Stats().relations) + " relations";
}

int RunCompare(const CompareOptions& options, const CommonOptions& common) {
  if (options.format != "text" && options.format != "json" && !IsDrawingFormat(options.format)) {
    throw ToolError("unknown format \"" + options.format + "\" (text, json, dot, svg or html)");
  }
  if (options.content) CheckContentFormat(options.format);
  Output output(options.output);
  Phases phases(StandardErrorIsTerminal() && !common.quiet, common.timings);

  auto oldFile = std::make_unique<ModelFile>(options.oldModel);
  auto newFile = std::make_unique<ModelFile>(options.newModel);
  ModelFile& oldModel = *oldFile;
  ModelFile& newModel = *newFile;
  // Both files are read and made into objects at once: the new one on a
  // thread of its own, the old one here. Nothing else runs meanwhile, and
  // the graphs are built and compared on this thread afterwards. When both
  // fail, the old file's error is the one reported, as when they were read
  // one after the other.
  PhaseTimes newTimes;
  RunBoth(
      [&] {
        phases.Begin("reading " + oldModel.Path());
        PhaseTimes oldTimes;
        oldModel.Load(oldTimes);
        phases.Record(oldTimes);
        phases.NoteElements(oldModel.Elements());
        phases.End("load " + oldModel.Path(), Counts(oldModel));
        phases.Begin("reading " + newModel.Path());
      },
      [&newModel, &newTimes] { newModel.Load(newTimes); });
  phases.Record(newTimes);
  phases.NoteElements(newModel.Elements());
  phases.End("load " + newModel.Path(), Counts(newModel));

  phases.Begin("building graphs");
  oldModel.Build();
  newModel.Build();
  phases.End("build");
  if (!common.quiet) {
    oldModel.ReportTolerated();
    newModel.ReportTolerated();
  }

  phases.Begin("comparing");
  // On the heap, so that its lists go with the graphs at the process's end.
  auto comparatorObject =
      std::make_unique<VEKZOLGraphComparator>(&newModel.Graph(), &oldModel.Graph());
  VEKZOLGraphComparator& comparator = *comparatorObject;
  const long outcome = comparator.RunComparison(options.checkNames);
  if (outcome < 0) throw ToolError("the comparison failed");
  ComparisonReport report = CollectLists(comparator, outcome);
  phases.End("compare");

  if (options.roots) {
    phases.Begin("extracting roots");
    CollectRoots(comparator, report);
    phases.End("roots");
  }

  // With --content: what changed inside the elements both models have.
  std::unique_ptr<ContentComparison> content;
  if (options.content) {
    content = std::make_unique<ContentComparison>(options.oldModel, options.newModel);
    content->Run(phases);
  }

  // --format dot, svg or html: the change drawn (DrawingFormats.h).
  std::string drawn;
  if (IsDrawingFormat(options.format)) {
    phases.Begin("drawing");
    drawn = DrawComparisonAs(options.format, report, oldModel, newModel, options.maxDrawn,
                             common.quiet);
    phases.End("draw");
  }

  phases.Begin("writing");
  output.Write(content                           ? content->Render(report, options.format)
               : IsDrawingFormat(options.format) ? drawn
               : options.format == "json"        ? RenderJson(report)
                                                 : RenderText(report));
  output.Commit();
  phases.End("write");
  const bool different = report.different || (content && content->Changed());
  LeaveToProcessExit(std::move(content));
  LeaveToProcessExit(std::move(comparatorObject));
  LeaveToProcessExit(std::move(newFile));
  LeaveToProcessExit(std::move(oldFile));
  phases.PrintTimings();
  return different ? kExitDifferent : kExitSame;
}

}  // namespace

RegisteredCommand RegisterCompare(CLI::App& app, const CommonOptions& common) {
  auto options = std::make_shared<CompareOptions>();
  CLI::App* command = app.add_subcommand(
      "compare",
      "Compare two model files: prints what to add, remove, move and rename to turn OLD into "
      "NEW. Exit status 0 when they are the same, 1 when they differ, 2 on error.");
  AddModelPair(*command, options->oldModel, options->newModel);
  command->add_flag("--check-names", options->checkNames,
                    "Report vertices whose old name differs from their backup name, and "
                    "carry ident paths from old to new");
  command->add_flag("--roots", options->roots,
                    "Also report the entry points of what is added and removed");
  command->add_flag("--content", options->content,
                    "Also report what changed inside the elements both models have: fields, "
                    "attributes, relation types and ends (a difference too)");
  command
      ->add_option("--format", options->format,
                   "Output format: the report (text, json) or the change drawn (dot: Graphviz's "
                   "DOT; svg; html: a page with the counts, the drawing and the lists)")
      ->check(CompareFormatCheck())
      ->capture_default_str();
  AddMaxDrawnOption(*command, options->maxDrawn);
  AddOutputOption(*command, options->output);
  command->footer(kModelHelp);
  return {command, [options, &common] { return RunCompare(*options, common); }};
}

}  // namespace vekzol_tool
