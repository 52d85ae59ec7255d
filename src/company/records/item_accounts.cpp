#include "company/records/item_accounts.h"

#include <array>
#include <initializer_list>
#include <span>
#include <string_view>

#include "support/number_text.h"

namespace krnqb::company {
namespace {

// The element that contains the reference (empty: the record itself), and the reference.
using AccountPlace = std::array<std::string_view, 2>;

constexpr std::array<AccountPlace, 3> boughtPlaces = {
    {{"SalesAndPurchase", "ExpenseAccountRef"}, {"SalesOrPurchase", "AccountRef"}, {"", "AssetAccountRef"}}};

constexpr std::array<AccountPlace, 5> soldPlaces = {{{"SalesAndPurchase", "IncomeAccountRef"},
                                                     {"SalesOrPurchase", "AccountRef"},
                                                     {"", "IncomeAccountRef"},
                                                     {"", "AccountRef"},
                                                     {"", "DepositToAccountRef"}}};

std::string AccountAt(const RecordElement& item, const AccountPlace& place) {
  const auto& [part, reference] = place;
  const RecordElement owner = part.empty() ? item : item.Child(part);
  return owner.Child(reference).Child("ListID").Text();
}

std::string FirstAccount(const RecordElement& item, std::span<const AccountPlace> places) {
  for (const AccountPlace& place : places) {
    if (std::string account = AccountAt(item, place); !account.empty()) return account;
  }
  return {};
}

// Returns hundredths per piece; 0 for an item that is not inventory.
double UnitCost(const RecordElement& item) {
  return ConvertToDouble(item.Child("AverageCost").Text()).value_or(0) * 100;
}

}  // namespace

std::vector<ItemAccount> ReadItemAccounts(const RecordElement& item) {
  std::vector<ItemAccount> accounts;
  const auto add = [&](PostingTarget target, std::string account, std::optional<double> unitCost) {
    if (!account.empty()) accounts.push_back({target, std::move(account), unitCost});
  };
  add(PostingTarget::BoughtItem, FirstAccount(item, boughtPlaces), std::nullopt);
  add(PostingTarget::SoldItem, FirstAccount(item, soldPlaces), std::nullopt);
  if (const double unitCost = UnitCost(item); unitCost != 0) {
    add(PostingTarget::SoldItem, AccountAt(item, {"", "COGSAccountRef"}), unitCost);
    add(PostingTarget::SoldItem, AccountAt(item, {"", "AssetAccountRef"}), -unitCost);
  }
  return accounts;
}

}  // namespace krnqb::company
