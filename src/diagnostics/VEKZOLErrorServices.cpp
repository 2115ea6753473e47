// File: VEKZOLErrorServices.cpp
// The process-wide error list. The two static lists are defined in
// LibraryState.cpp, first in the library's load order.
#include <vekzol/diagnostics/VEKZOLErrorServices.h>

#include <memory>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/platform/Status.h>

namespace {

constexpr const char* kDefaultSolution = "Please Contact Your Administrator";

// The prefix of the composed text for `type`; none for unknown kinds.
const char* PrefixOf(VEKZOLErrType type) {
  switch (type) {
    case ErrTypeErrorA:
    case ErrTypeErrorB:
      return "****** ERROR:\t ";
    case ErrTypeWarning:
      return "****** WARNING:\t ";
    case ErrTypeInfo:
      return "Info:\t ";
  }
  return "";
}

}  // namespace

VEKZOLErrorServices::VEKZOLErrorServices() = default;

VEKZOLErrorServices& VEKZOLErrorServices::operator=(const VEKZOLErrorServices&) { return *this; }

VEKZOLErrorServices::~VEKZOLErrorServices() { ClearErrors(); }

long VEKZOLErrorServices::GenerateError(VEKZOLErrType type, CString message, CString solution,
                                        VEKIZOLObject* object, VEKIZOLRelation* relation) {
  if (message.IsEmpty()) {
    return E_INVALIDARG;
  }
  if (solution.IsEmpty()) {
    solution = kDefaultSolution;
  }
  const char* const prefix = PrefixOf(type);

  // The id takes no part in the entry. It is fetched all the same, so that
  // a dangling pointer fails now, in the caller's call, rather than later
  // when the host reads the record.
  if (object != nullptr) {
    const CString id = object->GetID();
    static_cast<void>(id);
  } else if (relation != nullptr) {
    const CString id = relation->GetID();
    static_cast<void>(id);
  }

  auto record = std::make_unique<VEKZOLError>();
  record->m_ErrType = type;
  record->m_Message = message;
  record->m_ErrorObject = object;
  record->m_ErrorRelation = relation;
  record->m_Solution = solution;
  _ListErrors.push_back(record.get());
  record.release();

  // If memory runs out from here on, the record stays listed without its
  // text, and the two lists differ in length.
  CString text(prefix);
  text += message;
  text += ". ";
  text += solution;
  VEKZOLLog::WriteMsg(text, 0);
  _ListErrMsgs.push_back(text);
  return E_FAIL;
}

long VEKZOLErrorServices::GetErrorList(std::deque<VEKZOLError*>& errors) {
  if (_ListErrors.empty()) {
    return S_FALSE;
  }
  errors = _ListErrors;
  return S_OK;
}

long VEKZOLErrorServices::GetListErrMsgs(std::deque<CString>& messages) {
  if (_ListErrMsgs.empty()) {
    return S_FALSE;
  }
  messages = _ListErrMsgs;
  return S_OK;
}

long VEKZOLErrorServices::ClearErrors() {
  for (VEKZOLError* record : _ListErrors) {
    delete record;
  }
  // Swapping with new empty deques gives the old storage back, which
  // clear() alone would keep.
  std::deque<VEKZOLError*>().swap(_ListErrors);
  std::deque<CString>().swap(_ListErrMsgs);
  return S_OK;
}
