#pragma once

#include <memory>

#include "krnqb/outside_world.h"
#include "ui/system_information.h"

namespace krnqb::com {

/// Everything outside the component as Windows has it. Events go to `sink`, then to the dialog that is shown.
OutsideWorld WindowsOutsideWorld(std::shared_ptr<EventSink> sink, std::shared_ptr<Observer> observer);

/// This machine, as the About box asks it.
ui::SystemInformation WindowsSystem();

}  // namespace krnqb::com
