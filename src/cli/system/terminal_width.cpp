#include "cli/system/terminal_width.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace krnqb::cli {

std::optional<std::size_t> TerminalWidth(int descriptor) noexcept {
  if (::isatty(descriptor) != 1) return std::nullopt;
  winsize size{};
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg)
  const bool known = ::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 0;
  return known ? size.ws_col : defaultWidth;
}

}  // namespace krnqb::cli
