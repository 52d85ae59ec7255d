#pragma once

#include <functional>

namespace krnqb::database {

/// Returns whether the user has asked to stop. It is called at short intervals and must not throw. A null one
/// never stops anything.
using Interruption = std::function<bool()>;

}  // namespace krnqb::database
