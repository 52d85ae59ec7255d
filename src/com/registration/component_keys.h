#pragma once

#include <string>
#include <vector>

#include "com/registration/registry_writer.h"

namespace krnqb::com {

/// One key of the registration, below Software\Classes, with the one value that is written into it.
struct RegisteredKey {
  std::wstring path;
  std::wstring name;      ///< empty: the unnamed value
  std::wstring value;     ///< empty with an empty name: the key alone
  bool isShared = false;  ///< by the 64- and the 32-bit library, which see one key

  bool HasValue() const noexcept { return !name.empty() || !value.empty(); }
};

/// The whole registration of a library: parents stand before what is in them.
struct Registration {
  std::vector<RegisteredKey> keys;
  std::wstring ownServerKey;    ///< there while this library is registered
  std::wstring otherServerKey;  ///< there while the library of the other architecture is registered
};

/// The registration of the library at that full path.
Registration RegistrationOf(const std::wstring& libraryPath);

/// Writes all keys for every user of the machine, or for the current user when the first write is refused.
/// Never half in each: when a later write fails, what was written is removed and the failure thrown.
void Register(RegistryWriter& registry, const Registration& registration);

/// Removes what `Register` wrote, and nothing that others have put beside or into it.
void Unregister(RegistryWriter& registry, const Registration& registration);

}  // namespace krnqb::com
