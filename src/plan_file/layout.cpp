#include "plan_file/layout.h"

#include <fmt/format.h>

#include <cstddef>
#include <iterator>
#include <string_view>
#include <vector>

#include "xml/parser.h"

namespace krnqb::plan_file {
namespace {

using RowNames = std::vector<std::string_view>;

/// The columns of a row after its name.
struct Columns {
  std::size_t rates;    ///< columns that the totals leave empty
  std::size_t amounts;  ///< columns that the totals sum
};

constexpr Columns planned{1, 12};
constexpr Columns actual{0, 12};

/// The last row's cell in each amount column.
enum class Closing { Sum, Average, Margin, OperatingResult };

struct Block {
  std::string_view id;
  RowNames rows;
  Columns columns;
  Closing closing = Closing::Sum;
};

struct Table {
  std::string_view id;
  std::vector<Block> blocks;
};

constexpr std::size_t firstBlockRow = 5;      // below the sheet's title and column headings
constexpr std::size_t rowsBetweenBlocks = 2;  // an empty one and the next block's heading
constexpr std::string_view emptyCell = "*null*";

std::string ClosingFormula(Closing closing, char column, std::size_t first, std::size_t last) {
  switch (closing) {
    case Closing::Sum:
      return fmt::format("=SUM({0}{1}:{0}{2})", column, first, last);
    case Closing::Average:
      return fmt::format("=AVERAGE({0}{1}:{0}{2})", column, first, last);
    case Closing::Margin:
      return fmt::format("={0}{1}-{0}{2}", column, first, last);
    case Closing::OperatingResult:
      return fmt::format("={0}{1}+{0}{2}-{0}{3}", column, first + 1, first + 2, last);
  }
  return std::string(emptyCell);
}

void AppendCell(std::string& text, std::string_view cell) {
  fmt::format_to(std::back_inserter(text), "<c>{}</c>", EscapedXmlText(cell));
}

std::string RowText(const Block& block, std::size_t index, std::size_t startRow) {
  const bool closes = index + 1 == block.rows.size();
  std::string text = "          <row>";
  AppendCell(text, block.rows[index]);
  for (std::size_t rate = 0; rate < block.columns.rates; ++rate) AppendCell(text, closes ? emptyCell : "0");
  for (std::size_t amount = 0; amount < block.columns.amounts; ++amount) {
    const char column = static_cast<char>('B' + block.columns.rates + amount);
    AppendCell(text, closes ? ClosingFormula(block.closing, column, startRow, startRow + index - 1) : "0");
  }
  return text + "</row>\n";
}

std::string TableText(const Table& table) {
  std::string text = fmt::format(
      "    <tableitem id=\"{}\">\n      <lastsavedid>0</lastsavedid>\n      <tableblocks>\n", table.id);
  std::size_t startRow = firstBlockRow;
  for (const Block& block : table.blocks) {
    text += fmt::format("        <block id=\"{}\" startrow=\"{}\">\n", block.id, startRow);
    for (std::size_t index = 0; index < block.rows.size(); ++index) text += RowText(block, index, startRow);
    text += "        </block>\n";
    startRow += block.rows.size() + rowsBetweenBlocks;
  }
  return text + "      </tableblocks>\n    </tableitem>\n";
}

void AppendSalesAndCosts(std::vector<Table>& tables) {
  const RowNames sales{"Example product", "Total sales"};
  const RowNames costs{"Example cost of sales", "Total cost of sales"};
  tables.push_back({"20000000000000000000000000000400",
                    {{"db_sales_values_sales", sales, planned},
                     {"db_sales_values_annual_growth", sales, planned, Closing::Average},
                     {"db_sales_values_sales_annual_growth", sales, planned, Closing::Average},
                     {"db_sales_values_costs", costs, planned},
                     {"db_sales_values_costs_annual_growth", costs, planned, Closing::Average}}});
  tables.push_back(
      {"21000000000000000000000000000400",
       {{"db_sales_values_sales_actual", sales, actual}, {"db_sales_values_costs_actual", costs, actual}}});
}

void AppendExpenses(std::vector<Table>& tables) {
  const RowNames rows{"Example expense", "Depreciation", "Total expenses"};
  tables.push_back({"20000000000000000000000000000600", {{"db_income_range_cat3", rows, planned}}});
  tables.push_back({"21000000000000000000000000000600", {{"db_income_range_cat3_actual", rows, actual}}});
}

void AppendContributionMargin(std::vector<Table>& tables) {
  const RowNames rows{"Example expense", "Other expenses", "Total expenses"};
  tables.push_back({"20000000000000000000000000002000", {{"db_contributionmargin_cat2", rows, planned}}});
  tables.push_back(
      {"21000000000000000000000000002000", {{"db_contributionmargin_cat2_actual", rows, actual}}});
  const RowNames result{"Sales", "Cost of sales", "Contribution margin"};
  tables.push_back({"20000000000000000000000000002090",
                    {{"db_contributionmargin_result", result, planned, Closing::Margin}}});
}

void AppendPastPerformance(std::vector<Table>& tables, std::size_t periods) {
  const Columns past{0, periods};
  const RowNames sales{"Sales", "Gross margin", "Other income", "Operating expenses", "Operating result"};
  const RowNames shortTermAssets{"Cash", "Accounts receivable", "Inventory", "Other short-term assets",
                                 "Total short-term assets"};
  const RowNames longTermAssets{"Fixed assets", "Accumulated depreciation", "Total long-term assets"};
  const RowNames liabilities{"Accounts payable", "Credit cards", "Other current liabilities",
                             "Total current liabilities"};
  const RowNames longTermLiabilities{"Loans", "Total long-term liabilities"};
  const RowNames capital{"Equity", "Retained earnings", "Total capital"};
  tables.push_back({"20000000000000000000000000000800",
                    {{"db_pastperformance_sales", sales, past, Closing::OperatingResult},
                     {"db_pastperformance_shorttermassets", shortTermAssets, past},
                     {"db_pastperformance_longtermassets", longTermAssets, past},
                     {"db_pastperformance_liabilities", liabilities, past},
                     {"db_pastperformance_longtermliabilities", longTermLiabilities, past},
                     {"db_pastperformance_capital", capital, past}}});
}

std::vector<Table> TablesOfProduct(QBKRNproduct product) {
  std::vector<Table> tables;
  AppendSalesAndCosts(tables);
  if (product == QBKRN_BRI) {
    AppendContributionMargin(tables);
  } else {
    AppendExpenses(tables);
    AppendPastPerformance(tables, product == QBKRN_COR ? 14 : 3);
  }
  return tables;
}

}  // namespace

std::string NewPlanText(QBKRNproduct product, YearMonth start) {
  std::string text = fmt::format(
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plan product=\"{}\" start=\"{}\">\n  <tables>\n",
      ProductText(product), PlanStartText(start));
  for (const Table& table : TablesOfProduct(product)) text += TableText(table);
  return text + "  </tables>\n</plan>\n";
}

}  // namespace krnqb::plan_file
