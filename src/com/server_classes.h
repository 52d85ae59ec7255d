#pragma once

#include <span>

#include "com/server_class.h"

namespace krnqb::com {

/// Returns every class that hosts can create.
std::span<const ServerClass> ServerClasses() noexcept;

}  // namespace krnqb::com
