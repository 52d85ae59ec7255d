#pragma once

#include <cstddef>
#include <string>

#include "company/reports/profit_and_loss.h"

namespace krnqb::cli {

/// A company's profit and loss of whole months.
struct CompanyBooks {
  std::string path;     ///< of the company file, absolute
  std::string company;  ///< its name
  company::ProfitAndLoss profitAndLoss;
};

/// Returns the profit and loss for people: accounts with amounts, sub-accounts indented below their parents,
/// the sums of each section, and a sentence for each account whose balance the loaded transactions do not
/// explain. No line of the table is longer than `width` columns. With `byMonth` there is a column for each
/// month besides that of the sums.
std::string ProfitAndLossText(const CompanyBooks& books, bool byMonth, std::size_t width);

/// Returns the same as JSON, one object, with all accounts and months.
std::string ProfitAndLossJson(const CompanyBooks& books);

}  // namespace krnqb::cli
