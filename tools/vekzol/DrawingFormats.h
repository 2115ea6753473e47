// File: DrawingFormats.h
// The drawing formats of `compare` (dot, svg, html) and `show` (dot, svg):
// their options and the output each makes from the models and the report.
//
// A drawing holds at most --max-drawn nodes (vertices and ends that name no
// object; 500 by default), whose edges cross four times as many ranks in
// all (DrawingParts.h: what makes a layout slow); a larger one keeps whole
// parts, largest first (ChangeDrawing.h, DrawingParts.h), and says what it
// left out in the drawing and, unless --quiet, on standard error:
// "vekzol: drawing 5 of 7 changed vertices, in 2 of 3 changed parts
// (--max-drawn 5: at most 5 vertices, their edges 20 ranks long); the rest
// is left out".
#ifndef VEKZOL_TOOLS_VEKZOL_DRAWINGFORMATS_H_
#define VEKZOL_TOOLS_VEKZOL_DRAWINGFORMATS_H_

#include <cstddef>
#include <string>

#include "ComparisonReport.h"
#include "ModelFile.h"

namespace CLI {
class App;
class Validator;
}  // namespace CLI

namespace vekzol_tool {

constexpr size_t kDefaultMaxDrawn = 500;

// dot, svg or html.
bool IsDrawingFormat(const std::string& format);

// The check of compare's --format: the reports (text, json) and the
// drawings (dot, svg, html). A value of neither is refused with
// "<value> not in {text,json} nor in {dot,svg,html}".
CLI::Validator CompareFormatCheck();

// Adds --max-drawn N to `command`, into `maxDrawn`.
void AddMaxDrawnOption(CLI::App& command, size_t& maxDrawn);

// The comparison's drawing in `format` (dot, svg or html): the report's
// lists over the graphs of both models, compared with the new model first.
std::string DrawComparisonAs(const std::string& format, const ComparisonReport& report,
                             ModelFile& oldModel, ModelFile& newModel, size_t maxDrawn, bool quiet);

// The model's drawing in `format` (dot or svg).
std::string DrawModelAs(const std::string& format, ModelFile& model, size_t maxDrawn, bool quiet);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_DRAWINGFORMATS_H_
