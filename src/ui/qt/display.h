#pragma once

#include <memory>

namespace krnqb::ui::qt {

/// Whatever makes sure that a display stays there.
using HeldDisplay = std::shared_ptr<void>;

/// Error 429, with the reason, when windows cannot be shown: without a display Qt would end the process. What
/// is given is to be kept until Qt is connected itself: a server without clients may start anew.
HeldDisplay RequireDisplay();

}  // namespace krnqb::ui::qt
