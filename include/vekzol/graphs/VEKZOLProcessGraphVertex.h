// File: VEKZOLProcessGraphVertex.h
// VEKZOLProcessGraphVertex: a VEKZOLGraphVertex under the name of a
// process step, offered to the host as it is. It adds nothing: every
// operation is the base's, and it counts in VEKZOLGraphVertex::_RefCounter.
// The library itself never makes one; a process graph holds plain vertices.
#ifndef VEKZOL_GRAPHS_VEKZOLPROCESSGRAPHVERTEX_H_
#define VEKZOL_GRAPHS_VEKZOLPROCESSGRAPHVERTEX_H_

#include <vekzol/graphs/VEKZOLGraphVertex.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLProcessGraphVertex : public VEKZOLGraphVertex {
 public:
  explicit VEKZOLProcessGraphVertex(VEKIZOLObject* object);
  VEKZOLProcessGraphVertex(const VEKZOLProcessGraphVertex& other);
  VEKZOLProcessGraphVertex& operator=(const VEKZOLProcessGraphVertex& other);
  virtual ~VEKZOLProcessGraphVertex();
};

#endif  // VEKZOL_GRAPHS_VEKZOLPROCESSGRAPHVERTEX_H_
