#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace krnqb::setup {

/// A search path for programs: folders separated by semicolons. Absent if the machine or the user has none,
/// which is not the same as an empty one.
using ProgramPath = std::optional<std::wstring>;

/// The longest value of an environment variable, in characters.
inline constexpr std::size_t longestPath = 32766;

/// Makes `folder` the path's last entry and returns true; returns false if it is an entry already, in any
/// letter case, with or without a backslash at its end. Throws Error if `folder` contains a semicolon or the
/// path would be longer than `longestPath`.
bool AddFolder(ProgramPath& path, std::wstring_view folder);

/// Removes the last entry that is `folder` and returns true; returns false if the path does not contain it.
/// Undoes `AddFolder` exactly: a path that has no entry left becomes absent.
bool RemoveFolder(ProgramPath& path, std::wstring_view folder);

}  // namespace krnqb::setup
