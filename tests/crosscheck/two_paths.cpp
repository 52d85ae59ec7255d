#include "crosscheck/two_paths.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "company/processor.h"
#include "krnqb/error.h"
#include "krnqb/qb_data_exchange.h"
#include "plan_file/file.h"
#include "support/number_text.h"

namespace krnqb::crosscheck {
namespace {

using plan_file::PlanFile;

constexpr double agreement = 1e-9;

struct ActualBlock {
  std::string_view name;
  std::string_view table;  // the id's last 30 digits, the same for planned and actual
  std::string_view block;
};

constexpr std::array actualBlocks = {
    ActualBlock{"sales", "000000000000000000000000000400", "db_sales_values_sales"},
    ActualBlock{"costs", "000000000000000000000000000400", "db_sales_values_costs"},
    ActualBlock{"expenses", "000000000000000000000000000600", "db_income_range_cat3"}};

void Import(const std::filesystem::path& company, const std::shared_ptr<PlanFile>& plan) {
  QBDataExchange exchange({.processors = company::EmbeddedProcessors(),
                           .sinks = {},
                           .observer = nullptr,
                           .userInterface = nullptr,
                           .registry = nullptr,
                           .clock = nullptr});
  exchange.QBCompany(company.string());
  exchange.KRNPlanData(Variant(plan));
  exchange.KRNProduct(QBKRN_ALD);
  exchange.IncludeExpenseAccounts(true);
  exchange.IncludeIncomeAccounts(true);
  exchange.BalancesImport(BalImport_Actual);
  exchange.StartingYear(importedYear);
  exchange.StartingMonth(1);
  const bool result = exchange.Go();
  if (!result || exchange.ErrorNumber() != 0)
    throw Error(exchange.ErrorNumber(), exchange.ErrorDescription());
}

std::vector<XmlElement> Rows(const PlanFile& plan, const std::string& table, const std::string& block) {
  return plan.Table(table).SelectAll(fmt::format(".//block[@id = \"{}\"]/*", block));
}

// Planned and actual rows correspond by position; only planned rows have names.
void ReadBlock(const PlanFile& plan, const ActualBlock& block, ActualAmounts& amounts) {
  const std::vector<XmlElement> planned =
      Rows(plan, fmt::format("20{}", block.table), std::string(block.block));
  const std::vector<XmlElement> actual =
      Rows(plan, fmt::format("21{}", block.table), fmt::format("{}_actual", block.block));
  for (std::size_t row = 0; row + 1 < std::min(planned.size(), actual.size()); ++row) {
    const std::vector<XmlElement> cells = actual[row].Children();
    MonthlyAmounts& months = amounts[fmt::format("{}/{}", block.name, planned[row].FirstChild().Text())];
    for (std::size_t month = 0; month < months.size(); ++month) {
      months[month] = ConvertToDouble(cells.at(month + 1).Text()).value_or(std::nan(""));
    }
  }
}

}  // namespace

ActualAmounts ImportedAmounts(const std::filesystem::path& company, const std::filesystem::path& folder) {
  const std::filesystem::path file = folder / (company.stem().string() + ".kpf");
  PlanFile::Create(file, QBKRN_ALD, {importedYear + 1, 1});
  const std::shared_ptr<PlanFile> plan = PlanFile::Open(file);
  Import(company, plan);
  ActualAmounts amounts;
  for (const ActualBlock& block : actualBlocks) ReadBlock(*plan, block, amounts);
  return amounts;
}

std::map<std::string, double> Differences(const ActualAmounts& amounts, const ActualAmounts& others) {
  std::map<std::string, double> differences;
  for (const auto& [name, months] : amounts) {
    const MonthlyAmounts& otherMonths = others.at(name);
    for (std::size_t month = 0; month < months.size(); ++month) {
      const double amount = months[month];
      const double other = otherMonths[month];
      // NaN agrees with nothing.
      if (std::abs(amount - other) <= agreement * std::max(std::abs(amount), std::abs(other))) continue;
      differences[fmt::format("{} {}", name, month + 1)] = amount - other;
    }
  }
  return differences;
}

}  // namespace krnqb::crosscheck
