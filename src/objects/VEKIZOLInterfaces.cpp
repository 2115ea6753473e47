// File: VEKIZOLInterfaces.cpp
// The special members of the three model interfaces. They hold no data, so
// every one of them is empty in effect; they are defined here, out of line,
// so that the shared library exports them as real symbols that hosts (and
// derived classes compiled against the import side) link to.
#include <vekzol/objects/VEKIZOLBaseObject.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>

VEKIZOLBaseObject::VEKIZOLBaseObject() = default;
VEKIZOLBaseObject::VEKIZOLBaseObject(const VEKIZOLBaseObject& /*other*/) = default;
VEKIZOLBaseObject& VEKIZOLBaseObject::operator=(const VEKIZOLBaseObject& /*other*/) = default;

VEKIZOLObject::VEKIZOLObject() = default;
VEKIZOLObject::VEKIZOLObject(const VEKIZOLObject& other) : VEKIZOLBaseObject(other) {}
VEKIZOLObject& VEKIZOLObject::operator=(const VEKIZOLObject& other) {
  VEKIZOLBaseObject::operator=(other);
  return *this;
}

VEKIZOLRelation::VEKIZOLRelation() = default;
VEKIZOLRelation::VEKIZOLRelation(const VEKIZOLRelation& other) : VEKIZOLBaseObject(other) {}
VEKIZOLRelation& VEKIZOLRelation::operator=(const VEKIZOLRelation& other) {
  VEKIZOLBaseObject::operator=(other);
  return *this;
}
