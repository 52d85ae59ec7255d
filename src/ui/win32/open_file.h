#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "ui/file_dialog.h"

namespace krnqb::ui::win32 {

/// Shows the system's open-file dialog in front of its owner, which may be null. Returns the full path of the
/// chosen, existing file, or nothing if the user cancelled. Does not change the current folder. Throws Error
/// 429 if the dialog cannot be shown.
std::optional<std::string> OpenFile(const FileDialogSettings& settings, HWND owner);

}  // namespace krnqb::ui::win32
