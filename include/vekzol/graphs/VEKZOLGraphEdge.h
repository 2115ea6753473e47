// File: VEKZOLGraphEdge.h
// VEKZOLGraphEdge: one relation of the host's model inside one graph, with
// the vertices of its source (parent) and target (child) objects, each null
// while that end was not found in the graph. Its id and name are both the
// relation's id, asked each time; the relation is borrowed.
//
// _RefCounter: plus one in the value constructor, minus one in the
// destructor, untouched by copies.
#ifndef VEKZOL_GRAPHS_VEKZOLGRAPHEDGE_H_
#define VEKZOL_GRAPHS_VEKZOLGRAPHEDGE_H_

#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOLGraphVertex;

class VEKZOL_API VEKZOLGraphEdge {
 public:
  explicit VEKZOLGraphEdge(VEKIZOLRelation* relation);
  VEKZOLGraphEdge(const VEKZOLGraphEdge& other);
  VEKZOLGraphEdge& operator=(const VEKZOLGraphEdge& other);
  virtual ~VEKZOLGraphEdge();

  // The relation's id; "" without relation.
  CString GetID();
  // The same as GetID: an edge has no name of its own.
  CString GetName();
  VEKIZOLRelation* GetRelation();
  VEKZOLGraphVertex* GetParent();
  VEKZOLGraphVertex* GetChild();
  // "Edge:\n", the name line, then "\tParent: " and "\tChild:  ", each
  // followed by "\tName: <name>\n" only when that end has a vertex: a
  // missing end adds no line feed, and no empty line follows.
  CString ToString();

  static int _RefCounter;

 protected:
  // The graph links vertices and edges and is the only writer of the
  // links. The library's read-only view of graphs (VEKZOLGraph::Access, a
  // member of the graph) reads the fields through this same friendship.
  friend class VEKZOLGraph;

  VEKIZOLRelation* m_Relation;
  VEKZOLGraphVertex* m_Parent;
  VEKZOLGraphVertex* m_Child;
  // Where the text of the parent's id lay when the edge was linked: only an
  // address to ask memory for ahead of reading the parent's id, never read
  // through, so it may be stale or null without harm.
  const void* m_ParentIdHint;
};

#endif  // VEKZOL_GRAPHS_VEKZOLGRAPHEDGE_H_
