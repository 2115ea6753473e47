// File: VEKZOLErrorServices.h
// VEKZOLErrorServices: the process-wide list of errors, warnings and notes
// that the host fills and reads. Each GenerateError call composes one line
// of text, writes it to the trace log and keeps both a structured record
// and the text. Nothing inside the library calls these operations.
//
// Contract:
// - Two static lists of the same length and order: entry i of _ListErrors
//   (the records, owned by the service) belongs to entry i of _ListErrMsgs
//   (the composed texts). They are filled together and emptied together.
// - The composed text is the kind's prefix (see VEKZOLErrType.h), the
//   message, ". " and the solution, nothing trimmed. An empty solution
//   becomes "Please Contact Your Administrator".
// - GenerateError answers E_FAIL after recording, for every kind, notes
//   included: only its E_INVALIDARG (empty message, nothing recorded) tells
//   anything.
// - GetErrorList and GetListErrMsgs replace the caller's deque with the
//   list (S_OK), or leave it as it is when the list is empty (S_FALSE). The
//   records handed out stay owned by the service and become invalid at the
//   next ClearErrors.
// - Destroying any instance, even a temporary, calls ClearErrors: the lists
//   are process-wide, not per instance.
// - Records still listed when the library is unloaded are not destroyed;
//   only ClearErrors frees them.
// - Not synchronised: call from one thread at a time.
#ifndef VEKZOL_DIAGNOSTICS_VEKZOLERRORSERVICES_H_
#define VEKZOL_DIAGNOSTICS_VEKZOLERRORSERVICES_H_

#include <deque>

#include <vekzol/diagnostics/VEKZOLErrType.h>
#include <vekzol/diagnostics/VEKZOLError.h>
#include <vekzol/objects/VEKIZOLObject.h>
#include <vekzol/objects/VEKIZOLRelation.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLErrorServices {
 public:
  // Both do nothing: the service has no instance data.
  VEKZOLErrorServices();
  VEKZOLErrorServices& operator=(const VEKZOLErrorServices& other);
  // Empties the process-wide lists (ClearErrors).
  ~VEKZOLErrorServices();

  // Records an entry of kind `type` and writes its text to the trace log
  // with verbosity 0. When `object` is given its id is fetched (and
  // dropped), else the relation's, so that a dangling pointer fails here.
  // E_INVALIDARG for an empty message, with nothing recorded or written;
  // else E_FAIL.
  static long GenerateError(VEKZOLErrType type, CString message, CString solution,
                            VEKIZOLObject* object, VEKIZOLRelation* relation);
  // S_OK with `errors` replaced by the list; S_FALSE when the list is
  // empty, `errors` untouched.
  static long GetErrorList(std::deque<VEKZOLError*>& errors);
  // The same with the composed texts, copied.
  static long GetListErrMsgs(std::deque<CString>& messages);
  // Destroys every record, empties both lists and gives their storage
  // back. S_OK, always.
  static long ClearErrors();

  // The records, oldest first. Owned by the service.
  static std::deque<VEKZOLError*> _ListErrors;
  // The composed texts, oldest first.
  static std::deque<CString> _ListErrMsgs;
};

#endif  // VEKZOL_DIAGNOSTICS_VEKZOLERRORSERVICES_H_
