#pragma once

#include <cstdint>
#include <string>

#include "import/context.h"

namespace krnqb {

/// The past periods that a product's past-performance table shows: 14 for QBKRN_COR, 3 for any other.
std::int16_t PastPeriodCount(const ImportOptions& options) noexcept;

/// Past performance ends where the company has no account of a type. `RequireType` reports that; the end
/// itself adds nothing to it.
inline constexpr NoticeMeaning endOfPastPerformance = NoticeMeaning::Complete;

/// Takes the text of the past-performance table and gives it back with the figures of the past periods,
/// collected anew when the options ask for balances and past performance. A failure (such as an account type
/// that the company does not have) is reported to the observer and ends the writing: the table's text with
/// the cells written so far, or the empty text when there are none. `majorVersion` as for
/// `CollectPastPerformance`.
std::string WritePastPerformance(ImportContext& context, const std::string& tableText,
                                 std::int16_t majorVersion);

/// Returns the item of an account type. Throws Error 5 if it is missing, after reporting the type to the
/// observer.
cSubtotals& RequireType(SubtotalCollection& collection, std::string_view type, Operation operation,
                        Observer& observer);

}  // namespace krnqb
