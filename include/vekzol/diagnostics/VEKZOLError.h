// File: VEKZOLError.h
// VEKZOLError: one entry of the error list that VEKZOLErrorServices keeps,
// made by one GenerateError call. A plain record: the host reads its five
// public fields directly.
//
// Contract:
// - The object and relation pointers are kept as they were given, neither
//   owned nor counted nor checked later: a record may outlive what it points
//   to, and reading them then is the caller's risk.
// - A default-constructed record has empty texts, null pointers and the
//   kind 0 (no kind).
// - Copies are member by member: pointers are copied, not what they point
//   to. The destructor sets both pointers to null before the texts go.
#ifndef VEKZOL_DIAGNOSTICS_VEKZOLERROR_H_
#define VEKZOL_DIAGNOSTICS_VEKZOLERROR_H_

#include <vekzol/diagnostics/VEKZOLErrType.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLError {
 public:
  VEKZOLError();
  VEKZOLError(const VEKZOLError& other);
  VEKZOLError& operator=(const VEKZOLError& other);
  ~VEKZOLError();

  // Kind of the entry.
  VEKZOLErrType m_ErrType;
  // The object the entry concerns, or null. Not owned.
  VEKIZOLObject* m_ErrorObject;
  // The relation the entry concerns, or null. Not owned.
  VEKIZOLRelation* m_ErrorRelation;
  // The first text, as the caller gave it.
  CString m_Message;
  // What the user should do, after defaulting.
  CString m_Solution;
};

#endif  // VEKZOL_DIAGNOSTICS_VEKZOLERROR_H_
