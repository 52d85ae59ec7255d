#pragma once

#include <memory>

#include "ui/system_information.h"

namespace krnqb::com {

/// Starts programs by their full path; any other path is error 76, and no folder is searched. Error 76 as
/// well when the program cannot be started.
std::shared_ptr<ui::ProgramStarter> SystemPrograms();

}  // namespace krnqb::com
