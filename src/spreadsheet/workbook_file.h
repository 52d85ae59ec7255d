#pragma once

#include <filesystem>

#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

/// Writes a workbook (.xlsx) into an existing file, whose contents it replaces and whose permissions it
/// keeps. Parts of it are put together in unnamed files of the same folder. The same workbook makes the same
/// bytes. Throws Error, with the file, the reason and what to do, if that fails; what the file then contains
/// is of no use.
void WriteWorkbook(const Workbook& workbook, const std::filesystem::path& file);

}  // namespace krnqb::spreadsheet
