// File: VEKZOLErrorTestSupport.h
// Shared pieces of the error services' test programs: a host object and a
// host relation that count how often their ids are asked for, and a fresh
// trace file dated by the trace log's fixed clock. Not installed.
#ifndef VEKZOL_SRC_DIAGNOSTICS_VEKZOLERRORTESTSUPPORT_H_
#define VEKZOL_SRC_DIAGNOSTICS_VEKZOLERRORTESTSUPPORT_H_

#include <initializer_list>
#include <string>

#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/Status.h>

#include "diagnostics/VEKZOLLogTestSupport.h"

namespace error_test {

// A host object that counts the calls of each form of GetID.
class CountingObject : public VEKIZOLObject {
 public:
  explicit CountingObject(const char* id) : id_(id) {}
  CString GetID() override {
    ++idCalls;
    return id_;
  }
  long GetID(CString& id) override {
    ++idByReferenceCalls;
    id = id_;
    return S_OK;
  }
  CString GetRefID() override { return CString(); }
  long GetRefID(CString& refId) override {
    refId.Empty();
    return S_OK;
  }
  long GetAttribute(const CString&, CComVariant&) override { return E_FAIL; }
  CString IsA() override { return "CountingObject"; }
  CString GetDisplayName() override { return id_; }
  long SetSCIID(const CString&) override { return S_OK; }
  CString GetSCIID() override { return CString(); }
  long GetSCIID(CString& sciid) override {
    sciid.Empty();
    return S_OK;
  }

  int idCalls = 0;
  int idByReferenceCalls = 0;

 private:
  CString id_;
};

// A host relation that counts the calls of each form of GetID.
class CountingRelation : public VEKIZOLRelation {
 public:
  explicit CountingRelation(const char* id) : id_(id) {}
  CString GetID() override {
    ++idCalls;
    return id_;
  }
  long GetID(CString& id) override {
    ++idByReferenceCalls;
    id = id_;
    return S_OK;
  }
  CString GetRefID() override { return CString(); }
  long GetRefID(CString& refId) override {
    refId.Empty();
    return S_OK;
  }
  long GetAttribute(const CString&, CComVariant&) override { return E_FAIL; }
  CString IsA() override { return "CountingRelation"; }
  long GetSourceObject(VEKIZOLObject*& object) override {
    object = nullptr;
    return S_OK;
  }
  long GetTargetObject(VEKIZOLObject*& object) override {
    object = nullptr;
    return S_OK;
  }
  long GetRelationType(CString& type) override {
    type.Empty();
    return S_OK;
  }

  int idCalls = 0;
  int idByReferenceCalls = 0;

 private:
  CString id_;
};

// Installs the fixed clock for the life of the object, on a log that has
// written nothing yet and a directory without earlier trace files.
class FixedTrace {
 public:
  FixedTrace() : scoped_(&system_) {
    vekzol_log_test::RemoveTraceFiles(vekzol_log_test::TestTempDir());
    VEKZOLLogTestPeer::Reset();
  }

  // Makes every open of the trace file fail.
  void FailOpens() { system_.failOpen = true; }

  // What the trace file holds after its header; "" when there is no file.
  std::string Body() const { return vekzol_log_test::TraceBody(); }

  bool FileExists() const {
    return vekzol_log_test::FileExists(
        vekzol_log_test::TracePath(vekzol_log_test::TestTempDir(), vekzol_log_test::kStamp));
  }

 private:
  vekzol_log_test::FixedClockSystem system_;
  vekzol_log_test::ScopedSystem scoped_;
};

// The trace lines of `messages` as the fixed clock dates them.
inline std::string Lines(std::initializer_list<std::string> messages) {
  std::string lines;
  for (const std::string& message : messages) {
    lines += vekzol_log_test::Line(message);
  }
  return lines;
}

}  // namespace error_test

#endif  // VEKZOL_SRC_DIAGNOSTICS_VEKZOLERRORTESTSUPPORT_H_
