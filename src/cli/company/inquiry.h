#pragma once

#include <memory>
#include <string>

#include "krnqb/import_report.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::cli {

/// Asks a company file for something outside an import.
class CompanyInquiry {
 public:
  /// Opens the company. Throws Failure with the company file's own description of what is wrong.
  explicit CompanyInquiry(const std::string& companyFile);

  QBDataExchange& Exchange() noexcept { return exchange_; }

  /// Throws Failure if any request was refused or not answered completely.
  void RequireAnswers(std::string_view whatFailed) const;

 private:
  std::shared_ptr<ImportReport> report_;
  QBDataExchange exchange_;
};

}  // namespace krnqb::cli
