#include "import/lists/item_list.h"

#include "import/lists/full_name.h"
#include "support/error_handling.h"

namespace krnqb {
namespace {

// Returns an element's text, or the empty text for an empty handle.
std::string TextOf(const XmlElement& element) {
  return element ? element.Text() : std::string();
}

AccountId AccountOf(const XmlElement& item, const std::string& reference) {
  std::string account = TextOf(item.Select("./SalesAndPurchase/" + reference + "/ListID"));
  if (account.empty()) account = TextOf(item.Select("./SalesOrPurchase/AccountRef/ListID"));
  if (account.empty()) account = TextOf(item.Select("./" + reference + "/ListID"));
  return account;
}

AccountId ReadExpenseAccount(const XmlElement& item) {
  return AccountOf(item, "ExpenseAccountRef");
}

SalePosting ReadIncomePosting(const XmlElement& item) {
  AccountId account = AccountOf(item, "IncomeAccountRef");
  if (account.empty()) return account;
  const std::string costAccount = TextOf(item.Select("./COGSAccountRef/ListID"));
  const std::string averageCost = costAccount.empty() ? "" : TextOf(item.Child("AverageCost"));
  if (averageCost.empty()) return account;
  return PostingOf({.costAccount = costAccount, .incomeAccount = account, .averageCost = averageCost});
}

}  // namespace

const SalePosting& ItemList::IncomePosting(std::string_view itemId, Observer& observer) const {
  return LookUp(itemId, &LookUps::incomePostings, ReadIncomePosting, observer);
}

const AccountId& ItemList::ExpenseAccount(std::string_view itemId, Observer& observer) const {
  return LookUp(itemId, &LookUps::expenseAccounts, ReadExpenseAccount, observer);
}

std::string ItemList::FullNameOf(std::string_view listId) const {
  if (!answer_ || listId.find('"') != std::string_view::npos) return {};
  if (lookUps_ == nullptr) lookUps_ = std::make_shared<LookUps>(answer_);
  return NameBeside(lookUps_->index.Find(std::string(listId)));
}

template <typename Found>
const Found& ItemList::LookUp(std::string_view itemId, TextMap<Found> LookUps::*kept,
                              Found (*read)(const XmlElement& item), Observer& observer) const {
  static const Found nothing;
  const Place place{.operation = Operation::ItemAccount};
  const Found* result = &nothing;
  SkipOnError(observer, place, [&] {
    if (!answer_) throw Error(error_number::objectNotSet);
    if (lookUps_ == nullptr) lookUps_ = std::make_shared<LookUps>(answer_);
    auto& known = (*lookUps_).*kept;
    auto found = known.find(itemId);
    if (found == known.end()) {
      const std::string id(itemId);
      const XmlElement item = FindItem(id);
      found = known.emplace(id, item ? read(item) : Found()).first;
    }
    result = &found->second;
  });
  return *result;
}

// Returns the parent of the document's first "ListID" element with this text, or an empty handle.
XmlElement ItemList::FindItem(const std::string& itemId) const {
  const bool quoted = itemId.find('"') != std::string::npos;
  const XmlElement listId = quoted ? lookUps_->paths.Select(answer_, "//ListID[. = \"" + itemId + "\"]")
                                   : lookUps_->index.Find(itemId);
  return listId ? listId.Parent() : XmlElement();
}

}  // namespace krnqb
