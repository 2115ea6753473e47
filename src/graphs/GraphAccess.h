// File: GraphAccess.h
// VEKZOLGraph::Access, known inside the library as
// vekzol::graphs::GraphAccess: the library's own read-only view of a graph,
// its vertices and edges, for the code that must read them where they stand
// rather than through the public operations (which copy deques and texts,
// and are calls into the library for every element): the walks below a
// vertex (GraphWalk.h) and the comparison's passes and read-ahead
// (src/comparison).
//
// It hands out const views only: the graph's two maps in id order, and the
// fields of a vertex or an edge, as the public getters would give them. A
// comparison run makes the only two writes, each a named operation here:
// the ident path that SetIdentPath would assign, and the mark a run leaves
// on the vertices whose ids it recorded (src/comparison/RunIdTable.h).
//
// It is a member of VEKZOLGraph, declared there as an opaque class, so it
// reads what the graph reads: the graph's protected maps as a member, the
// fields of vertices and edges through their friendship with the graph. No
// class names the comparator or this view as a friend, and hosts, which see
// only the declaration, cannot use it.
//
// Also here, private to the graph: LinkEnds, the one writer of the links
// between an edge and its end vertices, which takes the vertices' map
// entries and so can only be declared where the map is known.
//
// Every operation is an inline read or write of one field: what the
// callers' loops compile to is what reading the field there would be.
#ifndef VEKZOL_SRC_GRAPHS_GRAPHACCESS_H_
#define VEKZOL_SRC_GRAPHS_GRAPHACCESS_H_

#include <cstdint>

#include <vekzol/graphs/VEKZOLEdgeList.h>
#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CString.h>

#include "graphs/IdMap.h"

class VEKZOLGraph::Access {
 public:
  using VertexMap = vekzol::graphs::IdMap<VEKZOLGraphVertex>;
  using EdgeMap = vekzol::graphs::IdMap<VEKZOLGraphEdge>;
  using VertexEntry = VertexMap::Entry;
  using EdgeEntry = EdgeMap::Entry;

  Access() = delete;

  // The graph's maps from id to vertex and to edge: entries in ascending
  // id order, null values included.
  static const VertexMap& Vertices(const VEKZOLGraph& graph) { return *graph.m_Vertices; }
  static const EdgeMap& Edges(const VEKZOLGraph& graph) { return *graph.m_Edges; }

  // A vertex: its object (GetObjectA), its edges oldest first, null
  // entries included (what GetParentEdges / GetChildEdges would copy), and
  // its two texts (what GetIdentPath / GetBackupName would copy).
  static VEKIZOLObject* Object(const VEKZOLGraphVertex* vertex) { return vertex->m_Object; }
  static const VEKZOLEdgeList& ParentEdges(const VEKZOLGraphVertex* vertex) {
    return vertex->m_ParentEdges;
  }
  static const VEKZOLEdgeList& ChildEdges(const VEKZOLGraphVertex* vertex) {
    return vertex->m_ChildEdges;
  }
  static const CString& IdentPath(const VEKZOLGraphVertex* vertex) { return vertex->m_IdentPath; }
  static const CString& BackupName(const VEKZOLGraphVertex* vertex) { return vertex->m_BackupName; }

  // An edge: its relation and its end vertices (GetRelation, GetParent,
  // GetChild), and where its parent's key text lay when it was linked:
  // only an address to ask memory for ahead, never to read through.
  static VEKIZOLRelation* Relation(const VEKZOLGraphEdge* edge) { return edge->m_Relation; }
  static VEKZOLGraphVertex* Parent(const VEKZOLGraphEdge* edge) { return edge->m_Parent; }
  static VEKZOLGraphVertex* Child(const VEKZOLGraphEdge* edge) { return edge->m_Child; }
  static const void* ParentIdHint(const VEKZOLGraphEdge* edge) { return edge->m_ParentIdHint; }

  // The comparison's two writes. SetIdentPath is the assignment that the
  // public SetIdentPath makes (it does nothing else). The run mark is where
  // a run last recorded the vertex's id in its table; it means nothing
  // outside a run.
  static void SetIdentPath(VEKZOLGraphVertex* vertex, const CString& identPath) {
    vertex->m_IdentPath = identPath;
  }
  static std::uint32_t RunPosition(const VEKZOLGraphVertex* vertex) {
    return vertex->m_RunPosition;
  }
  static void SetRunPosition(VEKZOLGraphVertex* vertex, std::uint32_t position) {
    vertex->m_RunPosition = position;
  }

 private:
  friend class VEKZOLGraph;

  // AddEdge's links of `edge` to the vertex of its source's id and the
  // vertex of its target's id, each given as its map entry (null: no link).
  // The lists grow before the links are set, so a failed append leaves no
  // half-linked edge.
  static void LinkEnds(VEKZOLGraphEdge* edge, const VertexEntry* source,
                       const VertexEntry* target) {
    if (source != nullptr) {
      VEKZOLGraphVertex* parent = source->second;
      parent->m_ChildEdges.push_back(edge);
      edge->m_Parent = parent;
      edge->m_ParentIdHint = source->first.GetString();
      parent->m_IsLeaf = false;
    }
    if (target != nullptr) {
      VEKZOLGraphVertex* child = target->second;
      child->m_ParentEdges.push_back(edge);
      edge->m_Child = child;
      child->m_IsRoot = false;
    }
  }
};

namespace vekzol {
namespace graphs {

using GraphAccess = ::VEKZOLGraph::Access;

}  // namespace graphs
}  // namespace vekzol

#endif  // VEKZOL_SRC_GRAPHS_GRAPHACCESS_H_
