// File: VEKIZOLRelation.h
// VEKIZOLRelation: a directed link between two objects of the host's model:
// the base object's operations plus the two ends (either may be null) and
// a relation type that the library never interprets.
#ifndef VEKZOL_OBJECTS_VEKIZOLRELATION_H_
#define VEKZOL_OBJECTS_VEKIZOLRELATION_H_

#include <vekzol/objects/VEKIZOLBaseObject.h>
#include <vekzol/objects/VEKIZOLObject.h>

class VEKZOL_API VEKIZOLRelation : public VEKIZOLBaseObject {
 public:
  VEKIZOLRelation();
  VEKIZOLRelation(const VEKIZOLRelation& other);
  VEKIZOLRelation& operator=(const VEKIZOLRelation& other);

  // Assign the end (perhaps null) to `object`; S_OK.
  virtual long GetSourceObject(VEKIZOLObject*& object) = 0;
  virtual long GetTargetObject(VEKIZOLObject*& object) = 0;
  // Assigns the relation type to `type`; S_OK.
  virtual long GetRelationType(CString& type) = 0;

 protected:
  ~VEKIZOLRelation() = default;
};

#endif  // VEKZOL_OBJECTS_VEKIZOLRELATION_H_
