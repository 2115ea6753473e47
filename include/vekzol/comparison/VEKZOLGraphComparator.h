// File: VEKZOLGraphComparator.h
// VEKZOLGraphComparator: what separates a new graph from an old one, told
// by id. A vertex or edge of one graph is the same as one of the other
// exactly when their ids are equal (case-sensitive); there is no structural
// matching, so an element whose id changed is removed and added.
//
// RunComparison fills six lists of ids, each in ascending id order:
// - vertices to be added (new graph only) and to be removed (old only);
// - vertices to be moved: in both graphs, at least one side has a parent,
//   and no direct parent id is common to both sides (a root that got a
//   parent and a vertex that became a root are moved);
// - vertices to change name (only with `checkNames`): in both graphs, and
//   the OLD vertex's name differs from its own backup name;
// - edges to be added and to be removed.
// With `checkNames` a run also copies each old vertex's non-empty ident
// path into the new vertex of the same id: the only write to a graph.
// Null entries and empty ids are skipped.
//
// Runs only append: a second run on the same comparator lists everything
// again behind the first findings, and the outcome is read from the
// accumulated lists (S_OK when any list holds an id, S_FALSE when all are
// empty). E_INVALIDARG, with nothing changed, when a graph is null.
//
// The six getters append a copy of their list to the caller's deque and
// answer E_FAIL, always: read the deque, not the status.
//
// GetRootsToAdd / GetRootsToRemove reduce the added / removed vertices and
// edges to their entry points: the listed elements are built into a
// temporary graph ("Graph To Add" / "Graph To Remove") over the objects and
// relations of the new / old graph, and that graph's root vertices and
// edges without parent vertex are appended, each in ascending id order.
// S_FALSE (deques untouched) when there is nothing to add / remove; E_FAIL
// when the graph in use is null and on every completed call.
//
// Each run and each extraction reports through a local timer of its own
// ("Graph - Run Comparison Timer", "Graph - Get Roots To Add Timer",
// "Graph - Get Roots To Remove Timer") when timers are on.
//
// The comparator borrows its graphs: it neither creates nor deletes them,
// and copies share them. The lists hold copies of ids and outlive the
// graphs. Not synchronised: a comparator and its graphs belong to one
// thread at a time.
#ifndef VEKZOL_COMPARISON_VEKZOLGRAPHCOMPARATOR_H_
#define VEKZOL_COMPARISON_VEKZOLGRAPHCOMPARATOR_H_

#include <deque>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLGraphComparator {
 public:
  // Stores both pointers; null ones are accepted here and refused by
  // RunComparison.
  VEKZOLGraphComparator(VEKZOLGraph* newGraph, VEKZOLGraph* oldGraph);
  // The six lists element by element and both pointers: the copy shares
  // the graphs.
  VEKZOLGraphComparator(const VEKZOLGraphComparator& other);
  // Replaces the six lists by copies of the other's, in field order, then
  // takes both pointers.
  VEKZOLGraphComparator& operator=(const VEKZOLGraphComparator& other);
  // Forgets the graphs, then releases the lists; never touches the graphs.
  ~VEKZOLGraphComparator();

  long RunComparison(bool checkNames);

  long GetVerticesToBeAdded(std::deque<CString>& ids);
  long GetVerticesToBeRemoved(std::deque<CString>& ids);
  long GetVerticesToBeMoved(std::deque<CString>& ids);
  long GetVerticesToChangeName(std::deque<CString>& ids);
  long GetEdgesToBeAdded(std::deque<CString>& ids);
  long GetEdgesToBeRemoved(std::deque<CString>& ids);

  long GetRootsToAdd(std::deque<CString>& rootVertexIds, std::deque<CString>& rootEdgeIds);
  long GetRootsToRemove(std::deque<CString>& rootVertexIds, std::deque<CString>& rootEdgeIds);

 protected:
  std::deque<CString> m_VerticesToBeAdded;
  std::deque<CString> m_VerticesToBeRemoved;
  std::deque<CString> m_VerticesToBeMoved;
  std::deque<CString> m_VerticesToChangeName;
  std::deque<CString> m_EdgesToBeAdded;
  std::deque<CString> m_EdgesToBeRemoved;
  VEKZOLGraph* m_NewGraph;
  VEKZOLGraph* m_OldGraph;

 private:
  // The shared body of GetRootsToAdd and GetRootsToRemove.
  static long ExtractRoots(const std::deque<CString>& vertexIds, const std::deque<CString>& edgeIds,
                           VEKZOLGraph* graph, const char* timerName, const char* graphName,
                           std::deque<CString>& rootVertexIds, std::deque<CString>& rootEdgeIds);
};

#endif  // VEKZOL_COMPARISON_VEKZOLGRAPHCOMPARATOR_H_
