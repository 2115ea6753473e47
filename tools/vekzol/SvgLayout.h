// File: SvgLayout.h
// A DOT graph laid out and drawn as SVG by Graphviz's library (libgvc),
// in the tool's own process: the `dot` layout engine, the SVG renderer,
// the drawing rendered into memory.
//
// The context is made with two of Graphviz's plugins only, its core
// renderers and its `dot` layout, loaded from the folder of plugins beside
// libgvc rather than through its plugin configuration. That configuration
// would also bring in a text-layout plugin (Pango, fontconfig), which
// measures labels in whatever fonts the machine has and keeps caches that
// are never given back. Without one, Graphviz estimates the width of a text
// from the metrics it carries of the standard fonts: the same drawing then
// has the same bytes on every machine with the same Graphviz. (What the
// `dot` layout of Graphviz 2.42 makes for a cluster is not given back by
// any of its functions; tools/tests/GraphvizLeaks.supp says more.)
#ifndef VEKZOL_TOOLS_VEKZOL_SVGLAYOUT_H_
#define VEKZOL_TOOLS_VEKZOL_SVGLAYOUT_H_

#include <string>

namespace vekzol_tool {

// The SVG document of `dot`. Throws ToolError when the plugins cannot be
// loaded or Graphviz refuses the graph, with Graphviz's message. Its
// warnings are not shown.
std::string LayOutSvg(const std::string& dot);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_SVGLAYOUT_H_
