// File: ContentComparison.h
// The content part of `compare --content`: both model files read again
// for their content (ModelContent.h), at the same time, and compared id by
// id (ContentDifference.h); the report gets the content sections
// (ContentReport.h).
#ifndef VEKZOL_TOOLS_VEKZOL_CONTENTCOMPARISON_H_
#define VEKZOL_TOOLS_VEKZOL_CONTENTCOMPARISON_H_

#include <memory>
#include <string>

#include "ComparisonReport.h"
#include "ContentDifference.h"
#include "ModelContent.h"
#include "Phases.h"

namespace vekzol_tool {

class ContentComparison {
 public:
  ContentComparison(const std::string& oldPath, const std::string& newPath);
  ~ContentComparison();

  // Reads both files and compares their contents, timed as "content".
  void Run(Phases& phases);
  bool Changed() const { return difference_.ContentChanged(); }
  // The report with the content sections, in `format` ("text" or "json").
  std::string Render(const ComparisonReport& report, const std::string& format) const;

 private:
  std::unique_ptr<ModelContent> old_;
  std::unique_ptr<ModelContent> new_;
  ModelDifference difference_;
};

// Throws ToolError unless `format` is one that `--content` writes.
void CheckContentFormat(const std::string& format);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_CONTENTCOMPARISON_H_
