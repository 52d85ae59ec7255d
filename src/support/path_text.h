#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace krnqb {

// Texts are UTF-8 everywhere. Only these two functions make paths of them and texts of paths: on Windows the
// conversions of the standard library would take each byte for a character.

/// Returns the path that a text names.
std::filesystem::path PathFrom(std::string_view text);

/// Returns a path as a text.
std::string TextOfPath(const std::filesystem::path& path);

/// Assigns a path to a text; on Linux nothing fails if `text` has room for it.
void AssignPath(std::string& text, const std::filesystem::path& path);

}  // namespace krnqb
