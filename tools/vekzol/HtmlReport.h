// File: HtmlReport.h
// The comparison as one self-contained HTML page (compare --format html):
// the two files, the outcome, the counts of the lists, the drawing as
// inline SVG, and the lists of the text report (with --roots the root lists
// too), each item one id, under a filter box: typing into it hides the
// items that do not contain the text (ignoring case) and shows "N of M" in
// each heading. Everything is in the file: no script, style, font or image
// is loaded, and the page's content security policy forbids loading any;
// its one script is plain inline JavaScript, so the page works from a file
// opened in a browser.
#ifndef VEKZOL_TOOLS_VEKZOL_HTMLREPORT_H_
#define VEKZOL_TOOLS_VEKZOL_HTMLREPORT_H_

#include <string>
#include <string_view>

#include "ComparisonReport.h"

namespace vekzol_tool {

struct HtmlPage {
  std::string oldPath;
  std::string newPath;
  // The SVG document of the drawing; what comes before its <svg element
  // (XML declaration, document type, comments) is left out of the page.
  std::string svg;
  // What the drawing left out (DotWriter.h's CutNote), or "".
  std::string cutNote;
};

std::string RenderHtml(const ComparisonReport& report, const HtmlPage& page);

// `text` with '&', '<', '>', '"' and '\'' as character references.
std::string HtmlEscape(std::string_view text);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_HTMLREPORT_H_
