#pragma once

#include <memory>

#include "krnqb/outside_world.h"
#include "ui/system_information.h"

namespace krnqb::com {

/// Returns everything outside the component, as Windows provides it. Events go to `sink` first, then to the
/// visible dialog.
OutsideWorld WindowsOutsideWorld(std::shared_ptr<EventSink> sink, std::shared_ptr<Observer> observer);

/// Returns the services of this machine that the About box uses.
ui::SystemInformation WindowsSystem();

}  // namespace krnqb::com
