#include "spreadsheet/workbook_file.h"

#include <fmt/format.h>

#include <string>
#include <system_error>

#include "krnqb/error.h"
#include "spreadsheet/narrow_name.h"
#include "spreadsheet/workbook_writer.h"
#include "support/path_text.h"

namespace krnqb::spreadsheet {
namespace {

// The library does not notice when its unnamed files cannot grow.
void RequireSpace(const Workbook& workbook, const std::filesystem::path& folder) {
  constexpr std::uintmax_t bytesPerCell = 400;
  constexpr std::uintmax_t bytesPerSheet = 100'000;
  std::uintmax_t needed = bytesPerSheet;
  for (const Sheet& sheet : workbook.sheets) {
    needed += bytesPerSheet + bytesPerCell * sheet.cells.size();
    for (const SheetCell& cell : sheet.cells) {
      if (const auto* text = std::get_if<std::string>(&cell.content)) needed += text->size();
    }
  }
  std::error_code unknown;
  const std::filesystem::space_info space = std::filesystem::space(folder, unknown);
  if (unknown || space.available >= needed) return;
  throw Error(error_number::unspecified, fmt::format("the folder {} has {} bytes left, and {} may be needed",
                                                     TextOfPath(folder), space.available, needed));
}

}  // namespace

void WriteWorkbook(const Workbook& workbook, const std::filesystem::path& file) {
  const std::filesystem::path folder =
      file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
  const WorkbookWriter putTogether = LoadWorkbookWriter();
  const std::string name = NarrowName(file);
  const std::string folderName = NarrowName(folder);
  try {
    RequireSpace(workbook, folder);
    putTogether(workbook, name, folderName);
  } catch (const Error& failure) {
    throw Error(failure.Number(),
                fmt::format("cannot write {}: {}; write to a folder with more space, or write CSV "
                            "files with --csv",
                            TextOfPath(file), failure.Description()));
  }
}

}  // namespace krnqb::spreadsheet
