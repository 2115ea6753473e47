// File: VEKZOLGraph.h
// VEKZOLGraph: a directed graph over the host's objects and relations, as
// two maps keyed by id (ascending `_mbscmp` order, case-sensitive): one of
// vertices, one of edges. The graph owns its vertices and edges and deletes
// them in its destructor; the objects and relations stay the host's and
// must outlive the graph.
//
// Forgiving by design: an edge whose ends are missing still goes in
// unresolved, the first object or relation with an id wins, parallel edges,
// several parents and cycles are kept as they come.
//
// Statuses are those of the library's table; note that a completed Build
// and every Cleanup answer E_FAIL. Not synchronised.
#ifndef VEKZOL_GRAPHS_VEKZOLGRAPH_H_
#define VEKZOL_GRAPHS_VEKZOLGRAPH_H_

#include <deque>
#include <map>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLGraph {
 public:
  explicit VEKZOLGraph(CString name = "");
  // A new graph over the same objects and relations as `source`: vertices
  // in id order, then edges in id order, so links are computed afresh. The
  // name is the one given, backup names start empty, ident paths are copied
  // only with `keepIdentPaths`. `source` is only read. With its defaults
  // this is also the copy constructor.
  VEKZOLGraph(VEKZOLGraph& source, CString name = "", bool keepIdentPaths = false);
  // Member by member: both graphs then hold the same vertices and edges,
  // and the caller makes sure only one of them is destroyed. What this graph
  // held before is forgotten, not deleted.
  VEKZOLGraph& operator=(const VEKZOLGraph& other);
  virtual ~VEKZOLGraph();

  // Adds every object (front to back, null skipped), then every relation.
  // E_INVALIDARG when both deques are empty, else E_FAIL once done.
  long Build(std::deque<VEKIZOLObject*>& objects, std::deque<VEKIZOLRelation*>& relations);
  // S_OK with a new vertex; S_FALSE with the vertex already under that id;
  // E_INVALIDARG for a null object (`vertex` untouched).
  long AddVertex(VEKIZOLObject* object, VEKZOLGraphVertex*& vertex);
  // S_OK with a new edge linked to the vertices of its ends that exist now;
  // S_FALSE with the edge already under that id; E_INVALIDARG for null.
  long AddEdge(VEKIZOLRelation* relation, VEKZOLGraphEdge*& edge);
  // S_OK and the vertex/edge; E_INVALIDARG for "", E_FAIL when missing;
  // the out pointer changes only on S_OK.
  long GetVertex(const CString& id, VEKZOLGraphVertex*& vertex);
  long GetEdge(const CString& id, VEKZOLGraphEdge*& edge);
  // Forgets all vertices and edges without deleting them; E_FAIL, always.
  long Cleanup();

 protected:
  std::map<CString, VEKZOLGraphVertex*> m_Vertices;
  std::map<CString, VEKZOLGraphEdge*> m_Edges;
  CString m_Name;
};

#endif  // VEKZOL_GRAPHS_VEKZOLGRAPH_H_
