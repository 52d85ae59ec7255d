#include "cli/import/outcome.h"

namespace krnqb::cli {

std::string_view ResultWord(ImportResult result) noexcept {
  switch (result) {
    case ImportResult::Imported:
      return "imported";
    case ImportResult::Unchanged:
      return "unchanged";
    case ImportResult::DryRun:
      return "dry-run";
    case ImportResult::Incomplete:
      return "incomplete";
    case ImportResult::Cancelled:
      return "cancelled";
    case ImportResult::WrongUsage:
      return "wrong-usage";
    case ImportResult::Interrupted:
      return "interrupted";
    case ImportResult::Failed:
      break;
  }
  return "failed";
}

void SetFailure(ImportOutcome& outcome, const Failure& failure) {
  outcome.result = ResultOf(failure.Code());
  outcome.errorNumber = failure.Number();
  outcome.errorDescription = failure.Description();
  outcome.errorLine = failure.Line();
  outcome.remedy = failure.Remedy();
}

ExitCode ExitCodeOf(const ImportOutcome& outcome) noexcept {
  switch (outcome.result) {
    case ImportResult::Imported:
    case ImportResult::Unchanged:
    case ImportResult::DryRun:
      return ExitCode::Done;
    case ImportResult::Incomplete:
      return ExitCode::Incomplete;
    case ImportResult::WrongUsage:
      return ExitCode::WrongUsage;
    case ImportResult::Interrupted:
      return outcome.interruption;
    case ImportResult::Cancelled:
    case ImportResult::Failed:
      break;
  }
  return ExitCode::Failed;
}

ImportResult ResultOf(ExitCode code) noexcept {
  switch (code) {
    case ExitCode::Done:
      return ImportResult::Imported;
    case ExitCode::WrongUsage:
      return ImportResult::WrongUsage;
    case ExitCode::Incomplete:
      return ImportResult::Incomplete;
    case ExitCode::HungUp:
    case ExitCode::Interrupted:
    case ExitCode::Terminated:
      return ImportResult::Interrupted;
    case ExitCode::Differs:
    case ExitCode::OutputClosed:
    case ExitCode::Failed:
      break;
  }
  return ImportResult::Failed;
}

const ImportBasis& BasisOf(const ImportOutcome& outcome) {
  if (!outcome.basis) throw Error(error_number::objectNotSet);
  return *outcome.basis;
}

}  // namespace krnqb::cli
