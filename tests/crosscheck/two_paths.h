#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace krnqb::crosscheck {

inline constexpr std::int16_t importedYear = 2002;

/// The actual amounts of months 1 to 12.
using MonthlyAmounts = std::array<double, 12>;

/// The actual amounts that an import wrote into a plan, by block and row: "sales/Plants".
using ActualAmounts = std::map<std::string, MonthlyAmounts>;

/// Imports income and expenses of the year, with balances, from a company file into a new plan in `folder`
/// and returns the plan's actual amounts. The company's processor determines the path: transactions with 1.x,
/// reports with 2.0. Throws Error if the import fails.
ActualAmounts ImportedAmounts(const std::filesystem::path& company, const std::filesystem::path& folder);

/// Returns `amounts` less `others` by block, row and month: "sales/Plants 3". Omits amounts that agree to one
/// part in a billion.
std::map<std::string, double> Differences(const ActualAmounts& amounts, const ActualAmounts& others);

}  // namespace krnqb::crosscheck
