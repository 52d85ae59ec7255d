#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb::com {

/// Everything outside the component as Windows has it. Events go to `sink`.
OutsideWorld WindowsOutsideWorld(std::shared_ptr<EventSink> sink, std::shared_ptr<Observer> observer);

}  // namespace krnqb::com
