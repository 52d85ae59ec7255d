#include "cli/plan/export_guard.h"

#include <fmt/format.h>

#include <fstream>
#include <string_view>
#include <system_error>

#include "cli/console/failure.h"
#include "cli/console/used_files.h"
#include "files/fault.h"
#include "files/identity.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

// What must not be written.
UsedFiles KeptFiles(const ExportPlanOptions& options) {
  UsedFiles kept = PlanFiles("the plan", options.file);
  if (options.journalFile) kept.push_back(NamedFile("--journal", *options.journalFile));
  Append(kept, StandardStreams(true));
  return kept;
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
  const UsedFiles kept = KeptFiles(options);
  for (const fs::path& output : outputs) {
    for (const std::string_view suffix : {"", ".tmp", ".previous"}) {
      const fs::path written = files::WithSuffix(output, suffix);
      Separate({TextOfPath(written), files::IdentityOf(written)}, kept);
    }
    RequireReplaceable(output,
                       options.workbookFile && output == files::LinkTarget(PathFrom(*options.workbookFile)));
  }
}

}  // namespace krnqb::cli
