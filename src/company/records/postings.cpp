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

/// Where a record has its total and the total's account.
struct TotalForm {
  std::string_view element;
  bool isSale;
  std::string_view account;
  std::array<std::string_view, 2> amounts;  // the total is their sum
};

constexpr std::array totalForms = {
    TotalForm{"BillRet", false, "APAccountRef", {"AmountDue"}},
    TotalForm{"CheckRet", false, "AccountRef", {"Amount"}},
    TotalForm{"CreditCardChargeRet", false, "AccountRef", {"Amount"}},
    TotalForm{"InvoiceRet", true, "ARAccountRef", {"Subtotal", "SalesTaxTotal"}},
    TotalForm{"SalesReceiptRet", true, "DepositToAccountRef", {"TotalAmount"}},
};

const TotalForm& FormOf(std::string_view element) {
  const auto* const form = std::ranges::find(totalForms, element, &TotalForm::element);
  return form == totalForms.end() ? totalForms.front() : *form;
}

std::string TextOf(const XmlElement& element) {
  return element ? element.Text() : std::string();
}

std::string ReferredKey(const XmlElement& owner, std::string_view reference) {
  return TextOf(owner.Child(reference).Child("ListID"));
}

std::optional<std::int64_t> AmountOf(const XmlElement& owner, std::string_view name) {
  return Hundredths(TextOf(owner.Child(name)));
}

void ReadLine(const XmlElement& line, PostingList& postings) {
  const std::optional<std::int64_t> amount = AmountOf(line, "Amount");
  if (!amount) return;
  if (std::string account = ReferredKey(line, "AccountRef"); !account.empty()) {
    postings.AddAccountLine(std::move(account), *amount);
  } else if (std::string item = ReferredKey(line, "ItemRef"); !item.empty()) {
    postings.AddItemLine(std::move(item), *amount,
                         ConvertToDouble(TextOf(line.Child("Quantity"))).value_or(1));
  }
}

// A group of lines has neither an amount nor an item itself; it contains its lines.
void ReadLines(const XmlElement& owner, PostingList& postings) {
  for (XmlElement line = owner.FirstChild(); line; line = line.NextSibling()) {
    if (!IsTransactionLine(line.Name())) continue;
    ReadLine(line, postings);
    ReadLines(line, postings);
  }
}

void ReadTotal(const XmlElement& transaction, PostingList& postings) {
  const TotalForm& form = FormOf(transaction.Name());
  std::string account = ReferredKey(transaction, form.account);
  const std::optional<std::int64_t> amount = AmountOf(transaction, form.amounts[0]);
  if (account.empty() || !amount) return;
  postings.AddTotal(std::move(account), *amount + AmountOf(transaction, form.amounts[1]).value_or(0));
}

}  // namespace

PostingList::PostingList(const RecordKind& transaction) : isSale_(FormOf(transaction.element).isSale) {}

void PostingList::AddAccountLine(std::string account, std::int64_t amount) {
  postings_.push_back({PostingTarget::Account, std::move(account), isSale_ ? -amount : amount});
}

void PostingList::AddItemLine(std::string item, std::int64_t amount, double quantity) {
  if (isSale_) {
    postings_.push_back({PostingTarget::SoldItem, std::move(item), -amount, quantity});
  } else {
    postings_.push_back({PostingTarget::BoughtItem, std::move(item), amount});
  }
}

void PostingList::AddTotal(std::string account, std::int64_t amount) {
  AddAccountLine(std::move(account), -amount);
}

std::vector<Posting> ReadPostings(const XmlElement& transaction) {
  if (IsTrueText(TextOf(transaction.Child("IsPending")))) return {};
  const RecordKind* const kind = FindRecordKind(transaction.Name());
  if (kind == nullptr) return {};
  PostingList postings(*kind);
  ReadLines(transaction, postings);
  ReadTotal(transaction, postings);
  return postings.Take();
}

}  // namespace krnqb::company
