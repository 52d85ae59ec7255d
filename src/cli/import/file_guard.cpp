#include "cli/import/file_guard.h"

#include <fmt/format.h>

#include <iterator>

#include "cli/console/failure.h"
#include "cli/console/used_files.h"
#include "files/fault.h"
#include "plan_file/history/folder.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

// The ledger and what is beside it while it is written.
UsedFiles LedgerFiles(const std::string& ledger) {
  const std::filesystem::path file = files::LinkTarget(PathFrom(ledger));
  const std::string temporary = fmt::format("a temporary file of --ledger {}", ledger);
  UsedFiles files = PreparedFiles("--ledger", ledger);
  files.push_back(FileBeside(temporary, file, "-journal"));
  return files;
}

UsedFiles CompanyFiles(const std::string& company) {
  UsedFiles files{NamedFile("--company", company)};
  for (const std::string_view suffix : {"-journal", "-wal", "-shm"}) {
    files.push_back(
        FileBeside(fmt::format("the database journal of --company {}", company), PathFrom(company), suffix));
  }
  return files;
}

UsedFiles InputFiles(const ImportCommand& options) {
  UsedFiles files;
  if (options.replayFile) files.push_back(NamedFile("--replay", *options.replayFile));
  if (options.quickBooks && !options.quickBooks->empty())
    files.push_back(NamedFile("--quickbooks", *options.quickBooks));
  if (!options.companyFile) return files;
  Append(files, CompanyFiles(*options.companyFile));
  return files;
}

}  // namespace

void CheckImportFiles(const ImportCommand& options) {
  std::error_code unknown;
  if (plan_file::IsKeptVersion(std::filesystem::weakly_canonical(PathFrom(options.planFile), unknown))) {
    throw WrongUsage(fmt::format("--plan {} is a version in a plan's history", options.planFile),
                     "copy it to another folder and import into the copy");
  }
  const UsedFiles streams = StandardStreams(options.json || !options.quiet);
  const UsedFiles plan = PlanFiles("--plan", options.planFile);
  const UsedFiles inputs = InputFiles(options);
  UsedFiles outputs;
  if (options.journalFile) outputs.push_back(NamedFile("--journal", *options.journalFile));
  if (options.recordFile) outputs.push_back(NamedFile("--record", *options.recordFile));
  if (options.ledgerFile) Append(outputs, LedgerFiles(*options.ledgerFile));
  if (options.reportFile) Append(outputs, PreparedFiles("--report", *options.reportFile));
  for (auto output = outputs.begin(); output != outputs.end(); ++output) {
    Separate(*output, {std::next(output), outputs.end()});
  }
  for (const UsedFile& output : outputs) Separate(output, streams);
  // Standard output and standard error are often one file.
  Append(outputs, streams);
  for (const UsedFile& output : outputs) {
    Separate(output, plan);
    Separate(output, inputs);
  }
  for (const UsedFile& planFile : plan) Separate(planFile, inputs);
}

void CheckReportFile(const std::string& report, const std::string& plan, const std::vector<ReadFile>& read) {
  UsedFiles others = PlanFiles("--plan", plan);
  Append(others, StandardStreams(true));
  for (const ReadFile& file : read) {
    if (file.option == "--company") {
      Append(others, CompanyFiles(file.path));
    } else {
      others.push_back(NamedFile(file.option, file.path));
    }
  }
  for (const UsedFile& file : PreparedFiles("--report", report)) Separate(file, others);
}

}  // namespace krnqb::cli
