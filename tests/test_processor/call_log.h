#pragma once

#include <filesystem>
#include <string_view>

namespace krnqb::testing {

/// Appends a line to the file; does nothing if the path is empty.
void LogCall(const std::filesystem::path& file, std::string_view line);

}  // namespace krnqb::testing
