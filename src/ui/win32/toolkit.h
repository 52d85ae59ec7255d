#pragma once

#include <memory>

#include "ui/toolkit.h"

namespace krnqb::ui::win32 {

/// Shows the dialogs as windows of the system's own, before the host's active window, on the thread that
/// calls. The module that this is linked into has the templates of dialogs.rc. Error 429 when a window cannot
/// be made.
std::shared_ptr<Toolkit> Win32Toolkit();

}  // namespace krnqb::ui::win32
