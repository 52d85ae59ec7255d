#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace krnqb {

/// Returns how many columns a terminal needs for a UTF-8 text: two for each wide East Asian character or
/// emoji, none for combining marks and joiners, one for any other character or invalid byte.
std::size_t DisplayWidth(std::string_view text) noexcept;

/// Returns the text if it needs at most `columns` columns; otherwise its beginning and "…", which together
/// need at most that many. Empty for 0 columns.
std::string ShortenedToWidth(std::string_view text, std::size_t columns);

}  // namespace krnqb
