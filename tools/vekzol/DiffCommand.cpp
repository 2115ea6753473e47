// File: DiffCommand.cpp
// vekzol diff OLD NEW: the change from OLD to NEW as a change file
// (ChangeFile.h), or as a JSON Patch against OLD's file (JsonPatch.h). Both
// files are read for their content at the same time, compared id by id,
// and the change written.
#include <CLI/CLI.hpp>

#include <memory>
#include <string>

#include "ChangeFile.h"
#include "Commands.h"
#include "ContentDifference.h"
#include "FileIO.h"
#include "JsonPatch.h"
#include "ModelContent.h"
#include "Parallel.h"
#include "Phases.h"
#include "Platform.h"
#include "ProcessExit.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

struct DiffOptions {
  std::string oldModel;
  std::string newModel;
  std::string format = "change";
  std::string output;
};

std::string Counts(const ModelContent& model) {
  return std::to_string(model.Sorted(kObjectKind).size()) + " objects, " +
         std::to_string(model.Sorted(kRelationKind).size()) + " relations";
}

int RunDiff(const DiffOptions& options, const CommonOptions& common) {
  Output output(options.output);
  Phases phases(StandardErrorIsTerminal() && !common.quiet, common.timings);
  auto oldModel = std::make_unique<ModelContent>(options.oldModel);
  auto newModel = std::make_unique<ModelContent>(options.newModel);
  // The digests go into a change file only.
  const bool digests = options.format == "change";
  PhaseTimes oldTimes;
  PhaseTimes newTimes;
  phases.Begin("reading " + options.oldModel + " and " + options.newModel);
  RunBoth([&] { oldModel->Load(oldTimes, digests); }, [&] { newModel->Load(newTimes, digests); });
  phases.NoteElements(oldModel->Elements() + newModel->Elements());
  phases.End("load", Counts(*oldModel) + " and " + Counts(*newModel));
  phases.Record(oldTimes);
  phases.Record(newTimes);

  phases.Begin("comparing");
  const ModelDifference difference = Difference(*oldModel, *newModel);
  phases.End("compare");

  phases.Begin("writing");
  if (digests) {
    WriteChangeFile(*oldModel, *newModel, difference, output);
  } else {
    WriteJsonPatch(*oldModel, difference, output);
  }
  output.Commit();
  phases.End("write");
  LeaveToProcessExit(std::move(newModel));
  LeaveToProcessExit(std::move(oldModel));
  phases.PrintTimings();
  return difference.Empty() ? kExitSame : kExitDifferent;
}

}  // namespace

RegisteredCommand RegisterDiff(CLI::App& app, const CommonOptions& common) {
  auto options = std::make_shared<DiffOptions>();
  CLI::App* command = app.add_subcommand(
      "diff",
      "Write the change from OLD to NEW: ids removed and added with their records, and what "
      "changed inside the elements both have, with the content digests of both, for `apply`; "
      "or a JSON Patch (RFC 6902) against OLD's file. Exit status 0 when their contents are "
      "the same, 1 when they differ, 2 on error.");
  AddModelPair(*command, options->oldModel, options->newModel);
  command
      ->add_option("--format", options->format,
                   "change: a change file for `apply`; json-patch: RFC 6902 operations on "
                   "OLD's file as it stands")
      ->check(CLI::IsMember({"change", "json-patch"}))
      ->capture_default_str();
  AddOutputOption(*command, options->output);
  command->footer(kModelHelp);
  return {command, [options, &common] { return RunDiff(*options, common); }};
}

}  // namespace vekzol_tool
