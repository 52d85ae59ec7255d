#pragma once

#include <filesystem>
#include <string>

namespace krnqb::company::testing {

/// Writes a company as the version of this program did that had no checksums yet: the same tables and rows
/// in a database of the first layout.
void WriteEarlierFile(const std::filesystem::path& company, const std::filesystem::path& earlier);

/// Runs statements on a database without this program's file system.
void ExecuteDirectly(const std::filesystem::path& database, const std::string& statements);

}  // namespace krnqb::company::testing
