#pragma once

#include <cstddef>
#include <optional>

namespace krnqb::cli {

/// The width of lines if the output does not go to a terminal, or if the width of the terminal is unknown.
inline constexpr std::size_t defaultWidth = 80;

/// Returns how many columns the terminal behind a descriptor has at this moment, or nothing if it is
/// not a terminal.
std::optional<std::size_t> TerminalWidth(int descriptor) noexcept;

}  // namespace krnqb::cli
