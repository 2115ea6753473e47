// File: VEKZOLGraph.cpp
// Building, copying and tearing down a graph. Vertices and edges are keyed
// by the ids their objects and relations gave when they were added; edges
// are linked to the vertices of their ends once, when they are added, by
// looking the ends' object ids up among the vertices present at that moment.
//
// Graphs of a million vertices are normal, so adding costs one map descent
// (lower_bound, then an insert hinted at that spot) and no extra id copies.
#include <vekzol/graphs/VEKZOLGraph.h>

#include <memory>
#include <utility>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/platform/Status.h>

namespace {

// The vertex of `object` in `vertices`, matched by the object's id (the
// by-reference form, as AddVertex keys them); null for a null object, an id
// not in the graph or a null entry.
VEKZOLGraphVertex* FindVertexOf(std::map<CString, VEKZOLGraphVertex*>& vertices,
                                VEKIZOLObject* object) {
  if (object == nullptr) {
    return nullptr;
  }
  CString id;
  object->GetID(id);
  const auto found = vertices.find(id);
  return found == vertices.end() ? nullptr : found->second;
}

// Deletes what the maps own, vertices first, each map in id order, and
// empties them.
void DeleteOwned(std::map<CString, VEKZOLGraphVertex*>& vertices,
                 std::map<CString, VEKZOLGraphEdge*>& edges) {
  for (auto& entry : vertices) {
    delete entry.second;
  }
  for (auto& entry : edges) {
    delete entry.second;
  }
  vertices.clear();
  edges.clear();
}

}  // namespace

VEKZOLGraph::VEKZOLGraph(CString name) : m_Name(std::move(name)) {}

// Links are not copied but made again from the relations: all vertices go in
// before the first edge, so every end present in the source is found, and
// the edge lists of each vertex follow the order of the edge ids.
VEKZOLGraph::VEKZOLGraph(VEKZOLGraph& source, CString name, bool keepIdentPaths)
    : m_Name(std::move(name)) {
  try {
    for (const auto& entry : source.m_Vertices) {
      VEKZOLGraphVertex* sourceVertex = entry.second;
      if (sourceVertex == nullptr || sourceVertex->m_Object == nullptr) {
        continue;
      }
      VEKZOLGraphVertex* vertex = nullptr;
      AddVertex(sourceVertex->m_Object, vertex);
      if (vertex != nullptr && keepIdentPaths) {
        vertex->m_IdentPath = sourceVertex->m_IdentPath;
      }
    }
    for (const auto& entry : source.m_Edges) {
      VEKZOLGraphEdge* sourceEdge = entry.second;
      if (sourceEdge == nullptr || sourceEdge->m_Relation == nullptr) {
        continue;
      }
      VEKZOLGraphEdge* edge = nullptr;
      AddEdge(sourceEdge->m_Relation, edge);
    }
  } catch (...) {
    // No destructor runs for a half-made object: free what was made so far.
    DeleteOwned(m_Vertices, m_Edges);
    throw;
  }
}

// Shares the other graph's vertices and edges; what this graph held is
// forgotten, not deleted (the caller destroys only one of the two).
VEKZOLGraph& VEKZOLGraph::operator=(const VEKZOLGraph& other) {
  m_Vertices = other.m_Vertices;
  m_Edges = other.m_Edges;
  m_Name = other.m_Name;
  return *this;
}

VEKZOLGraph::~VEKZOLGraph() {
  m_Name.Empty();
  DeleteOwned(m_Vertices, m_Edges);
}

long VEKZOLGraph::Build(std::deque<VEKIZOLObject*>& objects,
                        std::deque<VEKIZOLRelation*>& relations) {
  if (objects.empty() && relations.empty()) {
    return E_INVALIDARG;
  }
  VEKZOLLog::WriteMsg("Info:\t Build Graph -->", 0);
  // Every vertex first, so that each edge finds its ends whatever the order
  // of the two lists. Duplicates are settled by AddVertex/AddEdge: the first
  // in each deque wins.
  for (VEKIZOLObject* object : objects) {
    if (object != nullptr) {
      VEKZOLGraphVertex* vertex = nullptr;
      AddVertex(object, vertex);
    }
  }
  for (VEKIZOLRelation* relation : relations) {
    if (relation != nullptr) {
      VEKZOLGraphEdge* edge = nullptr;
      AddEdge(relation, edge);
    }
  }
  VEKZOLLog::WriteMsg("Info:\t Build Graph <--", 0);
  // A completed build answers E_FAIL: callers read the graph, not the status.
  return E_FAIL;
}

long VEKZOLGraph::AddVertex(VEKIZOLObject* object, VEKZOLGraphVertex*& vertex) {
  if (object == nullptr) {
    return E_INVALIDARG;
  }
  CString id;
  object->GetID(id);  // the status says nothing about the id
  auto slot = m_Vertices.lower_bound(id);
  if (slot != m_Vertices.end() && !m_Vertices.key_comp()(id, slot->first)) {
    // The first object with an id stays behind the vertex for good.
    vertex = slot->second;
    return S_FALSE;
  }
  auto created = std::make_unique<VEKZOLGraphVertex>(object);
  m_Vertices.emplace_hint(slot, std::move(id), created.get());
  vertex = created.release();
  return S_OK;
}

long VEKZOLGraph::AddEdge(VEKIZOLRelation* relation, VEKZOLGraphEdge*& edge) {
  if (relation == nullptr) {
    return E_INVALIDARG;
  }
  CString id = relation->GetID();
  auto slot = m_Edges.lower_bound(id);
  if (slot != m_Edges.end() && !m_Edges.key_comp()(id, slot->first)) {
    // Already linked when it went in: the ends of this relation are not read.
    edge = slot->second;
    return S_FALSE;
  }
  auto created = std::make_unique<VEKZOLGraphEdge>(relation);
  VEKZOLGraphEdge* added = created.get();
  m_Edges.emplace_hint(slot, std::move(id), added);
  created.release();
  edge = added;

  // Each end is resolved here and never again: a vertex added later does not
  // repair this edge. A missing end is no failure; the other end is linked
  // all the same. The lists grow before the links are set, so a failed
  // append leaves no half-linked edge.
  VEKIZOLObject* source = nullptr;
  relation->GetSourceObject(source);
  if (VEKZOLGraphVertex* parent = FindVertexOf(m_Vertices, source)) {
    parent->m_ChildEdges.push_back(added);
    added->m_Parent = parent;
    parent->m_IsLeaf = false;
  }
  VEKIZOLObject* target = nullptr;
  relation->GetTargetObject(target);
  if (VEKZOLGraphVertex* child = FindVertexOf(m_Vertices, target)) {
    child->m_ParentEdges.push_back(added);
    added->m_Child = child;
    child->m_IsRoot = false;
  }
  return S_OK;
}

long VEKZOLGraph::GetVertex(const CString& id, VEKZOLGraphVertex*& vertex) {
  if (id.IsEmpty()) {
    return E_INVALIDARG;
  }
  const auto found = m_Vertices.find(id);
  if (found == m_Vertices.end()) {
    return E_FAIL;
  }
  vertex = found->second;
  return S_OK;
}

long VEKZOLGraph::GetEdge(const CString& id, VEKZOLGraphEdge*& edge) {
  if (id.IsEmpty()) {
    return E_INVALIDARG;
  }
  const auto found = m_Edges.find(id);
  if (found == m_Edges.end()) {
    return E_FAIL;
  }
  edge = found->second;
  return S_OK;
}

// Forgets without deleting: pointers held elsewhere stay valid, and their
// owner is now whoever holds them. The status is E_FAIL on every call.
long VEKZOLGraph::Cleanup() {
  m_Vertices.clear();
  m_Edges.clear();
  return E_FAIL;
}
