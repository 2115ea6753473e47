// File: ChangeDrawing.h
// What a drawing shows, before it is written as DOT (DotWriter.h): its
// vertices, each with how it changed, its edges, each with the states that
// hold it, and the ends of edges that name no object, drawn as points.
//
// The drawing of a comparison holds both states at once. Its vertices are
// the changed ones (the four vertex lists), the ends of the changed edges,
// and one ring of the unchanged neighbours of the changed vertices (their
// parents and children in either state), so that each change is seen in
// its place. Its edges are the edges of either state whose two ends are
// drawn, an end that names no object counting as drawn (it is a point of
// its own): an edge id that both states hold with the same ends is drawn
// once, one whose ends differ twice, the old edge and the new one.
//
// The drawing of a model holds all of its vertices and edges.
//
// A drawing above the limit keeps whole parts only (DrawingParts.h): the
// connected parts of its nodes over its edges, largest first.
#ifndef VEKZOL_TOOLS_VEKZOL_CHANGEDRAWING_H_
#define VEKZOL_TOOLS_VEKZOL_CHANGEDRAWING_H_

#include <cstddef>
#include <string>
#include <vector>

#include <vekzol/VEKZOLBase.h>

#include "ComparisonReport.h"

namespace vekzol_tool {

// How a vertex changed: bits, none for an unchanged vertex.
enum VertexChange : unsigned {
  kVertexAdded = 1u,
  kVertexRemoved = 2u,
  kVertexMoved = 4u,
  kVertexRenamed = 8u,
};

// Which states hold an edge as drawn: both with the same ends, or one.
enum class EdgeState { kBoth, kOld, kNew };

// How an edge is drawn: unchanged; added or removed (the comparator's
// edge lists); or one of the two sides of an edge id whose ends differ
// between the states, leading into a moved vertex.
enum class EdgeChange { kUnchanged, kAdded, kRemoved, kMoved };

struct DrawnNode {
  // A point: an end of an edge that names no object.
  bool point = false;
  // A vertex's id; for a point, the id of its edge.
  std::string id;
  // The vertex's display name ("" when it has none): that of the new state
  // when the vertex is in it, else that of the old one.
  std::string name;
  // A vertex to rename: its backup name in the old state (the name it is
  // renamed from) and its name there (the name it is renamed to).
  std::string renamedFrom;
  std::string renamedTo;
  unsigned changes = 0;  // VertexChange bits
  bool root = false;     // an entry point of what is added or removed
  // A point: the state of its edge, and whether it is the edge's source.
  EdgeState state = EdgeState::kBoth;
  bool source = false;
};

struct DrawnEdge {
  std::string id;
  size_t from = 0;  // node indices
  size_t to = 0;
  EdgeState state = EdgeState::kBoth;
  EdgeChange change = EdgeChange::kUnchanged;
  bool root = false;  // an entry point of what is added or removed
};

// How much of the drawing is left out.
struct DrawingCut {
  bool cut = false;
  size_t maxNodes = 0;
  size_t maxLength = 0;  // the ranks the edges cross in all (DrawingParts.h)
  // The vertices counted (the changed ones of a comparison, all of a
  // model's) and the parts, drawn and in all.
  size_t drawnVertices = 0;
  size_t vertices = 0;
  size_t drawnParts = 0;
  size_t parts = 0;
};

struct Drawing {
  // A comparison's drawing, with its change colours and legend.
  bool comparison = false;
  // The entry points are marked (compare --roots).
  bool withRoots = false;
  // The vertices in ascending id (byte order), then the points in the
  // order of their edges, a source before a target.
  std::vector<DrawnNode> nodes;
  // By id, then the old state's before the new one's.
  std::vector<DrawnEdge> edges;
  DrawingCut cut;
};

// The longest the drawn edges are in all (the ranks they cross; see
// DrawingParts.h): this many ranks for each vertex the limit allows.
constexpr size_t kDrawnRanksPerVertex = 4;

// The drawing of the comparison whose report is `report` (the lists of the
// comparator that took `newGraph` and `oldGraph`; the root lists marked
// when the report has them), with at most `maxDrawn` nodes (vertices and
// points), whose edges cross kDrawnRanksPerVertex times as many ranks.
Drawing DrawComparison(VEKZOLGraph& oldGraph, VEKZOLGraph& newGraph, const ComparisonReport& report,
                       size_t maxDrawn);

// The drawing of one model, with the same limit.
Drawing DrawModel(VEKZOLGraph& graph, size_t maxDrawn);

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_CHANGEDRAWING_H_
