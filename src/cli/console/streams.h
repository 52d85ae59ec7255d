#pragma once

#include <cstddef>
#include <functional>
#include <ostream>
#include <string_view>

#include "cli/console/failure.h"
#include "cli/system/terminal_width.h"

namespace krnqb::cli {

/// Where a command prints: results on `out`; errors, warnings and the progress bar on `err`.
struct Console {
  std::ostream& out;
  std::ostream& err;
  bool errIsTerminal = false;
  std::size_t outWidth = defaultWidth;  ///< longest line of results, in columns
  /// Returns how many columns `err` has at the moment. Null: 80.
  std::function<std::size_t()> errWidth = {};
};

/// Prints a text on one line of `err`, even if it quotes line ends or control characters.
void PrintError(const Console& console, std::string_view line);

/// Prints "krnqb: warning: TEXT".
void Warn(const Console& console, std::string_view text);

}  // namespace krnqb::cli
