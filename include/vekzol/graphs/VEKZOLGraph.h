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
// Walks and listings (GetRoots ... GetAllEdges) append to the caller's deque
// and never clear it; what they hand out are the graph's own vertices and
// edges. Two orders occur: map order (ascending id) for roots, leaves and
// listings, edge order (oldest outgoing edge first) below a vertex.
//
// The walks below a vertex (GetAllChildren, GetAllLeaves, Dump) keep no
// record of visited vertices: a vertex reachable by several paths comes out
// once per path. They keep their path on the heap, so any depth works; a
// cycle on the current path stops them with CAtlException(E_FAIL), leaving
// in the caller's deque or text what was appended before.
//
// Statuses are those of the library's table; note that a completed Build,
// every Cleanup and every completed walk answer E_FAIL. Not synchronised.
#ifndef VEKZOL_GRAPHS_VEKZOLGRAPH_H_
#define VEKZOL_GRAPHS_VEKZOLGRAPH_H_

#include <deque>

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

namespace vekzol {
namespace graphs {
template <typename Value>
class IdMap;
}  // namespace graphs
}  // namespace vekzol

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

  // Appends every vertex whose IsRoot is true, in id order. S_OK when
  // `roots` holds anything afterwards (what it held before counts too),
  // S_FALSE when it is empty.
  long GetRoots(std::deque<VEKZOLGraphVertex*>& roots);
  // As above, then appends, in id order, every edge without parent vertex
  // (its source object is not in this graph). S_OK when either deque holds
  // anything afterwards, else S_FALSE.
  long GetRoots(std::deque<VEKZOLGraphVertex*>& roots, std::deque<VEKZOLGraphEdge*>& rootEdges);
  // Appends every vertex whose IsLeaf is true, in id order; statuses as the
  // one-deque GetRoots.
  long GetLeaves(std::deque<VEKZOLGraphVertex*>& leaves);
  // Appends everything below `vertex` depth-first in pre-order (a child,
  // then all below it, then the next child), once per path; `vertex` itself
  // is not appended. E_INVALIDARG for null, else E_FAIL.
  long GetAllChildren(VEKZOLGraphVertex* vertex, std::deque<VEKZOLGraphVertex*>& children);
  // The same from the vertex of `id`, or, when no vertex has that id, from
  // the child vertex of the edge of `id` (which is then not appended).
  // E_INVALIDARG for "", E_FAIL for everything else, an unknown id and an
  // edge without child vertex included.
  long GetAllChildren(const CString& id, std::deque<VEKZOLGraphVertex*>& children);
  // Appends the leaves below `vertex` in the order of GetAllChildren, once
  // per path: `vertex` itself and S_FALSE when it is a leaf, else E_FAIL.
  // E_INVALIDARG for null.
  long GetAllLeaves(VEKZOLGraphVertex* vertex, std::deque<VEKZOLGraphVertex*>& leaves);
  // The same from the vertex of `id` (vertices only). E_INVALIDARG for "",
  // E_FAIL for an id without vertex.
  long GetAllLeaves(const CString& id, std::deque<VEKZOLGraphVertex*>& leaves);
  // Append every entry of the vertex / edge map in id order, null entries
  // included; S_OK, always.
  long GetAllVertices(std::deque<VEKZOLGraphVertex*>& vertices);
  long GetAllEdges(std::deque<VEKZOLGraphEdge*>& edges);

  // The full listing: the counts, every vertex's and edge's ToString in id
  // order, the counts again, then Dump().
  CString ToString();
  // The name, the counts, two empty lines, the tree below each root in id
  // order (one line per vertex and path, indented two blanks per level),
  // two empty lines.
  CString Dump();

 protected:
  // Appends the tree lines of `vertex` and everything below it to `text`,
  // `vertex` at `level` (no prefix at level 0 or less, else 2 * level
  // blanks and "|__"). E_INVALIDARG for null (text untouched), else E_FAIL.
  long Dump(VEKZOLGraphVertex* vertex, CString& text, int level);

  // The two maps from id to vertex and to edge, in the library's own
  // structure: iterated in ascending `_mbscmp` order, looked up by hash,
  // each entry a key and a pointer. The graph owns them and what they hold.
  vekzol::graphs::IdMap<VEKZOLGraphVertex>* m_Vertices;
  vekzol::graphs::IdMap<VEKZOLGraphEdge>* m_Edges;
  CString m_Name;

 public:
  // The library's own read-only view of a graph and its vertices and edges,
  // for its walks and its comparator. Only declared here: it is defined in
  // the library's sources, and a host cannot use it.
  class Access;

 private:
  // Build's vertex step for a graph without vertices: the vertices are
  // made in id order (see the library's sources).
  void AddVerticesInIdOrder(std::deque<VEKIZOLObject*>& objects);

  // Build's edge step: each relation as AddEdge adds it, the ends of a
  // batch of relations looked up together (see the library's sources).
  void AddEdgesInBatches(std::deque<VEKIZOLRelation*>& relations);
};

#endif  // VEKZOL_GRAPHS_VEKZOLGRAPH_H_
