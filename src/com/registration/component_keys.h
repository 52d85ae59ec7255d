#pragma once

#include <span>
#include <string>
#include <vector>

#include "com/registration/registry_writer.h"
#include "com/registration/server_class.h"

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
  std::wstring ownServerKey;    ///< exists while this DLL is registered
  std::wstring otherServerKey;  ///< exists while the DLL of the other architecture is registered
};

/// Returns the registration of `classes`, implemented by the DLL at the full path `libraryPath`.
Registration RegistrationOf(std::span<const ServerClass> classes, const std::wstring& libraryPath);

/// Writes all keys for every user of the machine, or for the current user only if the first write is denied.
/// Never leaves half a registration: if a later write fails, takes back what it has changed, so that an
/// earlier registration is whole again, and rethrows.
void Register(RegistryWriter& registry, const Registration& registration);

/// Removes everything `Register` wrote, for all users and for the current user; leaves keys and values of
/// others beside or inside it. If the keys for all users cannot be removed, removes the user's nevertheless,
/// then throws.
void Unregister(RegistryWriter& registry, const Registration& registration);

}  // namespace krnqb::com
