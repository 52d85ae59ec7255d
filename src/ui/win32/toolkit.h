#pragma once

#include <memory>

#include "ui/toolkit.h"

namespace krnqb::ui::win32 {

/// Returns a toolkit that shows the dialogs as native windows in front of the host's active window, on the
/// calling thread. The module must contain the templates of dialogs.rc. The toolkit throws Error 429 if a
/// window cannot be created.
std::shared_ptr<Toolkit> Win32Toolkit();

}  // namespace krnqb::ui::win32
