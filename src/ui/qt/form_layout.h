#pragma once

#include <QWidget>
#include <map>
#include <string>

#include "ui/form.h"

namespace krnqb::ui::qt {

using ControlWidgets = std::map<std::string, QWidget*>;

/// Arranges a form's widgets in its window, which owns them from then on: rows from the top, buttons at the
/// right, a picture at the left of everything. Sets the tab order to the order of the controls.
void ArrangeForm(const Form& form, const ControlWidgets& widgets, QWidget& window);

}  // namespace krnqb::ui::qt
