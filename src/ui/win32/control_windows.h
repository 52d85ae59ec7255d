#pragma once

#include <windows.h>

#include "ui/form.h"

namespace krnqb::ui::win32 {

/// Gives a control's window what never changes: a list its entries, a progress bar its ends, and what draws
/// no text the name that a screen reader speaks.
void SetUpControl(const Control& control, HWND window);

/// Makes a control's window show what the control holds now. What it shows already is left alone, so that
/// nothing flickers.
void ShowControl(const Control& control, HWND window);

}  // namespace krnqb::ui::win32
