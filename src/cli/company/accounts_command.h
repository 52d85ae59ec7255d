#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "cli/console/streams.h"

namespace krnqb::cli {

enum class ListedAccounts : std::uint8_t { Income, Expense };

/// `krnqb accounts` as it was typed.
struct AccountsOptions {
  ListedAccounts list = ListedAccounts::Income;
  std::string companyFile;
  std::optional<std::string> planFile;
  bool json = false;
};

/// Lists a company's income or expense accounts as a tree and, given a plan of product bri, which expense
/// accounts an import would keep in it.
ExitCode Run(const AccountsOptions& options, const Console& console);

}  // namespace krnqb::cli
