#pragma once

#include <functional>
#include <memory>

#include "ui/toolkit.h"

namespace krnqb::cli {

/// Returns a function that creates this program's toolkit; null if the program was built without dialogs. The
/// function throws Failure if the toolkit is not installed, and Error if it cannot show windows.
std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit();

}  // namespace krnqb::cli
