#pragma once

#include <functional>
#include <memory>

#include "ui/toolkit.h"

namespace krnqb::cli {

/// Returns a function that creates the toolkit this program was built with; null if it was built without one.
std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit();

}  // namespace krnqb::cli
