#include "import/lists/item_list.h"

#include <fmt/format.h>

#include "support/error_handling.h"

namespace krnqb {
namespace {

// Returns an element's text, or the empty text for an empty handle.
std::string TextOf(const XmlElement& element) {
  return element ? element.Text() : std::string();
}

}  // namespace

const std::string& ItemList::ItemAccount(std::string_view itemId, ItemSide side, Observer& observer) const {
  static const std::string noAccount;
  const Place place{.operation = "ItemAccount", .request = {}, .fromDate = {}, .toDate = {}};
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
  const std::string reference = side == ItemSide::Income ? "IncomeAccountRef" : "ExpenseAccountRef";
  std::string account = TextOf(item.Select("./SalesAndPurchase/" + reference + "/ListID"));
  if (account.empty()) account = TextOf(item.Select("./SalesOrPurchase/AccountRef/ListID"));
  if (account.empty()) account = TextOf(item.Select("./" + reference + "/ListID"));
  if (side != ItemSide::Income || account.empty()) return account;
  const std::string costAccount = TextOf(item.Select("./COGSAccountRef/ListID"));
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
