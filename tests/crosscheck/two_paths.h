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

/// Actual amounts as an import wrote them into a plan, by block and row: "sales/Plants".
using ActualAmounts = std::map<std::string, MonthlyAmounts>;

/// Imports income and expenses of the year, with balances, from a company file into a new plan in `folder`,
/// and gives the plan's actual amounts. The path is that of the company's processor: transactions with 1.x,
/// reports with 2.0. Error when the import fails.
ActualAmounts ImportedAmounts(const std::filesystem::path& company, const std::filesystem::path& folder);

/// What the one path has more than the other, by block, row and month: "sales/Plants 3". Amounts that agree
/// to a part in a thousand million are left out.
std::map<std::string, double> Differences(const ActualAmounts& amounts, const ActualAmounts& others);

}  // namespace krnqb::crosscheck
