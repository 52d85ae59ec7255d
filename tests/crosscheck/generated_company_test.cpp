#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

#include "crosscheck/two_paths.h"
#include "sample_company/generator.h"
#include "temporary_folder.h"

// A generated company has the same amounts by its transactions and by its reports.

namespace krnqb::crosscheck {
namespace {

using sample_company::CompanyFeatures;
using sample_company::GeneratorSettings;
using tests::TemporaryFolder;

// The imported year is the middle one, so that other transactions precede and follow it.
GeneratorSettings ThreeYears() {
  GeneratorSettings settings;
  settings.accounts = 140;
  settings.items = 70;
  settings.customers = 50;
  settings.transactions = 6'000;
  settings.firstYear = importedYear - 1;
  settings.lastYear = importedYear + 1;
  return settings;
}

constexpr CompanyFeatures none = {.billableExpenses = false,
                                  .inventory = false,
                                  .purchasedGroups = false,
                                  .parentPostings = false,
                                  .unpostedExpenses = false,
                                  .discounts = false,
                                  .accountNumbers = false};

struct BothPaths {
  ActualAmounts fromTransactions;
  ActualAmounts fromReports;
};

BothPaths ImportBothWays(GeneratorSettings settings) {
  const TemporaryFolder folder;
  settings.processorVersion = "1.1";
  sample_company::GenerateCompany(folder / "transactions.qbw", settings);
  settings.processorVersion = "2.0";
  sample_company::GenerateCompany(folder / "reports.qbw", settings);
  return {ImportedAmounts(folder / "transactions.qbw", folder.Path()),
          ImportedAmounts(folder / "reports.qbw", folder.Path())};
}

std::size_t AmountsOtherThanZero(const ActualAmounts& amounts, std::string_view block) {
  std::size_t count = 0;
  for (const auto& [name, months] : amounts) {
    if (!name.starts_with(block)) continue;
    count +=
        static_cast<std::size_t>(std::ranges::count_if(months, [](double amount) { return amount != 0; }));
  }
  return count;
}

TEST(GeneratedCompany, HasTheSameAmountsByBothPathsWithoutSpecialFeatures) {
  for (const std::uint64_t seed : {1U, 2U, 3U}) {
    for (const bool accountNumbers : {false, true}) {
      GeneratorSettings settings = ThreeYears();
      settings.seed = seed;
      settings.features = none;
      settings.features.accountNumbers = accountNumbers;
      const BothPaths paths = ImportBothWays(settings);
      EXPECT_EQ(Differences(paths.fromTransactions, paths.fromReports), (std::map<std::string, double>{}));
      EXPECT_EQ(paths.fromTransactions.size(), paths.fromReports.size());
      EXPECT_GT(AmountsOtherThanZero(paths.fromTransactions, "sales/"), 36U);
      EXPECT_GT(AmountsOtherThanZero(paths.fromTransactions, "expenses/"), 100U);
    }
  }
}

// The blocks whose amounts differ if a company has one of the features.
std::set<std::string> DifferingBlocks(const CompanyFeatures& features) {
  GeneratorSettings settings = ThreeYears();
  settings.features = features;
  const BothPaths paths = ImportBothWays(settings);
  std::set<std::string> blocks;
  for (const auto& [name, difference] : Differences(paths.fromTransactions, paths.fromReports)) {
    blocks.insert(name.substr(0, name.find('/')));
  }
  return blocks;
}

CompanyFeatures With(bool CompanyFeatures::*feature) {
  CompanyFeatures features = none;
  features.*feature = true;
  return features;
}

using Blocks = std::set<std::string>;

TEST(GeneratedCompany, DiffersOnlyInTheBlocksOfEachFeature) {
  EXPECT_EQ(DifferingBlocks(With(&CompanyFeatures::billableExpenses)), (Blocks{"expenses"}));
  EXPECT_EQ(DifferingBlocks(With(&CompanyFeatures::purchasedGroups)), (Blocks{"expenses"}));
  EXPECT_EQ(DifferingBlocks(With(&CompanyFeatures::parentPostings)), (Blocks{"expenses", "sales"}));
  EXPECT_EQ(DifferingBlocks(With(&CompanyFeatures::unpostedExpenses)), (Blocks{"expenses"}));
  EXPECT_EQ(DifferingBlocks(With(&CompanyFeatures::discounts)), (Blocks{"sales"}));
}

// Inventory is sold in whole pieces at an average cost in whole cents, so neither path rounds.
TEST(GeneratedCompany, HasTheSameCostsByBothPathsIfWholePiecesAreSold) {
  GeneratorSettings settings = ThreeYears();
  settings.features = With(&CompanyFeatures::inventory);
  const BothPaths paths = ImportBothWays(settings);
  EXPECT_GT(AmountsOtherThanZero(paths.fromTransactions, "costs/"), 12U);
  EXPECT_EQ(Differences(paths.fromTransactions, paths.fromReports), (std::map<std::string, double>{}));
}

}  // namespace
}  // namespace krnqb::crosscheck
