// File: GraphTextSize.cpp
#include "GraphTextSize.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vekzol_tool {

namespace {

std::uint64_t Add(std::uint64_t a, std::uint64_t b) {
  return a > kSaturated - b ? kSaturated : a + b;
}

std::uint64_t Times(std::uint64_t a, std::uint64_t factor) {
  return a > kSaturated / factor ? kSaturated : a * factor;
}

// The length of a literal piece of the text forms, without its NUL.
template <std::size_t N>
constexpr std::uint64_t Length(const char (&)[N]) {
  return N - 1;
}

// The graph writes its counts as 32-bit integers, wrapping as such a
// conversion does: a count beyond that range shows as its wrapped value.
std::uint64_t CountLength(std::size_t count) {
  return std::to_string(static_cast<std::int32_t>(static_cast<std::uint32_t>(count))).size();
}

// "\tNb Vertices: <n>\n\tNb Edges: <m>\n", as both headers show the counts.
std::uint64_t CountsLength(std::size_t vertices, std::size_t edges) {
  return Length("\tNb Vertices: ") + CountLength(vertices) + Length("\n") + Length("\tNb Edges: ") +
         CountLength(edges) + Length("\n");
}

// The vertices as dense numbers, with their children in edge order (one
// entry per edge that reaches a vertex, as GetChildren gives them).
class Adjacency {
 public:
  explicit Adjacency(std::deque<VEKZOLGraphVertex*>& all) {
    for (VEKZOLGraphVertex* vertex : all) {
      if (vertex != nullptr) byAddress_.push_back(vertex);
    }
    std::sort(byAddress_.begin(), byAddress_.end(), std::less<VEKZOLGraphVertex*>());
    byAddress_.erase(std::unique(byAddress_.begin(), byAddress_.end()), byAddress_.end());
    vertices_ = byAddress_;
    // Rows in number order; a child that is none of the graph's listed
    // vertices is numbered when met and gets its row in turn.
    std::deque<VEKZOLGraphVertex*> children;
    rowStart_.push_back(0);
    for (std::size_t number = 0; number < vertices_.size(); ++number) {
      children.clear();
      vertices_[number]->GetChildren(children);
      for (VEKZOLGraphVertex* child : children) {
        if (child != nullptr) children_.push_back(NumberOf(child));
      }
      rowStart_.push_back(children_.size());
    }
  }

  std::size_t Count() const { return vertices_.size(); }
  VEKZOLGraphVertex* Vertex(std::size_t number) const { return vertices_[number]; }
  std::size_t RowBegin(std::size_t number) const { return rowStart_[number]; }
  std::size_t RowEnd(std::size_t number) const { return rowStart_[number + 1]; }
  std::size_t Child(std::size_t position) const { return children_[position]; }

  std::size_t NumberOf(VEKZOLGraphVertex* vertex) {
    const auto found = std::lower_bound(byAddress_.begin(), byAddress_.end(), vertex,
                                        std::less<VEKZOLGraphVertex*>());
    if (found != byAddress_.end() && *found == vertex) {
      return static_cast<std::size_t>(found - byAddress_.begin());
    }
    const auto stray = strays_.emplace(vertex, vertices_.size());
    if (stray.second) vertices_.push_back(vertex);
    return stray.first->second;
  }

 private:
  std::vector<VEKZOLGraphVertex*> byAddress_;  // the listed vertices, sorted
  std::vector<VEKZOLGraphVertex*> vertices_;   // by number
  std::unordered_map<VEKZOLGraphVertex*, std::size_t> strays_;
  std::vector<std::size_t> rowStart_;
  std::vector<std::size_t> children_;
};

// What the tree holds below one vertex, relative to it.
struct Below {
  std::uint64_t lines = 0;     // tree lines below it (one per path down)
  std::uint64_t depthSum = 0;  // the sum of their levels below it
  std::uint64_t nameSum = 0;   // the sum of their names' lengths
  std::uint64_t height = 0;    // the deepest of those levels
};

// Measures the tree lines of every root into `size`; sets size.cycle and
// stops at a cycle reachable from a root.
void MeasureTree(VEKZOLGraph& graph, std::deque<VEKZOLGraphVertex*>& all, GraphTextSize& size) {
  Adjacency adjacency(all);
  std::deque<VEKZOLGraphVertex*> roots;
  graph.GetRoots(roots);

  enum : unsigned char { kNew, kOnPath, kDone };
  std::vector<unsigned char> state;
  std::vector<Below> below;
  std::vector<std::uint64_t> nameLength;
  struct Frame {
    std::size_t vertex;
    std::size_t nextChild;  // position in the vertex's row
  };
  std::vector<Frame> path;

  for (VEKZOLGraphVertex* root : roots) {
    if (root == nullptr) continue;
    const std::size_t rootNumber = adjacency.NumberOf(root);
    // Stray vertices may have been numbered since the last root.
    state.resize(adjacency.Count(), kNew);
    below.resize(adjacency.Count());
    nameLength.resize(adjacency.Count(), kSaturated);
    if (state[rootNumber] != kDone) {
      state[rootNumber] = kOnPath;
      path.push_back(Frame{rootNumber, adjacency.RowBegin(rootNumber)});
    }
    while (!path.empty()) {
      Frame& top = path.back();
      if (top.nextChild < adjacency.RowEnd(top.vertex)) {
        const std::size_t child = adjacency.Child(top.nextChild++);
        if (state[child] == kOnPath) {
          size.cycle = true;
          return;
        }
        if (state[child] == kNew) {
          state[child] = kOnPath;
          path.push_back(Frame{child, adjacency.RowBegin(child)});
        }
        continue;
      }
      // Every child is measured: each of its lines is one level deeper here.
      Below sum;
      for (std::size_t at = adjacency.RowBegin(top.vertex); at < adjacency.RowEnd(top.vertex);
           ++at) {
        const std::size_t child = adjacency.Child(at);
        if (nameLength[child] == kSaturated) {
          nameLength[child] =
              static_cast<std::uint64_t>(adjacency.Vertex(child)->GetName().GetLength());
        }
        const Below& part = below[child];
        const std::uint64_t lines = Add(1, part.lines);
        sum.lines = Add(sum.lines, lines);
        sum.depthSum = Add(sum.depthSum, Add(lines, part.depthSum));
        sum.nameSum = Add(sum.nameSum, Add(nameLength[child], part.nameSum));
        sum.height = std::max(sum.height, Add(1, part.height));
      }
      below[top.vertex] = sum;
      state[top.vertex] = kDone;
      path.pop_back();
    }
    // The root's line at level 0 is its name alone; a line at level L >= 1
    // is 2 * L blanks, "|__", the name, "\n".
    const Below& tree = below[rootNumber];
    const std::uint64_t indent = Add(Times(tree.depthSum, 2), Times(tree.lines, Length("|__")));
    std::uint64_t bytes = Add(static_cast<std::uint64_t>(root->GetName().GetLength()), 1);
    bytes = Add(bytes, Add(indent, Add(tree.nameSum, tree.lines)));
    size.treeBytes = Add(size.treeBytes, bytes);
    size.treeLines = Add(size.treeLines, Add(1, tree.lines));
    size.indentBytes = Add(size.indentBytes, indent);
    size.depth = std::max(size.depth, tree.height);
  }
}

}  // namespace

GraphTextSize MeasureGraphText(VEKZOLGraph& graph, const CString& name, bool listing) {
  GraphTextSize size;
  std::deque<VEKZOLGraphVertex*> vertices;
  std::deque<VEKZOLGraphEdge*> edges;
  graph.GetAllVertices(vertices);
  graph.GetAllEdges(edges);
  size.vertices = vertices.size();
  MeasureTree(graph, vertices, size);
  if (size.cycle) return size;

  // "Graph: <name>\n\n", the counts, "\n", "\n", the tree, "\n\n".
  const std::uint64_t counts = CountsLength(vertices.size(), edges.size());
  std::uint64_t bytes = Length("Graph: ") + static_cast<std::uint64_t>(name.GetLength()) +
                        Length("\n\n") + counts + Length("\n") + Length("\n");
  bytes = Add(Add(bytes, size.treeBytes), Length("\n\n"));
  if (listing) {
    // "Graph:\n\n", the counts, "\n", every vertex's and edge's own text,
    // "\n", "Graph Summary:\n\n", the counts, "\n", then the Dump.
    bytes = Add(bytes, Length("Graph:\n\n") + counts + Length("\n") + Length("\n") +
                           Length("Graph Summary:\n\n") + counts + Length("\n"));
    for (VEKZOLGraphVertex* vertex : vertices) {
      if (vertex != nullptr) {
        bytes = Add(bytes, static_cast<std::uint64_t>(vertex->ToString().GetLength()));
      }
    }
    for (VEKZOLGraphEdge* edge : edges) {
      if (edge != nullptr) {
        bytes = Add(bytes, static_cast<std::uint64_t>(edge->ToString().GetLength()));
      }
    }
  }
  size.bytes = bytes;
  return size;
}

std::string SizeText(std::uint64_t value) {
  std::string text = std::to_string(value);
  if (value == kSaturated) text += " or more";
  return text;
}

}  // namespace vekzol_tool
