#include "cli/plan/export_guard.h"

#include <fmt/format.h>
#include <unistd.h>

#include <fstream>
#include <optional>
#include <string_view>
#include <system_error>

#include "cli/console/failure.h"
#include "files/fault.h"
#include "files/identity.h"
#include "files/operations.h"
#include "plan_file/history/folder.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

// A file that must not be written.
struct KeptFile {
  std::string label;
  std::optional<files::FileIdentity> identity;
};

// The files of the plan's history, and the folder itself.
void AddHistory(const fs::path& plan, const std::string& label, std::vector<KeptFile>& kept) {
  const fs::path folder = plan_file::HistoryFolderOf(plan);
  kept.push_back({label, files::IdentityOf(folder)});
  std::vector<std::string> names;
  files::SystemFileOperations operations;
  // A folder that cannot be read is reported on the sheet of warnings.
  static_cast<void>(operations.ListFolder(folder, names));
  for (const std::string& name : names) kept.push_back({label, files::IdentityOf(folder / PathFrom(name))});
}

std::vector<KeptFile> KeptFiles(const ExportPlanOptions& options) {
  const fs::path plan = files::LinkTarget(PathFrom(options.file));
  std::vector<KeptFile> kept{{fmt::format("the plan {}", options.file), files::IdentityOf(plan)}};
  for (const std::string_view suffix : {".bak", ".lock", ".tmp", ".bak.tmp"}) {
    kept.push_back({fmt::format("a file of the plan {}", options.file),
                    files::IdentityOf(files::WithSuffix(plan, suffix))});
  }
  AddHistory(plan, fmt::format("the history of the plan {}", options.file), kept);
  if (options.journalFile) {
    kept.push_back({fmt::format("--journal {}", *options.journalFile),
                    files::IdentityOf(PathFrom(*options.journalFile))});
  }
  kept.push_back({"standard output", files::IdentityOf(STDOUT_FILENO)});
  kept.push_back({"standard error", files::IdentityOf(STDERR_FILENO)});
  return kept;
}

void RequireOther(const fs::path& file, const std::vector<KeptFile>& kept) {
  const std::optional<files::FileIdentity> identity = files::IdentityOf(file);
  if (!identity) return;
  for (const KeptFile& other : kept) {
    if (!other.identity) continue;
    const bool newInFolder = !identity->newName.empty() && other.identity->newName.empty() &&
                             identity->device == other.identity->device &&
                             identity->number == other.identity->number;
    if (newInFolder) {
      throw WrongUsage(fmt::format("{} would be in {}", TextOfPath(file), other.label), "give another file");
    }
    if (identity != other.identity) continue;
    throw WrongUsage(fmt::format("{} and {} are the same file", TextOfPath(file), other.label),
                     "give another file");
  }
}

void RequireReplaceable(const fs::path& file, bool workbook) {
  std::error_code unknown;
  const fs::file_status status = fs::status(file, unknown);
  if (!fs::exists(status)) return;
  if (!fs::is_regular_file(status)) {
    throw WrongUsage(fmt::format("{} is not a file", TextOfPath(file)), "give the name of a file");
  }
  constexpr std::string_view archive = "PK\x03\x04";  // with which every spreadsheet of this kind begins
  std::string beginning(archive.size(), '\0');
  std::ifstream existing(file, std::ios::binary);
  existing.read(beginning.data(), static_cast<std::streamsize>(beginning.size()));
  const bool empty = existing.gcount() == 0 && existing.eof();
  if (!workbook || empty || beginning == archive) return;
  throw WrongUsage(fmt::format("{} exists and is not a spreadsheet", TextOfPath(file)),
                   "give another file, or remove it first");
}

}  // namespace

void CheckExportFiles(const ExportPlanOptions& options, const std::vector<fs::path>& outputs) {
  const std::vector<KeptFile> kept = KeptFiles(options);
  for (const fs::path& output : outputs) {
    for (const std::string_view suffix : {"", ".tmp", ".previous"}) {
      RequireOther(files::WithSuffix(output, suffix), kept);
    }
    RequireReplaceable(output,
                       options.workbookFile && output == files::LinkTarget(PathFrom(*options.workbookFile)));
  }
}

}  // namespace krnqb::cli
