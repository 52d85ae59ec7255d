#include <fmt/format.h>

#include "cli/import/settings.h"

namespace krnqb::cli {
namespace {

using Warnings = std::vector<ImportWarning>;

void WarnOfFiles(Warnings& warnings, const ImportCommand& options) {
  if (options.replayFile && options.companyFile) {
    warnings.push_back({"company-ignored", "--company is ignored because --replay is given"});
  }
}

void WarnOfPastPerformance(Warnings& warnings, const ImportSettings& settings, const ImportSource& source) {
  const ImportCommand& options = settings.options;
  if (!options.pastPerformance) return;
  if (settings.product == QBKRN_BRI) {
    warnings.push_back(
        {"past-performance-ignored", "--past-performance is ignored because plans of product bri have none"});
  } else if (options.balances == BalImport_None) {
    warnings.push_back(
        {"past-performance-ignored", "--past-performance is ignored because --balances is none"});
  } else if (source.majorVersion == 2 && !options.expenses) {
    // Reports are collected up to the first figure that needs the expense accounts.
    warnings.push_back({"past-performance-without-expenses",
                        "--past-performance without --expenses ends after the first year's income because "
                        "this company answers with reports"});
  }
}

void WarnOfAmounts(Warnings& warnings, const ImportCommand& options) {
  const auto warn = [&](std::string_view option, bool given, bool included, std::string_view needed) {
    if (!given) return;
    const std::string code = fmt::format("{}-ignored", option);
    if (options.balances == BalImport_None) {
      warnings.push_back({code, fmt::format("--{} is ignored because --balances is none", option)});
    } else if (!included) {
      warnings.push_back({code, fmt::format("--{} is ignored without {}", option, needed)});
    }
  };
  warn("amounts-from", options.amountsFrom.has_value(), true, {});
  warn("import-start", options.importStart.has_value(), true, {});
  warn("growth-income", options.growthRateIncome.has_value(), options.income, "--income");
  warn("growth-cogs", options.growthRateCogs.has_value(), options.income, "--income");
  warn("growth-expenses", options.growthRateExpenses.has_value(), options.expenses, "--expenses");
}

void WarnOfSelection(Warnings& warnings, const ImportSettings& settings) {
  const ImportCommand& options = settings.options;
  const bool selects = settings.product == QBKRN_BRI && options.expenses;
  const std::string_view reason =
      options.expenses ? "only plans of product bri select expense accounts" : "--expenses is not given";
  if (!selects && !options.selectedExpenses.empty()) {
    warnings.push_back(
        {"select-expense-ignored", fmt::format("--select-expense is ignored because {}", reason)});
  }
  if (!selects && options.selectAllExpenses) {
    warnings.push_back(
        {"select-all-expenses-ignored", fmt::format("--select-all-expenses is ignored because {}", reason)});
  }
}

}  // namespace

Warnings ImportWarnings(const ImportSettings& settings, const ImportSource& source) {
  Warnings warnings;
  if (source.warning) warnings.push_back({"company-without-checksums", *source.warning});
  WarnOfFiles(warnings, settings.options);
  WarnOfPastPerformance(warnings, settings, source);
  WarnOfAmounts(warnings, settings.options);
  WarnOfSelection(warnings, settings);
  return warnings;
}

}  // namespace krnqb::cli
