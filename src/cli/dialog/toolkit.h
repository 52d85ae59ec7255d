#pragma once

#include <functional>
#include <memory>

#include "ui/toolkit.h"

namespace krnqb::cli {

/// What makes the toolkit that this program was built with; null when it was built without one.
std::function<std::shared_ptr<ui::Toolkit>()> DialogToolkit();

}  // namespace krnqb::cli
