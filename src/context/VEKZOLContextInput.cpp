// File: VEKZOLContextInput.cpp
// The named context record: its two parts, their switches and its trace
// lines.
#include <vekzol/context/VEKZOLContextInput.h>

#include <vekzol/diagnostics/VEKZOLLog.h>

// HostValue3 is left out on purpose: it belongs to the host, and nothing
// here gives it a value.
VEKZOLContextInput::VEKZOLContextInput() : HasVolumeFilter(0), HasManufContextInput(0) {}

VEKZOLContextInput::VEKZOLContextInput(const VEKZOLContextInput& other) = default;

VEKZOLContextInput& VEKZOLContextInput::operator=(const VEKZOLContextInput& other) = default;

VEKZOLContextInput::~VEKZOLContextInput() { Initialize(); }

void VEKZOLContextInput::Initialize() {
  HasManufContextInput = 0;
  HasVolumeFilter = 0;
  m_ContextName.Empty();
}

void VEKZOLContextInput::SetContextName(CString name) { m_ContextName = name; }

CString VEKZOLContextInput::GetContextName() { return m_ContextName; }

void VEKZOLContextInput::Print() {
  VEKZOLLog::WriteMsg("Info:\t Context Name : " + m_ContextName, 0);
  // The relations part first, whatever the order of the fields.
  if (HasManufContextInput != 0) {
    ManufContextInput.Print();
  }
  if (HasVolumeFilter != 0) {
    VolumeFilter.Print();
  }
}
