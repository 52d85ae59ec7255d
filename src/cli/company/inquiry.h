#pragma once

#include <memory>
#include <string>

#include "cli/console/interrupt_watch.h"
#include "cli/console/streams.h"
#include "krnqb/import_report.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Asks a company file for something outside an import.
class CompanyInquiry {
 public:
  /// Opens the company and prints the warning about it, if any. Throws Failure with the company file's own
  /// description of what is wrong. `interrupts` must outlive the inquiry, whose requests heed it.
  CompanyInquiry(const std::string& companyFile, const Console& console, const InterruptWatch& interrupts);

  QBDataExchange& Exchange() noexcept { return exchange_; }

  /// Throws Failure if any request was refused or not answered completely.
  void RequireAnswers(std::string_view whatFailed) const;

 private:
  std::shared_ptr<ImportReport> report_;
  QBDataExchange exchange_;
};

}  // namespace krnqb::cli
