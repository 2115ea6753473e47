// File: ModelObject.h
// An object of a model file as the library sees it: the object interface
// answered from the few texts the file gave, without the library's general
// object (two interface bases, a counter shared by all, an ordered map of
// attributes each). A file of a million objects makes a million of these
// in one array, so reading it costs about what parsing it does.
//
// Its answers are those of the library's object with the same texts: ids,
// names and the SCIID as given ("" when absent), attributes by exact key
// (E_INVALIDARG for an empty key, E_FAIL for a missing one), SetSCIID
// stores. The backup name and ident path ride along for the vertex that
// the object gets.
#ifndef VEKZOL_TOOLS_VEKZOL_MODELOBJECT_H_
#define VEKZOL_TOOLS_VEKZOL_MODELOBJECT_H_

#include <memory>
#include <utility>
#include <vector>

#include <vekzol/VEKZOLBase.h>

namespace vekzol_tool {

class ModelObject final : public VEKIZOLObject {
 public:
  // An attribute: its name and value, kept in name order.
  using Attribute = std::pair<CString, CComVariant>;

  ModelObject(CString id, CString name) : id_(std::move(id)), name_(std::move(name)) {}
  ModelObject(ModelObject&&) = default;
  ModelObject& operator=(ModelObject&&) = delete;
  ~ModelObject() = default;

  CString GetID() override { return id_; }
  long GetID(CString& id) override;
  CString GetRefID() override;
  long GetRefID(CString& refId) override;
  long GetAttribute(const CString& key, CComVariant& value) override;
  CString IsA() override { return CString("ModelObject"); }
  CString GetDisplayName() override { return name_; }
  long SetSCIID(const CString& sciid) override;
  CString GetSCIID() override;
  long GetSCIID(CString& sciid) override;

  // What the file gave beyond the id and name. An attribute given twice
  // keeps its last value, as a map assigned twice does.
  void SetRefID(CString refId) { Rare().refId = std::move(refId); }
  void SetAttribute(CString key, CComVariant value);

  const CString& BackupName() const { return backupName_; }
  const CString& IdentPath() const { return identPath_; }
  bool HasBackupName() const { return hasBackupName_; }
  bool HasIdentPath() const { return hasIdentPath_; }
  void SetBackupName(CString text) {
    backupName_ = std::move(text);
    hasBackupName_ = true;
  }
  void SetIdentPath(CString text) {
    identPath_ = std::move(text);
    hasIdentPath_ = true;
  }

 private:
  // The fields most objects of a large model leave out, kept apart.
  struct RareFields {
    CString refId;
    CString sciid;
    std::vector<Attribute> attributes;
  };
  RareFields& Rare();

  CString id_;
  CString name_;
  CString backupName_;
  CString identPath_;
  std::unique_ptr<RareFields> rare_;
  bool hasBackupName_ = false;
  bool hasIdentPath_ = false;
};

}  // namespace vekzol_tool

#endif  // VEKZOL_TOOLS_VEKZOL_MODELOBJECT_H_
