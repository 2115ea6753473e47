// File: VEKZOLObjectImpl.cpp
// The library's own model object.
#include <vekzol/objects/VEKZOLObjectImpl.h>

#include <utility>

// Constant-initialised, so it reads 0 before any dynamic initialisation of
// the host's statics has run.
int VEKZOLObjectImpl::_RefCounter = 0;

VEKZOLObjectImpl::VEKZOLObjectImpl(CString id)
    : VEKIZOLObject(), VEKZOLBaseObjectImpl(std::move(id)) {
  ++_RefCounter;
}

VEKZOLObjectImpl::VEKZOLObjectImpl(CString id, CString refId)
    : VEKIZOLObject(), VEKZOLBaseObjectImpl(std::move(id), std::move(refId)) {
  ++_RefCounter;
}

// Copies do not count, while their destruction does: hosts have always seen
// the counter sink by one per copy, and that is kept.
VEKZOLObjectImpl::VEKZOLObjectImpl(const VEKZOLObjectImpl& other)
    : VEKIZOLObject(other),
      VEKZOLBaseObjectImpl(other),
      m_DisplayName(other.m_DisplayName),
      m_SCIID(other.m_SCIID) {}

VEKZOLObjectImpl& VEKZOLObjectImpl::operator=(const VEKZOLObjectImpl& other) {
  VEKIZOLObject::operator=(other);
  VEKZOLBaseObjectImpl::operator=(other);
  m_DisplayName = other.m_DisplayName;
  m_SCIID = other.m_SCIID;
  return *this;
}

VEKZOLObjectImpl::~VEKZOLObjectImpl() { --_RefCounter; }

// The operations of VEKIZOLBaseObject are reached through two subobjects
// (one per base); defining them here gives both the same final overrider.
CString VEKZOLObjectImpl::GetID() { return VEKZOLBaseObjectImpl::GetID(); }

long VEKZOLObjectImpl::GetID(CString& id) { return VEKZOLBaseObjectImpl::GetID(id); }

CString VEKZOLObjectImpl::GetRefID() { return VEKZOLBaseObjectImpl::GetRefID(); }

long VEKZOLObjectImpl::GetRefID(CString& refId) { return VEKZOLBaseObjectImpl::GetRefID(refId); }

long VEKZOLObjectImpl::GetAttribute(const CString& key, CComVariant& value) {
  return VEKZOLBaseObjectImpl::GetAttribute(key, value);
}

CString VEKZOLObjectImpl::IsA() { return CString("VEKZOLObjectImpl"); }

CString VEKZOLObjectImpl::GetDisplayName() { return m_DisplayName; }

long VEKZOLObjectImpl::SetDisplayName(const CString& name) {
  m_DisplayName = name;
  return S_OK;
}

long VEKZOLObjectImpl::SetSCIID(const CString& sciid) {
  m_SCIID = sciid;
  return S_OK;
}

CString VEKZOLObjectImpl::GetSCIID() { return m_SCIID; }

long VEKZOLObjectImpl::GetSCIID(CString& sciid) {
  sciid = m_SCIID;
  return S_OK;
}
