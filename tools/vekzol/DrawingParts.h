// File: DrawingParts.h
// The cut of a drawing that is too large to lay out: its nodes fall into
// parts, the connected parts over its links (whatever their direction), and
// the drawing keeps whole parts only, largest first, so that what is drawn
// is each time a change with all of its surroundings rather than pieces of
// many.
//
// Two sizes bound a drawing: its nodes, and the length of its links, which
// is what makes a layered layout slow. Graphviz's `dot` puts the nodes on
// ranks and a link across several ranks becomes a chain of one virtual node
// per rank, which every later phase handles as a node: a few hundred nodes
// whose links cross back and forth over many ranks take minutes where a
// tree of the same size takes a fraction of a second. The length is
// measured on a layering of the tool's own, close to the one `dot` makes:
// the links a depth-first walk (in node order) finds closing a cycle are
// turned round, and each node's rank is the longest path of links to it.
// A link is as long as the ranks between its ends, and at least 1.
//
// Parts are taken largest first (the most nodes), parts of equal size in
// the order of their first node (the nodes are numbered in ascending id, so
// the part with the smallest id comes first). A part is kept when its nodes
// and its length fit into what the parts kept before it left of both
// limits, and passed over otherwise: a smaller part after it may still fit.
// Time and memory are linear in nodes and links, but for the sort of the
// parts.
#ifndef VEKZOL_TOOLS_VEKZOL_DRAWINGPARTS_H_
#define VEKZOL_TOOLS_VEKZOL_DRAWINGPARTS_H_

#include <cstddef>
#include <utility>
#include <vector>

namespace vekzol_tool {

struct PartChoice {
  // By node: its part is kept.
  std::vector<bool> kept;
  size_t parts = 0;
  size_t keptParts = 0;
};

// The ranks of the layering above, by node, of `nodeCount` nodes joined by
// `links` (pairs of node numbers below nodeCount, from and to).
std::vector<size_t> LayerNodes(size_t nodeCount,
                               const std::vector<std::pair<size_t, size_t>>& links);

// Chooses the parts of `nodeCount` nodes joined by `links` to keep within
// `maxNodes` nodes and links `maxLength` ranks long in all.
PartChoice ChooseParts(size_t nodeCount, const std::vector<std::pair<size_t, size_t>>& links,
                       size_t maxNodes, size_t maxLength);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_DRAWINGPARTS_H_
