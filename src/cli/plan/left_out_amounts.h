#pragma once

#include <string>

#include "spreadsheet/warnings_sheet.h"

namespace krnqb::cli {

/// Adds what an import's journal says to the notes. Throws Failure, with the line, if the file cannot be read
/// or is not a journal.
void ReadLeftOutAmounts(const std::string& file, spreadsheet::ExportNotes& notes);

}  // namespace krnqb::cli
