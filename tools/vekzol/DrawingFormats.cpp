// File: DrawingFormats.cpp
#include "DrawingFormats.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <utility>

#include "ChangeDrawing.h"
#include "DotWriter.h"
#include "HtmlReport.h"
#include "SvgLayout.h"

namespace vekzol_tool {

namespace {

// Tells what the drawing left out on standard error.
void TellCut(const Drawing& drawing, bool quiet) {
  const std::string note = CutNote(drawing);
  if (!note.empty() && !quiet) std::fprintf(stderr, "vekzol: %s\n", note.c_str());
}

}  // namespace

bool IsDrawingFormat(const std::string& format) {
  return format == "dot" || format == "svg" || format == "html";
}

CLI::Validator CompareFormatCheck() {
  return CLI::Validator(
      [](std::string& value) {
        if (value == "text" || value == "json" || IsDrawingFormat(value)) return std::string();
        return value + " not in {text,json} nor in {dot,svg,html}";
      },
      "{text,json,dot,svg,html}");
}

void AddMaxDrawnOption(CLI::App& command, size_t& maxDrawn) {
  maxDrawn = kDefaultMaxDrawn;
  command
      .add_option("--max-drawn", maxDrawn,
                  "Draw at most N vertices (ends that name no object count as vertices), whose "
                  "edges cross at most 4*N ranks of the layout in all: a larger drawing keeps "
                  "whole connected parts, largest first, and tells what it left out")
      ->type_name("N")
      ->check(CLI::PositiveNumber)
      ->capture_default_str();
}

std::string DrawComparisonAs(const std::string& format, const ComparisonReport& report,
                             ModelFile& oldModel, ModelFile& newModel, size_t maxDrawn,
                             bool quiet) {
  const Drawing drawing = DrawComparison(oldModel.Graph(), newModel.Graph(), report, maxDrawn);
  std::string output = WriteDot(drawing);
  if (format != "dot") output = LayOutSvg(output);
  if (format == "html") {
    HtmlPage page;
    page.oldPath = oldModel.Path();
    page.newPath = newModel.Path();
    page.svg = std::move(output);
    page.cutNote = CutNote(drawing);
    output = RenderHtml(report, page);
  }
  TellCut(drawing, quiet);
  return output;
}

std::string DrawModelAs(const std::string& format, ModelFile& model, size_t maxDrawn, bool quiet) {
  const Drawing drawing = DrawModel(model.Graph(), maxDrawn);
  std::string output = WriteDot(drawing);
  if (format != "dot") output = LayOutSvg(output);
  TellCut(drawing, quiet);
  return output;
}

}  // namespace vekzol_tool
