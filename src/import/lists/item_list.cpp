#include "import/lists/item_list.h"

#include <fmt/format.h>

#include "support/error_handling.h"

namespace krnqb {
namespace {

// The text of an element, or of none.
std::string TextOf(const XmlElement& element) {
  return element ? element.Text() : std::string();
}

}  // namespace

const std::string& ItemList::ItemAccount(std::string_view itemId, ItemSide side, Observer& observer) const {
  static const std::string noAccount;
  const Place place{.operation = Operation::ItemAccount};
  const std::string* account = &noAccount;
  SkipOnError(observer, place, [&] {
    if (!answer_) throw Error(error_number::objectNotSet);
    if (lookUps_ == nullptr) lookUps_ = std::make_shared<LookUps>(answer_);
    auto& accounts = side == ItemSide::Income ? lookUps_->incomeAccounts : lookUps_->expenseAccounts;
    const std::string id(itemId);
    auto found = accounts.find(id);
    if (found == accounts.end()) found = accounts.emplace(id, FindAccount(id, side)).first;
    account = &found->second;
  });
  return *account;
}

std::string ItemList::FindAccount(const std::string& itemId, ItemSide side) const {
  const bool quoted = itemId.find('"') != std::string::npos;
  const XmlElement listId =
      quoted ? answer_.Select("//ListID[. = \"" + itemId + "\"]") : lookUps_->index.Find(itemId);
  if (!listId) return {};
  const XmlElement item = listId.Parent();
  const std::string_view reference = side == ItemSide::Income ? "IncomeAccountRef" : "ExpenseAccountRef";
  std::string account = TextOf(item.Child("SalesAndPurchase").Child(reference).Child("ListID"));
  if (account.empty()) account = TextOf(item.Child("SalesOrPurchase").Child("AccountRef").Child("ListID"));
  if (account.empty()) account = TextOf(item.Child(reference).Child("ListID"));
  if (side != ItemSide::Income || account.empty()) return account;
  const std::string costAccount = TextOf(item.Child("COGSAccountRef").Child("ListID"));
  const std::string averageCost = costAccount.empty() ? "" : TextOf(item.Child("AverageCost"));
  return averageCost.empty() ? account : CostOfGoodsMarker(costAccount, account, averageCost);
}

std::string CostOfGoodsMarker(std::string_view costAccountId, std::string_view incomeAccountId,
                              std::string_view averageCost) {
  return fmt::format("<COGS  cogsid=\"{}\" workid=\"{}\" averagecost=\"{}\"/>", costAccountId,
                     incomeAccountId, averageCost);
}

bool IsCostOfGoodsMarker(std::string_view account) noexcept {
  return account.starts_with("<COGS");
}

}  // namespace krnqb
