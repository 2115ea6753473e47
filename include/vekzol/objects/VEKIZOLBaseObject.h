// File: VEKIZOLBaseObject.h
// VEKIZOLBaseObject: what the library knows of every element of the host's
// model: an id (the key of graphs and comparisons), a second "ref" id,
// named attribute values and a type name.
//
// A pure table of virtual operations without a destructor: nothing is ever
// deleted through an interface pointer. Deletion goes through a concrete
// type or through VEKZOLBaseObjectImpl.
#ifndef VEKZOL_OBJECTS_VEKIZOLBASEOBJECT_H_
#define VEKZOL_OBJECTS_VEKIZOLBASEOBJECT_H_

#include <vekzol/platform/CComVariant.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKIZOLBaseObject {
 public:
  VEKIZOLBaseObject();
  VEKIZOLBaseObject(const VEKIZOLBaseObject& other);
  VEKIZOLBaseObject& operator=(const VEKIZOLBaseObject& other);

  virtual CString GetID() = 0;
  // Assigns the id to `id`; S_OK.
  virtual long GetID(CString& id) = 0;
  virtual CString GetRefID() = 0;
  virtual long GetRefID(CString& refId) = 0;
  // Copies the attribute `key` into `value`: S_OK; E_INVALIDARG for an
  // empty key, E_FAIL for a missing one, `value` untouched in both cases.
  virtual long GetAttribute(const CString& key, CComVariant& value) = 0;
  // The name of the concrete class.
  virtual CString IsA() = 0;

 protected:
  // No destructor in the table: a protected non-virtual one keeps
  // `delete` through the interface from compiling.
  ~VEKIZOLBaseObject() = default;
};

#endif  // VEKZOL_OBJECTS_VEKIZOLBASEOBJECT_H_
