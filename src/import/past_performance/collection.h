#pragma once

#include <cstdint>

#include "import/context.h"

namespace krnqb {

/// Collects the figures of the past periods by account type into a new past-performance collection of the
/// state. A failure ends the operation and is reported to the observer; figures already collected are kept.
/// If the account request fails, the state has no collection afterwards.
///
/// The periods are fiscal years that begin in the plan's first month: two followed by twelve single months
/// for QBKRN_COR, three for any other product. `majorVersion` is that of qbXML. With 1, income is read from
/// transactions and the first three periods contain today's balances. With 2, every figure comes from a
/// report over its period. With any other version, only the account list is requested.
void CollectPastPerformance(ImportContext& context, std::int16_t majorVersion);

}  // namespace krnqb
