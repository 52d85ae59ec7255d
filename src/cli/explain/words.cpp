#include "cli/explain/words.h"

#include <fmt/format.h>

#include <cmath>

#include "cli/console/text_table.h"
#include "plan_file/attributes.h"
#include "plan_file/headings.h"
#include "qbxml/request_catalogue.h"
#include "support/display_width.h"
#include "support/money_text.h"
#include "support/number_text.h"

namespace krnqb::cli {
namespace {

constexpr std::int16_t monthsPerYear = 12;

YearMonth After(const YearMonth& first, int months) {
  const int count = first.year * monthsPerYear + first.month - 1 + months;
  return {.year = static_cast<std::int16_t>(count / monthsPerYear),
          .month = static_cast<std::int16_t>(count % monthsPerYear + 1)};
}

std::string SpreadText(const ledger::LedgerBooking& booking) {
  const std::optional<double> balance = ConvertToDouble(booking.text);
  if (!balance || booking.amount == 0) return booking.text;
  const auto months = std::lround(*balance / booking.amount);
  return fmt::format("{} / {} month{}", ExactMoneyText(*balance), months, months == 1 ? "" : "s");
}

}  // namespace

std::string ExactMoneyText(double amount) {
  std::string money = MoneyText(amount);
  std::string digits = GeneralNumberText(amount);
  const std::optional<double> shown = ConvertToDouble(money);
  return shown && GeneralNumberText(*shown) == digits ? money : digits;
}

std::string_view KindText(std::int32_t request) noexcept {
  switch (request) {
    case request_number::bills:
      return "Bill";
    case request_number::checks:
      return "Check";
    case request_number::creditCardCharges:
      return "Credit card charge";
    case request_number::invoices:
      return "Invoice";
    case request_number::salesReceipts:
      return "Sales receipt";
    default:
      return "Transaction";
  }
}

std::string_view SourceText(const ledger::LedgerBooking& booking,
                            const std::optional<ledger::LedgerDocument>& document) noexcept {
  if (document) return KindText(document->request);
  switch (booking.rule) {
    case BookingRule::ReportCell:
      return "Report";
    case BookingRule::SpreadBalance:
    case BookingRule::BalanceToday:
      return "Balance";
    case BookingRule::PeriodTotal:
      return "Account";
    default:
      return "Figure";
  }
}

std::string_view RuleText(BookingRule rule) noexcept {
  switch (rule) {
    case BookingRule::ChargedToExpense:
      return "Charged to the expense account";
    case BookingRule::CreditedToIncome:
      return "Credited to the income account";
    case BookingRule::Sale:
      return "Sales";
    case BookingRule::SaleCreditedToExpense:
      return "Sales credited to the expense account";
    case BookingRule::CostOfSale:
      return "Cost of sales: quantity x average cost";
    case BookingRule::BilledExpenseTakenBack:
      return "Billed to a customer, taken back";
    case BookingRule::SpreadBalance:
      return "Balance of today, divided evenly over the months";
    case BookingRule::ReportCell:
      return "Cells of a report";
    case BookingRule::BalanceToday:
      return "Balances of today";
    case BookingRule::PreviousPeriod:
      return "The same figure as in the first period";
    case BookingRule::PeriodBegins:
      return "The period begins at 0";
    case BookingRule::PeriodTotal:
      break;
  }
  return "Accounts, each the sum of its months";
}

std::string_view RuleClause(BookingRule rule) noexcept {
  switch (rule) {
    case BookingRule::ChargedToExpense:
      return "charged to the expense account";
    case BookingRule::CreditedToIncome:
      return "credited to the income account";
    case BookingRule::Sale:
      return "sale";
    case BookingRule::SaleCreditedToExpense:
      return "sale credited to the expense account";
    case BookingRule::CostOfSale:
      return "cost of the sale";
    case BookingRule::BilledExpenseTakenBack:
      return "billed to a customer, taken back";
    default:
      return RuleText(rule);
  }
}

std::string AmountAsRead(const ledger::LedgerBooking& booking) {
  if (booking.rule == BookingRule::SpreadBalance) return SpreadText(booking);
  if (booking.rule != BookingRule::CostOfSale || !booking.quantity || !booking.averageCost) {
    return booking.text;
  }
  return fmt::format("{} x {}", GeneralNumberText(*booking.quantity), ExactMoneyText(*booking.averageCost));
}

std::string_view GroupWord(AmountGroup group) noexcept {
  switch (group) {
    case AmountGroup::Expenses:
      return "expenses";
    case AmountGroup::Income:
      return "income";
    case AmountGroup::CostOfGoods:
      return "cost-of-goods";
    case AmountGroup::PastPerformance:
      break;
  }
  return "past-performance";
}

std::optional<YearMonth> MonthOfFigure(const ledger::LedgerFacts& facts, bool past, std::int16_t number) {
  const auto first = plan_file::PlanStartFromText(past ? facts.planStart : facts.periodFrom);
  if (!first) return std::nullopt;
  if (!past) return After(*first, number - 1);
  // Of the product with months in past performance these follow two years, up to the plan's start.
  constexpr std::int16_t yearsBefore = 2;
  if (facts.product != plan_file::ProductText(QBKRN_COR) || number <= yearsBefore) return std::nullopt;
  return After(*first, number - yearsBefore - 1 - monthsPerYear);
}

std::string PeriodText(const ledger::LedgerFacts& facts, bool past, std::int16_t number) {
  if (const auto month = MonthOfFigure(facts, past, number)) return plan_file::MonthOfYear(*month);
  if (!past) return fmt::format("month {}", number);
  constexpr std::size_t cellsWithMonths = 15;
  constexpr std::size_t cellsWithYears = 4;
  const bool months = facts.product == plan_file::ProductText(QBKRN_COR);
  const std::vector<std::string> headings =
      plan_file::ColumnHeadings("db_pastperformance_", months ? cellsWithMonths : cellsWithYears,
                                plan_file::PlanStartFromText(facts.planStart));
  const auto index = static_cast<std::size_t>(number) - 1;
  return index < headings.size() ? headings[index] : fmt::format("period {}", number);
}

std::string PlaceText(const ledger::LedgerCell& cell) {
  return plan_file::TableTitle(cell.table);
}

std::string HangingNames(std::string_view indent, std::string_view lead,
                         const std::vector<std::string>& names, std::size_t width) {
  std::string text = fmt::format("{}{}", indent, lead);
  const std::string hanging(DisplayWidth(text), ' ');
  std::size_t column = hanging.size();
  for (std::size_t index = 0; index < names.size(); ++index) {
    const std::string name = OneLine(names[index]) + (index + 1 < names.size() ? "," : "");
    const std::size_t columns = DisplayWidth(name);
    if (index > 0 && column + 1 + columns > width) {
      text += '\n' + hanging;
      column = hanging.size();
    } else if (index > 0) {
      text += ' ';
      ++column;
    }
    text += name;
    column += columns;
  }
  return text + '\n';
}

}  // namespace krnqb::cli
