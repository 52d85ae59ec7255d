#pragma once

#include <cstddef>
#include <optional>

namespace krnqb::cli {

/// The width that output has if it is no terminal, or a terminal does not say how wide it is.
inline constexpr std::size_t defaultWidth = 80;

/// Returns how many columns the terminal behind a descriptor has at this moment, or nothing if it is no
/// terminal.
std::optional<std::size_t> TerminalWidth(int descriptor) noexcept;

}  // namespace krnqb::cli
