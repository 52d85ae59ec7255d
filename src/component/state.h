#pragma once

#include "import/context.h"
#include "import/state.h"
#include "krnqb/outside_world.h"
#include "krnqb/qb_data_exchange.h"
#include "qbxml/session.h"
#include "support/error_pair.h"

namespace krnqb {

/// The members of a component.
struct QBDataExchange::State {
  explicit State(OutsideWorld outsideWorld);

  OutsideWorld world;
  Variant hostSlot;
  Variant planData;
  ErrorPair errorPair;
  SessionState sessionState;
  ImportState importState;
  ImportContext context;
};

}  // namespace krnqb
