// File: ApplyCommand.cpp
// vekzol apply MODEL CHANGE: the change file applied to the model, forwards
// or backwards, checked against the digests it carries
// (ChangeApplication.h); the resulting model is written only when every
// check holds.
#include <CLI/CLI.hpp>

#include <memory>
#include <string>

#include "ChangeApplication.h"
#include "ChangeFile.h"
#include "Commands.h"
#include "FileIO.h"
#include "ModelContent.h"
#include "Parallel.h"
#include "Phases.h"
#include "Platform.h"
#include "ProcessExit.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

struct ApplyCommandOptions {
  std::string model;
  std::string change;
  std::string output;
  ApplyOptions apply;
};

int RunApply(const ApplyCommandOptions& options, const CommonOptions& common) {
  Output output(options.output);
  Phases phases(StandardErrorIsTerminal() && !common.quiet, common.timings);
  auto model = std::make_unique<ModelContent>(options.model);
  auto change = std::make_unique<ChangeFile>(options.change);
  PhaseTimes modelTimes;
  PhaseTimes changeTimes;
  phases.Begin("reading " + options.model + " and " + options.change);
  RunBoth([&] { model->Load(modelTimes, !options.apply.ignoreDigest); },
          [&] { change->Load(changeTimes); });
  phases.NoteElements(model->Elements());
  phases.End("load");
  phases.Record(modelTimes);
  phases.Record(changeTimes);

  phases.Begin("applying");
  ApplyChange(*model, *change, options.apply, output);
  output.Commit();
  phases.End("apply");
  LeaveToProcessExit(std::move(change));
  LeaveToProcessExit(std::move(model));
  phases.PrintTimings();
  return kExitSame;
}

}  // namespace

RegisteredCommand RegisterApply(CLI::App& app, const CommonOptions& common) {
  auto options = std::make_shared<ApplyCommandOptions>();
  CLI::App* command = app.add_subcommand(
      "apply",
      "Apply a change file written by `diff` to MODEL and write the resulting model. MODEL "
      "must be the state the change was made from (with --reverse: the state it leads to), "
      "as the content digests in the change file tell. Exit status 0 on success, 2 on error.");
  command->add_option("MODEL", options->model, "The model to change (JSON model file)")
      ->type_name("FILE")
      ->required();
  command->add_option("CHANGE", options->change, "The change file")->type_name("FILE")->required();
  command->add_flag("--reverse", options->apply.reverse,
                    "Apply the change backwards: from the state it leads to, back to the "
                    "state it was made from");
  command->add_flag("--ignore-digest", options->apply.ignoreDigest,
                    "Apply the change to a model of another content, as long as every element "
                    "the change touches is as the change expects");
  AddOutputOption(*command, options->output);
  command->footer(kModelHelp);
  return {command, [options, &common] { return RunApply(*options, common); }};
}

}  // namespace vekzol_tool
