// File: VEKZOLError.cpp
// The record of one error-list entry.
#include <vekzol/diagnostics/VEKZOLError.h>

// The kind starts at 0 (no kind) rather than undefined, so that copying a
// default-constructed record reads no indeterminate value; GenerateError
// always assigns it.
VEKZOLError::VEKZOLError()
    : m_ErrType(static_cast<VEKZOLErrType>(0)), m_ErrorObject(nullptr), m_ErrorRelation(nullptr) {}

VEKZOLError::VEKZOLError(const VEKZOLError& other) = default;

VEKZOLError& VEKZOLError::operator=(const VEKZOLError& other) = default;

VEKZOLError::~VEKZOLError() {
  m_ErrorObject = nullptr;
  m_ErrorRelation = nullptr;
}
