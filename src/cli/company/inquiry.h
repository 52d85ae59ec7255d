#pragma once

#include <memory>
#include <string>

#include "krnqb/import_report.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Questions to a company file outside an import.
class CompanyInquiry {
 public:
  /// Opens the company first, to say in its own words what is wrong with it. Throws Failure.
  explicit CompanyInquiry(const std::string& companyFile);

  QBDataExchange& Exchange() noexcept { return exchange_; }

  /// Throws Failure when anything that was asked was refused or not answered whole.
  void RequireAnswers(std::string_view whatFailed) const;

 private:
  std::shared_ptr<ImportReport> report_;
  QBDataExchange exchange_;
};

}  // namespace krnqb::cli
