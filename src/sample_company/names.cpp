#include "sample_company/names.h"

#include <fmt/format.h>

#include <array>

namespace krnqb::sample_company {
namespace {

using Words = std::string_view;

constexpr std::array expenseAreas = {
    Words("Travel"),   Words("Telephone"),  Words("Vehicle"),  Words("Equipment"), Words("Computer"),
    Words("Cleaning"), Words("Freight"),    Words("Training"), Words("Website"),   Words("Security"),
    Words("Grounds"),  Words("Packaging"),  Words("Uniform"),  Words("Workshop"),  Words("Showroom"),
    Words("Legal"),    Words("Trade Fair"), Words("Café"),     Words("Warehouse"), Words("Field Office")};
constexpr std::array expensePurposes = {
    Words("Costs"),        Words("Repairs"),         Words("Rental"),
    Words("Supplies"),     Words("Service"),         Words("Fees"),
    Words("Dues"),         Words("Meals & Lodging"), Words("Permits and Licences"),
    Words("Subscriptions")};
constexpr std::array incomeAreas = {Words("Garden"),   Words("Contract"), Words("Catalogue"), Words("Rental"),
                                    Words("Repair"),   Words("Design"),   Words("Delivery"),  Words("Export"),
                                    Words("Seasonal"), Words("Training")};
constexpr std::array incomePurposes = {Words("Income"), Words("Sales"), Words("Revenue"), Words("Fees"),
                                       Words("Orders")};
constexpr std::array costAreas = {Words("Plant"), Words("Hard Goods"), Words("Timber"), Words("Stone"),
                                  Words("Gift")};
constexpr std::array costPurposes = {Words("Cost of Sales"), Words("Purchases"), Words("Shrinkage")};
constexpr std::array assetAreas = {Words("Office"), Words("Shop"),       Words("Yard"),
                                   Words("Truck"),  Words("Greenhouse"), Words("Workshop")};
constexpr std::array fixedAssetPurposes = {Words("Fixtures"), Words("Machines"), Words("Improvements"),
                                           Words("Furniture")};
constexpr std::array currentAssetPurposes = {Words("Advances"), Words("Prepayments"), Words("Deposits Paid")};
constexpr std::array otherAssetPurposes = {Words("Bonds"), Words("Licences"), Words("Goodwill")};
constexpr std::array bankAreas = {Words("Valley Bank"), Words("Credit Union"), Words("River Savings")};
constexpr std::array bankPurposes = {Words("Account"), Words("Money Market"), Words("Reserve")};
constexpr std::array cardPurposes = {Words("Card"), Words("Fuel Card"), Words("Charge Card")};
constexpr std::array liabilityPurposes = {Words("Customer Deposits"), Words("Accrued Costs"),
                                          Words("Gift Vouchers")};
constexpr std::array loanPurposes = {Words("Loan"), Words("Mortgage"), Words("Lease")};
constexpr std::array equityPurposes = {Words("Capital"), Words("Reserve"), Words("Contribution")};

constexpr std::array subAccounts = {
    Words("North"),     Words("South"),    Words("East"),    Words("West"),      Words("Downtown"),
    Words("Riverside"), Words("Hillside"), Words("Retail"),  Words("Wholesale"), Words("Public Works"),
    Words("Schools"),   Words("Homes"),    Words("Offices"), Words("Emergency"), Words("Maintenance"),
    Words("New Work"),  Words("Leased"),   Words("Owned"),   Words("Shared"),    Words("Other Places")};

constexpr std::array services = {Words("Design Hour"), Words("Installation"),     Words("Site Visit"),
                                 Words("Consulting"),  Words("Repair Hour"),      Words("Pruning"),
                                 Words("Paving"),      Words("Irrigation Check"), Words("Maintenance Visit"),
                                 Words("Stone Work"),  Words("Fence Work"),       Words("Training Day")};
constexpr std::array materials = {Words("Cedar"),  Words("Oak"),    Words("Clay"),    Words("Steel"),
                                  Words("Copper"), Words("Slate"),  Words("Granite"), Words("Linen"),
                                  Words("Maple"),  Words("Enamel"), Words("Wicker"),  Words("Bronze")};
constexpr std::array goods = {Words("Planter"),   Words("Bench"),  Words("Trellis"),  Words("Lantern"),
                              Words("Fountain"),  Words("Gate"),   Words("Pot 10\""), Words("Table"),
                              Words("Bird Bath"), Words("Edging"), Words("Arbor"),    Words("Hose Reel"),
                              Words("Basket"),    Words("Stool"),  Words("Tool Set")};
constexpr std::array charges = {Words("Delivery"), Words("Rush Order"), Words("Crating"),
                                Words("Disposal"), Words("Crane Hire"), Words("Storage")};
constexpr std::array variants = {Words("Small"),   Words("Large"),    Words("Weekend"),
                                 Words("Premium"), Words("Contract"), Words("Special Order")};

constexpr std::array families = {Words("Abbott"),  Words("Alvarez"),  Words("Bennett"),   Words("Castillo"),
                                 Words("Chen"),    Words("Dawson"),   Words("Ellis"),     Words("Fischer"),
                                 Words("Grant"),   Words("Hughes"),   Words("Ibarra"),    Words("Jensen"),
                                 Words("Keller"),  Words("Lindgren"), Words("Moreno"),    Words("Núñez"),
                                 Words("Okafor"),  Words("Patel"),    Words("Quinn"),     Words("Reyes"),
                                 Words("Schäfer"), Words("Tanaka"),   Words("Underhill"), Words("Vance")};
constexpr std::array givens = {Words("Alice"), Words("Ben"),   Words("Clara"), Words("David"),
                               Words("Elena"), Words("Frank"), Words("Grace"), Words("Hugo"),
                               Words("Inés"),  Words("Jonas"), Words("Karen"), Words("Luis")};
constexpr std::array businesses = {Words("Cedar Street"), Words("Harbor"),     Words("Hill & Dale"),
                                   Words("Millbrook"),    Words("Northside"),  Words("Old Town"),
                                   Words("Orchard Lane"), Words("Ridgeway"),   Words("Silver Creek"),
                                   Words("Summit"),       Words("Tri-County"), Words("Union Square")};
constexpr std::array forms = {Words("School"),     Words("Bakery"), Words("Hotel"),      Words("Builders"),
                              Words("Properties"), Words("& Sons"), Words("Supply Co."), Words("Clinic"),
                              Words("Restaurant"), Words("Church"), Words("Insurance"),  Words("Works")};
constexpr std::array jobs = {Words("Courtyard"), Words("Front Garden"), Words("Terrace"),
                             Words("Entrance"),  Words("Roof Garden"),  Words("Parking Lot"),
                             Words("Annex"),     Words("Main Hall")};
constexpr std::array towns = {Words("Millbrook"),  Words("Ashford"),  Words("Larch Valley"),
                              Words("Stillwater"), Words("Fairview"), Words("Bend")};

}  // namespace

AccountWords WordsForAccounts(std::string_view accountType) {
  if (accountType == "Expense") return {expenseAreas, expensePurposes};
  if (accountType == "Income") return {incomeAreas, incomePurposes};
  if (accountType == "CostOfGoodsSold") return {costAreas, costPurposes};
  if (accountType == "Bank") return {bankAreas, bankPurposes};
  if (accountType == "FixedAsset") return {assetAreas, fixedAssetPurposes};
  if (accountType == "OtherCurrentAsset") return {assetAreas, currentAssetPurposes};
  if (accountType == "OtherAsset") return {assetAreas, otherAssetPurposes};
  if (accountType == "CreditCard") return {bankAreas, cardPurposes};
  if (accountType == "OtherCurrentLiability") return {assetAreas, liabilityPurposes};
  if (accountType == "LongTermLiability") return {assetAreas, loanPurposes};
  if (accountType == "Equity") return {families, equityPurposes};
  return {};
}

std::span<const std::string_view> SubAccountNames() {
  return subAccounts;
}
std::span<const std::string_view> ServiceNames() {
  return services;
}
std::span<const std::string_view> GoodsMaterials() {
  return materials;
}
std::span<const std::string_view> GoodsNames() {
  return goods;
}
std::span<const std::string_view> ChargeNames() {
  return charges;
}
std::span<const std::string_view> VariantNames() {
  return variants;
}
std::span<const std::string_view> FamilyNames() {
  return families;
}
std::span<const std::string_view> GivenNames() {
  return givens;
}
std::span<const std::string_view> BusinessNames() {
  return businesses;
}
std::span<const std::string_view> BusinessForms() {
  return forms;
}
std::span<const std::string_view> JobNames() {
  return jobs;
}
std::span<const std::string_view> TownNames() {
  return towns;
}

bool UniqueNames::IsTaken(std::string_view parent, std::string_view name) const {
  return taken_.contains(fmt::format("{}:{}", parent, name));
}

std::string UniqueNames::Take(std::string_view parent, std::string_view name) {
  const int uses = ++taken_[fmt::format("{}:{}", parent, name)];
  return uses == 1 ? std::string(name) : fmt::format("{} {}", name, uses);
}

}  // namespace krnqb::sample_company
