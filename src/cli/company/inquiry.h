#pragma once

#include <memory>
#include <string>

#include "cli/console/interrupt_watch.h"
#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/exchange/company_choice.h"
#include "cli/import/source.h"
#include "krnqb/import_report.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Asks a company for something outside an import.
class CompanyInquiry {
 public:
  /// Opens the company and prints the warning about it, if any. Throws Failure with the company's own
  /// description of what is wrong. `interrupts` must outlive the inquiry, whose requests heed it.
  CompanyInquiry(const CompanyChoice& choice, const Console& console, const InterruptWatch& interrupts,
                 const Surroundings& surroundings);

  QBDataExchange& Exchange() noexcept { return exchange_; }

  /// Throws Failure if any request was refused or not answered completely.
  void RequireAnswers(std::string_view whatFailed) const;

 private:
  CompanyInquiry(const ImportSource& source, const Console& console);

  std::shared_ptr<ImportReport> report_;
  QBDataExchange exchange_;
};

}  // namespace krnqb::cli
