#pragma once

#include <windows.h>

#include "ui/form.h"

namespace krnqb::ui::win32 {

/// Draws an owner-drawn control: a divider or the application's icon.
void DrawControl(ControlKind kind, const DRAWITEMSTRUCT& drawing);

}  // namespace krnqb::ui::win32
