#pragma once

#include <map>
#include <span>
#include <string>
#include <string_view>

namespace krnqb::sample_company {

/// Words for the names of one type's top-level accounts: any area with any purpose. Both are empty for a type
/// that has no more accounts than every company has.
struct AccountWords {
  std::span<const std::string_view> areas;
  std::span<const std::string_view> purposes;
};
AccountWords WordsForAccounts(std::string_view accountType);
/// Names of sub-accounts.
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

/// Gives each name once: a name that was given before comes back with the next free number.
class UniqueNames {
 public:
  bool IsTaken(std::string_view parent, std::string_view name) const;
  /// The name, or the name with a number, that no entry of the list below `parent` has yet.
  std::string Take(std::string_view parent, std::string_view name);

 private:
  std::map<std::string, int, std::less<>> taken_;
};

}  // namespace krnqb::sample_company
