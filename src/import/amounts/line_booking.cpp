#include "import/amounts/line_booking.h"

#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {

void LineBooking::Begin(const TransactionLine& line) {
  if (receiver_ == nullptr) return;
  const std::string_view account = line.accountId.value_or("");
  const std::string_view item = ItemOf(line);
  source_ = {.number = ++context.state.tally.reported,
             .request = query.kind,
             .month = query.month,
             .transactionId = line.transactionId,
             .lineId = line.lineId,
             .date = line.transactionDate,
             .referenceNumber = line.referenceNumber,
             .element = line.element,
             .party = line.partyName,
             .customer = line.customerId ? line.customerName : std::string_view(),
             .account = account,
             .accountName = FullNameOf(line, account),
             .item = item,
             .itemName = FullNameOf(line, item),
             .amount = line.amount.value_or(""),
             .quantity = line.quantity.value_or("")};
  receiver_->ReadLine(source_);
}

double LineBooking::AmountOf(const TransactionLine& line) {
  const std::optional<double> amount = line.amount ? ConvertToDouble(*line.amount) : std::nullopt;
  if (!amount) ReportSkipped(line, SkipReason::AmountIsNoNumber, {});
  return amount.value_or(0);
}

bool LineBooking::AddTo(AccountGroup group, std::string_view accountId, double amount,
                        const TransactionLine& line, const Booking& details) {
  const auto& [topLevel, subtotal] = TargetOf(group, accountId);
  const std::string& name = topLevel->name;
  if (name.empty()) return false;
  if (subtotal == nullptr) {
    ReportSkipped(line, SkipReason::NoSubtotal, name);
    return true;
  }
  if (!SkipOnError(context.observer, place,
                   [&, &sum = *subtotal] { sum.AddToSubTotal(query.month, amount); })) {
    ReportSkipped(line, SkipReason::SubtotalOutOfRange, name);
    return true;
  }
  Report(group, name, accountId, amount, line, details);
  return true;
}

void LineBooking::Report(AccountGroup group, std::string_view name, std::string_view accountId, double amount,
                         const TransactionLine& line, const Booking& details) {
  if (receiver_ == nullptr) return;
  Booking booking = details;
  booking.slot = {.group = AmountGroupOf(group), .name = name, .number = query.month};
  booking.amount = amount;
  booking.account = accountId;
  booking.accountName = FullNameOf(line, accountId);
  booking.text = line.amount.value_or("");
  booking.line = &source_;
  receiver_->Book(booking);
}

void LineBooking::ReportSkipped(const TransactionLine& line, SkipReason reason, std::string_view account) {
  const TransactionLine::Field customer = line.customerId         ? line.customerId
                                          : line.parentCustomerId ? line.parentCustomerId
                                                                  : line.grandparentCustomerId;
  context.observer.Notify(Notice{.kind = NoticeKind::AmountSkipped,
                                 .meaning = NoticeMeaning::LeftOut,
                                 .place = place,
                                 .skipped = Skipped{.reason = reason,
                                                    .kind = KindOf(reason),
                                                    .transactionId = std::string(line.transactionId),
                                                    .transactionDate = std::string(line.transactionDate),
                                                    .source = std::string(line.element),
                                                    .account = std::string(account),
                                                    .accountName = std::string(FullNameOf(line, account)),
                                                    .customer = std::string(customer.value_or("")),
                                                    .customerName = std::string(line.customerName),
                                                    .amount = std::string(line.amount.value_or("")),
                                                    .line = source_.number}});
}

SkipKind LineBooking::KindOf(SkipReason reason) const {
  const ImportOptions& options = context.state.options;
  switch (reason) {
    case SkipReason::AccountInNoList:
      // An account of a list that was not read cannot be distinguished from one that is in no list.
      return options.includeExpenseAccounts && options.includeIncomeAccounts ? SkipKind::NotImported
                                                                             : SkipKind::NotRequested;
    case SkipReason::ItemWithoutAccount:
    case SkipReason::DuplicateBillableKey:
    case SkipReason::InsideItemGroup:
      return SkipKind::NotImported;
    default:
      return SkipKind::Lost;
  }
}

std::string_view LineBooking::FullNameOf(const TransactionLine& line, std::string_view listId) {
  if (listId.empty()) return {};
  if (listId == line.accountId && !line.accountName.empty()) return line.accountName;
  const bool isItem = listId == line.itemId || listId == line.itemGroupId || listId == line.parentItemGroupId;
  if (isItem && !line.itemName.empty()) return line.itemName;
  return ListNameOf(listId);
}

const std::string& LineBooking::ListNameOf(std::string_view listId) {
  if (const auto known = listNames_.find(listId); known != listNames_.end()) return known->second;
  const ImportState& state = context.state;
  std::string name;
  for (const AccountList* list : {&state.expenseAccounts, &state.incomeAccounts, &state.costAccounts}) {
    if (name.empty()) name = list->FullNameOf(listId);
  }
  if (name.empty()) name = state.itemListDocument.FullNameOf(listId);
  return listNames_.emplace(listId, std::move(name)).first->second;
}

const LineBooking::Target& LineBooking::TargetOf(AccountGroup group, std::string_view accountId) {
  TextMap<Target>& targets = targets_.at(static_cast<std::size_t>(group));
  auto found = targets.find(accountId);
  if (found == targets.end()) {
    const AccountList::RollUp& topLevel = AccountsOf(context.state, group).RollUpOf(accountId);
    auto& subtotals = SubtotalsOf(context.state, group);
    cSubtotals* const subtotal = subtotals ? subtotals->Find(topLevel.name) : nullptr;
    found = targets.emplace(accountId, Target{.topLevel = &topLevel, .subtotal = subtotal}).first;
  }
  ReportFailure(*found->second.topLevel, context.observer);
  return found->second;
}

const CostOfSale& LineBooking::CostOfSaleIn(const SalePosting& posting) {
  if (const auto* const sale = std::get_if<CostOfSale>(&posting)) return *sale;
  const auto& marker = std::get<AccountId>(posting);
  const auto found = costs_.find(marker);
  return found != costs_.end() ? found->second
                               : costs_.emplace(marker, ReadCostOfGoodsMarker(marker)).first->second;
}

std::string_view ItemOf(const TransactionLine& line) noexcept {
  for (const TransactionLine::Field& item : {line.itemId, line.itemGroupId, line.parentItemGroupId}) {
    if (!item.value_or("").empty()) return *item;
  }
  return {};
}

AmountGroup AmountGroupOf(AccountGroup group) noexcept {
  switch (group) {
    case AccountGroup::Income:
      return AmountGroup::Income;
    case AccountGroup::CostOfGoods:
      return AmountGroup::CostOfGoods;
    case AccountGroup::Expense:
      break;
  }
  return AmountGroup::Expenses;
}

const AccountList& AccountsOf(const ImportState& state, AccountGroup group) {
  switch (group) {
    case AccountGroup::Income:
      return state.incomeAccounts;
    case AccountGroup::CostOfGoods:
      return state.costAccounts;
    case AccountGroup::Expense:
      break;
  }
  return state.expenseAccounts;
}

std::optional<SubtotalCollection>& SubtotalsOf(ImportState& state, AccountGroup group) {
  switch (group) {
    case AccountGroup::Income:
      return state.incomeSubtotals;
    case AccountGroup::CostOfGoods:
      return state.costSubtotals;
    case AccountGroup::Expense:
      break;
  }
  return state.expenseSubtotals;
}

}  // namespace krnqb
