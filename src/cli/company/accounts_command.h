#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/console/streams.h"
#include "cli/console/surroundings.h"
#include "cli/exchange/company_choice.h"

namespace krnqb::cli {

enum class ListedAccounts : std::uint8_t { Income, Expense };

/// `krnqb accounts` as it was typed.
struct AccountsOptions : CompanyChoice {
  ListedAccounts list = ListedAccounts::Income;
  std::optional<std::string> planFile;
  bool json = false;
};

/// Lists a company's income or expense accounts as a tree and, given a plan of product bri, which expense
/// accounts an import would keep in it.
ExitCode Run(const AccountsOptions& options, const Console& console, const Surroundings& surroundings);

}  // namespace krnqb::cli
