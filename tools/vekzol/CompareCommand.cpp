// File: CompareCommand.cpp
// vekzol compare OLD NEW: both models are read and built, the comparator
// takes the new graph first and the old one second, and its lists are
// printed in its order.
#include <cstdio>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "ComparisonReport.h"
#include "FileIO.h"
#include "ModelFile.h"
#include "Phases.h"
#include "Platform.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

std::string Counts(const ModelFile& model) {
  return std::to_string(model.Stats().objects) + " objects, " +
         std::to_string(model.Stats().relations) + " relations";
}

}  // namespace

int RunCompare(const CompareOptions& options, const CommonOptions& common) {
  if (options.format != "text" && options.format != "json") {
    throw ToolError("unknown format \"" + options.format + "\" (text or json)");
  }
  Output output(options.output);
  Phases phases(StandardErrorIsTerminal() && !common.quiet, common.timings);

  ModelFile oldModel(options.oldModel);
  ModelFile newModel(options.newModel);
  for (ModelFile* model : {&oldModel, &newModel}) {
    phases.Begin("reading " + model->Path());
    model->Load(phases);
    phases.NoteElements(model->Elements());
    phases.End("load " + model->Path(), Counts(*model));
  }

  phases.Begin("building graphs");
  oldModel.Build();
  newModel.Build();
  phases.End("build");
  if (!common.quiet) {
    oldModel.ReportTolerated();
    newModel.ReportTolerated();
  }

  phases.Begin("comparing");
  VEKZOLGraphComparator comparator(&newModel.Graph(), &oldModel.Graph());
  const long outcome = comparator.RunComparison(options.checkNames);
  if (outcome < 0) throw ToolError("the comparison failed");
  ComparisonReport report;
  report.different = outcome == S_OK;
  report.lists = {{"verticesToBeAdded", "Vertices to add", {}},
                  {"verticesToBeRemoved", "Vertices to remove", {}},
                  {"verticesToBeMoved", "Vertices to move", {}},
                  {"verticesToChangeName", "Vertices to rename", {}},
                  {"edgesToBeAdded", "Edges to add", {}},
                  {"edgesToBeRemoved", "Edges to remove", {}}};
  // The getters answer E_FAIL on their normal path: the lists are the result.
  comparator.GetVerticesToBeAdded(report.lists[0].ids);
  comparator.GetVerticesToBeRemoved(report.lists[1].ids);
  comparator.GetVerticesToBeMoved(report.lists[2].ids);
  comparator.GetVerticesToChangeName(report.lists[3].ids);
  comparator.GetEdgesToBeAdded(report.lists[4].ids);
  comparator.GetEdgesToBeRemoved(report.lists[5].ids);
  phases.End("compare");

  if (options.roots) {
    phases.Begin("extracting roots");
    report.withRoots = true;
    report.roots = {{"rootVerticesToAdd", "Root vertices to add", {}},
                    {"rootEdgesToAdd", "Root edges to add", {}},
                    {"rootVerticesToRemove", "Root vertices to remove", {}},
                    {"rootEdgesToRemove", "Root edges to remove", {}}};
    comparator.GetRootsToAdd(report.roots[0].ids, report.roots[1].ids);
    comparator.GetRootsToRemove(report.roots[2].ids, report.roots[3].ids);
    phases.End("roots");
  }

  phases.Begin("writing");
  output.Write(options.format == "json" ? RenderJson(report) : RenderText(report));
  output.Commit();
  phases.End("write");
  phases.PrintTimings();
  return report.different ? kExitDifferent : kExitSame;
}

}  // namespace vekzol_tool
