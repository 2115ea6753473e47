// File: VEKZOLOptionsMgr.h
// VEKZOLOptionsMgr: the process-wide store of named text options of the
// host. An option is looked up in the store first and taken from the
// environment variable of the same name when the store does not know it;
// the answer is then kept for the rest of the process. Any text is a key;
// keys are compared exactly, case included.
//
// Contract:
// - GetValue reads the environment at most once per key per process. A
//   value of "1" or "true" in any case becomes "TRUE", "0" or "false" in
//   any case "FALSE"; any other value is kept as it is (no trimming). An
//   unset or empty variable gives "", and that empty answer is kept too.
// - SetValue stores the text exactly as given and wins over the
//   environment, which it neither reads nor writes.
// - The library's own switches (log, verbosity, timers, batch mode, blob
//   dump) read the environment themselves: this store does not steer them.
// - PrintAllOptions writes, once per process and only in verbose mode, one
//   line "Option:\t <key> = <value>" (verbosity 1) for each of the 18 keys
//   the library knows of and each non-empty key of the store, in ascending
//   order. A key the store does not hold prints the raw environment value,
//   and the store does not learn it. It answers E_FAIL on every path.
// - Entries are never removed. Not synchronised: GetValue writes to the
//   store on a first read, so even reads must come from one thread at a
//   time.
#ifndef VEKZOL_DIAGNOSTICS_VEKZOLOPTIONSMGR_H_
#define VEKZOL_DIAGNOSTICS_VEKZOLOPTIONSMGR_H_

#include <map>

#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLOptionsMgr {
 public:
  // Does nothing: the store has no instance data.
  VEKZOLOptionsMgr& operator=(const VEKZOLOptionsMgr& other);

  // The value of `key`, "" when there is none.
  static CString GetValue(const CString& key);
  // Stores `value` under `key`, as it is.
  static void SetValue(const CString& key, const CString& value);
  // The listing of all known options; E_FAIL, always.
  static long PrintAllOptions();

  // Every key asked or set so far, with its value; an empty value means the
  // option is known to be unset.
  static std::map<CString, CString> _OptionValueMap;

 private:
  friend class VEKZOLOptionsMgrTestPeer;

  // PrintAllOptions has done its printing.
  static bool s_OptionsPrinted;
};

#endif  // VEKZOL_DIAGNOSTICS_VEKZOLOPTIONSMGR_H_
