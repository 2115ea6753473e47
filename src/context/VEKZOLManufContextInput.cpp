// File: VEKZOLManufContextInput.cpp
// The manufacturing context record: its switchboard of relation keywords
// and the two groupings of the eight keywords, by role (composed strings)
// and by the kind of thing a relation leads to (lists).
#include <vekzol/context/VEKZOLManufContextInput.h>

#include <cstddef>

#include <vekzol/diagnostics/VEKZOLLog.h>

namespace {

constexpr const char* kProcessesProd = "proc_processes_prod";
constexpr const char* kCreatesProd = "proc_creates_prod";
constexpr const char* kFirstProcessesProd = "proc_firstprocesses_prod";
constexpr const char* kAttachesResource = "process_attaches_resource";
constexpr const char* kRemovesProd = "proc_removes_prod";
constexpr const char* kDetachesResource = "process_detaches_resource";
constexpr const char* kMustPrecedeProcess = "process_mustprecede_process";
constexpr const char* kRunsBeforeProcess = "process_runsbefore_process";

// The eight keywords in the order in which Initialize sets them.
constexpr const char* kAllKeywords[] = {kProcessesProd,      kCreatesProd,      kFirstProcessesProd,
                                        kAttachesResource,   kRemovesProd,      kDetachesResource,
                                        kMustPrecedeProcess, kRunsBeforeProcess};

// The groups, each in its fixed order of composition or appending: the
// order of the switchboard (alphabetical) never shows.
constexpr const char* kGlobalGroup[] = {kMustPrecedeProcess};
constexpr const char* kCommonParentGroup[] = {kRunsBeforeProcess};
constexpr const char* kIntegrateGroup[] = {kProcessesProd, kCreatesProd, kFirstProcessesProd,
                                           kAttachesResource};
constexpr const char* kRemoveGroup[] = {kRemovesProd, kDetachesResource};
constexpr const char* kProcGroup[] = {kMustPrecedeProcess, kRunsBeforeProcess};
constexpr const char* kProdGroup[] = {kProcessesProd, kCreatesProd, kFirstProcessesProd,
                                      kRemovesProd};
constexpr const char* kResrcGroup[] = {kAttachesResource, kDetachesResource};

using Switchboard = std::map<CString, bool>;

// The switch of `keyword`, without adding it.
bool IsOn(const Switchboard& relations, const char* keyword) {
  const auto found = relations.find(CString(keyword));
  return found != relations.end() && found->second;
}

// The keywords of `group` that are on, "#" between each two.
template <size_t N>
CString JoinOn(const Switchboard& relations, const char* const (&group)[N]) {
  CString joined;
  for (const char* keyword : group) {
    if (IsOn(relations, keyword)) {
      if (!joined.IsEmpty()) {
        joined += "#";
      }
      joined += keyword;
    }
  }
  return joined;
}

// Appends the keywords of `group` that are on to `list`.
template <size_t N>
void AppendOn(const Switchboard& relations, const char* const (&group)[N],
              std::deque<CString>& list) {
  for (const char* keyword : group) {
    if (IsOn(relations, keyword)) {
      list.push_back(CString(keyword));
    }
  }
}

}  // namespace

VEKZOLManufContextInput::VEKZOLManufContextInput() { Initialize(); }

VEKZOLManufContextInput::VEKZOLManufContextInput(const VEKZOLManufContextInput& other) = default;

VEKZOLManufContextInput& VEKZOLManufContextInput::operator=(const VEKZOLManufContextInput& other) =
    default;

VEKZOLManufContextInput::~VEKZOLManufContextInput() { Initialize(); }

void VEKZOLManufContextInput::Initialize() {
  ReferenceProcessID.Empty();
  RootProcessID.Empty();
  RootProductID.Empty();
  RootResourceID.Empty();
  HostValue1 = 0;
  for (const char* keyword : kAllKeywords) {
    m_Relations[CString(keyword)] = false;
  }
}

void VEKZOLManufContextInput::SetRelation(const CString& keyword, bool value) {
  m_Relations[keyword] = value;
}

bool VEKZOLManufContextInput::GetRelation(const CString& keyword) {
  const auto found = m_Relations.find(keyword);
  return found != m_Relations.end() && found->second;
}

CString VEKZOLManufContextInput::GetGlobalRelations() { return JoinOn(m_Relations, kGlobalGroup); }

CString VEKZOLManufContextInput::GetCommonParentRelations() {
  return JoinOn(m_Relations, kCommonParentGroup);
}

CString VEKZOLManufContextInput::GetIntegrateRelations() {
  return JoinOn(m_Relations, kIntegrateGroup);
}

CString VEKZOLManufContextInput::GetRemoveRelations() { return JoinOn(m_Relations, kRemoveGroup); }

void VEKZOLManufContextInput::GetProcRelations(std::deque<CString>& relations) {
  AppendOn(m_Relations, kProcGroup, relations);
}

void VEKZOLManufContextInput::GetProdRelations(std::deque<CString>& relations) {
  AppendOn(m_Relations, kProdGroup, relations);
}

void VEKZOLManufContextInput::GetResrcRelations(std::deque<CString>& relations) {
  AppendOn(m_Relations, kResrcGroup, relations);
}

void VEKZOLManufContextInput::SetOtherRelations(const CString& relations) {
  m_OtherRelations = relations;
}

CString VEKZOLManufContextInput::GetOtherRelations() { return m_OtherRelations; }

void VEKZOLManufContextInput::Print() {
  // The labels are fixed texts of the trace, irregular as they are: a double
  // blank in the first id label, and a colon after the last relation label
  // only.
  VEKZOLLog::WriteMsg("Info:\t Mfg Context Input -->", 0);
  VEKZOLLog::WriteMsg("Info:\t Reference  Process ID : " + ReferenceProcessID, 0);
  VEKZOLLog::WriteMsg("Info:\t Root Process ID : " + RootProcessID, 0);
  VEKZOLLog::WriteMsg("Info:\t Root Product ID : " + RootProductID, 0);
  VEKZOLLog::WriteMsg("Info:\t Root Resource ID : " + RootResourceID, 0);
  VEKZOLLog::WriteMsg("Info:\t Global Relations " + GetGlobalRelations(), 0);
  VEKZOLLog::WriteMsg("Info:\t CommonParent Relations " + GetCommonParentRelations(), 0);
  VEKZOLLog::WriteMsg("Info:\t Integrating Relations " + GetIntegrateRelations(), 0);
  VEKZOLLog::WriteMsg("Info:\t Removing Relations : " + GetRemoveRelations(), 0);
  VEKZOLLog::WriteMsg("Info:\t Mfg Context Input <--", 0);
}
