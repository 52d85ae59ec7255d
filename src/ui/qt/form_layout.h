#pragma once

#include <QWidget>
#include <map>
#include <string>

#include "ui/form.h"

namespace krnqb::ui::qt {

using ControlWidgets = std::map<std::string, QWidget*>;

/// Arranges a form's widgets in its window, which takes ownership of them: rows from the top, buttons on the
/// right, a picture on the left. Sets the tab order to the order of the controls.
void ArrangeForm(const Form& form, const ControlWidgets& widgets, QWidget& window);

}  // namespace krnqb::ui::qt
