#pragma once

#include <memory>

#include "com/objects/connection_point.h"
#include "krnqb/outside_world.h"

namespace krnqb::com {

/// Returns a sink that raises the component's events to every advised sink, in advise order. A sink that
/// fails neither stops the others from being called nor fails the operation that raised the event; its error
/// is reported to `observer`, which may be null.
std::shared_ptr<EventSink> RaisingTo(std::shared_ptr<AdvisedSinks> sinks, std::shared_ptr<Observer> observer);

}  // namespace krnqb::com
