#pragma once

#include <string>

#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

/// A workbook to be written, and how that ended.
struct WorkbookTask {
  const Workbook& workbook;
  const std::string& file;
  const std::string& folder;
  std::string failure = {};  ///< the step that failed and why; empty if the workbook is in the file
  bool outOfMemory = false;
};

/// The one function of the module that writes workbooks. Has C linkage and the name `putTogetherName`.
/// Returns the version of the module, a constant. Does the task, unless it is null, only if `programVersion`
/// is the same: the classes of two versions do not fit together.
using PutTogetherFunction = const char*(const char* programVersion, WorkbookTask* task) noexcept;

inline constexpr const char* putTogetherName = "KrnqbPutWorkbookTogether";

}  // namespace krnqb::spreadsheet
