#include "cli/import/progress/phases.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view processing = "Processing...";
constexpr std::string_view expenses = "Importing expense balances...";

ImportScope WholeYear() {
  return {.expenses = true,
          .income = true,
          .pastPerformance = false,
          .balances = BalImport_All,
          .product = QBKRN_ALD,
          .majorVersion = 1,
          .planStart = {2003, 1},
          .importStart = {2001, 7}};
}

void PassAccounts(ImportPhases& phases) {
  for (const int percent : {20, 40, 60, 80, 100}) phases.Next(static_cast<std::int16_t>(percent), processing);
}

TEST(ImportPhases, BeginAtZeroAndEndAtOne) {
  ImportPhases phases(WholeYear());
  EXPECT_EQ(phases.Next(20, processing).done, 0);
  EXPECT_EQ(phases.Next(40, processing).phase, "opening the company");
  EXPECT_EQ(phases.Next(60, processing).phase, "reading accounts");
  EXPECT_EQ(phases.End().done, 1);
}

TEST(ImportPhases, NameTheMonthsThatAreRead) {
  ImportPhases phases(WholeYear());
  PassAccounts(phases);
  PassAccounts(phases);
  EXPECT_EQ(phases.Next(8, expenses).phase, "reading expenses, July 2001");
  EXPECT_EQ(phases.Next(58, expenses).phase, "reading expenses, January 2002");
  EXPECT_EQ(phases.Next(8, "Importing income balances...").phase, "reading sales, July 2001");
}

TEST(ImportPhases, DoNotNameWhatWasNotAskedFor) {
  ImportScope scope = WholeYear();
  scope.expenses = false;
  ImportPhases phases(scope);
  phases.Next(60, processing);
  EXPECT_EQ(phases.Next(80, processing).phase, "reading accounts");
  EXPECT_EQ(phases.Next(100, processing).phase, "adding income accounts");
  PassAccounts(phases);
  EXPECT_EQ(phases.Next(8, expenses).phase, "reading purchases, July 2001");
  scope.expenses = true;
  scope.income = false;
  ImportPhases expensesAlone(scope);
  PassAccounts(expensesAlone);
  PassAccounts(expensesAlone);
  EXPECT_EQ(expensesAlone.Next(8, "Importing income balances...").phase,
            "reading billed expenses, July 2001");
}

TEST(ImportPhases, NeverGoBack) {
  ImportPhases phases(WholeYear());
  PassAccounts(phases);
  const ImportPosition afterFirst = phases.Next(100, processing);
  const ImportPosition position = phases.Next(50, expenses);
  EXPECT_GT(position.done, afterFirst.done);
  for (const int percent : {20, 8, 50}) {
    EXPECT_EQ(phases.Next(static_cast<std::int16_t>(percent), expenses).done, position.done);
  }
  EXPECT_EQ(phases.Next(33, "Working...").phase, position.phase);
}

TEST(ImportPhases, GoOnAfterAPhaseThatEndedEarly) {
  ImportPhases phases(WholeYear());
  PassAccounts(phases);
  PassAccounts(phases);
  const double third = phases.Next(25, expenses).done;
  const double income = phases.Next(8, "Importing income balances...").done;
  EXPECT_GT(income, third);
  EXPECT_NEAR(income, 0.55, 0.05);
}

// Every event of a real import has its place: the positions rise with each, and the last one comes near the
// end.
struct Import {
  std::string plan;
  std::string processor;
  std::vector<std::string> options;
  int leastPositions;
};

class PhasesOfAnImport : public testing::TestWithParam<Import> {};

std::vector<int> PercentagesOf(const std::string& drawn) {
  std::vector<int> percentages;
  for (std::size_t end = drawn.find('%'); end != std::string::npos; end = drawn.find('%', end + 1)) {
    percentages.push_back(std::stoi(drawn.substr(end - 3, 3)));
  }
  return percentages;
}

TEST_P(PhasesOfAnImport, RiseFromZeroToAHundred) {
  const tests::Workplace place;
  place.NurseryYear(GetParam().processor);
  const Surroundings terminal{.clock = tests::JanuaryClock(),
                              .errorIsTerminal = true,
                              .errorWidth = [] { return 100; },
                              .stopwatch = [] { return std::chrono::milliseconds(0); }};
  std::vector<std::string> options = GetParam().options;
  options.emplace_back("--dry-run");
  const tests::ProgramRun run = tests::RunProgram(place.ImportArguments(GetParam().plan, options), terminal);
  ASSERT_EQ(run.code, 0) << run.err;
  const std::vector<int> percentages = PercentagesOf(run.err);
  ASSERT_GE(percentages.size(), 6U) << run.err;
  EXPECT_EQ(percentages.front(), 0);
  EXPECT_EQ(percentages.back(), 100);
  EXPECT_TRUE(std::ranges::is_sorted(percentages)) << run.err;
  EXPECT_GE(percentages.at(percentages.size() - 2), 50) << run.err;
  const auto positions = std::set<int>(percentages.begin(), percentages.end()).size();
  EXPECT_GE(static_cast<int>(positions), GetParam().leastPositions) << run.err;
}

INSTANTIATE_TEST_SUITE_P(
    OfEveryKind, PhasesOfAnImport,
    testing::Values(
        Import{"ald.kpf", "1.1", {"--expenses", "--income"}, 6},
        Import{"ald.kpf", "1.1", {"--expenses", "--income", "--balances", "all"}, 30},
        Import{"ald.kpf", "1.1", {"--income", "--balances", "actual"}, 30},
        Import{"bri.kpf", "1.1", {"--expenses", "--select-all-expenses", "--balances", "planned"}, 30},
        Import{"ald.kpf", "1.1", {"--expenses", "--past-performance", "--balances", "all"}, 60},
        Import{"cor.kpf", "1.1", {"--expenses", "--income", "--past-performance", "--balances", "all"}, 60},
        Import{"ald.kpf", "2.0", {"--expenses", "--income", "--balances", "all"}, 8},
        Import{"ald.kpf", "2.0", {"--expenses", "--income", "--past-performance", "--balances", "all"}, 30},
        Import{"cor.kpf", "2.0", {"--expenses", "--income", "--past-performance", "--balances", "all"}, 15}));

}  // namespace
}  // namespace krnqb::cli
