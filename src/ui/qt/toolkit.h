#pragma once

#include <memory>

#include "ui/toolkit.h"

namespace krnqb::ui::qt {

/// Shows the dialogs as Qt widgets, on the thread that calls. Makes the application that Qt needs when there
/// is none, and ends it with the toolkit. Error 429, with the reason, when there is no display.
std::shared_ptr<Toolkit> QtToolkit();

}  // namespace krnqb::ui::qt
