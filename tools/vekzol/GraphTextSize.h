// File: GraphTextSize.h
// The exact size of a graph's text forms (Dump and ToString), found without
// making them, so that the tool can refuse a text it could not hold before
// it tries.
//
// The tree of Dump has one line per vertex and path from a root, each line
// indented two blanks per level: a chain of n vertices gives n lines whose
// indentation grows with n^2, a stack of diamonds gives a number of lines
// exponential in its height. The size is therefore found by a dynamic
// programme over the vertices reachable from the roots, not by a walk of
// the paths: for each vertex, the number of tree lines below it, the sum of
// their depths below it and the sum of their names' lengths, each vertex
// done once, after its children (post-order, on a stack of its own, so that
// any depth works). Time and memory are linear in vertices plus edges.
// Every sum saturates at UINT64_MAX ("that or more").
//
// The same pass finds a cycle reachable from a root, on which the graph's
// walk stops with CAtlException(E_FAIL): with `cycle` set, the sizes are
// meaningless and the texts cannot be made.
#ifndef VEKZOL_TOOLS_VEKZOL_GRAPHTEXTSIZE_H_
#define VEKZOL_TOOLS_VEKZOL_GRAPHTEXTSIZE_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include <vekzol/VEKZOLBase.h>

namespace vekzol_tool {

// The largest value of the sums below; it stands for "this or more".
constexpr std::uint64_t kSaturated = UINT64_MAX;

struct GraphTextSize {
  bool cycle = false;             // a cycle is reachable from a root; nothing below counts
  std::uint64_t bytes = 0;        // the whole text: Dump(), or ToString() for a listing
  std::uint64_t treeBytes = 0;    // the tree lines of Dump alone
  std::uint64_t treeLines = 0;    // one per vertex and path from a root
  std::uint64_t indentBytes = 0;  // blanks and "|__" before the names
  std::uint64_t depth = 0;        // the deepest level of the tree (roots: 0)
  std::size_t vertices = 0;       // the graph's count, as its header shows it
};

// The sizes of graph.Dump() (`listing` false) or graph.ToString() (`listing`
// true). Asks the graph and its vertices and edges only what their public
// operations tell (the names, the children in edge order, the roots; for a
// listing each vertex's and edge's ToString, one at a time). Exceptions of
// those calls (an allocation that fails) go to the caller.
// `name` is the name the graph was made with, which heads its Dump.
GraphTextSize MeasureGraphText(VEKZOLGraph& graph, const CString& name, bool listing);

// `value` in decimal, or "<kSaturated> or more" when it is saturated.
std::string SizeText(std::uint64_t value);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_GRAPHTEXTSIZE_H_
