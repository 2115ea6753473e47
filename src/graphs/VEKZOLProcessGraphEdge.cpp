// File: VEKZOLProcessGraphEdge.cpp
// Everything is the base's, the counter included: the value constructor
// counts through the base's, the copy constructor leaves the count alone.
#include <vekzol/graphs/VEKZOLProcessGraphEdge.h>

VEKZOLProcessGraphEdge::VEKZOLProcessGraphEdge(VEKIZOLRelation* relation)
    : VEKZOLGraphEdge(relation) {}

VEKZOLProcessGraphEdge::VEKZOLProcessGraphEdge(const VEKZOLProcessGraphEdge& other)
    : VEKZOLGraphEdge(other) {}

VEKZOLProcessGraphEdge& VEKZOLProcessGraphEdge::operator=(const VEKZOLProcessGraphEdge& other) {
  VEKZOLGraphEdge::operator=(other);
  return *this;
}

VEKZOLProcessGraphEdge::~VEKZOLProcessGraphEdge() = default;
