#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"

namespace krnqb::company {

/// An account as reports show it.
struct ReportAccount {
  std::string key;                      ///< ListID
  std::string label;                    ///< its name, preceded by its number if numbers are in use
  std::string fullName;                 ///< see `FullName`
  std::optional<std::int64_t> balance;  ///< its own, in hundredths, as in its record; nullopt if it has none
  std::vector<std::size_t> children;    ///< indexes into the accounts
};

/// The accounts of one type.
struct ReportAccounts {
  std::vector<ReportAccount> accounts;  ///< in the list's order, parents before their children
  std::vector<std::size_t> topLevel;    ///< indexes of the top-level accounts
};

/// Returns an account's labels from the top level down, separated by ":". What exceeds 500 bytes of its
/// ancestors' labels is replaced by "...": QuickBooks allows five levels of 31 characters.
std::string FullName(std::string_view ancestors, std::string_view label);

ReportAccounts ReadReportAccounts(const Database& database, std::string_view accountType);

}  // namespace krnqb::company
