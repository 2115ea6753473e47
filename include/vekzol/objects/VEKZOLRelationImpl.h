// File: VEKZOLRelationImpl.h
// VEKZOLRelationImpl: the library's own relation. Id, type and ends are
// fixed at construction; the ref id is always empty. The ends are borrowed:
// the relation never deletes them.
//
// _RefCounter behaves as VEKZOLObjectImpl's: plus one in the value
// constructor, minus one in the destructor, untouched by copies.
#ifndef VEKZOL_OBJECTS_VEKZOLRELATIONIMPL_H_
#define VEKZOL_OBJECTS_VEKZOLRELATIONIMPL_H_

#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/objects/VEKZOLBaseObjectImpl.h>

// The data comes first and the interface second, the reverse of
// VEKZOLObjectImpl; hosts rely on both layouts.
class VEKZOL_API VEKZOLRelationImpl : public VEKZOLBaseObjectImpl, public VEKIZOLRelation {
 public:
  // Note the order: the type stands before the id.
  VEKZOLRelationImpl(VEKIZOLObject* source, VEKIZOLObject* target, CString type, CString id);
  VEKZOLRelationImpl(const VEKZOLRelationImpl& other);
  VEKZOLRelationImpl& operator=(const VEKZOLRelationImpl& other);
  // Sets both ends to null; the ends themselves are not touched.
  virtual ~VEKZOLRelationImpl();

  CString GetID() override;
  long GetID(CString& id) override;
  CString GetRefID() override;
  long GetRefID(CString& refId) override;
  long GetAttribute(const CString& key, CComVariant& value) override;
  // "VEKZOLRelationImpl".
  CString IsA() override;

  long GetSourceObject(VEKIZOLObject*& object) override;
  long GetTargetObject(VEKIZOLObject*& object) override;
  long GetRelationType(CString& type) override;

  static int _RefCounter;

 protected:
  VEKIZOLObject* m_SourceObject;
  VEKIZOLObject* m_TargetObject;
  CString m_RelationType;
};

#endif  // VEKZOL_OBJECTS_VEKZOLRELATIONIMPL_H_
