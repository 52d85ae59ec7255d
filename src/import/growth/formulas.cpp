#include "import/growth/formulas.h"

#include <fmt/format.h>

#include <array>
#include <span>

#include "import/growth/findings.h"
#include "krnqb/booking.h"
#include "plan/table_identifiers.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

enum class UnmatchedRows { Skipped, DepreciationSummed };

// What differs between the writers.
struct GrowthTable {
  Operation operation;
  std::string_view group;  // for warnings
  AmountGroup amountGroup;
  std::string_view plannedBlock;
  std::string_view actualBlock;
  std::int16_t growthRate;
  const std::optional<SubtotalCollection>& subtotals;
  std::string_view formulaJoint;
  UnmatchedRows unmatchedRows;
  std::unordered_set<std::string> notRequested = {};  // folded names of accounts that were not selected
};

constexpr std::size_t firstPlannedMonth = 2;  // the column of the first month

constexpr std::string_view salesJoint = " * (1 + B";
constexpr std::string_view costJoint = "* (1 + B";

// The amounts of a row, and the sums that each month is made of if bookings are received.
struct RowAmounts {
  const cSubtotals& amounts;
  std::array<std::vector<CellTerm>, cSubtotals::monthCount> terms;
};

// A row of a block in a table of the plan.
struct RowPlace {
  std::string_view table;
  std::string_view block;
  std::string name;  // of the planned row
  std::int32_t number = 1;
};

class GrowthWriter {
 public:
  GrowthWriter(const GrowthTable& table, QBKRN_BalancesImport balancesImport, Observer& observer)
      : table_(table),
        planned_(balancesImport == BalImport_Planned || balancesImport == BalImport_All),
        actual_(balancesImport == BalImport_Actual || balancesImport == BalImport_All),
        observer_(observer),
        findings_(table.operation, observer) {}

  void Write(const TablesDocument& tables) {
    const XmlElement planned = tables.FirstBlock(table_.plannedBlock);
    const XmlElement actual = tables.FirstBlock(table_.actualBlock);
    if (receiver_ != nullptr) {
      plannedTable_ = tables.TableOf(table_.plannedBlock);
      actualTable_ = tables.TableOf(table_.actualBlock);
    }
    startRow_ = StartRow(planned);
    XmlElement actualRow = actual.FirstChild();
    std::int32_t rowIndex = 0;
    for (XmlElement row = planned.FirstChild(); row; row = row.NextSibling()) {
      WriteRow(row, actualRow, rowIndex);
      actualRow = actualRow.NextSibling();
      ++rowIndex;
    }
    if (startRowFault_ && formulasWritten_) findings_.NoStartRow(table_.group, *startRowFault_);
    if (table_.subtotals) findings_.Finish(*table_.subtotals, table_.notRequested);
  }

 private:
  // Without a valid "startrow" the formulas are still written, with rows counted from 0.
  std::int32_t StartRow(const XmlElement& planned) {
    std::int32_t startRow = 0;
    if (!planned) return startRow;
    const std::string text = planned.Attribute("startrow").value_or("");
    SkipOnError(observer_, place_, [&] { startRow = RequireInteger(RequireDouble(text)); });
    if (startRow < 1) startRowFault_ = text;
    return startRow;
  }

  void WriteRow(const XmlElement& plannedRow, const XmlElement& actualRow, std::int32_t rowIndex) {
    const std::vector<XmlElement> plannedCells = plannedRow.Children();
    if (plannedCells.empty()) return;
    const std::string name = plannedCells[0].Text();
    const cSubtotals* subtotal = table_.subtotals ? table_.subtotals->Find(name) : nullptr;
    if (subtotal != nullptr) {
      WriteAmounts(plannedCells, actualRow, rowIndex, AmountsOf(*subtotal));
      findings_.RowOf(*subtotal, name);
    } else if (table_.unmatchedRows == UnmatchedRows::DepreciationSummed && name == depreciationKeyword) {
      cSubtotals sums{depreciationKeyword};
      WriteAmounts(plannedCells, actualRow, rowIndex, SumDepreciation(sums));
    }
  }

  RowAmounts AmountsOf(const cSubtotals& account) const {
    RowAmounts row{.amounts = account, .terms = {}};
    for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) AddTerm(row, account, month);
    return row;
  }

  void AddTerm(RowAmounts& row, const cSubtotals& account, std::int16_t month) const {
    if (receiver_ == nullptr) return;
    row.terms[static_cast<std::size_t>(month) - 1].push_back(
        {.slot = {.group = table_.amountGroup, .name = account.Description(), .number = month}});
  }

  void WriteAmounts(const std::vector<XmlElement>& plannedCells, const XmlElement& actualRow,
                    std::int32_t rowIndex, const RowAmounts& row) {
    const RowPlace planned{.table = plannedTable_,
                           .block = table_.plannedBlock,
                           .name = plannedCells[0].Text(),
                           .number = rowIndex + 1};
    const RowPlace actual{
        .table = actualTable_, .block = table_.actualBlock, .name = planned.name, .number = planned.number};
    const cSubtotals& subtotal = row.amounts;
    SetCell(plannedCells, {.content = CellContent::GrowthRate, .column = 1}, planned,
            GeneralNumberText(table_.growthRate / 100.0));
    const std::vector<XmlElement> actualCells = actual_ ? actualRow.Children() : std::vector<XmlElement>();
    for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
      const std::string amount = GeneralNumberText(subtotal.SubTotal(month));
      const std::span<const CellTerm> terms = row.terms[static_cast<std::size_t>(month) - 1];
      if (planned_) {
        SetCell(plannedCells,
                {.content = CellContent::GrowthFormula, .column = month + 1, .number = month, .terms = terms},
                planned, fmt::format("={}{}{})", amount, table_.formulaJoint, startRow_ + rowIndex));
      }
      if (actual_) {
        SetCell(actualCells,
                {.content = CellContent::Amount, .column = month, .number = month, .terms = terms}, actual,
                amount);
      }
    }
    formulasWritten_ = formulasWritten_ || planned_;
    if (planned_) findings_.Cells(planned.name, subtotal, plannedCells.size(), firstPlannedMonth);
    if (actual_) findings_.ActualRow(planned.name, subtotal, actualRow, actualCells);
  }

  // `written` has the column, the content, the month and the terms.
  void SetCell(const std::vector<XmlElement>& cells, WrittenCell written, const RowPlace& place,
               const std::string& text) {
    const auto column = static_cast<std::size_t>(written.column);
    const bool done = SkipOnError(observer_, place_, [&] {
      XmlElement cell = column < cells.size() ? cells[column] : XmlElement();
      cell.SetText(text);
    });
    if (!done || receiver_ == nullptr) return;
    written.table = place.table;
    written.block = place.block;
    written.row = place.name;
    written.rowNumber = place.number;
    written.text = text;
    receiver_->WriteCell(written);
  }

  // Adds up the months of the accounts whose names occur within the keyword, case-insensitively. `sums` must
  // outlive the result.
  RowAmounts SumDepreciation(cSubtotals& sums) {
    RowAmounts row{.amounts = sums, .terms = {}};
    if (!table_.subtotals) return row;
    const std::string keyword = FoldedKey(depreciationKeyword);
    for (const cSubtotals& subtotal : *table_.subtotals) {
      if (keyword.find(FoldedKey(subtotal.Description())) == std::string::npos) continue;
      for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
        const bool added =
            SkipOnError(observer_, place_, [&] { sums.AddToSubTotal(month, subtotal.SubTotal(month)); });
        if (added) AddTerm(row, subtotal, month);
      }
      findings_.SummedAsDepreciation(subtotal);
    }
    return row;
  }

  const GrowthTable& table_;
  const bool planned_;  // whether formulas are written
  const bool actual_;   // whether amounts are written
  Observer& observer_;
  BookingReceiver* const receiver_ = observer_.Bookings();
  const Place place_{.operation = table_.operation};
  GrowthFindings findings_;
  // The tables of the blocks, if bookings are received.
  std::string plannedTable_;
  std::string actualTable_;
  std::int32_t startRow_ = 0;
  bool formulasWritten_ = false;
  std::optional<std::string> startRowFault_;  // the text of an invalid start row
};

// Returns the folded names of the accounts that a selection leaves out.
std::unordered_set<std::string> UnselectedNames(const XmlElement& selection) {
  std::unordered_set<std::string> names;
  if (!selection) return names;
  for (const XmlElement& account : selection.Own().Children()) {
    const std::string selected = FoldedKey(account.Attribute("selected").value_or(""));
    const XmlElement name = account.Child("name");
    const bool leftOut = selected == "false" || ConvertToDouble(selected) == 0.0;
    if (leftOut && name) names.insert(FoldedKey(name.Text()));
  }
  return names;
}

void WriteGrowth(const GrowthTable& table, const ImportOptions& options, TablesDocument& tables,
                 Observer& observer) {
  tables.UseLineFeeds();
  if (options.balancesImport >= BalImport_Planned)
    GrowthWriter(table, options.balancesImport, observer).Write(tables);
}

}  // namespace

void WriteSalesGrowth(const ImportState& state, TablesDocument& tables, Observer& observer) {
  const GrowthTable table{.operation = Operation::WriteSalesGrowth,
                          .group = "sales",
                          .amountGroup = AmountGroup::Income,
                          .plannedBlock = block_id::sales,
                          .actualBlock = block_id::actualSales,
                          .growthRate = state.options.growthRateIncome,
                          .subtotals = state.incomeSubtotals,
                          .formulaJoint = salesJoint,
                          .unmatchedRows = UnmatchedRows::Skipped};
  WriteGrowth(table, state.options, tables, observer);
}

void WriteCostGrowth(const ImportState& state, TablesDocument& tables, Observer& observer) {
  const GrowthTable table{.operation = Operation::WriteCostGrowth,
                          .group = "cost of goods",
                          .amountGroup = AmountGroup::CostOfGoods,
                          .plannedBlock = block_id::costs,
                          .actualBlock = block_id::actualCosts,
                          .growthRate = state.options.growthRateCogs,
                          .subtotals = state.costSubtotals,
                          .formulaJoint = costJoint,
                          .unmatchedRows = UnmatchedRows::Skipped};
  WriteGrowth(table, state.options, tables, observer);
}

void WriteExpenseGrowth(const ImportState& state, TablesDocument& tables, Observer& observer) {
  GrowthTable table{.operation = Operation::WriteExpenseGrowth,
                    .group = "expenses",
                    .amountGroup = AmountGroup::Expenses,
                    .plannedBlock = {},
                    .actualBlock = {},
                    .growthRate = state.options.growthRateExpenses,
                    .subtotals = state.expenseSubtotals,
                    .formulaJoint = costJoint,
                    .unmatchedRows = UnmatchedRows::DepreciationSummed};
  switch (state.options.krnProduct) {
    case QBKRN_ALD:
    case QBKRN_COR:
      table.plannedBlock = block_id::incomeRange;
      table.actualBlock = block_id::actualIncomeRange;
      break;
    case QBKRN_BRI:
      table.plannedBlock = block_id::contributionMargin;
      table.actualBlock = block_id::actualContributionMargin;
      table.notRequested = UnselectedNames(state.selectedExpenses);
      break;
    default:
      break;
  }
  WriteGrowth(table, state.options, tables, observer);
}

}  // namespace krnqb
