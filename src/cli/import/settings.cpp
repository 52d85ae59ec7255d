#include "cli/import/settings.h"

#include <fmt/format.h>

#include <filesystem>
#include <system_error>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

// By default the twelve months before the plan.
plan_file::PlanStart YearBefore(const plan_file::PlanStart& start) {
  return {.year = static_cast<std::int16_t>(start.year - 1), .month = start.month};
}

bool SameFile(const std::string& path, const std::string& other) {
  std::error_code ignored;
  return path == other || std::filesystem::equivalent(path, other, ignored);
}

// A recording or a journal replaces the contents of its file.
void CheckOutputFile(std::string_view option, const std::string& file, const ImportOptions& options) {
  for (const std::string& other : {options.planFile, options.planFile + ".bak", options.planFile + ".lock",
                                   options.companyFile.value_or(""), options.replayFile.value_or("")}) {
    if (SameFile(file, other)) {
      throw WrongUsage(fmt::format("{} {} would replace a file that the import needs", option, file),
                       "give another file");
    }
  }
}

}  // namespace

void CheckImportOptions(const ImportOptions& options) {
  if (!options.expenses && !options.income && !options.pastPerformance) {
    throw WrongUsage("nothing to import is given", "give --expenses, --income or --past-performance");
  }
  if (!options.companyFile && !options.replayFile) {
    throw WrongUsage("no company is given", "give --company FILE, or --replay FILE for a recorded exchange");
  }
  if (options.recordFile) CheckOutputFile("--record", *options.recordFile, options);
  if (options.journalFile) CheckOutputFile("--journal", *options.journalFile, options);
}

ImportSettings SettleImport(const ImportOptions& options, const plan_file::PlanFile& plan) {
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
  const ImportOptions& options = settings.options;
  exchange.QBCompany(source.companyPath);
  exchange.KRNPlanData(plan);
  exchange.KRNProduct(settings.product);
  exchange.IncludeExpenseAccounts(options.expenses);
  exchange.IncludeIncomeAccounts(options.income);
  exchange.IncludePastPerformance(options.pastPerformance);
  exchange.BalancesImport(options.balances);
  exchange.GrowthRateIncome(options.growthIncome.value_or(std::int16_t{0}));
  exchange.GrowthRateCOGS(options.growthCogs.value_or(std::int16_t{0}));
  exchange.GrowthRateExpenses(options.growthExpenses.value_or(std::int16_t{0}));
  exchange.KRNStartingYear(settings.planStart.year);
  exchange.KRNStartingMonth(settings.planStart.month);
  if (options.importStart) {
    exchange.StartingYear(options.importStart->year);
    exchange.StartingMonth(options.importStart->month);
  }
  if (options.fiscalMonth) exchange.QBStartingMonth(*options.fiscalMonth);
}

}  // namespace krnqb::cli
