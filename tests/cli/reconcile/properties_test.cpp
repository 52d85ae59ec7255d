#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>

#include "build_paths.h"
#include "cli/generated_company.h"
#include "cli/reconcile/reconciliation_proof.h"

// Every amount of a reconciliation adds up, is that of plan and books, and every difference has a cause.

namespace krnqb::cli {
namespace {

using tests::GenerateSmallCompany;
using tests::PlanOfSeed;
using tests::ProgramRun;
using tests::ReconciledPlan;
using tests::ReconcilePlan;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;

struct SampleCase {
  const char* sample;
  const char* plan;
  const char* path;
};

std::ostream& operator<<(std::ostream& output, const SampleCase& shown) {
  return output << shown.sample << ' ' << shown.plan << ' ' << shown.path;
}

Words ImportOf(const Words& source, const std::string& plan) {
  Words words = With({"import"}, source);
  words = With(words, {"--plan", plan, "--expenses", "--income", "--balances", "all", "--quiet"});
  if (plan.ends_with("bri.kpf")) words.emplace_back("--select-all-expenses");
  return words;
}

std::string CompanyOf(const Workplace& place, const std::string& sample, const std::string& version) {
  if (sample != "nursery with books") return place.SampleCompany(sample, version);
  std::string company = place.SampleCompany("nursery", version);
  Words load{"company", "load", company};
  for (const auto& document :
       std::filesystem::directory_iterator(krnqb::tests::SamplesFolder() + "/nursery-books")) {
    load.push_back(document.path().string());
  }
  EXPECT_EQ(RunProgram(load).code, 0);
  return company;
}

void Prove(const std::string& company, const std::string& plan, int leastAmounts) {
  const ReconciledPlan reconciled = ReconcilePlan({"--company", company, "--plan", plan});
  ProveSums(reconciled);
  ProveExplained(reconciled);
  EXPECT_GE(ProveBooks(reconciled, company), leastAmounts);
  EXPECT_GE(ProvePlan(reconciled, plan), leastAmounts);
}

class SampleReconciliation : public testing::TestWithParam<SampleCase> {};

TEST_P(SampleReconciliation, AddsUpAndExplainsEveryCent) {
  const SampleCase& tried = GetParam();
  const Workplace place;
  const bool reports = std::string_view(tried.path) == "reports";
  const std::string company = CompanyOf(place, tried.sample, reports ? "2.0" : "1.1");
  const std::string plan = place / tried.plan;
  const ProgramRun import =
      RunProgram(With(ImportOf({"--company", company}, plan), {"--record", place / "exchange"}));
  ASSERT_EQ(import.code, 0) << import.err;
  Prove(company, plan, 40);

  const ReconciledPlan replayed = ReconcilePlan({"--replay", place / "exchange", "--plan", plan});
  if (reports) {
    ProveSums(replayed);
    ProveExplained(replayed);
  } else {
    EXPECT_EQ(replayed.years.at("books"), nullptr);
  }
  EXPECT_GE(ProvePlan(replayed, plan), 40);
}

std::vector<SampleCase> SampleCases() {
  std::vector<SampleCase> cases;
  for (const char* sample : {"nursery", "nursery with books", "print-shop", "bookkeeper"}) {
    for (const char* plan : {"ald.kpf", "bri.kpf", "cor.kpf"}) {
      for (const char* path : {"transactions", "reports"}) cases.push_back({sample, plan, path});
    }
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Samples, SampleReconciliation, testing::ValuesIn(SampleCases()));

// The everyday suite generates 12 companies in 6 tests, a night 300.
constexpr int parts = 6;

std::uint64_t CompaniesInPart() {
  return std::getenv("KRNQB_NIGHTLY") == nullptr ? 2 : 50;  // NOLINT(concurrency-mt-unsafe)
}

class GeneratedReconciliation : public testing::TestWithParam<int> {};

TEST_P(GeneratedReconciliation, AddsUpAndExplainsEveryCent) {
  for (std::uint64_t company = 0; company < CompaniesInPart(); ++company) {
    const std::uint64_t seed = company * parts + static_cast<std::uint64_t>(GetParam()) + 1;
    const Workplace place;
    const std::string file = place / "generated.qbw";
    GenerateSmallCompany(file, seed, 300);
    const char* const plan = PlanOfSeed(seed);
    const char* const path = seed % 2 == 0 ? "transactions" : "reports";
    SCOPED_TRACE(fmt::format("seed {}, {}, {}", seed, plan, path));
    const ProgramRun import =
        RunProgram(With(ImportOf({"--company", file}, place / plan), {"--amounts-from", path}));
    ASSERT_EQ(import.code, 0) << import.err;
    Prove(file, place / plan, 20);
  }
  std::cout << fmt::format("{} companies reconciled\n", CompaniesInPart());
}

INSTANTIATE_TEST_SUITE_P(Seeds, GeneratedReconciliation, testing::Range(0, parts));

}  // namespace
}  // namespace krnqb::cli
