// File: VEKZOLObjectImpl.h
// VEKZOLObjectImpl: the library's own model object. The ids are fixed at
// construction; the attributes, display name and SCIID may change.
//
// _RefCounter counts constructions minus destructions: the copy
// constructor leaves it alone while the destructor still subtracts, so
// each copy made and destroyed lowers it by one. Nothing in the library
// reads it.
#ifndef VEKZOL_OBJECTS_VEKZOLOBJECTIMPL_H_
#define VEKZOL_OBJECTS_VEKZOLOBJECTIMPL_H_

#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKZOLBaseObjectImpl.h>

// The interface comes first and the data second; VEKZOLRelationImpl has the
// reverse order, and hosts rely on both layouts.
class VEKZOL_API VEKZOLObjectImpl : public VEKIZOLObject, public VEKZOLBaseObjectImpl {
 public:
  explicit VEKZOLObjectImpl(CString id);
  VEKZOLObjectImpl(CString id, CString refId);
  VEKZOLObjectImpl(const VEKZOLObjectImpl& other);
  VEKZOLObjectImpl& operator=(const VEKZOLObjectImpl& other);
  virtual ~VEKZOLObjectImpl();

  CString GetID() override;
  long GetID(CString& id) override;
  CString GetRefID() override;
  long GetRefID(CString& refId) override;
  long GetAttribute(const CString& key, CComVariant& value) override;
  // "VEKZOLObjectImpl".
  CString IsA() override;

  CString GetDisplayName() override;
  long SetDisplayName(const CString& name);
  long SetSCIID(const CString& sciid) override;
  CString GetSCIID() override;
  long GetSCIID(CString& sciid) override;

  static int _RefCounter;

 protected:
  CString m_DisplayName;
  CString m_SCIID;
};

#endif  // VEKZOL_OBJECTS_VEKZOLOBJECTIMPL_H_
