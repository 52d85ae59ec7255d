#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace krnqb::sample_company {

/// Words for the names of a type's top-level accounts: any area with any purpose. Empty for a type that has
/// only the accounts of every company.
struct AccountWords {
  std::span<const std::string_view> areas;
  std::span<const std::string_view> purposes;
};
AccountWords WordsForAccounts(std::string_view accountType);
/// Returns the names of sub-accounts.
std::span<const std::string_view> SubAccountNames();

std::span<const std::string_view> ServiceNames();
std::span<const std::string_view> GoodsMaterials();
std::span<const std::string_view> GoodsNames();
std::span<const std::string_view> ChargeNames();
std::span<const std::string_view> VariantNames();

std::span<const std::string_view> FamilyNames();
std::span<const std::string_view> GivenNames();
std::span<const std::string_view> BusinessNames();
std::span<const std::string_view> BusinessForms();
std::span<const std::string_view> JobNames();
std::span<const std::string_view> TownNames();

/// Makes names unique by adding the next free number to a name already taken.
class UniqueNames {
 public:
  bool IsTaken(std::string_view parent, std::string_view name) const;
  /// Returns the name, with a number if needed, that no other entry below `parent` has.
  std::string Take(std::string_view parent, std::string_view name);

 private:
  std::map<std::string, int, std::less<>> taken_;
};

}  // namespace krnqb::sample_company
