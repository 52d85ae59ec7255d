#pragma once

#include <windows.h>

#include "krnqb/outside_world.h"

namespace krnqb::com {

/// Owns an open key of the system's registry, or none.
class RegistryKey {
 public:
  RegistryKey() noexcept = default;
  RegistryKey(const RegistryKey&) = delete;
  RegistryKey& operator=(const RegistryKey&) = delete;
  ~RegistryKey() {
    if (handle != nullptr) RegCloseKey(handle);
  }
  HKEY get() const noexcept { return handle; }
  /// Where a call puts a key that it opens; there is none yet.
  HKEY* Receive() noexcept { return &handle; }

 private:
  HKEY handle = nullptr;
};

inline HKEY RootOf(RegistryHive hive) noexcept {
  return hive == RegistryHive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

}  // namespace krnqb::com
