#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"

namespace krnqb::company {

/// An account as reports show it.
struct ReportAccount {
  std::string key;                    ///< ListID
  std::string label;                  ///< its name, with its number before it where numbers are in use
  std::string fullName;               ///< the labels from the top down to its own, ":" between them
  std::int64_t balance = 0;           ///< of its own, in hundredths, as its record has it
  std::vector<std::size_t> children;  ///< positions among the accounts
};

/// The accounts of one type.
struct ReportAccounts {
  std::vector<ReportAccount> accounts;  ///< in the list's order, parents before their children
  std::vector<std::size_t> topLevel;    ///< positions of those that are below no other
};

ReportAccounts ReadReportAccounts(const Database& database, std::string_view accountType);

}  // namespace krnqb::company
