#include "company/records/postings.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

#include "company/records/amount.h"
#include "company/records/boolean.h"
#include "support/number_text.h"

namespace krnqb::company {
namespace {

/// How a purchase or a sale posts, and where its record has its total and the total's account.
struct TradeForm {
  std::string_view element;
  bool isSale;
  int lineSide;  // 1 if a line is a debit, -1 if it is a credit
  std::string_view account;
  std::array<std::string_view, 2> amounts;  // the total is their sum
};

constexpr int debit = 1;
constexpr int credit = -1;

constexpr std::array tradeForms = {
    TradeForm{"BillRet", false, debit, "APAccountRef", {"AmountDue"}},
    TradeForm{"CheckRet", false, debit, "AccountRef", {"Amount"}},
    TradeForm{"CreditCardChargeRet", false, debit, "AccountRef", {"Amount"}},
    TradeForm{"ItemReceiptRet", false, debit, "APAccountRef", {"TotalAmount"}},
    TradeForm{"VendorCreditRet", false, credit, "APAccountRef", {"CreditAmount"}},
    TradeForm{"CreditCardCreditRet", false, credit, "AccountRef", {"Amount"}},
    TradeForm{"InvoiceRet", true, credit, "ARAccountRef", {"Subtotal", "SalesTaxTotal"}},
    TradeForm{"SalesReceiptRet", true, credit, "DepositToAccountRef", {"TotalAmount"}},
    TradeForm{"ChargeRet", true, credit, "ARAccountRef", {"Amount"}},
    TradeForm{"CreditMemoRet", true, debit, "ARAccountRef", {"Subtotal", "SalesTaxTotal"}},
};

/// Where the record of a payment has its accounts and its amount.
struct PaymentForm {
  std::string_view element;
  int moneySide;  // the side of the account that the money goes to or comes from
  std::string_view moneyAccount;
  std::string_view settledAccount;
  std::string_view amount;
};

constexpr std::array paymentForms = {
    PaymentForm{"ReceivePaymentRet", debit, "DepositToAccountRef", "ARAccountRef", "TotalAmount"},
    PaymentForm{"BillPaymentCheckRet", credit, "BankAccountRef", "APAccountRef", "Amount"},
    PaymentForm{"BillPaymentCreditCardRet", credit, "CreditCardAccountRef", "APAccountRef", "Amount"},
};

const TradeForm& FormOf(std::string_view element) {
  const auto* const form = std::ranges::find(tradeForms, element, &TradeForm::element);
  return form == tradeForms.end() ? tradeForms.front() : *form;
}

std::string ReferredKey(const RecordElement& owner, std::string_view reference) {
  return owner.Child(reference).Child("ListID").Text();
}

std::optional<std::int64_t> AmountOf(const RecordElement& owner, std::string_view name) {
  return Hundredths(owner.Child(name).Text());
}

Posting AccountPosting(int lineSide, std::string account, std::int64_t amount) {
  return {PostingTarget::Account, std::move(account), lineSide * amount};
}

Posting ItemPosting(bool isSale, int lineSide, std::string item, std::int64_t amount, double quantity) {
  if (!isSale) return {PostingTarget::BoughtItem, std::move(item), lineSide * amount};
  return {PostingTarget::SoldItem, std::move(item), lineSide * amount, -lineSide * quantity};
}

class TradeReader {
 public:
  TradeReader(const RecordElement& transaction, const RecordKind& kind)
      : transaction_(transaction), form_(FormOf(kind.element)) {}

  std::vector<PostedLine> Read() {
    constexpr std::size_t mostly = 8;
    posted_.reserve(mostly);
    if (transaction_.Name() == "ChargeRet") ReadLine(transaction_);
    ReadLines(transaction_);
    ReadTotal();
    return std::move(posted_);
  }

 private:
  // A group of lines has neither an amount nor an item itself; it contains its lines.
  void ReadLines(const RecordElement& owner) {
    for (RecordElement line = owner.FirstChild(); line; line = line.NextSibling()) {
      if (!IsTransactionLine(line.Name())) continue;
      ReadLine(line);
      ReadLines(line);
    }
  }

  // The account of a charge is that of its total.
  void ReadLine(const RecordElement& line) {
    const std::optional<std::int64_t> amount = AmountOf(line, "Amount");
    if (!amount) return;
    if (std::string account = ReferredKey(line, "AccountRef"); !account.empty()) {
      posted_.push_back({AccountPosting(form_.lineSide, std::move(account), *amount), line});
    } else if (std::string item = ReferredKey(line, "ItemRef"); !item.empty()) {
      const double quantity = ConvertToDouble(line.Child("Quantity").Text()).value_or(1);
      posted_.push_back(
          {ItemPosting(form_.isSale, form_.lineSide, std::move(item), *amount, quantity), line});
    }
  }

  void ReadTotal() {
    std::string account = ReferredKey(transaction_, form_.account);
    const std::optional<std::int64_t> amount = AmountOf(transaction_, form_.amounts[0]);
    if (account.empty() || !amount) return;
    const std::int64_t total = *amount + AmountOf(transaction_, form_.amounts[1]).value_or(0);
    posted_.push_back({AccountPosting(form_.lineSide, std::move(account), -total), {}});
  }

  const RecordElement& transaction_;
  const TradeForm& form_;
  std::vector<PostedLine> posted_;
};

// Collects the postings of the other kinds.
class PostedLines {
 public:
  /// Adds an amount on a side of the account that `owner` refers to; nothing without an account or amount.
  void Add(const RecordElement& owner, std::string_view account, std::optional<std::int64_t> amount, int side,
           const RecordElement& line) {
    std::string key = ReferredKey(owner, account);
    if (key.empty() || !amount) return;
    posted_.push_back({{PostingTarget::Account, std::move(key), side * *amount}, line});
  }

  void AddItem(const RecordElement& line, std::int64_t amount) {
    std::string key = ReferredKey(line, "ItemRef");
    if (!key.empty()) posted_.push_back({{PostingTarget::BoughtItem, std::move(key), amount}, line});
  }

  std::vector<PostedLine> Take() { return std::move(posted_); }

 private:
  std::vector<PostedLine> posted_;
};

std::vector<PostedLine> ReadJournalEntry(const RecordElement& entry) {
  PostedLines posted;
  for (RecordElement line = entry.FirstChild(); line; line = line.NextSibling()) {
    const std::string_view name = line.Name();
    if (name != "JournalDebitLine" && name != "JournalCreditLine") continue;
    posted.Add(line, "AccountRef", AmountOf(line, "Amount"), name == "JournalDebitLine" ? debit : credit,
               line);
  }
  return posted.Take();
}

std::vector<PostedLine> ReadDeposit(const RecordElement& deposit) {
  PostedLines posted;
  for (RecordElement line = deposit.FirstChild(); line; line = line.NextSibling()) {
    const std::string_view name = line.Name();
    if (name != "DepositLineRet" && name != "CashBackInfoRet") continue;
    posted.Add(line, "AccountRef", AmountOf(line, "Amount"), name == "DepositLineRet" ? credit : debit, line);
  }
  posted.Add(deposit, "DepositToAccountRef", AmountOf(deposit, "DepositTotal"), debit, {});
  return posted.Take();
}

// The account settled, receivable or payable, has the amount paid and the discounts.
std::vector<PostedLine> ReadPayment(const RecordElement& payment, const PaymentForm& form) {
  PostedLines posted;
  std::int64_t discounts = 0;
  for (RecordElement applied = payment.Child("AppliedToTxnRet"); applied; applied = applied.NextSibling()) {
    if (applied.Name() != "AppliedToTxnRet") continue;
    const std::optional<std::int64_t> discount = AmountOf(applied, "DiscountAmount");
    posted.Add(applied, "DiscountAccountRef", discount, form.moneySide, {});
    discounts += discount.value_or(0);
  }
  const std::optional<std::int64_t> amount = AmountOf(payment, form.amount);
  posted.Add(payment, form.moneyAccount, amount, form.moneySide, {});
  if (amount) posted.Add(payment, form.settledAccount, *amount + discounts, -form.moneySide, {});
  return posted.Take();
}

std::vector<PostedLine> ReadInventoryAdjustment(const RecordElement& adjustment) {
  PostedLines posted;
  for (RecordElement line = adjustment.FirstChild(); line; line = line.NextSibling()) {
    if (line.Name() != "InventoryAdjustmentLineRet") continue;
    const std::optional<std::int64_t> difference = AmountOf(line, "ValueDifference");
    if (!difference) continue;
    posted.AddItem(line, *difference);
    posted.Add(adjustment, "AccountRef", difference, credit, line);
  }
  return posted.Take();
}

}  // namespace

PostingList::PostingList(const RecordKind& transaction)
    : isSale_(FormOf(transaction.element).isSale), lineSide_(FormOf(transaction.element).lineSide) {}

void PostingList::AddAccountLine(std::string account, std::int64_t amount) {
  postings_.push_back(AccountPosting(lineSide_, std::move(account), amount));
}

void PostingList::AddItemLine(std::string item, std::int64_t amount, double quantity) {
  postings_.push_back(ItemPosting(isSale_, lineSide_, std::move(item), amount, quantity));
}

void PostingList::AddTotal(std::string account, std::int64_t amount) {
  AddAccountLine(std::move(account), -amount);
}

std::vector<PostedLine> ReadPostedLines(const RecordElement& transaction) {
  if (IsTrueText(transaction.Child("IsPending").Text())) return {};
  const std::string_view element = transaction.Name();
  if (element == "JournalEntryRet") return ReadJournalEntry(transaction);
  if (element == "DepositRet") return ReadDeposit(transaction);
  if (element == "InventoryAdjustmentRet") return ReadInventoryAdjustment(transaction);
  const auto* const payment = std::ranges::find(paymentForms, element, &PaymentForm::element);
  if (payment != paymentForms.end()) return ReadPayment(transaction, *payment);
  const RecordKind* const kind = FindRecordKind(element);
  if (kind == nullptr) return {};
  return TradeReader(transaction, *kind).Read();
}

std::vector<Posting> ReadPostings(const RecordElement& transaction) {
  std::vector<Posting> postings;
  for (PostedLine& posted : ReadPostedLines(transaction)) postings.push_back(std::move(posted.posting));
  return postings;
}

}  // namespace krnqb::company
