#pragma once

#include <functional>
#include <string>

#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

/// Writes a workbook into an existing file. Parts of it are put together in unnamed files of `folder`. Both
/// names are those of the C library. Throws Error, which names the step that failed, and std::bad_alloc.
using WorkbookWriter =
    std::function<void(const Workbook& workbook, const std::string& file, const std::string& folder)>;

/// Returns what writes workbooks. Few runs of the program need it, and its library brings large ones of its
/// own: on Linux they are in a module, which the first call loads. Throws Error, with the reason and what to
/// do, if it cannot be loaded.
WorkbookWriter LoadWorkbookWriter();

/// Is a WorkbookWriter, where the library for workbooks is linked: in the module.
void PutTogether(const Workbook& workbook, const std::string& file, const std::string& folder);

}  // namespace krnqb::spreadsheet
