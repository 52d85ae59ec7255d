#include "spreadsheet/summary_sheet.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "plan_file/headings.h"
#include "plan_file/views/figures.h"
#include "spreadsheet/block_sheet.h"
#include "spreadsheet/cell_text.h"

namespace krnqb::spreadsheet {
namespace {

using plan_file::BlockKind;
using plan_file::FigureGroup;
using plan_file::figureGroups;
using plan_file::monthsOfAYear;
using plan_file::PlanFigures;
using plan_file::YearAmounts;

constexpr std::uint32_t headingRow = 3;
constexpr std::uint32_t plannedRow = 5;
constexpr std::uint32_t actualRow = 11;
constexpr std::uint32_t chartRow = 16;
constexpr std::uint32_t resultOffset = 3;
constexpr std::size_t yearColumn = monthsOfAYear + 1;

const BlockSheet* SheetOf(const PlanSheets& sheets, std::string_view blockId) {
  const auto found =
      std::ranges::find_if(sheets.blocks, [&](const BlockSheet& sheet) { return sheet.block.id == blockId; });
  return found == sheets.blocks.end() ? nullptr : &*found;
}

// A formula over the rows that a figure adds up, as long as it amounts to the figure.
std::optional<std::string> SumFormula(const BlockSheet& sheet, std::size_t month, double figure) {
  constexpr double tolerance = 0.0005;
  constexpr std::size_t mostRanges = 20;
  if (sheet.months == 0) return std::nullopt;
  const std::size_t column = sheet.months + month;
  double sum = 0;
  std::string ranges;
  std::size_t count = 0;
  for (std::size_t row = 0; row < sheet.cells.RowCount(); ++row) {
    if (plan_file::IsTotalRow(sheet.block, row)) continue;
    const std::size_t first = row;
    for (; row < sheet.cells.RowCount() && !plan_file::IsTotalRow(sheet.block, row); ++row) {
      const BlockCell& cell = sheet.cells.At(row, column);
      if (cell.HasNumber()) sum += cell.number;
    }
    ranges += fmt::format("{}{}:{}", ranges.empty() ? "" : ",",
                          ReferenceTo(sheet.sheetName, sheet.Row(first), column),
                          CellName(sheet.Row(row - 1), column));
    ++count;
  }
  if (ranges.empty() || count > mostRanges || !(std::abs(sum - figure) < tolerance)) return std::nullopt;
  return fmt::format("=SUM({})", ranges);
}

bool HasAmounts(const PlanFigures& figures) {
  return std::ranges::any_of(figures.groups, [](const auto& group) {
    return group && std::ranges::any_of(group->amounts.months, [](double amount) { return amount != 0; });
  });
}

bool HasGroups(const PlanFigures& figures) {
  return std::ranges::any_of(figures.groups, [](const auto& group) { return group.has_value(); });
}

class Summary {
 public:
  explicit Summary(const PlanSheets& sheets) : sheets_(sheets), product_(ProductOf(sheets)) {}

  Sheet Result() {
    sheet_.name = summarySheetName;
    sheet_.Add(0, 0, "Sales, costs, expenses and result", CellStyle::Title);
    sheet_.Add(1, 0, CellText(Subject()), CellStyle::Note);
    AddHeadings();
    const PlanFigures planned = FiguresOf(sheets_.content, product_, BlockKind::Planned);
    const PlanFigures actual = FiguresOf(sheets_.content, product_, BlockKind::Actual);
    AddFigures("Planned", plannedRow, planned, BlockKind::Planned);
    AddFigures("Actual", actualRow, actual, BlockKind::Actual);
    AddCharts(planned, actual);
    sheet_.frozenRows = headingRow + 1;
    sheet_.frozenColumns = 1;
    sheet_.columnWidths = WidthsFor(sheet_);
    return std::move(sheet_);
  }

 private:
  std::string Subject() const {
    std::string text = sheets_.planName;
    if (sheets_.product) text += fmt::format(", product {}", plan_file::ProductText(*sheets_.product));
    if (sheets_.start) text += fmt::format(", {}", plan_file::TwelveMonthsText(*sheets_.start));
    return text;
  }

  void AddHeadings() {
    const std::vector<std::string> months = plan_file::ColumnHeadings("", monthsOfAYear + 1, sheets_.start);
    sheet_.Add(headingRow, 0, "Month", CellStyle::TextHeading);
    for (std::size_t month = 0; month < months.size(); ++month) {
      sheet_.Add(headingRow, month + 1, months[month], CellStyle::Heading);
    }
    sheet_.Add(headingRow, yearColumn, "Year", CellStyle::Heading);
  }

  void AddFigures(std::string title, std::uint32_t firstRow, const PlanFigures& figures, BlockKind kind) {
    sheet_.Add(firstRow - 1, 0, std::move(title), CellStyle::TotalName);
    for (const FigureGroup group : figureGroups) {
      const auto index = static_cast<std::uint32_t>(group);
      const std::uint32_t row = firstRow + index;
      sheet_.Add(row, 0, std::string(plan_file::GroupTitle(group)), CellStyle::Name);
      if (figures.groups[index]) AddGroup(row, group, figures.groups[index]->amounts, kind);
    }
    AddResult(firstRow, figures);
  }

  void AddGroup(std::uint32_t row, FigureGroup group, const YearAmounts& amounts, BlockKind kind) {
    const BlockSheet* source = SheetOf(sheets_, GroupBlockId(group, product_, kind));
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      std::optional<std::string> formula;
      if (source != nullptr) formula = SumFormula(*source, month, amounts.months[month]);
      if (formula) {
        sheet_.Add(row, month + 1, SheetFormula{std::move(*formula), amounts.months[month]},
                   CellStyle::Amount);
      } else {
        sheet_.Add(row, month + 1, amounts.months[month], CellStyle::Amount);
      }
    }
    AddYear(row, amounts.Sum(), CellStyle::Amount);
  }

  void AddResult(std::uint32_t firstRow, const PlanFigures& figures) {
    const std::uint32_t row = firstRow + resultOffset;
    sheet_.Add(row, 0, "Result", CellStyle::TotalName);
    if (!HasGroups(figures)) return;
    const YearAmounts result = figures.Result();
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      const std::string formula =
          fmt::format("={}-{}-{}", CellName(firstRow, month + 1), CellName(firstRow + 1, month + 1),
                      CellName(firstRow + 2, month + 1));
      sheet_.Add(row, month + 1, SheetFormula{formula, result.months[month]}, CellStyle::TotalAmount);
    }
    AddYear(row, result.Sum(), CellStyle::TotalAmount);
  }

  void AddYear(std::uint32_t row, double sum, CellStyle style) {
    const std::string formula = fmt::format("=SUM({}:{})", CellName(row, 1), CellName(row, monthsOfAYear));
    sheet_.Add(row, yearColumn, SheetFormula{formula, sum}, style);
  }

  static CellRange Months(std::uint32_t row) { return {row, 1, static_cast<std::uint16_t>(monthsOfAYear)}; }

  void AddCharts(const PlanFigures& planned, const PlanFigures& actual) {
    constexpr std::uint32_t blue = 0x2F6DA8;
    constexpr std::uint32_t orange = 0xD98A29;
    constexpr std::uint32_t grey = 0x7A7F87;
    constexpr std::uint32_t green = 0x3C8D53;
    constexpr std::uint16_t middle = 6;
    if (!HasGroups(planned) && !HasGroups(actual)) return;
    const bool showsActual = !HasAmounts(planned) && HasAmounts(actual);
    const std::uint32_t first = showsActual ? actualRow : plannedRow;
    sheet_.charts.push_back({fmt::format("{} sales, costs and expenses", showsActual ? "Actual" : "Planned"),
                             Months(headingRow),
                             {{"Sales", Months(first), blue},
                              {"Cost of goods", Months(first + 1), orange},
                              {"Expenses", Months(first + 2), grey}},
                             chartRow,
                             0,
                             middle});
    ColumnChart result{"Result", Months(headingRow), {},
                       chartRow, middle + 1,         static_cast<std::uint16_t>(yearColumn)};
    if (HasGroups(planned)) result.series.push_back({"Planned", Months(plannedRow + resultOffset), blue});
    if (HasAmounts(actual) || !HasGroups(planned)) {
      result.series.push_back({"Actual", Months(actualRow + resultOffset), green});
    }
    sheet_.charts.push_back(std::move(result));
  }

  const PlanSheets& sheets_;
  QBKRNproduct product_;
  Sheet sheet_;
};

}  // namespace

QBKRNproduct ProductOf(const PlanSheets& sheets) noexcept {
  if (sheets.product) return *sheets.product;
  const bool margin = plan_file::FindBlock(sheets.content, "db_contributionmargin_cat2") != nullptr ||
                      plan_file::FindBlock(sheets.content, "db_contributionmargin_cat2_actual") != nullptr;
  return margin ? QBKRN_BRI : QBKRN_ALD;
}

Sheet SummaryOf(const PlanSheets& sheets) {
  return Summary(sheets).Result();
}

std::vector<SheetWarning> SummaryWarnings(const PlanSheets& sheets) {
  std::vector<SheetWarning> warnings;
  const QBKRNproduct product = ProductOf(sheets);
  for (const BlockKind kind : {BlockKind::Planned, BlockKind::Actual}) {
    const PlanFigures figures = FiguresOf(sheets.content, product, kind);
    for (const FigureGroup group : figureGroups) {
      const auto& sums = figures.groups[static_cast<std::size_t>(group)];
      const BlockSheet* source = SheetOf(sheets, GroupBlockId(group, product, kind));
      if (!sums || source == nullptr) continue;
      for (const std::string& row : sums->unreadRows) {
        warnings.push_back(
            {std::string(summarySheetName),
             fmt::format("lacks amounts of the row \"{}\" of {}, which are neither numbers nor "
                         "formulas of an import",
                         row, source->sheetName)});
      }
    }
  }
  return warnings;
}

}  // namespace krnqb::spreadsheet
