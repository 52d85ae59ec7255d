#include "cli/import/file_guard.h"

#include <fmt/format.h>
#include <unistd.h>

#include <iterator>

#include "cli/console/failure.h"
#include "files/fault.h"
#include "files/identity.h"
#include "files/operations.h"
#include "plan_file/history/folder.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

// A file of the import, and how the message calls it.
struct UsedFile {
  std::string label;
  std::optional<files::FileIdentity> identity;
  bool holdsOthers = false;  // a folder whose files are the import's too
};
using UsedFiles = std::vector<UsedFile>;

void Append(UsedFiles& files, const UsedFiles& more) {
  files.insert(files.end(), more.begin(), more.end());
}

UsedFile OptionFile(std::string_view option, const std::string& path) {
  return {fmt::format("{} {}", option, path), files::IdentityOf(PathFrom(path)), false};
}

UsedFile FileBeside(std::string_view what, const std::filesystem::path& file, std::string_view suffix) {
  return {std::string(what), files::IdentityOf(files::WithSuffix(file, suffix)), false};
}

// The folder of the plan's history, if it exists, else its name, and the files in it.
UsedFiles HistoryFiles(const std::string& plan, const std::filesystem::path& file) {
  const std::string label = fmt::format("the history of --plan {}", plan);
  const std::filesystem::path folder = plan_file::HistoryFolderOf(file);
  UsedFiles used{{label, files::IdentityOf(folder), true}};
  std::vector<std::string> names;
  files::SystemFileOperations operations;
  // A folder that cannot be read is reported where the history is used.
  static_cast<void>(operations.ListFolder(folder, names));
  for (const std::string& name : names)
    used.push_back({label, files::IdentityOf(folder / PathFrom(name)), false});
  return used;
}

// Whether the file would be created in that folder.
bool IsNewIn(const files::FileIdentity& file, const files::FileIdentity& folder) {
  return !file.newName.empty() && folder.newName.empty() && file.device == folder.device &&
         file.number == folder.number;
}

UsedFiles PlanFiles(const std::string& plan) {
  // These are beside the plan itself, not beside a link to it.
  const std::filesystem::path file = files::LinkTarget(PathFrom(plan));
  UsedFiles used{OptionFile("--plan", plan),
                 FileBeside(fmt::format("the backup of --plan {}", plan), file, ".bak"),
                 FileBeside(fmt::format("the lock of --plan {}", plan), file, ".lock"),
                 FileBeside(fmt::format("a temporary file of --plan {}", plan), file, ".tmp"),
                 FileBeside(fmt::format("a temporary file of --plan {}", plan), file, ".bak.tmp")};
  Append(used, HistoryFiles(plan, file));
  return used;
}

// The ledger and what is beside it while it is written.
UsedFiles LedgerFiles(const std::string& ledger) {
  const std::filesystem::path file = files::LinkTarget(PathFrom(ledger));
  const std::string temporary = fmt::format("a temporary file of --ledger {}", ledger);
  return {OptionFile("--ledger", ledger), FileBeside(temporary, file, ".tmp"),
          FileBeside(temporary, file, ".previous"), FileBeside(temporary, file, "-journal")};
}

UsedFiles ReportFiles(const std::string& report) {
  const std::filesystem::path file = files::LinkTarget(PathFrom(report));
  const std::string temporary = fmt::format("a temporary file of --report {}", report);
  return {OptionFile("--report", report), FileBeside(temporary, file, ".tmp"),
          FileBeside(temporary, file, ".previous")};
}

UsedFiles CompanyFiles(const std::string& company) {
  UsedFiles files{OptionFile("--company", company)};
  for (const std::string_view suffix : {"-journal", "-wal", "-shm"}) {
    files.push_back(
        FileBeside(fmt::format("the database journal of --company {}", company), PathFrom(company), suffix));
  }
  return files;
}

UsedFiles InputFiles(const ImportCommand& options) {
  UsedFiles files;
  if (options.replayFile) files.push_back(OptionFile("--replay", *options.replayFile));
  if (options.quickBooks && !options.quickBooks->empty())
    files.push_back(OptionFile("--quickbooks", *options.quickBooks));
  if (!options.companyFile) return files;
  Append(files, CompanyFiles(*options.companyFile));
  return files;
}

UsedFiles StandardStreams(bool prints) {
  UsedFiles files;
  if (prints) files.push_back({"standard output", files::IdentityOf(STDOUT_FILENO), false});
  files.push_back({"standard error", files::IdentityOf(STDERR_FILENO), false});
  return files;
}

void Separate(const UsedFile& file, const UsedFiles& others) {
  for (const UsedFile& other : others) {
    if (!file.identity || !other.identity) continue;
    if (other.holdsOthers && IsNewIn(*file.identity, *other.identity)) {
      throw WrongUsage(fmt::format("{} is in {}", file.label, other.label), "give another file");
    }
    if (file.identity != other.identity) continue;
    throw WrongUsage(fmt::format("{} and {} are the same file", file.label, other.label),
                     "give another file");
  }
}

}  // namespace

void CheckImportFiles(const ImportCommand& options) {
  std::error_code unknown;
  if (plan_file::IsKeptVersion(std::filesystem::weakly_canonical(PathFrom(options.planFile), unknown))) {
    throw WrongUsage(fmt::format("--plan {} is a version in a plan's history", options.planFile),
                     "copy it to another folder and import into the copy");
  }
  const UsedFiles streams = StandardStreams(options.json || !options.quiet);
  const UsedFiles plan = PlanFiles(options.planFile);
  const UsedFiles inputs = InputFiles(options);
  UsedFiles outputs;
  if (options.journalFile) outputs.push_back(OptionFile("--journal", *options.journalFile));
  if (options.recordFile) outputs.push_back(OptionFile("--record", *options.recordFile));
  if (options.ledgerFile) Append(outputs, LedgerFiles(*options.ledgerFile));
  if (options.reportFile) Append(outputs, ReportFiles(*options.reportFile));
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
  UsedFiles others = PlanFiles(plan);
  Append(others, StandardStreams(true));
  for (const ReadFile& file : read) {
    if (file.option == "--company") {
      Append(others, CompanyFiles(file.path));
    } else {
      others.push_back(OptionFile(file.option, file.path));
    }
  }
  for (const UsedFile& file : ReportFiles(report)) Separate(file, others);
}

}  // namespace krnqb::cli
