#pragma once

#include <filesystem>
#include <string>

namespace krnqb::spreadsheet {

/// Returns the name by which a C library opens an existing file or folder. Throws Error if it has none, which
/// on Windows can be so where the system keeps no short names.
std::string NarrowName(const std::filesystem::path& file);

}  // namespace krnqb::spreadsheet
