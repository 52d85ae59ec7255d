#include <fmt/format.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/plan/commands.h"
#include "cli/plan/export_guard.h"
#include "cli/plan/left_out_amounts.h"
#include "files/fault.h"
#include "files/identity.h"
#include "files/prepared_file.h"
#include "files/reading.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/folder.h"
#include "plan_file/history/state.h"
#include "spreadsheet/csv_table.h"
#include "spreadsheet/plan_workbook.h"
#include "spreadsheet/workbook_file.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view exportFailed = "exporting the plan failed";

std::optional<spreadsheet::LastImport> LastImportOf(const fs::path& plan) {
  using namespace plan_file;
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan, HistoryUse::Reading, operations);
  if (folder.Numbers().empty()) return std::nullopt;
  const HistoryState state = StateOf(folder, DigestOf(files::ReadFile(plan, "cannot read the plan").bytes));
  const std::int32_t import = state.plan.import.value_or(0);
  if (import == 0 || !folder.Has(import)) return std::nullopt;
  return spreadsheet::LastImport{folder.Describe(import), state.plan.edited};
}

spreadsheet::ExportNotes NotesOf(const plan_file::PlanFile& plan, const ExportPlanOptions& options) {
  spreadsheet::ExportNotes notes;
  try {
    notes.lastImport = LastImportOf(plan.Path());
  } catch (const Error& fault) {
    notes.historyFault = fault.Description();
  }
  if (options.journalFile) ReadLeftOutAmounts(*options.journalFile, notes);
  return notes;
}

// Gives a file its name once it is written completely.
void WriteFile(const fs::path& file, const std::function<void(files::PreparedFile&)>& write) {
  files::SystemFileOperations operations;
  Attempt([&] {
    files::PreparedFile prepared(file, operations);
    write(prepared);
    prepared.Place();
    prepared.Keep();
  });
}

void MakeFolder(const fs::path& folder) {
  constexpr mode_t ownerOnly = 0700;
  files::SystemFileOperations operations;
  const std::error_code failure = operations.CreateFolder(folder, ownerOnly);
  std::error_code unknown;
  if (!failure || fs::is_directory(folder, unknown)) return;
  throw Failure(ExitCode::Failed, files::FileError("cannot create the folder", folder, failure));
}

/// The files of an export.
class Export {
 public:
  Export(const ExportPlanOptions& options, const plan_file::PlanFile& plan) : options_(options) {
    const spreadsheet::PlanSheets sheets = Attempt([&] { return spreadsheet::SheetsOf(plan); });
    const spreadsheet::ExportNotes notes = NotesOf(plan, options);
    warnings_ = spreadsheet::AllWarnings(sheets, notes).size();
    workbook_ = spreadsheet::WorkbookOf(sheets, notes, spreadsheet::LastSaved(plan));
    if (options.csvFolder) {
      tables_ = spreadsheet::CsvTablesOf(sheets, workbook_.sheets[0], workbook_.sheets[1]);
    }
  }

  // Their paths, with symbolic links resolved.
  std::vector<fs::path> Paths() const {
    std::vector<fs::path> paths;
    if (options_.workbookFile) paths.push_back(files::LinkTarget(PathFrom(*options_.workbookFile)));
    if (options_.csvFolder) {
      for (const spreadsheet::CsvTable& table : tables_) paths.push_back(PathIn(*options_.csvFolder, table));
    }
    return paths;
  }

  void Write(const Console& console) const {
    if (options_.workbookFile) WriteSpreadsheet(*options_.workbookFile, console);
    if (options_.csvFolder) WriteTables(*options_.csvFolder, console);
  }

 private:
  static fs::path PathIn(const std::string& folder, const spreadsheet::CsvTable& table) {
    return files::LinkTarget(PathFrom(folder) / PathFrom(table.fileName));
  }

  std::string WarningsText(std::string_view where) const {
    if (warnings_ == 0) return {};
    return fmt::format(" {} {} {}.", warnings_, warnings_ == 1 ? "warning is" : "warnings are", where);
  }

  void WriteSpreadsheet(const std::string& file, const Console& console) const {
    WriteFile(files::LinkTarget(PathFrom(file)), [&](files::PreparedFile& prepared) {
      spreadsheet::WriteWorkbook(workbook_, prepared.Temporary());
    });
    console.out << fmt::format("Wrote {}: a summary and {} of the plan.{}\n", file,
                               BlocksText(workbook_.sheets.size() - 2),
                               WarningsText("on its sheet Warnings"));
  }

  static std::string BlocksText(std::size_t count) {
    return fmt::format("{} {}", count, count == 1 ? "block" : "blocks");
  }

  void WriteTables(const std::string& folder, const Console& console) const {
    MakeFolder(PathFrom(folder));
    for (const spreadsheet::CsvTable& table : tables_) {
      WriteFile(PathIn(folder, table), [&](files::PreparedFile& prepared) { prepared.Write(table.text); });
    }
    console.out << fmt::format("Wrote {} files into {}: a summary, the warnings and {} of the plan.{}\n",
                               tables_.size(), folder, BlocksText(tables_.size() - 2),
                               WarningsText("in warnings.csv"));
  }

  const ExportPlanOptions& options_;
  spreadsheet::Workbook workbook_;
  std::vector<spreadsheet::CsvTable> tables_;
  std::size_t warnings_ = 0;
};

}  // namespace

CommandEnd Run(const ExportPlanOptions& options, const Console& console) {
  if (!options.workbookFile && !options.csvFolder) {
    throw WrongUsage("neither --xlsx nor --csv is given", "give --xlsx FILE, --csv DIR or both");
  }
  InterruptWatch interrupts;
  const auto plan = Attempt([&] { return plan_file::PlanFile::Open(PathFrom(options.file)); });
  const Export files(options, *plan);
  CheckExportFiles(options, files.Paths());
  if (interrupts.Requested()) {
    throw interrupts.Interruption(exportFailed, "nothing was written; run it again");
  }
  interrupts.PassPointOfNoReturn();
  files.Write(console);
  return {ExitCode::Done, true};
}

}  // namespace krnqb::cli
