#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/outside_world.h"

namespace krnqb {

// Reading the registry, which may not be there: null is a registry without keys.

/// Rights masks with which keys are opened.
namespace registry_rights {
/// Query, set, create sub-keys, enumerate, notify, create links: what QuickBooks' own key is asked for.
inline constexpr std::uint32_t all = 0x3F;
/// Query, enumerate, notify and read the access list.
inline constexpr std::uint32_t read = 0x20019;
}  // namespace registry_rights

/// A value as a text or a 32-bit number; the empty text when key or value is missing or holds nothing.
Variant RegistryValue(Registry* registry, RegistryHive hive, std::string_view key, std::string_view name,
                      std::uint32_t rights);

/// A value as a text: a number becomes "&h" and its four bytes in hexadecimal digits, the most significant
/// first. Nothing when key or value cannot be read, or when the text does not fit 1024 bytes with the NUL
/// that ends it.
std::optional<std::string> GetKeyValue(Registry* registry, RegistryHive hive, std::string_view key,
                                       std::string_view name);

}  // namespace krnqb
