#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

#include "krnqb/error.h"

namespace krnqb::files {

/// Returns the error of the last failed system call (errno).
std::error_code LastSystemError() noexcept;

/// Returns the reason in words.
std::string ReasonText(std::error_code reason);

/// Returns the advice for the user when a file cannot be used for this reason.
std::string_view FileAdvice(std::error_code reason) noexcept;

/// Returns the error for a file that cannot be used. Its description is one line: what failed, the file, why,
/// and what to do. `failure` is the text before the path, such as "cannot read the plan".
Error FileError(std::string_view failure, const std::filesystem::path& file, std::error_code reason);

/// Does the same for a reason and an advice in words.
Error FileError(std::string_view failure, const std::filesystem::path& file, std::string_view reason,
                std::string_view advice);

/// Returns `file` with `suffix` appended to its name, the path of a companion file in the same folder.
std::filesystem::path WithSuffix(const std::filesystem::path& file, std::string_view suffix);

}  // namespace krnqb::files
