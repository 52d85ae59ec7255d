#pragma once

#include <fmt/format.h>

#include <string>

#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// Returns the amounts of a statement, an account a line: "Expense Rent:Office 100.00 20.00".
inline std::string AmountListing(const ProfitAndLoss& statement) {
  std::string listing;
  for (const StatementAccount& account : statement.accounts) {
    listing += account.section == Section::Unknown ? "?" : std::string(SectionName(account.section));
    listing += " | " + account.FullName() + " |";
    for (const ExactAmount& amount : account.amounts) listing += ' ' + amount.Text();
    listing += '\n';
  }
  return listing;
}

/// Returns the columns of a statement, each with its first and last day.
inline std::string ColumnListing(const ProfitAndLoss& statement) {
  std::string listing;
  const auto day = [](const std::chrono::year_month_day& date) {
    return fmt::format("{}-{:02}-{:02}", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                       static_cast<unsigned>(date.day()));
  };
  for (const StatementColumn& column : statement.columns) {
    if (column.month) listing += fmt::format("{}/{} ", column.month->month, column.month->year);
    listing += column.days ? day(column.days->first) + ".." + day(column.days->last) : "?";
    listing += '\n';
  }
  return listing;
}

/// Returns the findings of a statement, one a line.
inline std::string FindingListing(const ProfitAndLoss& statement) {
  std::string listing;
  for (const std::string& finding : statement.findings) listing += finding + '\n';
  return listing;
}

}  // namespace krnqb::profit_and_loss
