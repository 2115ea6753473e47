// File: ScopedSystemTesting.h
// Test-only: installs a platform backend for the life of an object and puts
// the previous one back afterwards. Not installed.
#ifndef VEKZOL_SRC_PLATFORM_SCOPEDSYSTEMTESTING_H_
#define VEKZOL_SRC_PLATFORM_SCOPEDSYSTEMTESTING_H_

#include "platform/System.h"

namespace vekzol {
namespace platform {

class ScopedSystem {
 public:
  explicit ScopedSystem(System* system) : previous_(SetSystemForTesting(system)) {}
  ~ScopedSystem() { SetSystemForTesting(previous_); }
  ScopedSystem(const ScopedSystem&) = delete;
  ScopedSystem& operator=(const ScopedSystem&) = delete;

 private:
  System* previous_;
};

}  // namespace platform
}  // namespace vekzol

#endif  // VEKZOL_SRC_PLATFORM_SCOPEDSYSTEMTESTING_H_
