#pragma once

#include <windows.h>

#include "ui/form.h"

namespace krnqb::ui::win32 {

/// Sets the constant properties of a control's window: the entries of a list, the range of a progress bar,
/// and the accessible name of a control that draws no text.
void SetUpControl(const Control& control, HWND window);

/// Updates a control's window to the control's current state. Skips what is already shown, to avoid flicker.
void ShowControl(const Control& control, HWND window);

}  // namespace krnqb::ui::win32
