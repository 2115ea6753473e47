// File: GraphWalk.h
// The depth-first walk below one vertex, shared by GetAllChildren,
// GetAllLeaves and Dump. It reads the vertices' outgoing edges where they
// stand, through the graph's read-only view (GraphAccess.h).
//
// It gives exactly what the recursion
//
//   Call(v):  [hooks.Enter(v) decides whether to go on]
//             for each child c of v, in edge order:
//               hooks.OnChild(c); Call(c)
//
// gives, in the same order, but keeps its path in a vector of frames (a
// vertex and the index of its next outgoing edge) instead of on the call
// stack: a model of a million process steps in a row is a path of a million
// vertices. A frame is only pushed for a vertex that has outgoing edges,
// so leaves cost no frame.
//
// Cycles: the recursion would never end on a cycle below the start vertex.
// The walk keeps the vertices of its current path in a VertexPathSet and
// raises CAtlException(E_FAIL) at the first call that would enter a vertex
// already on the path, before that call does anything (OnChild for it has
// run). A vertex reached again by another path is no cycle: it is walked
// again, as the recursion does.
#ifndef VEKZOL_SRC_GRAPHS_GRAPHWALK_H_
#define VEKZOL_SRC_GRAPHS_GRAPHWALK_H_

#include <cstddef>
#include <vector>

#include <vekzol/graphs/VEKZOLEdgeList.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/platform/CAtlException.h>
#include <vekzol/platform/Status.h>

#include "graphs/GraphAccess.h"
#include "graphs/VertexPathSet.h"

namespace vekzol {
namespace graphs {

// `hooks` provides
//   void OnChild(VEKZOLGraphVertex* child): what the caller's loop does
//     with a child before calling into it;
//   bool Enter(VEKZOLGraphVertex* vertex, std::size_t depth): the call on
//     `vertex`, `depth` levels below `start`, up to its loop over the
//     children; false ends the call there.
// The call on `start` itself is the caller's business; this walks its
// children and everything below them.
template <typename Hooks>
void WalkBelow(VEKZOLGraphVertex* start, Hooks& hooks) {
  struct Frame {
    VEKZOLGraphVertex* vertex;
    std::size_t nextEdge;
  };
  if (GraphAccess::ChildEdges(start).empty()) {
    return;
  }
  std::vector<Frame> path;
  VertexPathSet onPath;
  path.push_back(Frame{start, 0});
  onPath.Insert(start);
  while (!path.empty()) {
    // The next child vertex of the deepest vertex; edges that are null or
    // have no child vertex are passed over, as GetChildren passes them.
    Frame& top = path.back();
    const VEKZOLEdgeList& edges = GraphAccess::ChildEdges(top.vertex);
    VEKZOLGraphVertex* child = nullptr;
    while (child == nullptr && top.nextEdge < edges.size()) {
      VEKZOLGraphEdge* edge = edges[top.nextEdge++];
      if (edge != nullptr) {
        child = GraphAccess::Child(edge);
      }
    }
    if (child == nullptr) {
      onPath.Erase(top.vertex);
      path.pop_back();
      continue;
    }
    hooks.OnChild(child);
    // Every vertex on the path has outgoing edges, so a child without any
    // cannot close a cycle and needs no look-up.
    const bool hasChildEdges = !GraphAccess::ChildEdges(child).empty();
    if (hasChildEdges && onPath.Contains(child)) {
      AtlThrow(E_FAIL);
    }
    if (hooks.Enter(child, path.size()) && hasChildEdges) {
      path.push_back(Frame{child, 0});
      onPath.Insert(child);
    }
  }
}

}  // namespace graphs
}  // namespace vekzol

#endif  // VEKZOL_SRC_GRAPHS_GRAPHWALK_H_
