#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "krnqb/error.h"

namespace krnqb::files {

/// What the system's last failed call reported.
std::error_code LastSystemError() noexcept;

/// What a person can do about a failure to reach a file.
std::string_view FileAdvice(std::error_code reason) noexcept;

/// The error of a file that cannot be used, as one line: what failed, the file, why, and what to do about it.
/// `failure` says what failed and ends where the path follows, such as "cannot read the plan".
Error FileError(std::string_view failure, const std::filesystem::path& file, std::error_code reason);

/// `file` with `suffix` added to its name: the name of a file that stands beside it.
std::filesystem::path BesideFile(const std::filesystem::path& file, std::string_view suffix);

}  // namespace krnqb::files
