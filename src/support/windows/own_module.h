#pragma once

#include <windows.h>

namespace krnqb {

/// Returns the handle of the library or program that contains this code, without adding a reference to it.
HMODULE OwnModule() noexcept;

}  // namespace krnqb
