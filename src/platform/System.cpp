// File: System.cpp
// The selection of the backend in use and the forwarding wrapper. Nothing
// here knows which platform is built: DefaultSystem() comes from the
// backend's own source file.
#include "platform/System.h"

#include "platform/FaultInjectionTesting.h"

namespace vekzol {
namespace platform {

namespace {

// The backend a test has put in place, or null for the platform's own.
// Zero-initialised before any dynamic initialiser runs, so Sys() works from
// static initialisers of any translation unit.
System* g_systemForTesting = nullptr;

}  // namespace

namespace internal {
// Zero-initialised like the backend pointer above: no hook until a test
// sets one.
FaultHook g_faultHook = nullptr;
}  // namespace internal

FaultHook SetFaultHookForTesting(FaultHook hook) {
  FaultHook previous = internal::g_faultHook;
  internal::g_faultHook = hook;
  return previous;
}

System::~System() = default;

System& Sys() { return g_systemForTesting != nullptr ? *g_systemForTesting : *DefaultSystem(); }

System* SetSystemForTesting(System* system) {
  System* previous = &Sys();
  g_systemForTesting = system;
  return previous;
}

bool ForwardingSystem::GetEnv(const char* name, std::string* value) {
  return target_->GetEnv(name, value);
}

uint32_t ForwardingSystem::TickCountMs() { return target_->TickCountMs(); }

bool ForwardingSystem::ProcessTimes(uint64_t* kernel100ns, uint64_t* user100ns) {
  return target_->ProcessTimes(kernel100ns, user100ns);
}

int64_t ForwardingSystem::Now() { return target_->Now(); }

bool ForwardingSystem::LocalTime(int64_t seconds, std::tm* out) {
  return target_->LocalTime(seconds, out);
}

std::string ForwardingSystem::DateText(int64_t seconds) { return target_->DateText(seconds); }

std::string ForwardingSystem::FormatTime(const char* format, const std::tm& time, size_t capacity) {
  return target_->FormatTime(format, time, capacity);
}

uint32_t ForwardingSystem::FileAttributes(const char* path, uint32_t* attributes) {
  return target_->FileAttributes(path, attributes);
}

uint32_t ForwardingSystem::MakeDirectory(const char* path) { return target_->MakeDirectory(path); }

uint32_t ForwardingSystem::RemoveEmptyDirectory(const char* path) {
  return target_->RemoveEmptyDirectory(path);
}

uint32_t ForwardingSystem::CopyOneFile(const char* from, const char* to, bool failIfExists) {
  return target_->CopyOneFile(from, to, failIfExists);
}

uint32_t ForwardingSystem::MoveOneFile(const char* from, const char* to) {
  return target_->MoveOneFile(from, to);
}

uint32_t ForwardingSystem::DeleteOneFile(const char* path) { return target_->DeleteOneFile(path); }

uint32_t ForwardingSystem::FindFiles(const char* pattern, std::vector<FindEntry>* entries) {
  return target_->FindFiles(pattern, entries);
}

std::FILE* ForwardingSystem::OpenFile(const char* path, const char* mode) {
  return target_->OpenFile(path, mode);
}

std::string ForwardingSystem::ErrorText(uint32_t code) { return target_->ErrorText(code); }

bool ForwardingSystem::UserDecimalSeparator(std::string* separator) {
  return target_->UserDecimalSeparator(separator);
}

bool ForwardingSystem::SetNumericLocale(const char* name, std::string* current) {
  return target_->SetNumericLocale(name, current);
}

char ForwardingSystem::PathSeparator() { return target_->PathSeparator(); }

}  // namespace platform
}  // namespace vekzol
