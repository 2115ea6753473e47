// File: VEKZOLBaseObjectImpl.h
// VEKZOLBaseObjectImpl: the data behind the library's objects and
// relations: the id, the ref id and the attribute map. It stays abstract
// (IsA is left to the concrete class) and adds a virtual destructor, the
// one way to delete an object or relation without knowing its class.
//
// Attributes are keyed by case-sensitive text (ordered by `_mbscmp`) and
// hold deep copies of the values. There is no removal and no enumeration.
#ifndef VEKZOL_OBJECTS_VEKZOLBASEOBJECTIMPL_H_
#define VEKZOL_OBJECTS_VEKZOLBASEOBJECTIMPL_H_

#include <map>

#include <vekzol/objects/VEKIZOLBaseObject.h>

class VEKZOL_API VEKZOLBaseObjectImpl : public VEKIZOLBaseObject {
 public:
  explicit VEKZOLBaseObjectImpl(CString id);
  VEKZOLBaseObjectImpl(CString id, CString refId);
  VEKZOLBaseObjectImpl(const VEKZOLBaseObjectImpl& other);
  VEKZOLBaseObjectImpl& operator=(const VEKZOLBaseObjectImpl& other);
  // Empties both ids and removes all attributes.
  virtual ~VEKZOLBaseObjectImpl();

  CString GetID() override;
  long GetID(CString& id) override;
  CString GetRefID() override;
  long GetRefID(CString& refId) override;
  long GetAttribute(const CString& key, CComVariant& value) override;

  // Stores a copy of `value` under `key`: S_OK for a new key, S_FALSE when
  // an existing value was overwritten, E_INVALIDARG for an empty key.
  long SetAttribute(const CString& key, const CComVariant& value);

 protected:
  CString m_ID;
  CString m_RefID;
  std::map<CString, CComVariant> m_Attributes;
};

#endif  // VEKZOL_OBJECTS_VEKZOLBASEOBJECTIMPL_H_
