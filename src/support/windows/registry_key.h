#pragma once

#include <windows.h>

#include "krnqb/outside_world.h"

namespace krnqb {

/// Owns an open registry key; may be empty.
class RegistryKey {
 public:
  RegistryKey() noexcept = default;
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  ~RegistryKey() {
    if (handle_ != nullptr) RegCloseKey(handle_);
  }
  HKEY get() const noexcept { return handle_; }
  /// Returns where a call stores the key it opens; the object must be empty.
  HKEY* Receive() noexcept { return &handle_; }

 private:
  HKEY handle_ = nullptr;
};

inline HKEY RootOf(RegistryHive hive) noexcept {
  return hive == RegistryHive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

}  // namespace krnqb
