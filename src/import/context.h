#pragma once

#include "import/events.h"
#include "import/state.h"
#include "krnqb/outside_world.h"
#include "plan/host_plan.h"
#include "qbxml/session.h"

namespace krnqb {

/// What the operations of an import work with. Everything outlives the context.
struct ImportContext {
  ImportState& state;
  Session session;
  HostPlan plan;
  Events events;
  Observer& observer;
  Clock& clock;
};

}  // namespace krnqb
