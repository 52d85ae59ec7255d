#include "plan_file/headings.h"

#include <fmt/format.h>

#include <array>
#include <utility>

#include "support/date.h"

namespace krnqb::plan_file {
namespace {

using Title = std::pair<std::string_view, std::string_view>;

constexpr std::array<Title, 4> subjects{{{"0400", "sales and costs"},
                                         {"0600", "expenses"},
                                         {"2000", "contribution margin expenses"},
                                         {"2090", "contribution margin"}}};

constexpr std::array<Title, 17> blockTitles{
    {{"db_sales_values_sales", "Sales"},
     {"db_sales_values_sales_actual", "Sales"},
     {"db_sales_values_annual_growth", "Annual growth"},
     {"db_sales_values_sales_annual_growth", "Annual growth of sales"},
     {"db_sales_values_costs", "Cost of sales"},
     {"db_sales_values_costs_actual", "Cost of sales"},
     {"db_sales_values_costs_annual_growth", "Annual growth of cost of sales"},
     {"db_income_range_cat3", "Expenses"},
     {"db_income_range_cat3_actual", "Expenses"},
     {"db_contributionmargin_cat2", "Expenses"},
     {"db_contributionmargin_cat2_actual", "Expenses"},
     {"db_pastperformance_sales", "Sales and result"},
     {"db_pastperformance_shorttermassets", "Short-term assets"},
     {"db_pastperformance_longtermassets", "Long-term assets"},
     {"db_pastperformance_liabilities", "Current liabilities"},
     {"db_pastperformance_longtermliabilities", "Long-term liabilities"},
     {"db_pastperformance_capital", "Capital"}}};

constexpr std::string_view pastPerformanceTable = "20000000000000000000000000000800";
constexpr std::int16_t monthsPerYear = 12;

// "2002", or "2002/03" for a year that does not begin in January.
std::string YearHeading(std::int32_t year, YearMonth start) {
  return start.month == 1 ? fmt::format("{}", year) : fmt::format("{}/{:02}", year, (year + 1) % 100);
}

std::string MonthHeading(std::int16_t month) {
  return std::string(EnglishMonthName(month).substr(0, 3));
}

void AppendMonths(std::vector<std::string>& headings, std::optional<YearMonth> start) {
  for (std::int16_t index = 0; index < monthsPerYear; ++index) {
    if (!start) {
      headings.push_back(fmt::format("Month {}", index + 1));
    } else {
      headings.push_back(
          MonthHeading(static_cast<std::int16_t>((start->month - 1 + index) % monthsPerYear + 1)));
    }
  }
}

void AppendPastYears(std::vector<std::string>& headings, std::size_t years, std::optional<YearMonth> start) {
  constexpr std::int32_t yearsBack = 3;
  for (std::int32_t year = 0; year < static_cast<std::int32_t>(years); ++year) {
    headings.push_back(start ? YearHeading(start->year - yearsBack + year, *start)
                             : fmt::format("Year {}", year + 1));
  }
}

}  // namespace

std::string TableTitle(std::string_view tableId) {
  if (tableId == pastPerformanceTable) return "Past performance";
  const bool planned = tableId.starts_with("20");
  if (tableId.size() == pastPerformanceTable.size() && (planned || tableId.starts_with("21"))) {
    for (const auto& [name, subject] : subjects) {
      if (tableId.ends_with(name)) return fmt::format("{} {}", planned ? "Planned" : "Actual", subject);
    }
  }
  return fmt::format("Table {}", tableId);
}

std::string_view BlockTitle(std::string_view blockId) noexcept {
  for (const auto& [id, title] : blockTitles) {
    if (id == blockId) return title;
  }
  return blockId;
}

std::string MonthOfYear(const YearMonth& month) {
  return fmt::format("{} {}", EnglishMonthName(month.month), month.year);
}

std::string TwelveMonthsText(const YearMonth& start) {
  if (start.month == 1) return fmt::format("January to December {}", start.year);
  const YearMonth last{.year = static_cast<std::int16_t>(start.year + 1),
                       .month = static_cast<std::int16_t>(start.month - 1)};
  return fmt::format("{} to {}", MonthOfYear(start), MonthOfYear(last));
}

std::vector<std::string> ColumnHeadings(std::string_view blockId, std::size_t cells,
                                        std::optional<YearMonth> start) {
  std::vector<std::string> headings;
  if (blockId.starts_with("db_pastperformance_")) {
    if (cells == 4) AppendPastYears(headings, 3, start);
    if (cells == 15) {
      AppendPastYears(headings, 2, start);
      AppendMonths(headings, start);
    }
  } else if (cells == 13 || cells == 14) {
    if (cells == 14) headings.emplace_back("Rate");
    AppendMonths(headings, start);
  }
  return headings;
}

}  // namespace krnqb::plan_file
