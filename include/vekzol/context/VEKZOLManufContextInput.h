// File: VEKZOLManufContextInput.h
// VEKZOLManufContextInput: the input record of a manufacturing context. It
// carries the ids of a reference process and of the root process, product
// and resource, and a switchboard of relation keywords, each on or off.
//
// The eight keywords of the switchboard, all off in a new record:
//
//   keyword                         string getter           list getter
//   "proc_processes_prod"           GetIntegrateRelations   GetProdRelations
//   "proc_creates_prod"             GetIntegrateRelations   GetProdRelations
//   "proc_firstprocesses_prod"      GetIntegrateRelations   GetProdRelations
//   "process_attaches_resource"     GetIntegrateRelations   GetResrcRelations
//   "proc_removes_prod"             GetRemoveRelations      GetProdRelations
//   "process_detaches_resource"     GetRemoveRelations      GetResrcRelations
//   "process_mustprecede_process"   GetGlobalRelations      GetProcRelations
//   "process_runsbefore_process"    GetCommonParentRelations GetProcRelations
//
// Contract:
// - Keywords are compared as CString compares them: case-sensitive.
//   SetRelation accepts any text; a keyword beyond the eight is reached by
//   GetRelation only, never by a composed string or a list.
// - The string getters join the keywords of their group that are on, in
//   the fixed order of the table above, with "#" between each two; none on
//   gives "". The list getters append the keywords that are on, in that
//   order, to the caller's deque without clearing it.
// - Copies are member by member: a copy has its own switchboard.
// - HostValue1 and HostValue2 belong to the host. The constructor (through
//   Initialize) sets HostValue1 to 0 and leaves HostValue2 as the storage
//   held it; copies take both.
// - Print writes ten lines to the trace log with verbosity 0.
// - No operation reports a failure; exhausted memory raises the exception
//   of the string or map class. Not synchronised.
#ifndef VEKZOL_CONTEXT_VEKZOLMANUFCONTEXTINPUT_H_
#define VEKZOL_CONTEXT_VEKZOLMANUFCONTEXTINPUT_H_

#include <deque>
#include <map>

#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLManufContextInput {
 public:
  // All ids empty, all eight keywords off.
  VEKZOLManufContextInput();
  // Member by member, the switchboard copied whole; Initialize is not
  // called.
  VEKZOLManufContextInput(const VEKZOLManufContextInput& other);
  VEKZOLManufContextInput& operator=(const VEKZOLManufContextInput& other);
  // Runs Initialize, then releases the members.
  virtual ~VEKZOLManufContextInput();

  // Sets the switch of `keyword`, adding the keyword when it is new.
  void SetRelation(const CString& keyword, bool value);
  // The switch of `keyword`; false for a keyword that is not in the
  // switchboard, which is not added.
  bool GetRelation(const CString& keyword);

  // "process_mustprecede_process" when on, else "".
  CString GetGlobalRelations();
  // "process_runsbefore_process" when on, else "".
  CString GetCommonParentRelations();
  // The integrating keywords that are on, joined with "#".
  CString GetIntegrateRelations();
  // The removing keywords that are on, joined with "#".
  CString GetRemoveRelations();

  // Append the process / product / resource keywords that are on.
  void GetProcRelations(std::deque<CString>& relations);
  void GetProdRelations(std::deque<CString>& relations);
  void GetResrcRelations(std::deque<CString>& relations);

  // Free text for relations beyond the eight: stored and handed back as it
  // is, never interpreted.
  void SetOtherRelations(const CString& relations);
  CString GetOtherRelations();

  // Writes the record to the trace log: a "-->" line, the four ids, the
  // four composed strings and a "<--" line.
  void Print();

  CString ReferenceProcessID;
  CString RootProcessID;
  CString RootProductID;
  CString RootResourceID;

 protected:
  std::map<CString, bool> m_Relations;
  CString m_OtherRelations;

 public:
  // For the host; only Initialize and the copies touch them.
  int HostValue1;
  int HostValue2;

 private:
  // The four ids to "", HostValue1 to 0, each of the eight keywords to off
  // (added where missing). Further keywords, the other relations and
  // HostValue2 stay as they are.
  void Initialize();
};

#endif  // VEKZOL_CONTEXT_VEKZOLMANUFCONTEXTINPUT_H_
