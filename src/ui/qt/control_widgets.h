#pragma once

#include <QWidget>

#include "ui/form.h"

namespace krnqb::ui::qt {

/// The widget for a control, named as the control is; the caller owns it. It shows nothing yet but what never
/// changes.
QWidget* MakeWidget(const Control& control);

/// Makes a widget that was made for a control show what the control holds now.
void ShowControl(const Control& control, QWidget& widget);

}  // namespace krnqb::ui::qt
