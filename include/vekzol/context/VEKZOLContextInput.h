// File: VEKZOLContextInput.h
// VEKZOLContextInput: the record of a named context. It combines two
// optional parts, the relations of a manufacturing context and a volume
// filter, each with a switch that says whether it is in use.
//
// Contract:
// - Setting a value of a part does not set its switch, and clearing a
//   switch keeps the part's values. Any switch value other than 0 is on.
// - Copies are member by member, in field order: a copy has its own
//   switchboard of relations.
// - HostValue3 belongs to the host: the constructor leaves it as the
//   storage held it; copies take it.
// - Print writes the name line and then, for the parts that are on, the
//   relations part before the volume part, all with verbosity 0.
// - No operation reports a failure; exhausted memory raises the exception
//   of the string class. Not synchronised.
#ifndef VEKZOL_CONTEXT_VEKZOLCONTEXTINPUT_H_
#define VEKZOL_CONTEXT_VEKZOLCONTEXTINPUT_H_

#include <vekzol/context/VEKZOLManufContextInput.h>
#include <vekzol/context/VEKZOLVolumeFilterCondValues.h>
#include <vekzol/platform/CString.h>
#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLContextInput {
 public:
  // Both parts as constructed, both switches 0, the name empty.
  VEKZOLContextInput();
  VEKZOLContextInput(const VEKZOLContextInput& other);
  VEKZOLContextInput& operator=(const VEKZOLContextInput& other);
  // Runs Initialize, then releases the name and both parts.
  virtual ~VEKZOLContextInput();

  void SetContextName(CString name);
  CString GetContextName();

  // "Context Name : <name>", then the parts that are switched on.
  void Print();

  VEKZOLManufContextInput ManufContextInput;
  VEKZOLVolumeFilterCondValues VolumeFilter;
  int HasVolumeFilter;
  int HasManufContextInput;
  // For the host; only the copies touch it.
  int HostValue3;

 protected:
  CString m_ContextName;

 private:
  // Both switches to 0, the name to "". The parts stay as they are.
  void Initialize();
};

#endif  // VEKZOL_CONTEXT_VEKZOLCONTEXTINPUT_H_
