#include "krnqb/booking.h"

namespace krnqb {

std::string_view BookingRuleWord(BookingRule rule) noexcept {
  switch (rule) {
    case BookingRule::ChargedToExpense:
      return "charged-to-expense";
    case BookingRule::CreditedToIncome:
      return "credited-to-income";
    case BookingRule::Sale:
      return "sale";
    case BookingRule::SaleCreditedToExpense:
      return "sale-credited-to-expense";
    case BookingRule::CostOfSale:
      return "cost-of-sale";
    case BookingRule::BilledExpenseTakenBack:
      return "billed-expense-taken-back";
    case BookingRule::SpreadBalance:
      return "spread-balance";
    case BookingRule::ReportCell:
      return "report-cell";
    case BookingRule::BalanceToday:
      return "balance-today";
    case BookingRule::PreviousPeriod:
      return "previous-period";
    case BookingRule::PeriodBegins:
      return "period-begins";
    case BookingRule::PeriodTotal:
      return "period-total";
  }
  return {};
}

std::string_view CellContentWord(CellContent content) noexcept {
  switch (content) {
    case CellContent::GrowthRate:
      return "growth-rate";
    case CellContent::GrowthFormula:
      return "growth-formula";
    case CellContent::Amount:
      return "amount";
    case CellContent::PastFigure:
      return "past-figure";
  }
  return {};
}

}  // namespace krnqb
