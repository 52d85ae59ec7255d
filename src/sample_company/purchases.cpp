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

Purchases::Purchases(Company& buyingCompany, Draft& transactionDraft, Obligations& companyObligations,
                     Random& randomChoices)
    : company(buyingCompany),
      draft(transactionDraft),
      obligations(companyObligations),
      random(randomChoices) {}

void Purchases::BeginYear() {
  uncovered = company.choices.loneExpenses;
  random.Shuffle(uncovered);
}

company::CompanyRecord Purchases::Bill(const Occasion& occasion) {
  const auto index = static_cast<std::size_t>(random.Below(company.people.vendors.size()));
  const Party& vendor = Vendor(index);
  draft.Begin("BillRet", occasion);
  Lines(occasion, {3, 6, 15});
  const Obligation payment{ObligationKind::PayVendor, index};
  const Day due = occasion.day + std::chrono::days(vendor.termDays);
  const bool isPaid = obligations.CanPromise(payment, due);
  const std::int64_t number = ++lastBill;
  if (isPaid) obligations.Promise(payment, due, {draft.Total(), number, {}, {}, 0});

  const Account& payable = company.accounts[company.accounts.Of(AccountRole::Payable)];
  ElementText& head = draft.Head();
  head.Block("VendorRef", vendor.reference);
  head.Block("APAccountRef", payable.reference);
  head.Text("TxnDate", occasion.dayText);
  head.Text("DueDate", DayText(due));
  head.Money("AmountDue", draft.Total());
  head.Number("RefNumber", number);
  head.Truth("IsPaid", isPaid);
  draft.PostTotal(company.accounts.Of(AccountRole::Payable));
  ElementText tail;
  tail.Money("OpenAmount", isPaid ? 0 : draft.Total());
  return draft.Finish(tail.Xml());
}

company::CompanyRecord Purchases::Check(const Occasion& occasion) {
  draft.Begin("CheckRet", occasion);
  Lines(occasion, {4, 2, 5});
  const std::size_t bank = company.choices.Bank(random);
  return FinishCheck(occasion, bank, random.Pick(company.people.vendors).reference, "");
}

company::CompanyRecord Purchases::CardCharge(const Occasion& occasion) {
  draft.Begin("CreditCardChargeRet", occasion);
  Lines(occasion, {3, 1, 4});
  const std::size_t card = random.Pick(company.choices.cards);
  ElementText& head = draft.Head();
  head.Block("AccountRef", company.accounts[card].reference);
  head.Block("PayeeEntityRef", random.Pick(company.people.vendors).reference);
  head.Text("TxnDate", occasion.dayText);
  head.Money("Amount", draft.Total());
  draft.PostTotal(card);
  return draft.Finish({});
}

company::CompanyRecord Purchases::CoveringCheck(const Occasion& occasion) {
  draft.Begin("CheckRet", occasion);
  const std::size_t account = uncovered.back();
  uncovered.pop_back();
  draft.ExpenseLine(account, random.Around(company.accounts[account].typical), "");
  return FinishCheck(occasion, company.accounts.Of(AccountRole::Checking),
                     random.Pick(company.people.vendors).reference, "");
}

company::CompanyRecord Purchases::VendorPayment(const Occasion& occasion, std::size_t vendor) {
  draft.Begin("CheckRet", occasion);
  for (const OpenItem& bill : obligations.Settle({ObligationKind::PayVendor, vendor})) {
    draft.ExpenseLine(company.accounts.Of(AccountRole::Payable), bill.amount,
                      fmt::format("Bill {}", bill.number));
  }
  return FinishCheck(occasion, company.accounts.Of(AccountRole::Checking), Vendor(vendor).reference,
                     "On account");
}

company::CompanyRecord Purchases::FinishCheck(const Occasion& occasion, std::size_t bank,
                                              std::string_view payee, std::string_view memo) {
  ElementText& head = draft.Head();
  head.Block("AccountRef", company.accounts[bank].reference);
  head.Block("PayeeEntityRef", payee);
  head.Number("RefNumber", ++lastCheck);
  head.Text("TxnDate", occasion.dayText);
  head.Money("Amount", draft.Total());
  if (!memo.empty()) head.Text("Memo", memo);
  head.Truth("IsToBePrinted", false);
  draft.PostTotal(bank);
  return draft.Finish({});
}

// Expense lines come before items, and a transaction has items or a group at its end.
void Purchases::Lines(const Occasion& occasion, const Shape& shape) {
  for (std::int64_t rest = random.Between(1, shape.mostExpenses); rest > 0; --rest) ExpenseLine(occasion);
  for (std::int64_t rest = random.Between(0, shape.mostItems); rest > 0; --rest) ItemLine(occasion);
  if (company.settings.features.purchasedGroups && random.Chance(shape.percentGroups)) {
    const std::size_t group = random.Pick(company.items.groups);
    draft.BoughtGroup(group, random.Between(1, 5), occasion.pricePermille);
  }
}

void Purchases::ExpenseLine(const Occasion& occasion) {
  const std::size_t account = ExpenseAccount();
  const Cents amount = random.Around(company.accounts[account].typical * occasion.pricePermille / 1000);
  const std::string_view memo = random.Chance(percentWithMemo) ? random.Pick(memos) : std::string_view();
  if (company.settings.features.billableExpenses && random.Chance(percentBillable)) {
    BilledExpense(occasion, account, amount, memo.empty() ? memos.front() : memo);
    return;
  }
  draft.ExpenseLine(account, amount, memo);
  // A credit is a part of what came before, so that no account ends up with nothing.
  if (random.Chance(percentCredits))
    draft.ExpenseLine(account, -(amount * random.Between(10, 40) / 100), "Credit");
}

void Purchases::BilledExpense(const Occasion& occasion, std::size_t account, Cents amount,
                              std::string_view memo) {
  const auto customer = static_cast<std::size_t>(random.Below(company.people.customers.size()));
  const Obligation billing{ObligationKind::BillCustomer, customer};
  const Day due = occasion.day + untilBilled;
  const bool isBilled = obligations.CanPromise(billing, due);
  draft.ExpenseLine(account, amount, memo,
                    ChargedCustomer{company.people.customers[customer].reference, isBilled});
  if (isBilled) obligations.Promise(billing, due, {amount, 0, std::string(memo), {}, 0});
}

void Purchases::ItemLine(const Occasion& occasion) {
  ItemList& list = company.items;
  if (!toReorder.empty()) {
    const std::size_t item = toReorder.front();
    toReorder.pop_front();
    list.items[item].isOnOrder = false;
    draft.BoughtLine(item, list.items[item].reorderPoint * random.Between(2, 4),
                     CostOf(list.items[item], occasion.pricePermille));
    return;
  }
  const std::size_t item = random.Pick(list.bought);
  const std::int64_t pieces = random.Between(1, 6);
  const Cents cost = CostOf(list.items[item], occasion.pricePermille);
  if (company.settings.features.billableExpenses && random.Chance(percentBillable)) {
    BilledItem(occasion, item, pieces, cost);
  } else {
    draft.BoughtLine(item, pieces, cost);
  }
}

void Purchases::Reorder(std::size_t index) {
  Item& item = company.items.items[index];
  if (item.isOnOrder) return;
  item.isOnOrder = true;
  toReorder.push_back(index);
}

void Purchases::BilledItem(const Occasion& occasion, std::size_t item, std::int64_t pieces, Cents cost) {
  const auto customer = static_cast<std::size_t>(random.Below(company.people.customers.size()));
  const Obligation billing{ObligationKind::BillCustomer, customer};
  const Day due = occasion.day + untilBilled;
  const bool isBilled = obligations.CanPromise(billing, due);
  draft.BoughtLine(item, pieces, cost,
                   ChargedCustomer{company.people.customers[customer].reference, isBilled});
  if (isBilled) obligations.Promise(billing, due, {pieces * cost, 0, {}, item, pieces});
}

std::size_t Purchases::ExpenseAccount() {
  const AccountChoices& choices = company.choices;
  if (!uncovered.empty() && random.Chance(percentUncovered)) {
    const std::size_t account = uncovered.back();
    uncovered.pop_back();
    return account;
  }
  if (!choices.expenseParents.empty() && random.Chance(percentToParents))
    return random.Pick(choices.expenseParents);
  // A check to a customer takes back income.
  if (random.Chance(percentRefunds)) return random.Pick(choices.incomes);
  const bool toLone = !choices.loneExpenses.empty() && random.Chance(30);
  return random.Pick(toLone ? choices.loneExpenses : choices.subExpenses);
}

}  // namespace krnqb::sample_company
