// File: VEKIZOLObject.h
// VEKIZOLObject: a process, product or resource of the host's model as the
// graphs see it: the base object's operations plus a display name and an
// SCIID (a further identifier, opaque to the library).
#ifndef VEKZOL_OBJECTS_VEKIZOLOBJECT_H_
#define VEKZOL_OBJECTS_VEKIZOLOBJECT_H_

#include <vekzol/objects/VEKIZOLBaseObject.h>

class VEKZOL_API VEKIZOLObject : public VEKIZOLBaseObject {
 public:
  VEKIZOLObject();
  VEKIZOLObject(const VEKIZOLObject& other);
  VEKIZOLObject& operator=(const VEKIZOLObject& other);

  virtual CString GetDisplayName() = 0;
  virtual long SetSCIID(const CString& sciid) = 0;
  virtual CString GetSCIID() = 0;
  virtual long GetSCIID(CString& sciid) = 0;

 protected:
  ~VEKIZOLObject() = default;
};

#endif  // VEKZOL_OBJECTS_VEKIZOLOBJECT_H_
