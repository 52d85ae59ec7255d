#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/outside_world.h"

namespace krnqb {

// Registry access. A null registry behaves like an empty one.

/// The access masks with which keys are opened.
namespace registry_rights {
/// Query, set, create subkeys, enumerate, notify and create links; for QuickBooks' own key.
inline constexpr std::uint32_t all = 0x3F;
/// Query, enumerate, notify and read the access list.
inline constexpr std::uint32_t read = 0x20019;
}  // namespace registry_rights

/// Returns a value as a text or as a 32-bit number; the empty text if the key or the value is missing.
Variant RegistryValue(Registry* registry, RegistryHive hive, std::string_view key, std::string_view name,
                      std::uint32_t rights);

/// Returns a value as a text; a number becomes "&h" and eight hexadecimal digits. Returns nothing if the key
/// or the value cannot be read, or if the text with its terminating NUL is longer than 1024 bytes.
std::optional<std::string> GetKeyValue(Registry* registry, RegistryHive hive, std::string_view key,
                                       std::string_view name);

}  // namespace krnqb
