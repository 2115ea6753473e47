// File: VEKZOLRelationImpl.cpp
// The library's own relation between two borrowed objects.
#include <vekzol/objects/VEKZOLRelationImpl.h>

#include <utility>

// Constant-initialised, as VEKZOLObjectImpl's counter.
int VEKZOLRelationImpl::_RefCounter = 0;

// The base part takes the id alone: a relation has no ref id.
VEKZOLRelationImpl::VEKZOLRelationImpl(VEKIZOLObject* source, VEKIZOLObject* target, CString type,
                                       CString id)
    : VEKZOLBaseObjectImpl(std::move(id)),
      VEKIZOLRelation(),
      m_SourceObject(source),
      m_TargetObject(target),
      m_RelationType(std::move(type)) {
  ++_RefCounter;
}

// The ends are shared with the original, not cloned; the counter is left
// alone (see VEKZOLObjectImpl).
VEKZOLRelationImpl::VEKZOLRelationImpl(const VEKZOLRelationImpl& other)
    : VEKZOLBaseObjectImpl(other),
      VEKIZOLRelation(other),
      m_SourceObject(other.m_SourceObject),
      m_TargetObject(other.m_TargetObject),
      m_RelationType(other.m_RelationType) {}

VEKZOLRelationImpl& VEKZOLRelationImpl::operator=(const VEKZOLRelationImpl& other) {
  VEKZOLBaseObjectImpl::operator=(other);
  VEKIZOLRelation::operator=(other);
  m_SourceObject = other.m_SourceObject;
  m_TargetObject = other.m_TargetObject;
  m_RelationType = other.m_RelationType;
  return *this;
}

// The ends belong to the host: forget them, never delete them.
VEKZOLRelationImpl::~VEKZOLRelationImpl() {
  m_SourceObject = nullptr;
  m_TargetObject = nullptr;
  --_RefCounter;
}

CString VEKZOLRelationImpl::GetID() { return VEKZOLBaseObjectImpl::GetID(); }

long VEKZOLRelationImpl::GetID(CString& id) { return VEKZOLBaseObjectImpl::GetID(id); }

CString VEKZOLRelationImpl::GetRefID() { return VEKZOLBaseObjectImpl::GetRefID(); }

long VEKZOLRelationImpl::GetRefID(CString& refId) { return VEKZOLBaseObjectImpl::GetRefID(refId); }

long VEKZOLRelationImpl::GetAttribute(const CString& key, CComVariant& value) {
  return VEKZOLBaseObjectImpl::GetAttribute(key, value);
}

CString VEKZOLRelationImpl::IsA() { return CString("VEKZOLRelationImpl"); }

long VEKZOLRelationImpl::GetSourceObject(VEKIZOLObject*& object) {
  object = m_SourceObject;
  return S_OK;
}

long VEKZOLRelationImpl::GetTargetObject(VEKIZOLObject*& object) {
  object = m_TargetObject;
  return S_OK;
}

long VEKZOLRelationImpl::GetRelationType(CString& type) {
  type = m_RelationType;
  return S_OK;
}
