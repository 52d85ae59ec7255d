#pragma once

#include <cstdint>
#include <string>

#include "import/context.h"

namespace krnqb {

/// The past periods that a product's past-performance table shows: 14 for QBKRN_COR, 3 for any other.
std::int16_t PastPeriodCount(const ImportOptions& options) noexcept;

/// Takes the text of the past-performance table and gives it back with the figures of the past periods,
/// collected anew when the options ask for balances and past performance. A failure (such as an account type
/// that the company does not have) is told to the observer and ends the writing: the table's text with the
/// cells written so far, or the empty text when there are none. `majorVersion` as for
/// `CollectPastPerformance`.
std::string WritePastPerformance(ImportContext& context, const std::string& tableText,
                                 std::int16_t majorVersion);

/// The item of an account type; error 5, with the type told to the observer, when there is none.
cSubtotals& RequireType(SubtotalCollection& collection, std::string_view type, std::string_view operation,
                        Observer& observer);

}  // namespace krnqb
