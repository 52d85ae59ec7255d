#include "cli/company/inquiry.h"

#include <utility>

#include "cli/exchange/interruptible_processors.h"
#include "cli/import/failure.h"
#include "cli/import/notices/omissions.h"

namespace krnqb::cli {
namespace {

ImportSource SourceOf(const CompanyChoice& choice, const InterruptWatch& interrupts,
                      const Surroundings& surroundings) {
  ImportCommand options;
  static_cast<CompanyChoice&>(options) = choice;
  ImportSource source = OpenImportSource(options, interrupts, surroundings);
  source.processors = InterruptibleProcessors(std::move(source.processors), interrupts);
  return source;
}

}  // namespace

CompanyInquiry::CompanyInquiry(const CompanyChoice& choice, const Console& console,
                               const InterruptWatch& interrupts, const Surroundings& surroundings)
    : CompanyInquiry(SourceOf(choice, interrupts, surroundings), console) {}

CompanyInquiry::CompanyInquiry(const ImportSource& source, const Console& console)
    : report_(std::make_shared<ImportReport>()),
      exchange_({.processors = source.processors,
                 .sinks = {},
                 .observer = report_,
                 .userInterface = nullptr,
                 .registry = nullptr,
                 .clock = nullptr}) {
  if (source.warning) Warn(console, *source.warning);
  exchange_.QBCompany(source.companyPath);
  // Account lists and versions do not depend on the fiscal year. Setting one keeps a company that does not
  // state its own from failing.
  exchange_.QBStartingMonth(1);
}

void CompanyInquiry::RequireAnswers(std::string_view whatFailed) const {
  const Error error = LastError(exchange_);
  constexpr std::string_view whatToDo = "fix the cause and try again";
  if (error.Number() != 0) throw Failure(ExitCode::Failed, whatFailed, error, whatToDo);
  const auto& missing = report_->Missing();
  if (missing.empty()) return;
  const Error omitted(missing.front().number, OmissionText(missing.front()));
  throw Failure(ExitCode::Failed, whatFailed, omitted, whatToDo);
}

}  // namespace krnqb::cli
