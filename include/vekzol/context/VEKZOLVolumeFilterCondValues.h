// File: VEKZOLVolumeFilterCondValues.h
// VEKZOLVolumeFilterCondValues: the volume part of a context, a box in space
// with a clearance and a condition. The record only carries the values and
// prints them; nothing in the library applies the filter.
//
// Contract:
// - All fields are public and unchecked: nothing demands Xmin <= Xmax. The
//   bounds and the clearance are in whatever unit the host uses.
// - FilterCondition 1 is the condition Fully In; every other value is
//   Partly In.
// - Print writes ten lines to the trace log with verbosity 0, the numbers
//   with printf's "%lf" (six places behind the point).
// - No operation reports a failure. Not synchronised.
#ifndef VEKZOL_CONTEXT_VEKZOLVOLUMEFILTERCONDVALUES_H_
#define VEKZOL_CONTEXT_VEKZOLVOLUMEFILTERCONDVALUES_H_

#include <vekzol/platform/Export.h>

class VEKZOL_API VEKZOLVolumeFilterCondValues {
 public:
  // The seven doubles 0.0, FilterCondition 1.
  VEKZOLVolumeFilterCondValues();
  // Both copy all fields as they stand.
  VEKZOLVolumeFilterCondValues(const VEKZOLVolumeFilterCondValues& other);
  VEKZOLVolumeFilterCondValues& operator=(const VEKZOLVolumeFilterCondValues& other);
  // Resets the fields to the defaults, as Initialize.
  ~VEKZOLVolumeFilterCondValues();

  // "Volume Filter -->", the seven values, the condition, "Volume Filter
  // <--".
  void Print();

  double Xmin;
  double Xmax;
  double Ymin;
  double Ymax;
  double Zmin;
  double Zmax;
  double Clearance;
  int FilterCondition;

 private:
  // The seven doubles to 0.0, FilterCondition to 1.
  void Initialize();
};

#endif  // VEKZOL_CONTEXT_VEKZOLVOLUMEFILTERCONDVALUES_H_
