#pragma once

#include <cstdint>

#include "import/context.h"

namespace krnqb {

/// Collects the figures of the past periods by account type into the state's past-performance collection. A
/// failure is told to the observer and ends the collecting: the figures so far stay, and when it failed
/// before the first, the collection is none.
///
/// The periods are fiscal years that begin in the plan's first month: three for most products, two and then
/// twelve single months for QBKRN_COR. With qbXML 1.x the balances are today's in every year, and income
/// alone is read from transactions; with qbXML 2.0 each figure comes from a report over its period.
/// `majorVersion` says which: 1 or 2; with any other nothing is asked for beside the accounts.
void CollectPastPerformance(ImportContext& context, std::int16_t majorVersion);

}  // namespace krnqb
