#include "sample_company/business.h"

#include <algorithm>

namespace krnqb::sample_company {
namespace {

constexpr std::int64_t firstSecond = std::int64_t{8} * 3600;  // the office is open from eight to six
constexpr std::int64_t officeSeconds = std::int64_t{10} * 3600;

Day LastDay(const std::vector<MonthPlan>& months) {
  return months.back().firstDay + std::chrono::days(months.back().days - 1);
}

}  // namespace

Business::Business(Company& company, const std::vector<MonthPlan>& planOfMonths, Random& randomChoices)
    : months(planOfMonths),
      random(randomChoices),
      draft(company),
      obligations(LastDay(planOfMonths)),
      purchases(company, draft, obligations, randomChoices),
      sales(company, draft, obligations, purchases, randomChoices),
      routine(company, draft, purchases, randomChoices) {
  for (const MonthPlan& month : months) left += month.transactions;
}

std::int64_t Business::Run(const company::RecordReceiver& receive) {
  std::int64_t lines = 0;
  const company::RecordReceiver countAndReceive = [&](company::CompanyRecord&& record) {
    lines += draft.Lines();
    receive(std::move(record));
  };
  for (std::size_t month = 0; month < months.size(); ++month) {
    if (months[month].beginsYear) BeginYear(month);
    RunMonth(months[month], countAndReceive);
  }
  return lines;
}

void Business::BeginYear(std::size_t january) {
  leftInYear = 0;
  for (std::size_t month = january; month < january + 12; ++month) leftInYear += months[month].transactions;
  purchases.BeginYear();
}

void Business::RunMonth(const MonthPlan& month, const company::RecordReceiver& receive) {
  routine.BeginMonth(month.transactions);
  Occasion occasion;
  occasion.pricePermille = month.pricePermille;
  for (std::int64_t transaction = 0; transaction < month.transactions; ++transaction) {
    const Day day = month.DayOf(transaction);
    if (occasion.dayText.empty() || day != occasion.day) {
      occasion.day = day;
      occasion.dayText = DayText(day);
      occasion.secondOfDay = firstSecond + random.Between(0, 600);
    } else {
      // What is entered later on a day has a later time.
      occasion.secondOfDay += (firstSecond + officeSeconds - occasion.secondOfDay) / 40;
    }
    receive(Next(transaction, occasion));
    --left;
    --leftInYear;
  }
}

// First what has to be done before the year or the business ends, then what is due, then anything.
company::CompanyRecord Business::Next(std::int64_t transaction, const Occasion& occasion) {
  const std::int64_t uncovered = purchases.Uncovered();
  obligations.LeaveRoom(left - 1 - uncovered);
  if (uncovered > 0 && leftInYear <= obligations.Count() + 2 * uncovered)
    return purchases.CoveringCheck(occasion);

  const bool mustSettle = left <= obligations.Count();
  const std::optional<Obligation> due = obligations.DueBy(mustSettle ? Day::max() : occasion.day);
  if (due && (mustSettle || !hasJustSettled)) {
    hasJustSettled = true;
    return Settle(*due, occasion);
  }
  hasJustSettled = false;
  if (const auto check = routine.Due(transaction)) return routine.Write(*check, occasion);
  return Ordinary(occasion);
}

company::CompanyRecord Business::Settle(const Obligation& obligation, const Occasion& occasion) {
  switch (obligation.kind) {
    case ObligationKind::PayVendor:
      return purchases.VendorPayment(occasion, obligation.party);
    case ObligationKind::CollectFromCustomer:
      return sales.CustomerPayment(occasion, obligation.party);
    case ObligationKind::BillCustomer:
      break;
  }
  return sales.CostInvoice(occasion, obligation.party);
}

company::CompanyRecord Business::Ordinary(const Occasion& occasion) {
  const std::uint64_t choice = random.Below(100);
  if (choice < 18) return purchases.Bill(occasion);
  if (choice < 32) return purchases.Check(occasion);
  if (choice < 44) return purchases.CardCharge(occasion);
  if (choice < 70) return sales.Invoice(occasion);
  return sales.Receipt(occasion);
}

}  // namespace krnqb::sample_company
