#pragma once

#include <windows.h>

namespace krnqb {

/// The library or program that this code is linked into. It stays loaded by whoever loaded it.
HMODULE OwnModule() noexcept;

}  // namespace krnqb
