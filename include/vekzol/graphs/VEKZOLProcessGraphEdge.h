// File: VEKZOLProcessGraphEdge.h
// VEKZOLProcessGraphEdge: a VEKZOLGraphEdge under the name of a succession
// of process steps, offered to the host as it is. It adds nothing: every
// operation is the base's, and it counts in VEKZOLGraphEdge::_RefCounter.
// The library itself never makes one; a process graph holds plain edges.
#ifndef VEKZOL_GRAPHS_VEKZOLPROCESSGRAPHEDGE_H_
#define VEKZOL_GRAPHS_VEKZOLPROCESSGRAPHEDGE_H_

#include <vekzol/graphs/VEKZOLGraphEdge.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLProcessGraphEdge : public VEKZOLGraphEdge {
 public:
  explicit VEKZOLProcessGraphEdge(VEKIZOLRelation* relation);
  VEKZOLProcessGraphEdge(const VEKZOLProcessGraphEdge& other);
  VEKZOLProcessGraphEdge& operator=(const VEKZOLProcessGraphEdge& other);
  virtual ~VEKZOLProcessGraphEdge();
};

#endif  // VEKZOL_GRAPHS_VEKZOLPROCESSGRAPHEDGE_H_
