// File: VEKZOLProcessGraphVertex.cpp
// Everything is the base's, the counter included: the value constructor
// counts through the base's, the copy constructor leaves the count alone.
#include <vekzol/graphs/VEKZOLProcessGraphVertex.h>

VEKZOLProcessGraphVertex::VEKZOLProcessGraphVertex(VEKIZOLObject* object)
    : VEKZOLGraphVertex(object) {}

VEKZOLProcessGraphVertex::VEKZOLProcessGraphVertex(const VEKZOLProcessGraphVertex& other)
    : VEKZOLGraphVertex(other) {}

VEKZOLProcessGraphVertex& VEKZOLProcessGraphVertex::operator=(
    const VEKZOLProcessGraphVertex& other) {
  VEKZOLGraphVertex::operator=(other);
  return *this;
}

VEKZOLProcessGraphVertex::~VEKZOLProcessGraphVertex() = default;
