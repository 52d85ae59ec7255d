#pragma once

#include <memory>

#include "krnqb/observer.h"

namespace krnqb::com {

/// Returns an observer that writes every notice to the debugger if one is attached to the host process.
std::shared_ptr<Observer> DebuggerObserver();

}  // namespace krnqb::com
