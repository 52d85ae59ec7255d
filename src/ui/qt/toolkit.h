#pragma once

#include <memory>

#include "ui/toolkit.h"

namespace krnqb::ui::qt {

/// Returns a toolkit that shows the dialogs as Qt widgets on the calling thread. Creates Qt's application if
/// there is none and destroys it with the toolkit. Throws Error 429, with the reason, if there is no display.
std::shared_ptr<Toolkit> QtToolkit();

}  // namespace krnqb::ui::qt
