// File: VEKZOLBaseObjectImpl.cpp
// The ids and the attribute map shared by the library's objects and
// relations.
#include <vekzol/objects/VEKZOLBaseObjectImpl.h>

#include <utility>

VEKZOLBaseObjectImpl::VEKZOLBaseObjectImpl(CString id) : m_ID(std::move(id)) {}

VEKZOLBaseObjectImpl::VEKZOLBaseObjectImpl(CString id, CString refId)
    : m_ID(std::move(id)), m_RefID(std::move(refId)) {}

// The map's copy copies every value with CComVariant's copy constructor,
// i.e. by VariantCopy: text values are duplicated, never shared.
VEKZOLBaseObjectImpl::VEKZOLBaseObjectImpl(const VEKZOLBaseObjectImpl& other)
    : VEKIZOLBaseObject(other),
      m_ID(other.m_ID),
      m_RefID(other.m_RefID),
      m_Attributes(other.m_Attributes) {}

VEKZOLBaseObjectImpl& VEKZOLBaseObjectImpl::operator=(const VEKZOLBaseObjectImpl& other) {
  VEKIZOLBaseObject::operator=(other);
  m_ID = other.m_ID;
  m_RefID = other.m_RefID;
  // Build the copy aside and swap it in, so that a value whose copy raises
  // leaves this map as it was (and self-assignment needs no special case).
  std::map<CString, CComVariant> attributes(other.m_Attributes);
  m_Attributes.swap(attributes);
  return *this;
}

// Empties the ids and releases every value in the body, before the members
// themselves go: nothing of the object's content is left to the member
// destructors.
VEKZOLBaseObjectImpl::~VEKZOLBaseObjectImpl() {
  m_ID = "";
  m_RefID = "";
  m_Attributes.clear();
}

CString VEKZOLBaseObjectImpl::GetID() { return m_ID; }

long VEKZOLBaseObjectImpl::GetID(CString& id) {
  id = m_ID;
  return S_OK;
}

CString VEKZOLBaseObjectImpl::GetRefID() { return m_RefID; }

long VEKZOLBaseObjectImpl::GetRefID(CString& refId) {
  refId = m_RefID;
  return S_OK;
}

long VEKZOLBaseObjectImpl::GetAttribute(const CString& key, CComVariant& value) {
  if (key.IsEmpty()) {
    return E_INVALIDARG;
  }
  auto found = m_Attributes.find(key);
  if (found == m_Attributes.end()) {
    return E_FAIL;
  }
  // The stored value is handed out as it is, whatever its type. Copying a
  // variant onto itself would free its text before reading it, hence the
  // test. A failed copy leaves `value` as VT_ERROR and raises.
  if (&found->second != &value) {
    value = found->second;
  }
  return S_OK;
}

long VEKZOLBaseObjectImpl::SetAttribute(const CString& key, const CComVariant& value) {
  if (key.IsEmpty()) {
    return E_INVALIDARG;
  }
  auto found = m_Attributes.lower_bound(key);
  if (found != m_Attributes.end() && !(key < found->first)) {
    if (&found->second != &value) {
      found->second = value;
    }
    return S_FALSE;
  }
  m_Attributes.emplace_hint(found, key, value);
  return S_OK;
}
