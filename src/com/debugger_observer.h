#pragma once

#include <memory>

#include "krnqb/observer.h"

namespace krnqb::com {

/// Writes what an import passes over to the debugger, where one is attached to the host.
std::shared_ptr<Observer> DebuggerObserver();

}  // namespace krnqb::com
