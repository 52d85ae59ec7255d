#include <fmt/format.h>
#include <gtest/gtest.h>

#include "faults/import_world.h"
#include "faults/strides.h"

// Imports in which one call of the outside world fails: of QuickBooks, the plan, the clock or the receiver of
// events.

namespace krnqb::faults {
namespace {

// Returns whether the error pair may hold this after a call that threw.
bool IsPairOf(Fault fault, const Ending& ending) {
  struct Pair {
    std::int32_t number;
    std::string description;
  };
  const Pair thrown = fault == Fault::Refuses         ? Pair{refusalNumber, refusalDescription}
                      : fault == Fault::ThrowsAnother ? Pair{51, "Internal error"}
                                                      : Pair{7, "Out of memory"};
  if (ending.number != thrown.number) return false;
  return ending.description == thrown.description ||
         ending.description == fmt::format("Error ({}): {}", thrown.number, thrown.description);
}

// The company check and the version check report a failed call by their own errors: a missing fiscal month, a
// missing answer or an outdated version.
bool IsPairOfACheck(const Ending& ending) {
  return ending.number == NumberOf(ErrorKind::FiscalMonthMissing) ||
         ending.number == NumberOf(ErrorKind::ObjectNotSet) ||
         ending.number == NumberOf(ErrorKind::UpdateRequired);
}

class FailedCall : public testing::TestWithParam<std::tuple<ImportKind, Fault>> {};

TEST_P(FailedCall, IsReportedAndTheNextImportSucceeds) {
  const auto [kind, fault] = GetParam();
  const bool throws = fault < Fault::ReturnsNothing;
  ImportWorld counting(kind);
  counting.Calls().FailAt(0, fault);
  counting.Go();
  const long calls = counting.Calls().Counted();
  long tried = 0;
  for (long number = 1; number <= calls; number = Next(number, 40, 29)) {
    ImportWorld world(kind);
    world.Calls().FailAt(number, fault);
    world.Go();
    if (!world.Calls().Struck()) continue;
    ++tried;
    const Ending ending = world.End();
    EXPECT_EQ(Unsound(ending, kind), "") << "call " << number;
    if (ending.number != 0) {
      EXPECT_TRUE((throws && IsPairOf(fault, ending)) || IsPairOfACheck(ending) ||
                  (!throws && ending.number == NumberOf(ErrorKind::SubscriptOutOfRange)))
          << "call " << number << ": " << ending.number << " " << ending.description;
    }
    EXPECT_EQ(UnsoundRepetition(world, kind), "") << "after call " << number;
  }
  EXPECT_GT(tried, 0);
  RecordProperty("faults", static_cast<int>(tried));
  if (Nightly()) std::printf("%ld faults in %ld calls\n", tried, calls);
}

INSTANTIATE_TEST_SUITE_P(Imports, FailedCall,
                         testing::Combine(testing::ValuesIn(allImportKinds), testing::ValuesIn(allFaults)));

}  // namespace
}  // namespace krnqb::faults
