#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cstdio>

#include "faults/failing_memory.h"
#include "faults/import_world.h"
#include "faults/strides.h"

// Imports that run out of memory.

namespace krnqb::faults {
namespace {

struct ShortageCase {
  ImportKind kind;
  Shortage shortage;
};

class FailedAllocation : public testing::TestWithParam<ShortageCase> {};

// Returns how an import ended that is destroyed now, and what it left in use.
std::string Disturb(const ShortageCase& parameter, long number, bool& struck) {
  std::string problem;
  {
    ImportWorld world(parameter.kind);
    FailingMemory memory(Allocator::New, number, parameter.shortage);
    bool thrown = false;
    try {
      world.Go();
    } catch (...) {
      thrown = true;
    }
    memory.Stop();
    struck = FailingMemory::Struck();
    if (!struck) return {};
    if (thrown) return "an exception left the import";
    const Ending ending = world.End();
    problem = Unsound(ending, parameter.kind);
    const bool memoryOrCheck = ending.number == 0 || ending.number == error_number::outOfMemory ||
                               ending.number == NumberOf(ErrorKind::FiscalMonthMissing) ||
                               ending.number == NumberOf(ErrorKind::ObjectNotSet);
    if (problem.empty() && !memoryOrCheck)
      problem = fmt::format("the error is {} {}", ending.number, ending.description);
    if (problem.empty()) problem = UnsoundRepetition(world, parameter.kind);
  }
  return problem;
}

TEST_P(FailedAllocation, IsReportedLeavesNothingInUseAndTheNextImportSucceeds) {
  const ShortageCase& parameter = GetParam();
  Undisturbed(parameter.kind);
  bool struck = true;
  long tried = 0;
  for (long number = 1;; number = Next(number, 60, 499)) {
    const long before = BlocksInUse();
    const std::string problem = Disturb(parameter, number, struck);
    const long after = BlocksInUse();
    if (!struck) break;
    ++tried;
    EXPECT_EQ(problem, "") << "allocation " << number;
    // The text of the problem itself has at most one block.
    EXPECT_LE(after - before, problem.empty() ? 0 : 1) << "allocation " << number;
    if (testing::Test::HasFailure() && !Nightly()) break;
  }
  EXPECT_GE(tried, 60);
  if (Nightly()) std::printf("%ld faults\n", tried);
}

std::vector<ShortageCase> Cases() {
  std::vector<ShortageCase> cases;
  for (const ImportKind kind : allImportKinds) {
    for (const Shortage shortage : {Shortage::Passing, Shortage::Lasting}) cases.push_back({kind, shortage});
  }
  return cases;
}

std::string NameOf(const testing::TestParamInfo<ShortageCase>& test) {
  constexpr const char* kinds[] = {"Accounts", "Transactions", "Reports", "Selection"};
  const bool lasting = test.param.shortage == Shortage::Lasting;
  return fmt::format("{}{}", kinds[static_cast<std::size_t>(test.param.kind)],
                     lasting ? "Lasting" : "Passing");
}

INSTANTIATE_TEST_SUITE_P(Imports, FailedAllocation, testing::ValuesIn(Cases()), NameOf);

}  // namespace
}  // namespace krnqb::faults
