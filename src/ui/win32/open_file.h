#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "ui/file_dialog.h"

namespace krnqb::ui::win32 {

/// Shows the system's open-file dialog before its owner, which may be null, and gives the full path of the
/// file that was chosen, which is there; nothing when a person cancelled. The current folder stays. Error 429
/// when the dialog cannot be shown.
std::optional<std::string> OpenFile(const FileDialogSettings& settings, HWND owner);

}  // namespace krnqb::ui::win32
