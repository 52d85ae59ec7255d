#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "cli/workplace.h"

namespace krnqb::cli::tests {

/// What `krnqb reconcile --json` prints, with a line per account and year, and per account and month.
struct ReconciledPlan {
  nlohmann::json years;
  nlohmann::json months;
};

/// Runs `reconcile`, followed by `arguments`, both ways. Fails the test if it fails, or if the exit status is
/// not that of the result.
ReconciledPlan ReconcilePlan(const Words& arguments);

/// Returns an amount of a JSON output in whole millionths.
std::int64_t Millionths(const nlohmann::json& amount);

/// Returns the causes of a line, group or whole as "code amount", each with its transactions' number if there
/// are any: "billed-once -921.65 (9)".
std::vector<std::string> CausesOf(const nlohmann::json& sums);

/// Returns the account's line of the year; fails the test if there is not exactly one.
nlohmann::json LineOf(const nlohmann::json& years, std::string_view group, std::string_view account);

/// Fails the test unless on every line, of every group and on the whole plan - books = difference = causes +
/// unexplained, groups are the sums of their lines, years those of their months, and the whole is the net
/// income of the groups.
void ProveSums(const ReconciledPlan& reconciled);

/// Fails the test if anything is unexplained, or rounding is more than half a cent.
void ProveExplained(const ReconciledPlan& reconciled);

/// Fails the test unless the books are, account by account and month by month, the profit and loss that
/// `company profit-and-loss` prints for 2002. Returns how many amounts other than 0 were compared.
int ProveBooks(const ReconciledPlan& reconciled, const std::string& company);

/// Fails the test unless the plan's amounts are, row by row and month by month, those in the cells that `plan
/// show` prints: of the actual rows, or inside the formulas of the planned ones. Returns how many amounts
/// other than 0 were compared.
int ProvePlan(const ReconciledPlan& reconciled, const std::string& plan, bool inFormulas = false);

}  // namespace krnqb::cli::tests
