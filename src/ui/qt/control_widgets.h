#pragma once

#include <QWidget>

#include "ui/form.h"

namespace krnqb::ui::qt {

/// Creates the widget for a control, with the control's name and its constant properties; the caller owns it.
QWidget* MakeWidget(const Control& control);

/// Updates the widget of a control to the control's current state.
void ShowControl(const Control& control, QWidget& widget);

}  // namespace krnqb::ui::qt
