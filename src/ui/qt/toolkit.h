#pragma once

#include <memory>

#include "ui/toolkit.h"

namespace krnqb::ui::qt {

/// Returns a toolkit that shows the dialogs as Qt widgets on the calling thread. Creates Qt's application if
/// it does not exist yet, and destroys it with the toolkit. Throws Error 429, with the reason, if no display
/// is available.
std::shared_ptr<Toolkit> QtToolkit();

}  // namespace krnqb::ui::qt
