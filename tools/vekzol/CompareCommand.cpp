// File: CompareCommand.cpp
// vekzol compare OLD NEW: both models are read and built, the comparator
// takes the new graph first and the old one second, and its lists are
// printed in its order.
#include <cstdio>
#include <exception>
#include <memory>
#include <thread>
#include <utility>

#include <vekzol/VEKZOLBase.h>

#include "Commands.h"
#include "ComparisonReport.h"
#include "FileIO.h"
#include "ModelFile.h"
#include "Phases.h"
#include "Platform.h"
#include "ProcessExit.h"
#include "ToolError.h"

namespace vekzol_tool {

namespace {

// A thread that is joined when it goes out of scope, also when the scope is
// left by an exception.
class JoinedThread {
 public:
  template <typename Work>
  explicit JoinedThread(Work&& work) : thread_(std::forward<Work>(work)) {}
  ~JoinedThread() { thread_.join(); }
  JoinedThread(const JoinedThread&) = delete;
  JoinedThread& operator=(const JoinedThread&) = delete;

 private:
  std::thread thread_;
};

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
  std::exception_ptr newFailure;
  {
    JoinedThread newReader([&newModel, &newTimes, &newFailure] {
      try {
        newModel.Load(newTimes);
      } catch (...) {
        newFailure = std::current_exception();
      }
    });
    phases.Begin("reading " + oldModel.Path());
    PhaseTimes oldTimes;
    oldModel.Load(oldTimes);
    phases.Record(oldTimes);
    phases.NoteElements(oldModel.Elements());
    phases.End("load " + oldModel.Path(), Counts(oldModel));
    phases.Begin("reading " + newModel.Path());
  }
  if (newFailure) std::rethrow_exception(newFailure);
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

  phases.Begin("writing");
  output.Write(options.format == "json" ? RenderJson(report) : RenderText(report));
  output.Commit();
  phases.End("write");
  LeaveToProcessExit(std::move(comparatorObject));
  LeaveToProcessExit(std::move(newFile));
  LeaveToProcessExit(std::move(oldFile));
  phases.PrintTimings();
  return report.different ? kExitDifferent : kExitSame;
}

}  // namespace vekzol_tool
