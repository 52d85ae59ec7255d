#include "cli/company/check_command.h"

#include <fmt/format.h>

#include "cli/company/interruptible.h"
#include "cli/company/json_output.h"
#include "cli/console/text_table.h"
#include "cli/exchange/company_file.h"
#include "company/check.h"
#include "company/records/errors.h"
#include "support/error_handling.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using company::CheckReport;
using company::FixReport;

FixReport Check(const CheckCompanyOptions& options, const InterruptWatch& interrupts) {
  try {
    const company::Interruption interrupted = FollowInterrupts(interrupts);
    if (options.fix) return company::FixCompany(PathFrom(options.file), interrupted);
    return {.check = company::CheckCompany(PathFrom(options.file), interrupted),
            .loadUndone = false,
            .backup = {}};
  } catch (...) {
    throw CompanyFailure("checking the company failed", CaughtError(),
                         "check the path, its permissions and the programs that use the file");
  }
}

std::string Counted(std::int64_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string ReportText(const FixReport& report) {
  const CheckReport& check = report.check;
  std::string text;
  if (report.loadUndone) text += "Undid a load that was interrupted.\n";
  for (const std::string& finding : check.findings) text += OneLine(finding) + '\n';
  if (const auto listed = static_cast<std::int64_t>(check.findings.size()); listed < check.findingCount) {
    text += fmt::format("... and {} more\n", check.findingCount - listed);
  }
  if (check.findingCount == 0) {
    text += OneLine(fmt::format("{} is whole: {}, {} and {}.", check.path, Counted(check.pages, "page"),
                                Counted(check.records, "record"), Counted(check.postings, "posting"))) +
            '\n';
  }
  if (report.backup) {
    text += OneLine(fmt::format("Wrote it anew with checksums; the previous version is {}.",
                                report.backup->string())) +
            '\n';
  }
  return text;
}

Failure DamageFailure(const CheckReport& check) {
  return {ExitCode::Failed, "checking the company failed",
          Error(company::company_error::cannotOpen,
                fmt::format("The company file {} is damaged ({}).", check.path,
                            Counted(check.findingCount, "finding"))),
          "restore a copy of the file"};
}

CommandEnd Report(const FixReport& report, const CheckCompanyOptions& options, const Console& console) {
  const CheckReport& check = report.check;
  const bool damaged = check.findingCount > 0;
  console.out << (options.json ? CompanyCheckJson(report) + '\n' : ReportText(report));
  if (damaged) {
    PrintError(console, DamageFailure(check).Line());
  } else if (const auto warning = ChecksumWarning(check.path, check.checksums || report.backup)) {
    Warn(console, *warning);
  }
  return {damaged ? ExitCode::Failed : ExitCode::Done, report.backup.has_value() || report.loadUndone};
}

}  // namespace

CommandEnd Run(const CheckCompanyOptions& options, const Console& console) {
  return RunInterruptibly(
      "checking the company", "the file was not written anew",
      [&](const InterruptWatch& interrupts) { return Report(Check(options, interrupts), options, console); });
}

}  // namespace krnqb::cli
