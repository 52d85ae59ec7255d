#pragma once

#include <string>
#include <string_view>

#include "krnqb/import_report.h"

namespace krnqb::cli {

/// Returns a reason as text for people, such as "the line names no account".
std::string_view ReasonText(SkipReason reason) noexcept;

/// Returns a reason as a word for programs, such as "no-account".
std::string_view ReasonWord(SkipReason reason) noexcept;

/// Returns what a left-out amount means as a word for programs: "not-requested", "not-imported" or "lost".
std::string_view MeaningWord(SkipKind kind) noexcept;

/// Returns, as text for people, what an import left out: what was lost and what the rules do not import, each
/// with a line per reason with count, sum and names, then one line for the accounts that were not requested,
/// the repeated accounts and the early end of past performance. Empty if there is nothing to report.
std::string SkippedReport(const ImportReport& report);

}  // namespace krnqb::cli
