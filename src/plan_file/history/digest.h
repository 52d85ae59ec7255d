#pragma once

#include <string>
#include <string_view>

namespace krnqb::plan_file {

/// Returns the SHA-256 of the bytes as 64 lower-case hexadecimal digits, as sha256sum prints it.
std::string DigestOf(std::string_view bytes);

/// Returns whether the text has the form of a digest.
bool IsDigest(std::string_view text) noexcept;

}  // namespace krnqb::plan_file
