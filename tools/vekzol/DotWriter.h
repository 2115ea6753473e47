// File: DotWriter.h
// A drawing (ChangeDrawing.h) as a Graphviz graph in the DOT language,
// laid out from left to right.
//
// A comparison is drawn in colours: added vertices and edges green, removed
// ones red and dashed, moved vertices orange (an edge id whose ends moved
// with them: the old edge dashed, the new one solid), vertices to rename
// blue with their old and new names, unchanged neighbours and edges grey;
// the entry points of what is added and removed (--roots) with a thick
// border or line. A legend, a cluster of samples, explains them. A model is
// drawn in plain black. Vertices are rounded boxes labelled with their name
// and, on the line below, their id; edges are labelled with their id; an
// end that names no object is a small point. A drawing that was cut says
// so in its label, at its top.
//
// Output is a function of the drawing alone: nodes and edges in its order
// (by id), one statement per line.
#ifndef VEKZOL_TOOLS_VEKZOL_DOTWRITER_H_
#define VEKZOL_TOOLS_VEKZOL_DOTWRITER_H_

#include <string>
#include <string_view>

#include "ChangeDrawing.h"

namespace vekzol_tool {

// The DOT text of `drawing`.
std::string WriteDot(const Drawing& drawing);

// What a cut drawing says of what it left out, without "vekzol: " and
// line end; "" when nothing was left out.
std::string CutNote(const Drawing& drawing);

// `text` as the inside of a quoted DOT label, drawn as it reads: '"' and
// '\' escaped as \" and \\, a line feed as \n (a line break), '&' as
// &amp; (Graphviz reads HTML entities in labels), other control characters
// as the Unicode symbols for them (U+2400 to U+241F, U+2421 for DEL),
// which an SVG may hold; other UTF-8 passes through.
std::string DotLabelText(std::string_view text);

// `id` as a DOT node name, inside quotes: '^', '%', '"', '\', '&' and
// control characters as ^XX (two upper-case hex digits), everything else as
// it is. Distinct ids give distinct names; no name holds a '^' followed by
// a lower-case letter, which the drawing's own nodes (points, legend) begin
// with, and no name begins with '%', which Graphviz takes for a name of its
// own and does not keep.
std::string DotNodeName(std::string_view id);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_DOTWRITER_H_
