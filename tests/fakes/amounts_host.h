#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fakes/amount_tables.h"
#include "fakes/dated_quickbooks.h"
#include "fakes/fixed_clock.h"
#include "fakes/import_texts.h"
#include "fakes/past_performance_table.h"
#include "fakes/plan.h"
#include "fakes/plan_texts.h"
#include "fakes/recording_observer.h"
#include "fakes/recording_sink.h"
#include "krnqb/qb_data_exchange.h"

namespace krnqb::fakes {

/// A host with the component, a plan whose tables have a cell per month, and QuickBooks. The company:
///
///     expense  E-1 Rent, E-2 Utilities (below it E-3 Gas)
///     income   I-1 Plants (below it I-3 Bulbs), I-2 Tools
///     cost     C-1 Seeds, C-2 Freight
///     items    IT-1 posts to Bulbs, IT-2 to Tools or Rent, IT-3 is Plants' inventory at 2.5, IT-4 posts
///     nowhere
///
/// The plan starts in January 2003 and imports the year 2002. Each account block has the rows
/// "Template", "Other" and "Total", the first of them on row 5 of the spreadsheet.
class AmountsHost {
 public:
  AmountsHost() : component(World()) {
    FillCompany();
    FillPlan();
    component.KRNPlanData(Variant(std::make_shared<FakePlan>(planContent, journal)));
    component.QBStartingMonth(1);
    component.KRNStartingMonth(1);
    component.KRNStartingYear(2003);
    component.BalancesImport(BalImport_All);
  }

  void IncludeAccounts() {
    component.IncludeExpenseAccounts(true);
    component.IncludeIncomeAccounts(true);
  }

  const std::string& Table(const std::string& valueSet, const std::string& table) const {
    return planContent->tables.at(TableId(valueSet, table));
  }
  void PutTable(const std::string& valueSet, const std::string& table, const std::string& blocks) {
    const std::string id = TableId(valueSet, table);
    planContent->tables[id] = TableText(id, "<tableblocks>" + blocks + "</tableblocks>");
  }

  /// Returns the cells of the planned row with a name, or of the actual row at the same position; empty if
  /// the row is missing.
  std::vector<std::string> PlannedCells(const std::string& table, const std::string& block,
                                        const std::string& name) const {
    return CellsOf(Table("20", table), block, Position(table, block, name));
  }
  std::vector<std::string> ActualCells(const std::string& table, const std::string& block,
                                       const std::string& name) const {
    return CellsOf(Table("21", table), block + "_actual", Position(table, block, name));
  }

  std::shared_ptr<Journal> journal = std::make_shared<Journal>();
  std::shared_ptr<DatedQuickBooks> quickBooks = std::make_shared<DatedQuickBooks>();
  std::shared_ptr<PlanContent> planContent = std::make_shared<PlanContent>();
  std::shared_ptr<RecordingObserver> observer = std::make_shared<RecordingObserver>();
  QBDataExchange component;

 private:
  OutsideWorld World() const {
    OutsideWorld world;
    world.processors = std::make_shared<DatedProcessorFactory>(quickBooks, journal);
    world.sinks = {std::make_shared<RecordingSink>(journal)};
    world.observer = observer;
    world.clock = std::make_shared<FixedClock>(LocalDateTime{2002, 1, 1, 9, 0, 0});
    return world;
  }

  void FillCompany() const {
    quickBooks->answers["100"] = HostAnswer({"1.0", "1.1"});
    quickBooks->answers["4"] = AccountAnswer(
        "4", {Account("E-1", "Rent"), Account("E-2", "Utilities"), SubAccount("E-3", "Gas", "E-2")});
    quickBooks->answers["1"] = AccountAnswer(
        "1", {Account("I-1", "Plants"), Account("I-2", "Tools"), SubAccount("I-3", "Bulbs", "I-1")});
    quickBooks->answers["2"] = AccountAnswer("2", {Account("C-1", "Seeds"), Account("C-2", "Freight")});
    quickBooks->answers["50"] =
        ItemAnswer(OneAccountItem("IT-1", "I-3") + TwoAccountItem("IT-2", "I-2", "E-1") +
                   InventoryItem("IT-3", "I-1", "C-1", "2.5") + Item("ItemGroupRet", "IT-4", ""));
  }

  void FillPlan() {
    const auto planned = [](const std::string& id) {
      return AmountBlock(
          id, "startrow=\"5\"",
          WideRow("Template", 13, "0") + WideRow("Other", 13, "0") + WideRow("Total", 13, "0"));
    };
    const auto actual = [](const std::string& id) {
      return AmountBlock(
          id + "_actual", "",
          WideRow("Template", 12, "0") + WideRow("Other", 12, "0") + WideRow("Total", 12, "0"));
    };
    PutTable("20", "0600", planned("db_income_range_cat3"));
    PutTable("21", "0600", actual("db_income_range_cat3"));
    PutTable("20", "2000", planned("db_contributionmargin_cat2"));
    PutTable("21", "2000", actual("db_contributionmargin_cat2"));
    PutTable("20", "0400", planned("db_sales_values_sales") + planned("db_sales_values_costs"));
    PutTable("21", "0400", actual("db_sales_values_sales") + actual("db_sales_values_costs"));
    planContent->tables[TableId("20", "0800")] = PastPerformanceTable();
  }

  std::size_t Position(const std::string& table, const std::string& block, const std::string& name) const {
    std::size_t row = 0;
    while (true) {
      const auto cells = CellsOf(Table("20", table), block, row);
      if (cells.empty() || cells[0] == name) return row;
      ++row;
    }
  }
};

}  // namespace krnqb::fakes
