#pragma once

#include "import/events.h"
#include "import/import_state.h"
#include "krnqb/outside_world.h"
#include "plan/plan_access.h"
#include "qbxml/session.h"

namespace krnqb {

/// What the operations of an import work with. Everything outlives the context.
struct ImportContext {
  ImportState& state;
  Session session;
  PlanAccess plan;
  Events events;
  Observer& observer;
  Clock& clock;
};

}  // namespace krnqb
