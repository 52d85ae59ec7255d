#pragma once

#include <string>
#include <vector>

#include "krnqb/import_report.h"

namespace krnqb::cli {

/// Returns a warning's sentence, followed by what to do about it where the command line has an option for it.
std::string WarningAdvice(const Warning& warning);

/// Returns the warnings of an import as sentences for people, without those that make it incomplete, which
/// are printed as omissions.
std::vector<std::string> WarningSentences(const ImportReport& report);

}  // namespace krnqb::cli
