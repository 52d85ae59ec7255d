#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "fakes/amounts_host.h"

// An import without balances adds accounts but no amounts.

namespace krnqb {
namespace {

using Row = std::vector<std::string>;
using Rows = std::vector<Row>;

const std::vector<std::string> rowNames = {"Rent",  "Utilities", "Gas",     "Plants", "Tools",
                                           "Bulbs", "Seeds",     "Freight", "Wages",  "Depreciation"};

/// Returns rows with some of the names, each once, and random cells.
Rows SomeRows(std::size_t cellCount) {
  Rows rows;
  for (const std::string& name : rowNames) {
    if (!*rc::gen::arbitrary<bool>()) continue;
    Row row{name};
    const auto cell =
        rc::gen::element<std::string>("0", "12.5", "-3", "=B2", "=1200 * (1 + B7)", "*null*", "note", "");
    const auto cells = *rc::gen::container<Row>(cellCount, cell);
    row.insert(row.end(), cells.begin(), cells.end());
    rows.push_back(row);
  }
  return rows;
}

std::string BlockOf(const std::string& id, const Rows& rows) {
  std::string text;
  for (const Row& row : rows) {
    text += "<row>";
    for (const std::string& cell : row) text += "<c>" + cell + "</c>";
    text += "</row>";
  }
  return fakes::AmountBlock(id, "startrow=\"5\"", text);
}

/// Returns the rows of a block by name.
std::map<std::string, Row> RowsByName(const std::string& table, const std::string& block) {
  std::map<std::string, Row> rows;
  for (std::size_t i = 0;; ++i) {
    const Row cells = fakes::CellsOf(table, block, i);
    if (cells.empty()) return rows;
    rows.emplace(cells[0], cells);
  }
}

/// Returns whether a row is unchanged, except that formulas may have been cleared.
bool IsUnchanged(const Row& before, const Row& after) {
  if (before.size() != after.size()) return false;
  for (std::size_t i = 0; i < before.size(); ++i) {
    const bool wasCleared = before[i].starts_with("=") && after[i] == "*null*";
    if (before[i] != after[i] && !wasCleared) return false;
  }
  return true;
}

struct BlockPlace {
  const char* valueSet;
  const char* table;
  std::vector<std::string> blocks;
  std::size_t cellCount;
};
const BlockPlace places[] = {
    {"20", "0600", {"db_income_range_cat3"}, 13},
    {"21", "0600", {"db_income_range_cat3_actual"}, 12},
    {"20", "2000", {"db_contributionmargin_cat2"}, 13},
    {"21", "2000", {"db_contributionmargin_cat2_actual"}, 12},
    {"20", "0400", {"db_sales_values_sales", "db_sales_values_costs"}, 13},
    {"21", "0400", {"db_sales_values_sales_actual", "db_sales_values_costs_actual"}, 12}};

RC_GTEST_PROP(ImportWithoutBalances, WritesNoAmountsIntoExistingRows, ()) {
  fakes::AmountsHost host;
  std::map<std::string, Rows> before;
  for (const BlockPlace& place : places) {
    std::string blocks;
    for (const std::string& block : place.blocks) {
      before[block] = SomeRows(place.cellCount);
      blocks += BlockOf(block, before[block]);
    }
    host.PutTable(place.valueSet, place.table, blocks);
  }
  host.quickBooks->answers["10"] = fakes::RecordAnswer(
      "BillQueryRs",
      fakes::Element("BillRet", fakes::ExpenseLine(fakes::AccountRef("E-1") + fakes::Amount("77.00"))));
  host.quickBooks->answers["310"] = fakes::ReportAnswer(fakes::ReportRow("Rent", {"77.00"}));
  host.quickBooks->majorVersion = *rc::gen::element<std::int16_t>(1, 2);
  host.component.KRNProduct(*rc::gen::element(QBKRN_ALD, QBKRN_BRI, QBKRN_COR));
  host.component.GrowthRateExpenses(9);
  host.component.GrowthRateIncome(9);
  host.component.GrowthRateCOGS(9);
  host.component.IncludeExpenseAccounts(*rc::gen::arbitrary<bool>());
  host.component.IncludeIncomeAccounts(*rc::gen::arbitrary<bool>());
  host.component.IncludePastPerformance(*rc::gen::arbitrary<bool>());
  host.component.BalancesImport(BalImport_None);

  RC_ASSERT(host.component.Go());

  for (const BlockPlace& place : places) {
    for (const std::string& block : place.blocks) {
      const auto after = RowsByName(host.Table(place.valueSet, place.table), block);
      for (const Row& row : before[block]) {
        RC_ASSERT(after.contains(row[0]));
        RC_ASSERT(IsUnchanged(row, after.at(row[0])));
      }
    }
  }
  RC_ASSERT(host.Table("20", "0800") == fakes::PastPerformanceTable());
}

}  // namespace
}  // namespace krnqb
