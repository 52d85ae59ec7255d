#pragma once

#include <optional>
#include <string>

namespace krnqb::cli {

/// Where a command reads the books, as it was typed. At most one of them is given.
struct CompanyChoice {
  std::optional<std::string> companyFile;  ///< --company FILE
  /// --quickbooks [PATH]: a company file to be opened by QuickBooks; empty for the one that is open there.
  std::optional<std::string> quickBooks;
};

/// Throws Failure (WrongUsage) unless exactly one of them is given.
void RequireOneCompany(const CompanyChoice& choice);

/// The same for a command that reads recordings too. With `replayFile` no company is needed, and QuickBooks
/// is refused.
void RequireOneCompany(const CompanyChoice& choice, const std::optional<std::string>& replayFile);

}  // namespace krnqb::cli
