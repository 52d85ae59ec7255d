#pragma once

#include <memory>

namespace krnqb::ui::qt {

/// Keeps the connection to a display open.
using HeldDisplay = std::shared_ptr<void>;

/// Throws Error 429, with the reason, if windows cannot be shown: without a display Qt would end the process.
/// Keep the result until Qt has connected: an X server without clients may reset itself.
HeldDisplay RequireDisplay();

}  // namespace krnqb::ui::qt
