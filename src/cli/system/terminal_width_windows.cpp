#include <io.h>
#include <windows.h>

#include "cli/system/terminal_width.h"

namespace krnqb::cli {

std::optional<std::size_t> TerminalWidth(int descriptor) noexcept {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): that is how the C library passes handles
  const auto handle = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
  DWORD mode = 0;
  if (GetConsoleMode(handle, &mode) == FALSE) return std::nullopt;
  CONSOLE_SCREEN_BUFFER_INFO screen{};
  if (GetConsoleScreenBufferInfo(handle, &screen) == FALSE) return defaultWidth;
  const int columns = screen.srWindow.Right - screen.srWindow.Left + 1;
  // A character in the last column moves the cursor to the next line.
  return columns > 1 ? static_cast<std::size_t>(columns - 1) : defaultWidth;
}

}  // namespace krnqb::cli
