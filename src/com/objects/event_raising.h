#pragma once

#include <memory>

#include "com/objects/connection_point.h"
#include "krnqb/outside_world.h"

namespace krnqb::com {

/// Raises the component's events to every advised sink, in the order of advising. A sink that fails does not
/// keep the others from being told, nor ends what raised the event: the observer is told, which may be null.
std::shared_ptr<EventSink> RaisingTo(std::shared_ptr<AdvisedSinks> sinks, std::shared_ptr<Observer> observer);

}  // namespace krnqb::com
