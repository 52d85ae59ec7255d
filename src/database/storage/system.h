#pragma once

#include <cstdint>
#include <filesystem>

namespace krnqb::database {

/// Returns SQLite's name of the system's own files.
const char* SystemFilesName() noexcept;

// Errors of the system are numbers of errno; 0 is none.

/// Returns the error of the system call that failed last.
int LastSystemError() noexcept;

enum class Use : std::uint8_t { Reading, Writing };

/// Returns why this process may not use a file or folder in this way. Does not open it: closing it would
/// release the locks of the process's other connections to it.
int AccessError(const std::filesystem::path& file, Use use) noexcept;

}  // namespace krnqb::database
