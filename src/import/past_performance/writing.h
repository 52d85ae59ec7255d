#pragma once

#include <cstdint>
#include <string>

#include "import/context.h"

namespace krnqb {

/// Returns the number of periods in a product's past-performance table: 14 for QBKRN_COR, 3 for any other.
std::int16_t PastPeriodCount(const ImportOptions& options) noexcept;

/// What it means that past performance ends early. Usually the company has no account of a type, which
/// `RequireType` has already reported.
inline constexpr NoticeMeaning endOfPastPerformance = NoticeMeaning::Complete;

/// Writes the figures of the past periods into a past-performance table and returns its text. Collects the
/// figures anew if the options include balances and past performance. A failure, such as an account type that
/// the company does not have, ends the writing and is reported to the observer; the result is then the table
/// with the cells written so far, or the empty text if there are none. `majorVersion` is as for
/// `CollectPastPerformance`.
std::string WritePastPerformance(ImportContext& context, const std::string& tableText,
                                 std::int16_t majorVersion);

/// Returns the figures of an account type. If they are missing, reports the type to the observer and throws
/// Error 5.
cSubtotals& RequireType(SubtotalCollection& collection, std::string_view type, Operation operation,
                        Observer& observer);

}  // namespace krnqb
