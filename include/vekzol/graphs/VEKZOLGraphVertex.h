// File: VEKZOLGraphVertex.h
// VEKZOLGraphVertex: one object of the host's model inside one graph. It
// knows its incoming and outgoing edges in the order they were attached and
// carries two texts for the comparison (ident path, backup name). Its id
// and name are asked of the object each time; the object is borrowed.
//
// Only VEKZOLGraph links edges to vertices. The list operations append to
// the caller's deque and never clear it.
//
// _RefCounter: plus one in the value constructor, minus one in the
// destructor, untouched by copies.
#ifndef VEKZOL_GRAPHS_VEKZOLGRAPHVERTEX_H_
#define VEKZOL_GRAPHS_VEKZOLGRAPHVERTEX_H_

#include <cstdint>
#include <deque>

#include <vekzol/graphs/VEKZOLEdgeList.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOLGraphEdge;

class VEKZOL_API VEKZOLGraphVertex {
 public:
  explicit VEKZOLGraphVertex(VEKIZOLObject* object);
  // Member by member: the copy shares the edges of this vertex, whose ends
  // still point here.
  VEKZOLGraphVertex(const VEKZOLGraphVertex& other);
  VEKZOLGraphVertex& operator=(const VEKZOLGraphVertex& other);
  virtual ~VEKZOLGraphVertex();

  // The object's id; "" without object.
  CString GetID();
  VEKIZOLObject* GetObjectA();
  // The object's display name, or the id when that is empty.
  CString GetName();
  // The parent vertex of the oldest incoming edge; null when there is no
  // incoming edge or that edge has no parent vertex.
  VEKZOLGraphVertex* GetParent();
  // Append the vertices at the other end of each edge, oldest edge first,
  // as often as edges lead there. S_FALSE without edges; S_OK when the
  // number of edges equals the size of `parents`/`children` afterwards;
  // E_FAIL otherwise (a deque that held something before, or an edge
  // without vertex at its other end).
  long GetParents(std::deque<VEKZOLGraphVertex*>& parents);
  long GetChildren(std::deque<VEKZOLGraphVertex*>& children);
  // Append the edges themselves, oldest first: S_FALSE without edges, else
  // S_OK.
  long GetParentEdges(std::deque<VEKZOLGraphEdge*>& edges);
  long GetChildEdges(std::deque<VEKZOLGraphEdge*>& edges);
  // The number of outgoing edges, whether they reach a vertex or not.
  int GetNbChildren();
  // True until an edge has started here / ended here.
  bool IsLeaf();
  bool IsRoot();
  long SetIdentPath(const CString& identPath);
  CString GetIdentPath();
  void SetBackupName(CString backupName);
  CString GetBackupName();
  // "Vertice:\n", then tab-led lines of the name, the number of outgoing
  // edges, the parent of GetParent ("\tParent: " alone on its line without
  // one) and one line per child vertex, then an empty line. The root and
  // leaf flags are not shown.
  CString ToString();

  static int _RefCounter;

 protected:
  // The graph links vertices and edges and is the only writer of the
  // links. The library's read-only view of graphs (VEKZOLGraph::Access, a
  // member of the graph) reads the fields through this same friendship; a
  // comparison run writes through it only the ident path (as SetIdentPath)
  // and the position mark below.
  friend class VEKZOLGraph;

  VEKIZOLObject* m_Object;
  // The edge lists are only appended to by the graph. Each is one pointer
  // wide and allocates nothing for a single edge (VEKZOLEdgeList.h), which
  // with a million vertices is most of them.
  VEKZOLEdgeList m_ParentEdges;
  VEKZOLEdgeList m_ChildEdges;
  CString m_IdentPath;
  CString m_BackupName;
  bool m_IsLeaf;
  bool m_IsRoot;
  // Where a comparison run last recorded this vertex's id in its table of
  // one graph's ids (in the padding after the flags, so the vertex does not
  // grow). Only a hint: the table checks that the vertex is the one it
  // recorded there before it answers.
  std::uint32_t m_RunPosition;
};

#endif  // VEKZOL_GRAPHS_VEKZOLGRAPHVERTEX_H_
