#include "cli/import/settings.h"

#include <fmt/format.h>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

// The default import covers the twelve months before the plan.
YearMonth YearBefore(const YearMonth& start) {
  return {.year = static_cast<std::int16_t>(start.year - 1), .month = start.month};
}

std::string PlanText(const plan_file::PlanFile& plan) {
  std::string text;
  if (const auto product = plan.Product())
    text = fmt::format("is of product {}", plan_file::ProductText(*product));
  if (const auto start = plan.Start()) {
    text += fmt::format("{}begins in {}", text.empty() ? "" : " and ", plan_file::PlanStartText(*start));
  }
  return text;
}

// An option that contradicts the plan would import into another product's tables, or into other months.
void CheckAgainstPlan(const ImportCommand& options, const plan_file::PlanFile& plan) {
  std::vector<std::string> wrong;
  std::vector<std::string_view> names;
  const auto product = plan.Product();
  const auto start = plan.Start();
  if (options.product && product && *options.product != *product) {
    names.emplace_back("--product");
    wrong.push_back(fmt::format("--product is {}", plan_file::ProductText(*options.product)));
  }
  if (options.planStart && start && *options.planStart != *start) {
    names.emplace_back("--plan-start");
    wrong.push_back(fmt::format("--plan-start is {}", plan_file::PlanStartText(*options.planStart)));
  }
  if (wrong.empty()) return;
  throw WrongUsage(
      fmt::format("the plan {} {}, but {}", options.planFile, PlanText(plan), fmt::join(wrong, " and ")),
      fmt::format("leave out {}, or give another plan", fmt::join(names, " and ")));
}

}  // namespace

void CheckImportOptions(const ImportCommand& options) {
  if (!options.expenses && !options.income && !options.pastPerformance) {
    throw WrongUsage("nothing is selected for import", "give --expenses, --income or --past-performance");
  }
  RequireOneCompany(options, options.replayFile);
}

ImportSettings SettleImport(const ImportCommand& options, const plan_file::PlanFile& plan) {
  CheckAgainstPlan(options, plan);
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
  // A version that is decided in the session usually means reports.
  const std::int16_t majorVersion = source.majorVersion == 0 ? std::int16_t{2} : source.majorVersion;
  return {.expenses = options.expenses,
          .income = options.income,
          .pastPerformance = options.pastPerformance,
          .balances = options.balances,
          .product = settings.product,
          .majorVersion = majorVersion,
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
