// File: ModelObject.cpp
#include "ModelObject.h"

#include <algorithm>

namespace vekzol_tool {

namespace {

bool KeyBelow(const ModelObject::Attribute& attribute, const CString& key) {
  return attribute.first < key;
}

}  // namespace

long ModelObject::GetID(CString& id) {
  id = id_;
  return S_OK;
}

CString ModelObject::GetRefID() { return rare_ ? rare_->refId : CString(); }

long ModelObject::GetRefID(CString& refId) {
  refId = GetRefID();
  return S_OK;
}

long ModelObject::GetAttribute(const CString& key, CComVariant& value) {
  if (key.IsEmpty()) return E_INVALIDARG;
  if (!rare_) return E_FAIL;
  const auto& attributes = rare_->attributes;
  const auto found = std::lower_bound(attributes.begin(), attributes.end(), key, KeyBelow);
  if (found == attributes.end() || key < found->first) return E_FAIL;
  if (&found->second != &value) value = found->second;
  return S_OK;
}

long ModelObject::SetSCIID(const CString& sciid) {
  Rare().sciid = sciid;
  return S_OK;
}

CString ModelObject::GetSCIID() { return rare_ ? rare_->sciid : CString(); }

long ModelObject::GetSCIID(CString& sciid) {
  sciid = GetSCIID();
  return S_OK;
}

void ModelObject::SetAttribute(CString key, CComVariant value) {
  auto& attributes = Rare().attributes;
  const auto found = std::lower_bound(attributes.begin(), attributes.end(), key, KeyBelow);
  if (found != attributes.end() && !(key < found->first)) {
    found->second = value;
  } else {
    attributes.emplace(found, std::move(key), std::move(value));
  }
}

ModelObject::RareFields& ModelObject::Rare() {
  if (!rare_) rare_ = std::make_unique<RareFields>();
  return *rare_;
}

}  // namespace vekzol_tool
