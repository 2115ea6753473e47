// File: ContentComparison.cpp
#include "ContentComparison.h"

#include "ContentReport.h"
#include "Parallel.h"
#include "ToolError.h"

namespace vekzol_tool {

ContentComparison::ContentComparison(const std::string& oldPath, const std::string& newPath)
    : old_(std::make_unique<ModelContent>(oldPath)),
      new_(std::make_unique<ModelContent>(newPath)) {}

ContentComparison::~ContentComparison() = default;

void ContentComparison::Run(Phases& phases) {
  phases.Begin("comparing content");
  PhaseTimes oldTimes;
  PhaseTimes newTimes;
  RunBoth([this, &oldTimes] { old_->Load(oldTimes, false); },
          [this, &newTimes] { new_->Load(newTimes, false); });
  difference_ = Difference(*old_, *new_);
  phases.End("content");
  phases.Record(oldTimes);
  phases.Record(newTimes);
}

std::string ContentComparison::Render(const ComparisonReport& report,
                                      const std::string& format) const {
  return format == "json" ? RenderJsonWithContent(report, difference_)
                          : RenderTextWithContent(report, difference_);
}

void CheckContentFormat(const std::string& format) {
  if (format != "text" && format != "json") {
    throw ToolError("--content writes --format text or json, not " + format);
  }
}

}  // namespace vekzol_tool
