#include "import/growth/formulas.h"

#include <fmt/format.h>

#include "plan/table_identifiers.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

enum class UnmatchedRows { Skipped, DepreciationSummed };

// What differs between the writers.
struct GrowthTable {
  Operation operation;
  std::string_view plannedBlock;
  std::string_view actualBlock;
  std::int16_t growthRate;
  const std::optional<SubtotalCollection>& subtotals;
  std::string_view formulaJoint;
  UnmatchedRows unmatchedRows;
};

constexpr std::string_view salesJoint = " * (1 + B";
constexpr std::string_view costJoint = "* (1 + B";

class GrowthWriter {
 public:
  GrowthWriter(const GrowthTable& table, QBKRN_BalancesImport balancesImport, Observer& observer)
      : table_(table), balancesImport_(balancesImport), observer_(observer) {}

  void Write(const TablesDocument& tables) {
    const XmlElement planned = tables.FirstBlock(table_.plannedBlock);
    const XmlElement actual = tables.FirstBlock(table_.actualBlock);
    const std::int32_t startRow = StartRow(planned);
    XmlElement actualRow = actual.FirstChild();
    std::int32_t rowIndex = 0;
    for (XmlElement row = planned.FirstChild(); row; row = row.NextSibling()) {
      WriteRow(row, actualRow, startRow + rowIndex);
      actualRow = actualRow.NextSibling();
      ++rowIndex;
    }
  }

 private:
  // Without a valid "startrow" the formulas are still written, with rows counted from 0.
  std::int32_t StartRow(const XmlElement& planned) {
    std::int32_t startRow = 0;
    if (!planned) return startRow;
    SkipOnError(observer_, place_, [&] {
      startRow = RequireInteger(RequireDouble(planned.Attribute("startrow").value_or("")));
    });
    return startRow;
  }

  void WriteRow(const XmlElement& plannedRow, const XmlElement& actualRow, std::int32_t sheetRow) {
    const std::vector<XmlElement> plannedCells = plannedRow.Children();
    if (plannedCells.empty()) return;
    const std::string name = plannedCells[0].Text();
    const cSubtotals* subtotal = table_.subtotals ? table_.subtotals->Find(name) : nullptr;
    if (subtotal != nullptr) return WriteAmounts(plannedCells, actualRow, sheetRow, *subtotal);
    if (table_.unmatchedRows == UnmatchedRows::DepreciationSummed && name == depreciationKeyword) {
      WriteAmounts(plannedCells, actualRow, sheetRow, DepreciationSums());
    }
  }

  void WriteAmounts(const std::vector<XmlElement>& plannedCells, const XmlElement& actualRow,
                    std::int32_t sheetRow, const cSubtotals& subtotal) {
    SetCell(plannedCells, 1, GeneralNumberText(table_.growthRate / 100.0));
    const bool planned = balancesImport_ == BalImport_Planned || balancesImport_ == BalImport_All;
    const bool actual = balancesImport_ == BalImport_Actual || balancesImport_ == BalImport_All;
    const std::vector<XmlElement> actualCells = actual ? actualRow.Children() : std::vector<XmlElement>();
    for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
      const std::string amount = GeneralNumberText(subtotal.SubTotal(month));
      const auto column = static_cast<std::size_t>(month);
      if (planned) {
        SetCell(plannedCells, column + 1, fmt::format("={}{}{})", amount, table_.formulaJoint, sheetRow));
      }
      if (actual) SetCell(actualCells, column, amount);
    }
  }

  void SetCell(const std::vector<XmlElement>& cells, std::size_t column, const std::string& text) {
    SkipOnError(observer_, place_, [&] {
      XmlElement cell = column < cells.size() ? cells[column] : XmlElement();
      cell.SetText(text);
    });
  }

  // Returns the monthly sums of the accounts whose names occur within the keyword, case-insensitively.
  cSubtotals DepreciationSums() {
    cSubtotals sums{depreciationKeyword};
    if (!table_.subtotals) return sums;
    const std::string keyword = FoldedKey(depreciationKeyword);
    for (const cSubtotals& subtotal : *table_.subtotals) {
      if (keyword.find(FoldedKey(subtotal.Description())) == std::string::npos) continue;
      for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
        SkipOnError(observer_, place_, [&] { sums.AddToSubTotal(month, subtotal.SubTotal(month)); });
      }
    }
    return sums;
  }

  const GrowthTable& table_;
  const QBKRN_BalancesImport balancesImport_;
  Observer& observer_;
  const Place place_{.operation = table_.operation};
};

void WriteGrowth(const GrowthTable& table, const ImportOptions& options, TablesDocument& tables,
                 Observer& observer) {
  tables.UseLineFeeds();
  if (options.balancesImport >= BalImport_Planned)
    GrowthWriter(table, options.balancesImport, observer).Write(tables);
}

}  // namespace

void WriteSalesGrowth(const ImportState& state, TablesDocument& tables, Observer& observer) {
  const GrowthTable table{.operation = Operation::WriteSalesGrowth,
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
      break;
    default:
      break;
  }
  WriteGrowth(table, state.options, tables, observer);
}

}  // namespace krnqb
