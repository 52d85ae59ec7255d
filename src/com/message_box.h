#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb::com {

/// The system's message box before the host's window. There are no dialogs: each gives Empty.
std::shared_ptr<UserInterface> MessageBoxes();

}  // namespace krnqb::com
