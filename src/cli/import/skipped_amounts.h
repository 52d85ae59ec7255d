#pragma once

#include <string>
#include <string_view>

#include "krnqb/import_report.h"

namespace krnqb::cli {

/// Returns a reason as a word for programs, such as "no-account".
std::string_view ReasonWord(SkipReason reason) noexcept;

/// Returns, as text for people, what an import left out: a line per reason with count and sum, then the
/// repeated accounts and the early end of past performance. Empty if there is nothing to report.
std::string SkippedReport(const ImportReport& report);

}  // namespace krnqb::cli
