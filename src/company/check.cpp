#include "company/check.h"

#include <fmt/format.h>

#include <system_error>

#include "company/copying.h"
#include "company/file.h"
#include "company/records/errors.h"
#include "company/records/proof.h"
#include "company/records/schema.h"
#include "files/atomic_file.h"
#include "files/fault.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::company {
namespace {

constexpr std::size_t mostFindings = 100;

void StopIf(const Interruption& interrupted) {
  if (interrupted && interrupted()) throw Error(error_number::unspecified, "interrupted");
}

class Checker {
 public:
  Checker(const Database& database, const std::filesystem::path& file, const Interruption& interrupted)
      : database_(database), file_(file), interrupted_(interrupted) {
    report_.path = TextOfPath(file);
  }

  CheckReport Run() {
    if (CheckPages() && CheckTables()) {
      CheckIntegrity();
      CheckRecords();
    }
    return std::move(report_);
  }

 private:
  void Add(std::string finding) {
    ++report_.findingCount;
    if (report_.findings.size() < mostFindings) report_.findings.push_back(std::move(finding));
  }

  // The first reading finds out whether the file can be read at all: an interrupted load or a lock is no
  // damage.
  bool CheckPages() {
    std::string refusal;
    try {
      database_.Integer("SELECT count(*) FROM sqlite_master");
    } catch (const Error& error) {
      if (!database_.FoundDamage()) throw;
      refusal = error.Description();
    }
    const Database::Survey survey = database_.SurveyPages();
    report_.checksums = database_.HasChecksums();
    report_.pages = survey.pages;
    for (const std::int64_t page : survey.damaged) {
      Add(fmt::format("page {} does not match its checksum", page));
    }
    if (report_.findings.empty() && !refusal.empty()) Add(refusal);
    return report_.findings.empty();
  }

  bool CheckTables() {
    try {
      CheckSchema(database_, file_);
      ReadProcessorVersion(database_);
      return true;
    } catch (const Error& error) {
      if (error.Kind() != ErrorKind::Unspecified || error.Number() != company_error::cannotOpen) throw;
      Add(error.Description());
      return false;
    }
  }

  void CheckIntegrity() {
    Statement check = database_.Prepare("PRAGMA integrity_check");
    while (check.Step()) {
      if (check.Text(0) != "ok") Add(fmt::format("the database is inconsistent: {}", check.Text(0)));
    }
    StopIf(interrupted_);  // an interrupt counts as inconsistent there
  }

  void CheckRecords() {
    const ProvedRecords proved =
        ProveRecords(database_, [&](std::string finding) { Add(std::move(finding)); });
    report_.records = proved.records;
    report_.postings = proved.postings;
  }

  const Database& database_;
  const std::filesystem::path& file_;
  const Interruption& interrupted_;
  CheckReport report_;
};

bool HasJournal(const std::filesystem::path& file) {
  std::error_code ignored;
  return std::filesystem::exists(files::WithSuffix(file, "-journal"), ignored);
}

}  // namespace

CheckReport CheckCompany(const std::filesystem::path& file, const Interruption& interrupted) {
  const std::filesystem::path path = std::filesystem::absolute(file);
  RequireFile(path);
  const Database database(path, FileAccess::ReadOnly, interrupted);
  database.Execute("BEGIN");  // so that everything is read from one state of the company
  return Checker(database, path, interrupted).Run();
}

FixReport FixCompany(const std::filesystem::path& file, const Interruption& interrupted) {
  RequireFile(std::filesystem::absolute(file));
  const std::filesystem::path path = std::filesystem::canonical(file);  // a link is not replaced
  FixReport report;
  const bool hadJournal = HasJournal(path);
  const Database database(path, FileAccess::ReadWrite, interrupted);
  std::optional<Transaction> transaction;
  try {
    transaction.emplace(database);  // nobody loads meanwhile; undoes an interrupted load
  } catch (const Error&) {
    if (!database.FoundDamage()) throw;  // otherwise the check says what is damaged
  }
  report.loadUndone = transaction && hadJournal && !HasJournal(path);
  report.check = Checker(database, path, interrupted).Run();
  if (report.check.findingCount > 0 || report.check.checksums) return report;

  files::SystemFileOperations operations;
  report.backup = files::ReplaceFile(
      path, [&](const std::filesystem::path& temporary) { CopyCompany(database, temporary, interrupted); },
      operations);
  return report;
}

}  // namespace krnqb::company
