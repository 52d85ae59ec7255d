#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "cli/explain/ledger_proof.h"
#include "cli/generated_company.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::GenerateSmallCompany;
using tests::LedgerListing;
using tests::PlanOfSeed;
using tests::ProgramRun;
using tests::ProvedLedger;
using tests::ProveLedger;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;

struct ImportCase {
  const char* sample;
  const char* plan;
  const char* path;
};

std::ostream& operator<<(std::ostream& output, const ImportCase& shown) {
  return output << shown.sample << ' ' << shown.plan << ' ' << shown.path;
}

Words ImportOf(const std::string& company, const std::string& plan, const char* path) {
  Words words{"import",         "--company", company,      "--plan", plan,
              "--expenses",     "--income",  "--balances", "all",    "--select-all-expenses",
              "--amounts-from", path,        "--quiet"};
  if (plan.find("bri") == std::string::npos) {
    std::erase(words, "--select-all-expenses");
    words.emplace_back("--past-performance");
  }
  return words;
}

class SampleLedger : public testing::TestWithParam<ImportCase> {};

TEST_P(SampleLedger, AddsUpToTheCellsOfThePlanAndIsThatOfAReplay) {
  const ImportCase& tried = GetParam();
  const Workplace place;
  const std::string company = place.SampleCompany(tried.sample, "2.0");
  const std::string plan = place / tried.plan;
  const std::string replayed = place / (std::string("replay-") + tried.plan);
  std::filesystem::copy_file(plan, replayed);
  const ProgramRun run = RunProgram(With(ImportOf(company, plan, tried.path),
                                         {"--ledger", place / "l.kql", "--record", place / "exchange"}));
  ASSERT_EQ(run.code, 0) << run.err;
  const bool transactions = std::string_view(tried.path) == "transactions";
  const ProvedLedger proved = ProveLedger(place / "l.kql", plan, std::string_view(tried.plan) != "bri.kpf");
  EXPECT_GT(proved.amountCells, 100);
  EXPECT_EQ(proved.lines > 10, transactions) << proved.lines;
  EXPECT_EQ(proved.bookings > 10, transactions) << proved.bookings;

  Words replay = ImportOf(company, replayed, tried.path);
  replay.erase(replay.begin() + 1, replay.begin() + 3);
  const ProgramRun again =
      RunProgram(With(replay, {"--ledger", place / "r.kql", "--replay", place / "exchange"}));
  ASSERT_EQ(again.code, 0) << again.err;
  EXPECT_EQ(LedgerListing(place / "r.kql"), LedgerListing(place / "l.kql"));
}

std::vector<ImportCase> SampleCases() {
  std::vector<ImportCase> cases;
  for (const char* sample : {"nursery", "print-shop", "bookkeeper"}) {
    for (const char* plan : {"ald.kpf", "bri.kpf", "cor.kpf"}) {
      for (const char* path : {"transactions", "reports"}) cases.push_back({sample, plan, path});
    }
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleLedger, testing::ValuesIn(SampleCases()));

// The everyday suite generates 16 companies in 8 tests, a night 304.
constexpr int parts = 8;

std::uint64_t CompaniesInPart() {
  return std::getenv("KRNQB_NIGHTLY") == nullptr ? 2 : 38;  // NOLINT(concurrency-mt-unsafe)
}

class GeneratedLedger : public testing::TestWithParam<int> {};

TEST_P(GeneratedLedger, AddsUpToTheCellsOfThePlan) {
  std::int64_t cells = 0;
  for (std::uint64_t company = 0; company < CompaniesInPart(); ++company) {
    const std::uint64_t seed = company * parts + static_cast<std::uint64_t>(GetParam()) + 1;
    const Workplace place;
    const std::string file = place / "generated.qbw";
    GenerateSmallCompany(file, seed, 180);
    const char* const plan = PlanOfSeed(seed);
    for (const char* path : {"transactions", "reports"}) {
      SCOPED_TRACE(fmt::format("seed {}, {}, {}", seed, plan, path));
      const std::string copy = place / (std::string(path) + plan);
      std::filesystem::copy_file(place / plan, copy);
      const ProgramRun run = RunProgram(With(ImportOf(file, copy, path), {"--ledger", place / "l.kql"}));
      ASSERT_EQ(run.code, 0) << run.err;
      const ProvedLedger proved = ProveLedger(place / "l.kql", copy, seed % 3 != 2);
      EXPECT_GT(proved.amountCells, 100);
      cells += proved.amountCells;
    }
  }
  std::cout << fmt::format("{} cells of {} companies\n", cells, CompaniesInPart());
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeneratedLedger, testing::Range(0, parts));

}  // namespace
}  // namespace krnqb::cli
