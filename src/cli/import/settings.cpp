#include "cli/import/settings.h"

#include <fmt/format.h>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

// The default import covers the twelve months before the plan.
YearMonth YearBefore(const YearMonth& start) {
  return {.year = static_cast<std::int16_t>(start.year - 1), .month = start.month};
}

}  // namespace

void CheckImportOptions(const ImportCommand& options) {
  if (!options.expenses && !options.income && !options.pastPerformance) {
    throw WrongUsage("nothing is selected for import", "give --expenses, --income or --past-performance");
  }
  if (!options.companyFile && !options.replayFile) {
    throw WrongUsage("no company is given", "give --company FILE, or --replay FILE for a recorded exchange");
  }
}

ImportSettings SettleImport(const ImportCommand& options, const plan_file::PlanFile& plan) {
  const auto product = options.product ? options.product : plan.Product();
  if (!product) {
    throw WrongUsage(fmt::format("the plan {} does not state its product", options.planFile),
                     "give --product ald, bri or cor");
  }
  const auto start = options.planStart ? options.planStart : plan.Start();
  if (!start) {
    throw WrongUsage(fmt::format("the plan {} does not state its first month", options.planFile),
                     "give --plan-start YYYY-MM");
  }
  return {.options = options,
          .product = *product,
          .planStart = *start,
          .importStart = options.importStart.value_or(YearBefore(*start))};
}

void Configure(QBDataExchange& exchange, const ImportSettings& settings, const ImportSource& source,
               const std::shared_ptr<plan_file::PlanFile>& plan) {
  const ImportCommand& options = settings.options;
  const YearMonth importStart = options.importStart.value_or(YearMonth());
  exchange.QBCompany(source.companyPath);
  exchange.KRNPlanData(plan);
  exchange.Options({.includeExpenseAccounts = options.expenses,
                    .includeIncomeAccounts = options.income,
                    .includePastPerformance = options.pastPerformance,
                    .growthRateCogs = options.growthRateCogs.value_or(std::int16_t{0}),
                    .growthRateIncome = options.growthRateIncome.value_or(std::int16_t{0}),
                    .growthRateExpenses = options.growthRateExpenses.value_or(std::int16_t{0}),
                    .balancesImport = options.balances,
                    .krnProduct = settings.product,
                    .period = {.krnStartingMonth = settings.planStart.month,
                               .krnStartingYear = settings.planStart.year,
                               .startingMonth = importStart.month,
                               .startingYear = importStart.year}});
  if (options.fiscalMonth) exchange.QBStartingMonth(*options.fiscalMonth);
}

ImportScope ScopeOf(const ImportSettings& settings, const ImportSource& source) {
  const ImportCommand& options = settings.options;
  return {.expenses = options.expenses,
          .income = options.income,
          .pastPerformance = options.pastPerformance,
          .balances = options.balances,
          .product = settings.product,
          .majorVersion = source.majorVersion,
          .planStart = settings.planStart,
          .importStart = settings.importStart};
}

SummaryScope SummaryScopeOf(const ImportOptions& used, const ImportSettings& settings) {
  return {.balances = used.balancesImport,
          .product = settings.product,
          .pastPerformance = used.includePastPerformance,
          .planStart = settings.planStart,
          .importStart = settings.importStart};
}

}  // namespace krnqb::cli
