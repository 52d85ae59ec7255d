#include "sample_company/purchases.h"

#include <fmt/format.h>

#include <array>

namespace krnqb::sample_company {
namespace {

constexpr std::array<std::string_view, 6> memos = {"Monthly charge",  "As agreed",   "Second half",
                                                   "On short notice", "Replacement", "Spring season"};
constexpr unsigned percentWithMemo = 40;
constexpr unsigned percentUncovered = 30;
constexpr unsigned percentToParents = 6;
constexpr unsigned percentCredits = 5;
constexpr unsigned percentBillable = 12;
constexpr unsigned percentRefunds = 2;
constexpr std::chrono::days untilBilled{35};

}  // namespace

Purchases::Purchases(Company& company, Draft& draft, Obligations& obligations, Random& random)
    : company_(company), draft_(draft), obligations_(obligations), random_(random) {}

void Purchases::BeginYear() {
  uncovered_ = company_.choices.loneExpenses;
  random_.Shuffle(uncovered_);
}

company::CompanyRecord Purchases::Bill(const Occasion& occasion) {
  const auto index = static_cast<std::size_t>(random_.Below(company_.people.vendors.size()));
  const Party& vendor = Vendor(index);
  draft_.Begin("BillRet", occasion);
  Lines(occasion, {3, 6, 15});
  const Obligation payment{ObligationKind::PayVendor, index};
  const Day due = occasion.day + std::chrono::days(vendor.termDays);
  const bool isPaid = obligations_.CanPromise(payment, due);
  const std::int64_t number = ++lastBill_;
  if (isPaid) obligations_.Promise(payment, due, {draft_.Total(), number, {}, {}, 0});

  const Account& payable = company_.accounts[company_.accounts.Of(AccountRole::Payable)];
  ElementText& head = draft_.Head();
  head.Block("VendorRef", vendor.reference);
  head.Block("APAccountRef", payable.reference);
  head.Text("TxnDate", occasion.dayText);
  head.Text("DueDate", DayText(due));
  head.Money("AmountDue", draft_.Total());
  head.Number("RefNumber", number);
  head.Boolean("IsPaid", isPaid);
  draft_.PostTotal(company_.accounts.Of(AccountRole::Payable));
  ElementText tail;
  tail.Money("OpenAmount", isPaid ? 0 : draft_.Total());
  return draft_.Finish(tail.Xml());
}

company::CompanyRecord Purchases::Check(const Occasion& occasion) {
  draft_.Begin("CheckRet", occasion);
  Lines(occasion, {4, 2, 5});
  const std::size_t bank = company_.choices.Bank(random_);
  return FinishCheck(occasion, bank, random_.Pick(company_.people.vendors).reference, "");
}

company::CompanyRecord Purchases::CardCharge(const Occasion& occasion) {
  draft_.Begin("CreditCardChargeRet", occasion);
  Lines(occasion, {3, 1, 4});
  const std::size_t card = random_.Pick(company_.choices.cards);
  ElementText& head = draft_.Head();
  head.Block("AccountRef", company_.accounts[card].reference);
  head.Block("PayeeEntityRef", random_.Pick(company_.people.vendors).reference);
  head.Text("TxnDate", occasion.dayText);
  head.Money("Amount", draft_.Total());
  draft_.PostTotal(card);
  return draft_.Finish({});
}

company::CompanyRecord Purchases::CoveringCheck(const Occasion& occasion) {
  draft_.Begin("CheckRet", occasion);
  const std::size_t account = uncovered_.back();
  uncovered_.pop_back();
  draft_.ExpenseLine(account, random_.Around(company_.accounts[account].typical), "");
  return FinishCheck(occasion, company_.accounts.Of(AccountRole::Checking),
                     random_.Pick(company_.people.vendors).reference, "");
}

company::CompanyRecord Purchases::VendorPayment(const Occasion& occasion, std::size_t vendor) {
  draft_.Begin("CheckRet", occasion);
  for (const OpenItem& bill : obligations_.Settle({ObligationKind::PayVendor, vendor})) {
    draft_.ExpenseLine(company_.accounts.Of(AccountRole::Payable), bill.amount,
                       fmt::format("Bill {}", bill.number));
  }
  return FinishCheck(occasion, company_.accounts.Of(AccountRole::Checking), Vendor(vendor).reference,
                     "On account");
}

company::CompanyRecord Purchases::FinishCheck(const Occasion& occasion, std::size_t bank,
                                              std::string_view payee, std::string_view memo) {
  ElementText& head = draft_.Head();
  head.Block("AccountRef", company_.accounts[bank].reference);
  head.Block("PayeeEntityRef", payee);
  head.Number("RefNumber", ++lastCheck_);
  head.Text("TxnDate", occasion.dayText);
  head.Money("Amount", draft_.Total());
  if (!memo.empty()) head.Text("Memo", memo);
  head.Boolean("IsToBePrinted", false);
  draft_.PostTotal(bank);
  return draft_.Finish({});
}

// Expense lines come before items; a group is last, in place of items.
void Purchases::Lines(const Occasion& occasion, const Shape& shape) {
  for (std::int64_t rest = random_.Between(1, shape.mostExpenses); rest > 0; --rest) ExpenseLine(occasion);
  for (std::int64_t rest = random_.Between(0, shape.mostItems); rest > 0; --rest) ItemLine(occasion);
  if (company_.settings.features.purchasedGroups && random_.Chance(shape.percentGroups)) {
    const std::size_t group = random_.Pick(company_.items.groups);
    draft_.BoughtGroup(group, random_.Between(1, 5), occasion.pricePermille);
  }
}

void Purchases::ExpenseLine(const Occasion& occasion) {
  const std::size_t account = ExpenseAccount();
  const Cents amount = random_.Around(company_.accounts[account].typical * occasion.pricePermille / 1000);
  const std::string_view memo = random_.Chance(percentWithMemo) ? random_.Pick(memos) : std::string_view();
  if (company_.settings.features.billableExpenses && random_.Chance(percentBillable)) {
    BilledExpense(occasion, account, amount, memo.empty() ? memos.front() : memo);
    return;
  }
  draft_.ExpenseLine(account, amount, memo);
  // A credit is part of the preceding amount, so that no account ends at zero.
  if (random_.Chance(percentCredits))
    draft_.ExpenseLine(account, -(amount * random_.Between(10, 40) / 100), "Credit");
}

void Purchases::BilledExpense(const Occasion& occasion, std::size_t account, Cents amount,
                              std::string_view memo) {
  const auto customer = static_cast<std::size_t>(random_.Below(company_.people.customers.size()));
  const Obligation billing{ObligationKind::BillCustomer, customer};
  const Day due = occasion.day + untilBilled;
  const bool isBilled = obligations_.CanPromise(billing, due);
  draft_.ExpenseLine(account, amount, memo,
                     ChargedCustomer{company_.people.customers[customer].reference, isBilled});
  if (isBilled) obligations_.Promise(billing, due, {amount, 0, std::string(memo), {}, 0});
}

void Purchases::ItemLine(const Occasion& occasion) {
  ItemList& list = company_.items;
  if (!toReorder_.empty()) {
    const std::size_t item = toReorder_.front();
    toReorder_.pop_front();
    list.items[item].isOnOrder = false;
    draft_.BoughtLine(item, list.items[item].reorderPoint * random_.Between(2, 4),
                      CostOf(list.items[item], occasion.pricePermille));
    return;
  }
  const std::size_t item = random_.Pick(list.bought);
  const std::int64_t pieces = random_.Between(1, 6);
  const Cents cost = CostOf(list.items[item], occasion.pricePermille);
  if (company_.settings.features.billableExpenses && random_.Chance(percentBillable)) {
    BilledItem(occasion, item, pieces, cost);
  } else {
    draft_.BoughtLine(item, pieces, cost);
  }
}

void Purchases::Reorder(std::size_t index) {
  Item& item = company_.items.items[index];
  if (item.isOnOrder) return;
  item.isOnOrder = true;
  toReorder_.push_back(index);
}

void Purchases::BilledItem(const Occasion& occasion, std::size_t item, std::int64_t pieces, Cents cost) {
  const auto customer = static_cast<std::size_t>(random_.Below(company_.people.customers.size()));
  const Obligation billing{ObligationKind::BillCustomer, customer};
  const Day due = occasion.day + untilBilled;
  const bool isBilled = obligations_.CanPromise(billing, due);
  draft_.BoughtLine(item, pieces, cost,
                    ChargedCustomer{company_.people.customers[customer].reference, isBilled});
  if (isBilled) obligations_.Promise(billing, due, {pieces * cost, 0, {}, item, pieces});
}

std::size_t Purchases::ExpenseAccount() {
  const AccountChoices& choices = company_.choices;
  if (!uncovered_.empty() && random_.Chance(percentUncovered)) {
    const std::size_t account = uncovered_.back();
    uncovered_.pop_back();
    return account;
  }
  if (!choices.expenseParents.empty() && random_.Chance(percentToParents))
    return random_.Pick(choices.expenseParents);
  // A check to a customer reduces income.
  if (random_.Chance(percentRefunds)) return random_.Pick(choices.incomes);
  const bool toLone = !choices.loneExpenses.empty() && random_.Chance(30);
  return random_.Pick(toLone ? choices.loneExpenses : choices.subExpenses);
}

}  // namespace krnqb::sample_company
