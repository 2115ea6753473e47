// File: DrawingParts.cpp
#include "DrawingParts.h"

#include <algorithm>
#include <numeric>

namespace vekzol_tool {

namespace {

// Union-find over the node numbers, by size, with path halving.
class NodeSets {
 public:
  explicit NodeSets(size_t count) : parent_(count), size_(count, 1) {
    std::iota(parent_.begin(), parent_.end(), size_t{0});
  }

  size_t Find(size_t node) {
    while (parent_[node] != node) {
      parent_[node] = parent_[parent_[node]];
      node = parent_[node];
    }
    return node;
  }

  void Join(size_t a, size_t b) {
    a = Find(a);
    b = Find(b);
    if (a == b) return;
    if (size_[a] < size_[b]) std::swap(a, b);
    parent_[b] = a;
    size_[a] += size_[b];
  }

 private:
  std::vector<size_t> parent_;
  std::vector<size_t> size_;
};

struct Part {
  size_t first = 0;  // its smallest node number
  size_t nodes = 0;
  size_t length = 0;
  bool kept = false;
};

size_t Distance(size_t a, size_t b) { return a > b ? a - b : b - a; }

}  // namespace

std::vector<size_t> LayerNodes(size_t nodeCount,
                               const std::vector<std::pair<size_t, size_t>>& links) {
  // The links out of each node, in the order given: `out[start[node] ..
  // start[node + 1])` are link numbers.
  std::vector<size_t> start(nodeCount + 1, 0);
  for (const auto& link : links) ++start[link.first + 1];
  for (size_t node = 0; node < nodeCount; ++node) start[node + 1] += start[node];
  std::vector<size_t> out(links.size());
  std::vector<size_t> fill(start.begin(), start.end() - 1);
  for (size_t index = 0; index < links.size(); ++index) out[fill[links[index].first]++] = index;

  // A depth-first walk from each node not yet seen, in node order, on a
  // stack of its own: the links that reach a node still on the walk's path
  // close a cycle. The order in which nodes are left, reversed, puts every
  // other link's source before its target.
  enum : unsigned char { kUnseen, kOnPath, kDone };
  std::vector<unsigned char> state(nodeCount, kUnseen);
  std::vector<bool> closing(links.size(), false);
  std::vector<size_t> left;
  left.reserve(nodeCount);
  std::vector<std::pair<size_t, size_t>> path;  // node, next of its links
  for (size_t first = 0; first < nodeCount; ++first) {
    if (state[first] != kUnseen) continue;
    state[first] = kOnPath;
    path.emplace_back(first, start[first]);
    while (!path.empty()) {
      auto& [node, next] = path.back();
      if (next == start[node + 1]) {
        state[node] = kDone;
        left.push_back(node);
        path.pop_back();
        continue;
      }
      const size_t index = out[next++];
      const size_t target = links[index].second;
      if (state[target] == kOnPath) {
        closing[index] = true;
      } else if (state[target] == kUnseen) {
        state[target] = kOnPath;
        path.emplace_back(target, start[target]);
      }
    }
  }

  // The longest path to each node over the links that close no cycle.
  std::vector<size_t> rank(nodeCount, 0);
  for (auto node = left.rbegin(); node != left.rend(); ++node) {
    for (size_t at = start[*node]; at < start[*node + 1]; ++at) {
      const size_t index = out[at];
      if (closing[index]) continue;
      size_t& targetRank = rank[links[index].second];
      if (targetRank < rank[*node] + 1) targetRank = rank[*node] + 1;
    }
  }
  return rank;
}

PartChoice ChooseParts(size_t nodeCount, const std::vector<std::pair<size_t, size_t>>& links,
                       size_t maxNodes, size_t maxLength) {
  NodeSets sets(nodeCount);
  for (const auto& link : links) sets.Join(link.first, link.second);

  // The parts in the order of their first node, which the walk over the
  // nodes in ascending number meets first.
  std::vector<size_t> partOf(nodeCount);
  std::vector<size_t> partOfRoot(nodeCount, nodeCount);
  std::vector<Part> parts;
  for (size_t node = 0; node < nodeCount; ++node) {
    const size_t root = sets.Find(node);
    if (partOfRoot[root] == nodeCount) {
      partOfRoot[root] = parts.size();
      parts.push_back(Part{node, 0, 0, false});
    }
    partOf[node] = partOfRoot[root];
    ++parts[partOf[node]].nodes;
  }
  const std::vector<size_t> rank = LayerNodes(nodeCount, links);
  for (const auto& link : links) {
    const size_t length = Distance(rank[link.first], rank[link.second]);
    parts[partOf[link.first]].length += length == 0 ? 1 : length;
  }

  std::vector<size_t> order(parts.size());
  std::iota(order.begin(), order.end(), size_t{0});
  // Parts are numbered by their first node, so the stable sort keeps parts
  // of equal size in that order.
  std::stable_sort(order.begin(), order.end(),
                   [&parts](size_t a, size_t b) { return parts[a].nodes > parts[b].nodes; });

  PartChoice choice;
  choice.parts = parts.size();
  size_t nodesLeft = maxNodes;
  size_t lengthLeft = maxLength;
  for (size_t index : order) {
    Part& part = parts[index];
    if (part.nodes > nodesLeft || part.length > lengthLeft) continue;
    part.kept = true;
    nodesLeft -= part.nodes;
    lengthLeft -= part.length;
    ++choice.keptParts;
  }
  choice.kept.resize(nodeCount);
  for (size_t node = 0; node < nodeCount; ++node) choice.kept[node] = parts[partOf[node]].kept;
  return choice;
}

}  // namespace vekzol_tool
