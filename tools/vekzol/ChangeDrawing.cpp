// File: ChangeDrawing.cpp
#include "ChangeDrawing.h"

#include <algorithm>
#include <deque>
#include <map>
#include <unordered_map>
#include <utility>

#include "DrawingParts.h"

namespace vekzol_tool {

namespace {

// A vertex that may be drawn: its vertex in each state that has it.
struct VertexEntry {
  std::string id;
  VEKZOLGraphVertex* oldVertex = nullptr;
  VEKZOLGraphVertex* newVertex = nullptr;
  unsigned changes = 0;
  bool root = false;
};

// The vertices that may be drawn, by id. Entries stay where they are made.
class VertexTable {
 public:
  VertexEntry& Enter(const std::string& id) {
    auto found = index_.find(id);
    if (found != index_.end()) return entries_[found->second];
    index_.emplace(id, entries_.size());
    entries_.push_back(VertexEntry{id, nullptr, nullptr, 0, false});
    return entries_.back();
  }
  const VertexEntry* Find(const std::string& id) const {
    auto found = index_.find(id);
    return found == index_.end() ? nullptr : &entries_[found->second];
  }
  std::deque<VertexEntry>& Entries() { return entries_; }

 private:
  std::unordered_map<std::string, size_t> index_;
  std::deque<VertexEntry> entries_;
};

// An edge id that may be drawn: its edge in each state that has it, and
// what the comparator lists of it.
struct EdgeEntry {
  VEKZOLGraphEdge* oldEdge = nullptr;
  VEKZOLGraphEdge* newEdge = nullptr;
  bool added = false;
  bool removed = false;
  bool rootAdded = false;
  bool rootRemoved = false;
};

// The ends of an edge in one state: the ids of their vertices, or none.
struct Ends {
  bool hasSource = false;
  bool hasTarget = false;
  std::string source;
  std::string target;

  bool operator==(const Ends& other) const {
    return hasSource == other.hasSource && hasTarget == other.hasTarget && source == other.source &&
           target == other.target;
  }
};

Ends EndsOf(VEKZOLGraphEdge& edge) {
  Ends ends;
  if (VEKZOLGraphVertex* parent = edge.GetParent()) {
    ends.hasSource = true;
    ends.source = parent->GetID().str();
  }
  if (VEKZOLGraphVertex* child = edge.GetChild()) {
    ends.hasTarget = true;
    ends.target = child->GetID().str();
  }
  return ends;
}

// One edge as it may be drawn, in one state or both.
struct EdgeVersion {
  std::string id;
  EdgeState state = EdgeState::kBoth;
  EdgeChange change = EdgeChange::kUnchanged;
  bool root = false;
  Ends ends;
};

VEKZOLGraphVertex* FindVertex(VEKZOLGraph& graph, const std::string& id) {
  VEKZOLGraphVertex* vertex = nullptr;
  return graph.GetVertex(CString(id), vertex) == S_OK ? vertex : nullptr;
}

VEKZOLGraphEdge* FindEdge(VEKZOLGraph& graph, const std::string& id) {
  VEKZOLGraphEdge* edge = nullptr;
  return graph.GetEdge(CString(id), edge) == S_OK ? edge : nullptr;
}

std::string DisplayName(VEKZOLGraphVertex& vertex) {
  VEKIZOLObject* object = vertex.GetObjectA();
  return object != nullptr ? object->GetDisplayName().str() : std::string();
}

// The edges in and out of `vertex`, appended.
void AppendEdgesOf(VEKZOLGraphVertex& vertex, std::deque<VEKZOLGraphEdge*>& edges) {
  vertex.GetParentEdges(edges);
  vertex.GetChildEdges(edges);
}

// The drawing of the vertices of `table` and the edge versions `edges`
// (in their drawing order), cut to the limit. With `comparison` the
// changed vertices are those counted, else all of them.
Drawing Place(VertexTable& table, const std::vector<EdgeVersion>& edges, bool comparison,
              bool withRoots, size_t maxDrawn) {
  std::vector<VertexEntry*> vertices;
  for (VertexEntry& entry : table.Entries()) vertices.push_back(&entry);
  std::sort(vertices.begin(), vertices.end(),
            [](const VertexEntry* a, const VertexEntry* b) { return a->id < b->id; });
  std::unordered_map<std::string, size_t> nodeOf;
  nodeOf.reserve(vertices.size());
  for (size_t i = 0; i < vertices.size(); ++i) nodeOf.emplace(vertices[i]->id, i);

  // Nodes: the vertices, then a point for each end without vertex, made
  // as the edges come.
  struct Point {
    const EdgeVersion* edge;
    bool source;
  };
  std::vector<Point> points;
  std::vector<std::pair<size_t, size_t>> links;
  std::vector<const EdgeVersion*> placed;
  for (const EdgeVersion& edge : edges) {
    size_t ends[2] = {0, 0};
    bool drawn = true;
    for (int side = 0; side < 2 && drawn; ++side) {
      const bool source = side == 0;
      if (source ? edge.ends.hasSource : edge.ends.hasTarget) {
        auto found = nodeOf.find(source ? edge.ends.source : edge.ends.target);
        drawn = found != nodeOf.end();
        if (drawn) ends[side] = found->second;
      } else {
        ends[side] = vertices.size() + points.size();
        points.push_back(Point{&edge, source});
      }
    }
    if (!drawn) {
      // A source's point made before its target was found undrawn goes too.
      if (!edge.ends.hasSource && edge.ends.hasTarget) points.pop_back();
      continue;
    }
    links.emplace_back(ends[0], ends[1]);
    placed.push_back(&edge);
  }

  const size_t nodeCount = vertices.size() + points.size();
  const size_t maxLength =
      maxDrawn > SIZE_MAX / kDrawnRanksPerVertex ? SIZE_MAX : maxDrawn * kDrawnRanksPerVertex;
  const PartChoice choice = ChooseParts(nodeCount, links, maxDrawn, maxLength);

  Drawing drawing;
  drawing.comparison = comparison;
  drawing.withRoots = withRoots;
  DrawingCut& cut = drawing.cut;
  cut.maxNodes = maxDrawn;
  cut.maxLength = maxLength;
  cut.parts = choice.parts;
  cut.drawnParts = choice.keptParts;
  cut.cut = choice.keptParts < choice.parts;

  std::vector<size_t> renumbered(nodeCount, 0);
  for (size_t i = 0; i < vertices.size(); ++i) {
    const VertexEntry& entry = *vertices[i];
    const bool counted = !comparison || entry.changes != 0;
    if (counted) ++cut.vertices;
    if (!choice.kept[i]) continue;
    if (counted) ++cut.drawnVertices;
    renumbered[i] = drawing.nodes.size();
    DrawnNode node;
    node.id = entry.id;
    VEKZOLGraphVertex* shown = entry.newVertex != nullptr ? entry.newVertex : entry.oldVertex;
    if (shown != nullptr) node.name = DisplayName(*shown);
    if ((entry.changes & kVertexRenamed) != 0 && entry.oldVertex != nullptr) {
      node.renamedFrom = entry.oldVertex->GetBackupName().str();
      node.renamedTo = DisplayName(*entry.oldVertex);
    }
    node.changes = entry.changes;
    node.root = entry.root;
    drawing.nodes.push_back(std::move(node));
  }
  for (size_t i = 0; i < points.size(); ++i) {
    const size_t number = vertices.size() + i;
    if (!choice.kept[number]) continue;
    renumbered[number] = drawing.nodes.size();
    DrawnNode node;
    node.point = true;
    node.id = points[i].edge->id;
    node.state = points[i].edge->state;
    node.source = points[i].source;
    drawing.nodes.push_back(std::move(node));
  }
  for (size_t i = 0; i < placed.size(); ++i) {
    if (!choice.kept[links[i].first]) continue;
    const EdgeVersion& edge = *placed[i];
    drawing.edges.push_back(DrawnEdge{edge.id, renumbered[links[i].first],
                                      renumbered[links[i].second], edge.state, edge.change,
                                      edge.root});
  }
  return drawing;
}

const std::deque<CString>& ListOf(const std::vector<ComparisonReport::List>& lists, size_t index) {
  static const std::deque<CString> none;
  return index < lists.size() ? lists[index].ids : none;
}

}  // namespace

Drawing DrawComparison(VEKZOLGraph& oldGraph, VEKZOLGraph& newGraph, const ComparisonReport& report,
                       size_t maxDrawn) {
  VertexTable table;
  // The changed vertices, in the order of the report's lists.
  const unsigned listChanges[] = {kVertexAdded, kVertexRemoved, kVertexMoved, kVertexRenamed};
  std::vector<VertexEntry*> changed;
  for (size_t list = 0; list < 4; ++list) {
    for (const CString& id : ListOf(report.lists, list)) {
      if (id.IsEmpty()) continue;
      VertexEntry& entry = table.Enter(id.str());
      if (entry.changes == 0) changed.push_back(&entry);
      entry.changes |= listChanges[list];
    }
  }
  for (size_t list : {size_t{0}, size_t{2}}) {
    for (const CString& id : ListOf(report.roots, list)) table.Enter(id.str()).root = true;
  }

  // The changed edges, and their ends.
  std::map<std::string, EdgeEntry> edges;
  for (size_t list = 4; list < 6; ++list) {
    for (const CString& id : ListOf(report.lists, list)) {
      if (id.IsEmpty()) continue;
      EdgeEntry& entry = edges[id.str()];
      (list == 4 ? entry.added : entry.removed) = true;
    }
  }
  for (const CString& id : ListOf(report.roots, 1)) edges[id.str()].rootAdded = true;
  for (const CString& id : ListOf(report.roots, 3)) edges[id.str()].rootRemoved = true;
  for (auto& [id, entry] : edges) {
    entry.oldEdge = FindEdge(oldGraph, id);
    entry.newEdge = FindEdge(newGraph, id);
    for (VEKZOLGraphEdge* edge : {entry.oldEdge, entry.newEdge}) {
      if (edge == nullptr) continue;
      const Ends ends = EndsOf(*edge);
      if (ends.hasSource) table.Enter(ends.source);
      if (ends.hasTarget) table.Enter(ends.target);
    }
  }

  // One ring of neighbours around each changed vertex, in either state.
  std::deque<VEKZOLGraphEdge*> around;
  for (VertexEntry* entry : changed) {
    for (VEKZOLGraph* graph : {&oldGraph, &newGraph}) {
      VEKZOLGraphVertex* vertex = FindVertex(*graph, entry->id);
      if (vertex != nullptr) AppendEdgesOf(*vertex, around);
    }
  }
  for (VEKZOLGraphEdge* edge : around) {
    if (edge == nullptr) continue;
    for (VEKZOLGraphVertex* end : {edge->GetParent(), edge->GetChild()}) {
      if (end == nullptr) continue;
      const std::string id = end->GetID().str();
      if (!id.empty()) table.Enter(id);
    }
  }

  // Each drawn vertex in both states, and every edge in and out of it.
  around.clear();
  for (VertexEntry& entry : table.Entries()) {
    entry.oldVertex = FindVertex(oldGraph, entry.id);
    entry.newVertex = FindVertex(newGraph, entry.id);
    if (entry.oldVertex != nullptr) AppendEdgesOf(*entry.oldVertex, around);
    if (entry.newVertex != nullptr) AppendEdgesOf(*entry.newVertex, around);
  }
  for (VEKZOLGraphEdge* edge : around) {
    if (edge == nullptr) continue;
    const std::string id = edge->GetID().str();
    if (id.empty()) continue;
    EdgeEntry& entry = edges[id];
    if (entry.oldEdge == nullptr && entry.newEdge == nullptr) {
      entry.oldEdge = FindEdge(oldGraph, id);
      entry.newEdge = FindEdge(newGraph, id);
    }
  }

  // The versions of each edge id, in id order.
  std::vector<EdgeVersion> versions;
  for (const auto& [id, entry] : edges) {
    Ends oldEnds;
    Ends newEnds;
    if (entry.oldEdge != nullptr) oldEnds = EndsOf(*entry.oldEdge);
    if (entry.newEdge != nullptr) newEnds = EndsOf(*entry.newEdge);
    if (entry.oldEdge != nullptr && entry.newEdge != nullptr && oldEnds == newEnds) {
      versions.push_back(
          EdgeVersion{id, EdgeState::kBoth, EdgeChange::kUnchanged, false, std::move(oldEnds)});
      continue;
    }
    // An edge of one state: listed as added or removed, or one side of an
    // id whose ends differ, which is a move when it leads into a moved
    // vertex.
    auto changeOf = [&table](const Ends& ends, bool listed, EdgeChange listedChange) {
      if (listed) return listedChange;
      const VertexEntry* target = ends.hasTarget ? table.Find(ends.target) : nullptr;
      return target != nullptr && (target->changes & kVertexMoved) != 0 ? EdgeChange::kMoved
                                                                        : EdgeChange::kUnchanged;
    };
    if (entry.oldEdge != nullptr) {
      versions.push_back(EdgeVersion{id, EdgeState::kOld,
                                     changeOf(oldEnds, entry.removed, EdgeChange::kRemoved),
                                     entry.rootRemoved, std::move(oldEnds)});
    }
    if (entry.newEdge != nullptr) {
      versions.push_back(EdgeVersion{id, EdgeState::kNew,
                                     changeOf(newEnds, entry.added, EdgeChange::kAdded),
                                     entry.rootAdded, std::move(newEnds)});
    }
  }
  return Place(table, versions, true, report.withRoots, maxDrawn);
}

Drawing DrawModel(VEKZOLGraph& graph, size_t maxDrawn) {
  VertexTable table;
  std::deque<VEKZOLGraphVertex*> vertices;
  graph.GetAllVertices(vertices);
  for (VEKZOLGraphVertex* vertex : vertices) {
    if (vertex == nullptr) continue;
    const std::string id = vertex->GetID().str();
    if (!id.empty()) table.Enter(id).newVertex = vertex;
  }
  std::deque<VEKZOLGraphEdge*> edges;
  graph.GetAllEdges(edges);
  std::vector<EdgeVersion> versions;
  versions.reserve(edges.size());
  for (VEKZOLGraphEdge* edge : edges) {
    if (edge == nullptr) continue;
    std::string id = edge->GetID().str();
    if (id.empty()) continue;
    versions.push_back(
        EdgeVersion{std::move(id), EdgeState::kBoth, EdgeChange::kUnchanged, false, EndsOf(*edge)});
  }
  // The graph lists its edges in its own id order; the drawing's is bytes.
  std::stable_sort(versions.begin(), versions.end(),
                   [](const EdgeVersion& a, const EdgeVersion& b) { return a.id < b.id; });
  return Place(table, versions, false, false, maxDrawn);
}

}  // namespace vekzol_tool
