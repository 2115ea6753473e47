// File: VEKZOLVolumeFilterCondValues.cpp
// The volume filter record: defaults, copies and its trace lines.
#include <vekzol/context/VEKZOLVolumeFilterCondValues.h>

#include <vekzol/diagnostics/VEKZOLLog.h>
#include <vekzol/platform/CString.h>

namespace {

// The condition value that means Fully In; every other one is Partly In.
constexpr int kFullyIn = 1;

// One "Info:\t <label> : %lf" line.
void WriteValue(const char* format, double value) {
  CString line;
  line.Format(format, value);
  VEKZOLLog::WriteMsg(line, 0);
}

}  // namespace

VEKZOLVolumeFilterCondValues::VEKZOLVolumeFilterCondValues() { Initialize(); }

VEKZOLVolumeFilterCondValues::VEKZOLVolumeFilterCondValues(
    const VEKZOLVolumeFilterCondValues& other) = default;

VEKZOLVolumeFilterCondValues& VEKZOLVolumeFilterCondValues::operator=(
    const VEKZOLVolumeFilterCondValues& other) = default;

VEKZOLVolumeFilterCondValues::~VEKZOLVolumeFilterCondValues() { Initialize(); }

void VEKZOLVolumeFilterCondValues::Initialize() {
  Xmin = 0.0;
  Xmax = 0.0;
  Ymin = 0.0;
  Ymax = 0.0;
  Zmin = 0.0;
  Zmax = 0.0;
  Clearance = 0.0;
  FilterCondition = kFullyIn;
}

void VEKZOLVolumeFilterCondValues::Print() {
  VEKZOLLog::WriteMsg("Info:\t Volume Filter -->", 0);
  WriteValue("Info:\t Xmin : %lf", Xmin);
  WriteValue("Info:\t Xmax : %lf", Xmax);
  WriteValue("Info:\t Ymin : %lf", Ymin);
  WriteValue("Info:\t Ymax : %lf", Ymax);
  WriteValue("Info:\t Zmin : %lf", Zmin);
  WriteValue("Info:\t Zmax : %lf", Zmax);
  WriteValue("Info:\t Clearance : %lf", Clearance);
  if (FilterCondition == kFullyIn) {
    VEKZOLLog::WriteMsg("Info:\t Filter Condition : Fully In", 0);
  } else {
    VEKZOLLog::WriteMsg("Info:\t Filter Condition : Partly In", 0);
  }
  VEKZOLLog::WriteMsg("Info:\t Volume Filter <--", 0);
}
