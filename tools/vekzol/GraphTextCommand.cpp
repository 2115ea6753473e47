// File: GraphTextCommand.cpp
// vekzol dump MODEL and vekzol show MODEL: the graph's own text forms.
#include <memory>
#include <utility>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "FileIO.h"
#include "ModelFile.h"
#include "Phases.h"
#include "Platform.h"
#include "ProcessExit.h"
#include "ToolError.h"

namespace vekzol_tool {

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

  phases.Begin("rendering");
  CString text;
  try {
    text = options.full ? model.Graph().ToString() : model.Graph().Dump();
  } catch (const CAtlException&) {
    // The tree walk stops on a cycle below a root.
    throw ToolError(model.Path() +
                    ": the graph has a cycle reachable from a root, so its tree cannot be written");
  }
  phases.End("render");
  output.Write(text.GetString(), static_cast<size_t>(text.GetLength()));
  output.Commit();
  LeaveToProcessExit(std::move(file));
  phases.PrintTimings();
  return kExitSame;
}

}  // namespace vekzol_tool
