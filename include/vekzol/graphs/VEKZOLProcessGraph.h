// File: VEKZOLProcessGraph.h
// VEKZOLProcessGraph: a VEKZOLGraph in the words of process planning.
// Starting processes are the roots, ending processes the leaves, next
// processes the children of a vertex. It adds no data: vertices and edges
// are those of the base (AddVertex and AddEdge make plain VEKZOLGraphVertex
// and VEKZOLGraphEdge), and every operation not declared here is the
// base's.
//
// Statuses: the five operations of this class answer E_FAIL after doing
// their work, in every case, whatever the base answered (GetNextProcesses
// alone answers E_INVALIDARG for a null vertex). Read the results from the
// deques. Not synchronised.
#ifndef VEKZOL_GRAPHS_VEKZOLPROCESSGRAPH_H_
#define VEKZOL_GRAPHS_VEKZOLPROCESSGRAPH_H_

#include <deque>

#include <vekzol/graphs/VEKZOLGraph.h>
#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLProcessGraph : public VEKZOLGraph {
 public:
  explicit VEKZOLProcessGraph(CString name = "");
  // The base's copying constructor with no name and without ident paths:
  // no other combination is offered for process graphs. `source` is only
  // read.
  VEKZOLProcessGraph(VEKZOLProcessGraph& source);
  // The base's: both graphs then share their vertices and edges.
  VEKZOLProcessGraph& operator=(const VEKZOLProcessGraph& other);
  virtual ~VEKZOLProcessGraph();

  // The base's Build and Cleanup; E_FAIL, always (even for two empty
  // deques, where the base answers E_INVALIDARG and writes no trace line).
  long Build(std::deque<VEKIZOLObject*>& objects, std::deque<VEKIZOLRelation*>& relations);
  long Cleanup();
  // The base's one-deque GetRoots / GetLeaves; E_FAIL, always.
  long GetStartingProcesses(std::deque<VEKZOLGraphVertex*>& processes);
  long GetEndingProcesses(std::deque<VEKZOLGraphVertex*>& processes);
  // The direct successors: GetChildren of `process`, one entry per
  // outgoing edge in edge order. E_INVALIDARG for null, else E_FAIL. The
  // vertex need not belong to this graph.
  long GetNextProcesses(VEKZOLGraphVertex* process, std::deque<VEKZOLGraphVertex*>& processes);
};

#endif  // VEKZOL_GRAPHS_VEKZOLPROCESSGRAPH_H_
