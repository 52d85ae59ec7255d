#include "cli/import/summary/year_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "cli/console/text_table.h"
#include "cli/console/wrapped_names.h"
#include "plan_file/headings.h"
#include "plan_file/views/split_table.h"
#include "support/money_text.h"

namespace krnqb::cli {
namespace {

using plan_file::TableLayout;
using plan_file::TableLine;
using plan_file::YearAmounts;

TableLine MonthNames(const YearMonth& start) {
  TableLine line{{""}, true};
  const std::vector<std::string> months =
      plan_file::ColumnHeadings("db_income_range_cat3_actual", plan_file::monthsOfAYear + 1, start);
  line.texts.insert(line.texts.end(), months.begin(), months.end());
  line.texts.emplace_back("Year");
  return line;
}

TableLine AmountLine(std::string_view name, const YearAmounts& amounts, MoneyForm form) {
  TableLine line{{fmt::format("  {}", name)}, true};
  for (const double month : amounts.months) line.texts.push_back(MoneyText(month, form));
  line.texts.push_back(MoneyText(amounts.Sum(), form));
  return line;
}

void AddGroup(std::vector<TableLine>& lines, std::string_view title, const YearAmounts& before,
              const YearAmounts& after, MoneyForm form) {
  lines.push_back({{std::string(title)}, true});
  if (before == after) {
    lines.push_back(AmountLine("same", after, form));
  } else {
    lines.push_back(AmountLine("before", before, form));
    lines.push_back(AmountLine("after", after, form));
  }
}

std::vector<TableLine> Lines(const FiguresChange& figures, const YearMonth& start, MoneyForm form) {
  std::vector<TableLine> lines{MonthNames(start)};
  for (const plan_file::FigureGroup group : plan_file::figureGroups) {
    const auto& before = figures.before.groups[static_cast<std::size_t>(group)];
    const auto& after = figures.after.groups[static_cast<std::size_t>(group)];
    if (!before && !after) continue;
    AddGroup(lines, plan_file::GroupTitle(group), before ? before->amounts : YearAmounts(),
             after ? after->amounts : YearAmounts(), form);
  }
  AddGroup(lines, "Result", figures.before.Result(), figures.after.Result(), form);
  return lines;
}

struct Choice {
  MoneyForm form;
  std::size_t gap;
};

// The first of these that needs no more than halves, or the last.
constexpr std::array choices{Choice{MoneyForm::Cents, 2}, Choice{MoneyForm::Cents, 1},
                             Choice{MoneyForm::WholeUnits, 2}, Choice{MoneyForm::WholeUnits, 1}};

std::string TitleText(const YearTableTitle& title, MoneyForm form, std::size_t width) {
  std::vector<std::string> parts{plan_file::TwelveMonthsText(title.firstMonth)};
  if (form == MoneyForm::WholeUnits) parts.emplace_back("in whole units");
  parts.back() += ':';
  return WrappedNames(fmt::format("{},", title.amounts), parts, width);
}

// Before the import and after it: the import may have cleared a formula.
std::string UnreadRows(const FiguresChange& figures, std::size_t width) {
  std::vector<std::string> names;
  for (const plan_file::PlanFigures& year : {figures.before, figures.after}) {
    for (const std::optional<plan_file::GroupFigures>& group : year.groups) {
      if (!group) continue;
      for (const std::string& name : group->unreadRows) {
        if (std::find(names.begin(), names.end(), OneLine(name)) == names.end())
          names.push_back(OneLine(name));
      }
    }
  }
  if (names.empty()) return {};
  return WrappedNames("Not included: formulas that refer to other cells, in the rows", names, width);
}

}  // namespace

std::string YearTable(const YearTableTitle& title, const FiguresChange& figures, const YearMonth& start,
                      std::size_t width) {
  constexpr std::size_t halves = 2;
  std::string text;
  for (const Choice& choice : choices) {
    const TableLayout layout{.width = width, .gap = choice.gap, .indent = "", .columnsAfter = 1};
    const std::vector<TableLine> lines = Lines(figures, start, choice.form);
    const bool last = &choice == &choices.back();
    if (!last && plan_file::PartCount(lines, layout) > halves) continue;
    text = TitleText(title, choice.form, width) + plan_file::SplitTableText(lines, layout);
    break;
  }
  return text + UnreadRows(figures, width);
}

}  // namespace krnqb::cli
