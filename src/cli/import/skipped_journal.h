#pragma once

#include <string>

#include "krnqb/import_report.h"

namespace krnqb::cli {

/// Writes a report's journal to a file, which it replaces, as JSON lines: what happened, the request and its
/// period, and for an amount its reason, transaction, account and text. Throws CommandFailure if the file
/// cannot be written.
void WriteJournal(const std::string& file, const ImportReport& report);

}  // namespace krnqb::cli
