#include "cli/company/inquiry.h"

#include "cli/import/failure.h"
#include "cli/import/omissions.h"
#include "cli/import/source.h"

namespace krnqb::cli {
namespace {

std::shared_ptr<RequestProcessorFactory> ProcessorsOf(const std::string& companyFile, const Console& console,
                                                      const InterruptWatch& interrupts) {
  ImportCommand options;
  options.companyFile = companyFile;
  const ImportSource source = OpenImportSource(options, interrupts);
  if (source.warning) Warn(console, *source.warning);
  return source.processors;
}

}  // namespace

CompanyInquiry::CompanyInquiry(const std::string& companyFile, const Console& console,
                               const InterruptWatch& interrupts)
    : report_(std::make_shared<ImportReport>()),
      exchange_({.processors = ProcessorsOf(companyFile, console, interrupts),
                 .sinks = {},
                 .observer = report_,
                 .userInterface = nullptr,
                 .registry = nullptr,
                 .clock = nullptr}) {
  exchange_.QBCompany(companyFile);
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
