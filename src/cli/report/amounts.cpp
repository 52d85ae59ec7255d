#include "cli/report/amounts.h"

#include <fmt/format.h>

#include <cmath>

#include "cli/console/decimal_text.h"
#include "cli/reconcile/output.h"
#include "support/date.h"
#include "support/money_text.h"

namespace krnqb::cli {

html::Cell AmountCell(double amount) {
  return {html::Text(MoneyText(amount)), std::isfinite(amount) ? DecimalText(amount) : std::string()};
}

html::Cell AmountCell(const std::optional<double>& amount) {
  return amount ? AmountCell(*amount) : html::Cell{};
}

html::Cell AmountCell(const ExactAmount& amount) {
  return {html::Text(ShownAmount(amount)), amount.PlainText()};
}

std::vector<html::Cell> YearCells(const plan_file::YearAmounts& year) {
  std::vector<html::Cell> cells;
  cells.reserve(year.months.size() + 1);
  for (const double month : year.months) cells.push_back(AmountCell(month));
  cells.push_back(AmountCell(year.Sum()));
  return cells;
}

std::vector<std::string> MonthHeadings(const YearMonth& start) {
  constexpr std::size_t letters = 3;
  const TwelveMonths year(start);
  const bool oneYear = year.Last().year == start.year;
  std::vector<std::string> headings;
  for (std::int16_t number = 1; number <= static_cast<std::int16_t>(plan_file::monthsOfAYear); ++number) {
    const YearMonth month = year.Month(number);
    const auto name = std::string_view(EnglishMonthName(month.month)).substr(0, letters);
    headings.push_back(oneYear ? std::string(name) : fmt::format("{} {}", name, month.year));
  }
  return headings;
}

std::vector<html::Column> YearColumns(const std::string& names, const YearMonth& start) {
  std::vector<html::Column> columns{{names, html::Alignment::Text}};
  for (const std::string& month : MonthHeadings(start)) columns.push_back({month});
  columns.push_back({"Year"});
  return columns;
}

std::string Counted(std::int64_t count, std::string_view singular, std::string_view plural) {
  return fmt::format("{} {}", count, count == 1 ? singular : plural);
}

}  // namespace krnqb::cli
