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

Business::Business(Company& company, const std::vector<MonthPlan>& months, Random& random)
    : months_(months),
      random_(random),
      draft_(company),
      obligations_(LastDay(months)),
      purchases_(company, draft_, obligations_, random),
      sales_(company, draft_, obligations_, purchases_, random),
      routine_(company, draft_, purchases_, random) {
  for (const MonthPlan& month : months_) left_ += month.transactions;
}

std::int64_t Business::Run(const company::RecordReceiver& receive) {
  std::int64_t lines = 0;
  const company::RecordReceiver countAndReceive = [&](company::CompanyRecord&& record) {
    lines += draft_.Lines();
    receive(std::move(record));
  };
  for (std::size_t month = 0; month < months_.size(); ++month) {
    if (months_[month].beginsYear) BeginYear(month);
    RunMonth(months_[month], countAndReceive);
  }
  return lines;
}

void Business::BeginYear(std::size_t january) {
  leftInYear_ = 0;
  for (std::size_t month = january; month < january + 12; ++month) leftInYear_ += months_[month].transactions;
  purchases_.BeginYear();
}

void Business::RunMonth(const MonthPlan& month, const company::RecordReceiver& receive) {
  routine_.BeginMonth(month.transactions);
  Occasion occasion;
  occasion.pricePermille = month.pricePermille;
  for (std::int64_t transaction = 0; transaction < month.transactions; ++transaction) {
    const Day day = month.DayOf(transaction);
    if (occasion.dayText.empty() || day != occasion.day) {
      occasion.day = day;
      occasion.dayText = DayText(day);
      occasion.secondOfDay = firstSecond + random_.Between(0, 600);
    } else {
      // Transactions entered later on a day have a later time.
      occasion.secondOfDay += (firstSecond + officeSeconds - occasion.secondOfDay) / 40;
    }
    receive(Next(transaction, occasion));
    --left_;
    --leftInYear_;
  }
}

// Obligations that cannot wait for the end of the year or the period come first, then whatever is due, then
// anything.
company::CompanyRecord Business::Next(std::int64_t transaction, const Occasion& occasion) {
  const std::int64_t uncovered = purchases_.Uncovered();
  obligations_.LeaveRoom(left_ - 1 - uncovered);
  if (uncovered > 0 && leftInYear_ <= obligations_.Count() + 2 * uncovered)
    return purchases_.CoveringCheck(occasion);

  const bool mustSettle = left_ <= obligations_.Count();
  const std::optional<Obligation> due = obligations_.DueBy(mustSettle ? Day::max() : occasion.day);
  if (due && (mustSettle || !hasJustSettled_)) {
    hasJustSettled_ = true;
    return Settle(*due, occasion);
  }
  hasJustSettled_ = false;
  if (const auto check = routine_.Due(transaction)) return routine_.Write(*check, occasion);
  return Ordinary(occasion);
}

company::CompanyRecord Business::Settle(const Obligation& obligation, const Occasion& occasion) {
  switch (obligation.kind) {
    case ObligationKind::PayVendor:
      return purchases_.VendorPayment(occasion, obligation.party);
    case ObligationKind::CollectFromCustomer:
      return sales_.CustomerPayment(occasion, obligation.party);
    case ObligationKind::BillCustomer:
      break;
  }
  return sales_.CostInvoice(occasion, obligation.party);
}

company::CompanyRecord Business::Ordinary(const Occasion& occasion) {
  const std::uint64_t choice = random_.Below(100);
  if (choice < 18) return purchases_.Bill(occasion);
  if (choice < 32) return purchases_.Check(occasion);
  if (choice < 44) return purchases_.CardCharge(occasion);
  if (choice < 70) return sales_.Invoice(occasion);
  return sales_.Receipt(occasion);
}

}  // namespace krnqb::sample_company
