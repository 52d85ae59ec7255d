#pragma once

#include <windows.h>

#include "ui/form.h"

namespace krnqb::ui::win32 {

/// Draws a control that draws itself: a divider or the application's icon.
void DrawControl(ControlKind kind, const DRAWITEMSTRUCT& drawing);

}  // namespace krnqb::ui::win32
