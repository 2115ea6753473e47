// File: VEKZOLGraphQueries.cpp
// Reading a finished graph: roots and leaves, everything below a vertex,
// plain listings. Every operation appends to the caller's deque, never
// clears it, and changes nothing in the graph.
//
// Roots, leaves and listings come in map order (ascending id); the walks
// below a vertex in edge order (oldest outgoing edge first). The walks keep
// no record of visited vertices: what is reachable by several paths comes
// out once per path.
#include <vekzol/graphs/VEKZOLGraph.h>

#include <cstddef>

#include <vekzol/platform/Status.h>

#include "graphs/GraphWalk.h"
#include "graphs/IdMap.h"
#include "graphs/MemoryFailure.h"

namespace {

using vekzol::graphs::RaiseMemoryFailure;
using vekzol::graphs::WalkBelow;

// GetAllChildren appends each child before walking below it.
class AppendEveryChild {
 public:
  explicit AppendEveryChild(std::deque<VEKZOLGraphVertex*>& children) : m_Children(children) {}
  void OnChild(VEKZOLGraphVertex* child) { m_Children.push_back(child); }
  bool Enter(VEKZOLGraphVertex*, std::size_t) { return true; }

 private:
  std::deque<VEKZOLGraphVertex*>& m_Children;
};

// GetAllLeaves appends a vertex that is a leaf and goes no further below
// it; below any other vertex it goes on.
class AppendLeaves {
 public:
  explicit AppendLeaves(std::deque<VEKZOLGraphVertex*>& leaves) : m_Leaves(leaves) {}
  void OnChild(VEKZOLGraphVertex*) {}
  bool Enter(VEKZOLGraphVertex* vertex, std::size_t) {
    if (vertex->IsLeaf()) {
      m_Leaves.push_back(vertex);
      return false;
    }
    return true;
  }

 private:
  std::deque<VEKZOLGraphVertex*>& m_Leaves;
};

}  // namespace

long VEKZOLGraph::GetRoots(std::deque<VEKZOLGraphVertex*>& roots) {
  RaiseMemoryFailure([&] {
    for (const auto& entry : *m_Vertices) {
      if (entry.second != nullptr && entry.second->m_IsRoot) {
        roots.push_back(entry.second);
      }
    }
  });
  // The whole deque counts, not what this call appended.
  return roots.empty() ? S_FALSE : S_OK;
}

long VEKZOLGraph::GetRoots(std::deque<VEKZOLGraphVertex*>& roots,
                           std::deque<VEKZOLGraphEdge*>& rootEdges) {
  GetRoots(roots);
  // Edges without parent vertex come in from outside the graph: their
  // source object is no vertex here.
  RaiseMemoryFailure([&] {
    for (const auto& entry : *m_Edges) {
      if (entry.second != nullptr && entry.second->m_Parent == nullptr) {
        rootEdges.push_back(entry.second);
      }
    }
  });
  return roots.empty() && rootEdges.empty() ? S_FALSE : S_OK;
}

long VEKZOLGraph::GetLeaves(std::deque<VEKZOLGraphVertex*>& leaves) {
  RaiseMemoryFailure([&] {
    for (const auto& entry : *m_Vertices) {
      if (entry.second != nullptr && entry.second->m_IsLeaf) {
        leaves.push_back(entry.second);
      }
    }
  });
  return leaves.empty() ? S_FALSE : S_OK;
}

long VEKZOLGraph::GetAllChildren(VEKZOLGraphVertex* vertex,
                                 std::deque<VEKZOLGraphVertex*>& children) {
  if (vertex == nullptr) {
    return E_INVALIDARG;
  }
  AppendEveryChild hooks(children);
  RaiseMemoryFailure([&] { WalkBelow(vertex, hooks); });
  // A completed walk answers E_FAIL: callers read the deque.
  return E_FAIL;
}

long VEKZOLGraph::GetAllChildren(const CString& id, std::deque<VEKZOLGraphVertex*>& children) {
  if (id.IsEmpty()) {
    return E_INVALIDARG;
  }
  // A vertex of that id wins; otherwise the id may name an edge, and the
  // walk starts at its child vertex, which is not appended itself.
  VEKZOLGraphVertex* start = nullptr;
  if (const auto* vertex = m_Vertices->Find(id)) {
    start = vertex->second;
  } else {
    const auto* edge = m_Edges->Find(id);
    if (edge == nullptr || edge->second == nullptr) {
      return E_FAIL;
    }
    start = edge->second->m_Child;
  }
  if (start == nullptr) {
    return E_FAIL;
  }
  return GetAllChildren(start, children);
}

long VEKZOLGraph::GetAllLeaves(VEKZOLGraphVertex* vertex, std::deque<VEKZOLGraphVertex*>& leaves) {
  if (vertex == nullptr) {
    return E_INVALIDARG;
  }
  if (vertex->m_IsLeaf) {
    RaiseMemoryFailure([&] { leaves.push_back(vertex); });
    return S_FALSE;
  }
  AppendLeaves hooks(leaves);
  RaiseMemoryFailure([&] { WalkBelow(vertex, hooks); });
  return E_FAIL;
}

// Unlike GetAllChildren, this form knows vertices only.
long VEKZOLGraph::GetAllLeaves(const CString& id, std::deque<VEKZOLGraphVertex*>& leaves) {
  if (id.IsEmpty()) {
    return E_INVALIDARG;
  }
  const auto* found = m_Vertices->Find(id);
  if (found == nullptr || found->second == nullptr) {
    return E_FAIL;
  }
  return GetAllLeaves(found->second, leaves);
}

long VEKZOLGraph::GetAllVertices(std::deque<VEKZOLGraphVertex*>& vertices) {
  RaiseMemoryFailure([&] {
    for (const auto& entry : *m_Vertices) {
      vertices.push_back(entry.second);
    }
  });
  return S_OK;
}

long VEKZOLGraph::GetAllEdges(std::deque<VEKZOLGraphEdge*>& edges) {
  RaiseMemoryFailure([&] {
    for (const auto& entry : *m_Edges) {
      edges.push_back(entry.second);
    }
  });
  return S_OK;
}
