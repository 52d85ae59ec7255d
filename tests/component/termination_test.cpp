#include <gtest/gtest.h>

#include <optional>

#include "expected_sequences.h"
#include "fakes/releasable_object.h"
#include "fakes/test_host.h"

namespace krnqb {
namespace {

using expected::Lines;
using fakes::TestHost;

TEST(Termination, ReleasesTheHostsSlotThenTheProcessorThenThePlan) {
  TestHost host;
  std::optional<QBDataExchange> component(std::in_place, host.World());
  component->mQBDataExchangeObject(
      Variant(std::make_shared<fakes::ReleasableObject>(host.journal, "slot released")));
  component->KRNPlanData(Variant(std::make_shared<fakes::FakePlan>(host.planContent, host.journal)));
  component->QBCompany();
  host.journal->Clear();
  component.reset();
  EXPECT_EQ(host.journal->Text(), Lines({"slot released", "processor released", "plan released"}));
}

TEST(Termination, SendsNothingToAnOpenSession) {
  TestHost host;
  std::optional<QBDataExchange> component(std::in_place, host.World());
  component->QBCompany();
  host.journal->Clear();
  component.reset();
  EXPECT_EQ(host.journal->Text(), "processor released\n");
}

TEST(Termination, KeepsAPlanThatTheHostStillHolds) {
  TestHost host;
  std::optional<QBDataExchange> component(std::in_place, host.World());
  component->KRNPlanData(Variant(host.plan));
  component.reset();
  EXPECT_EQ(host.journal->Text(), "");
}

TEST(ReplacedObjects, AreReleasedAtOnce) {
  TestHost host;
  QBDataExchange component(host.World());
  component.KRNPlanData(Variant(std::make_shared<fakes::FakePlan>(host.planContent, host.journal)));
  component.KRNPlanData(Variant(host.plan));
  EXPECT_EQ(host.journal->Text(), "plan released\n");
  component.mQBDataExchangeObject(
      Variant(std::make_shared<fakes::ReleasableObject>(host.journal, "slot released")));
  component.mQBDataExchangeObject(Variant(ObjectReference()));
  EXPECT_EQ(host.journal->Text(), Lines({"plan released", "slot released"}));
}

TEST(HostsSlot, SurvivesAnImport) {
  TestHost host;
  host.component.mQBDataExchangeObject(
      Variant(std::make_shared<fakes::ReleasableObject>(host.journal, "slot released")));
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_All);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Count("slot released"), 0);
}

}  // namespace
}  // namespace krnqb
