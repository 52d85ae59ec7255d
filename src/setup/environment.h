#pragma once

#include <string_view>

#include "krnqb/outside_world.h"

namespace krnqb::setup {

/// Adds a folder to the search path for programs of all users, or of the current user. Keeps the rest of the
/// path, of any length, and the kind of the value. Notifies running programs, such as the desktop,
/// which pass the new path on to what they start. Returns false, changing nothing, if the folder is on the
/// path already. Throws Error if the path cannot be read or written.
bool AddToSearchPath(RegistryHive hive, std::wstring_view folder);

/// Undoes `AddToSearchPath`. Returns false, changing nothing, if the folder is not on the
/// path. Throws Error if the path cannot be read or written.
bool RemoveFromSearchPath(RegistryHive hive, std::wstring_view folder);

}  // namespace krnqb::setup
