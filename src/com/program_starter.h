#pragma once

#include <memory>

#include "ui/system_information.h"

namespace krnqb::com {

/// Returns a starter that runs programs by their full path. Throws Error 76 if the path is not absolute,
/// since no folder is searched, or if the program cannot be started.
std::shared_ptr<ui::ProgramStarter> SystemPrograms();

}  // namespace krnqb::com
