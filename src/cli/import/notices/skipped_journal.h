#pragma once

#include <string>

#include "krnqb/import_report.h"

namespace krnqb::cli {

/// Writes a report's journal to `file` as JSON lines, replacing its contents: what happened, the request and
/// its period, and for an amount its reason, transaction, account and text. Throws Failure if the file cannot
/// be written.
void WriteJournal(const std::string& file, const ImportReport& report);

}  // namespace krnqb::cli
