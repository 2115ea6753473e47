// File: ModelRelation.h
// A relation of a model file as the library sees it: its id, its type and
// its two ends (objects of the same file, or null for an end that names
// no object), answered as the library's relation answers them. A relation
// has no ref id and no attributes.
#ifndef VEKZOL_TOOLS_VEKZOL_MODELRELATION_H_
#define VEKZOL_TOOLS_VEKZOL_MODELRELATION_H_

#include <utility>

#include <vekzol/VEKZOLBase.h>

namespace vekzol_tool {

class ModelRelation final : public VEKIZOLRelation {
 public:
  ModelRelation(CString id, CString type, VEKIZOLObject* source, VEKIZOLObject* target)
      : id_(std::move(id)), type_(std::move(type)), source_(source), target_(target) {}
  ModelRelation(ModelRelation&&) = default;
  ModelRelation& operator=(ModelRelation&&) = delete;
  ~ModelRelation() = default;

  CString GetID() override { return id_; }
  long GetID(CString& id) override {
    id = id_;
    return S_OK;
  }
  CString GetRefID() override { return CString(); }
  long GetRefID(CString& refId) override {
    refId = CString();
    return S_OK;
  }
  long GetAttribute(const CString& key, CComVariant&) override {
    return key.IsEmpty() ? E_INVALIDARG : E_FAIL;
  }
  CString IsA() override { return CString("ModelRelation"); }
  long GetSourceObject(VEKIZOLObject*& object) override {
    object = source_;
    return S_OK;
  }
  long GetTargetObject(VEKIZOLObject*& object) override {
    object = target_;
    return S_OK;
  }
  long GetRelationType(CString& type) override {
    type = type_;
    return S_OK;
  }

 private:
  CString id_;
  CString type_;
  VEKIZOLObject* source_;
  VEKIZOLObject* target_;
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_MODELRELATION_H_
