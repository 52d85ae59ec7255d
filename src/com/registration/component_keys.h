#pragma once

#include <string>
#include <vector>

#include "com/registration/registry_writer.h"

namespace krnqb::com {

/// One registration key, relative to Software\Classes, with the one value written into it.
struct RegisteredKey {
  std::wstring path;
  std::wstring name;      ///< empty: the unnamed value
  std::wstring value;     ///< if the name is empty too, only the key is created
  bool isShared = false;  ///< by the 64-bit and 32-bit DLLs, which see the same key

  bool HasValue() const noexcept { return !name.empty() || !value.empty(); }
};

/// The complete registration of a DLL; parent keys come before their subkeys.
struct Registration {
  std::vector<RegisteredKey> keys;
  std::wstring libraryPath;
  std::wstring ownServerKey;    ///< exists while this DLL is registered
  std::wstring otherServerKey;  ///< exists while the DLL of the other architecture is registered
};

/// Returns the registration of all classes, implemented by the DLL at the full path `libraryPath`.
Registration RegistrationOf(const std::wstring& libraryPath);

/// Writes all keys for every user of the machine, or for the current user only.
/// Never leaves half a registration: if a write fails, undoes what it has changed, so that an earlier
/// registration is whole again, and rethrows.
void Register(RegistryWriter& registry, const Registration& registration, RegistryHive hive);

/// As above for every user of the machine, or for the current user if the first write is denied.
void Register(RegistryWriter& registry, const Registration& registration);

/// Removes everything `Register` wrote, for all users and for the current user; leaves keys and values of
/// others beside or inside it. If the keys for all users cannot be removed, removes the user's nevertheless,
/// then throws.
void Unregister(RegistryWriter& registry, const Registration& registration);

/// Removes from one hive everything `Register` wrote; leaves keys and values of others beside or inside it,
/// and does nothing if the DLL that is registered there is another one.
void Unregister(RegistryWriter& registry, const Registration& registration, RegistryHive hive);

}  // namespace krnqb::com
