#pragma once

#include <string>
#include <string_view>

#include "krnqb/import_report.h"

namespace krnqb::cli {

/// Returns a reason in a few words joined by hyphens, for programs.
std::string_view ReasonWord(SkipReason reason) noexcept;

/// Returns what an import left out, for a person: a line per reason with count and sum, then the repeated
/// accounts and the early end of past performance. Empty if there is none of these.
std::string SkippedReport(const ImportReport& report);

}  // namespace krnqb::cli
