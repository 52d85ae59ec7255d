#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/releasable_object.h"
#include "fakes/test_host.h"

// Imports into a plan that fails in the middle, and imports without a plan.

namespace krnqb {
namespace {

using expected::Asks;
using expected::FindsSession;
using expected::Lines;
using expected::Progress;
using expected::Sequence;
using fakes::TestHost;

const Error planError(-2147220991, "the plan is locked");

/// A plan object in which no plan is open.
class PlanWithoutData : public PlanObject {
 public:
  bool OpenPlan(std::string_view /*planFile*/) override { return false; }
  std::shared_ptr<PlanData> Data() override { return nullptr; }
};

class GoWithAFailingPlan : public testing::Test {
 protected:
  GoWithAFailingPlan() { host.component.IncludeExpenseAccounts(true); }

  /// Returns the journal from the start until the expense tables are read.
  static std::string BeginsToReadExpenses() {
    return Sequence({expected::BeginsFirstPass(), Asks("4"), Progress(80)});
  }
  void ExpectTrappedError(std::int32_t number, const std::string& description) {
    EXPECT_EQ(host.component.ErrorNumber(), number);
    EXPECT_EQ(host.component.ErrorDescription(), description);
    EXPECT_EQ(host.journal->Count("AfterImport"), 0);
  }
  void ExpectThatTheNextImportSucceeds() {
    host.journal->Heal();
    host.journal->Clear();
    EXPECT_TRUE(host.component.Go());
    EXPECT_EQ(host.journal->Count("AfterImport"), 1);
  }

  TestHost host;
};

TEST_F(GoWithAFailingPlan, EndsWithThePlansErrorWhenLoadingFails) {
  host.journal->Fail("Deserialize 20..0600 21..0600", planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({BeginsToReadExpenses(), expected::ReadsExpenseTables(), Progress(100),
                      expected::LoadsExpenseTables(), "processor released\n"}));
  ExpectTrappedError(-2147220991, "the plan is locked");
  ExpectThatTheNextImportSucceeds();
}

TEST_F(GoWithAFailingPlan, EndsWithThePlansErrorWhenTheFirstSalesLoadFails) {
  host.component.IncludeExpenseAccounts(false);
  host.component.IncludeIncomeAccounts(true);
  host.component.BalancesImport(BalImport_All);
  host.journal->FailOccurrence("Deserialize 20..0400 21..0400", 1, planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), Asks("1"), Asks("2"), Asks("50"),
                                            Progress(80), Progress(100), expected::ReadsSalesTables(),
                                            expected::LoadsSalesTables(), "processor released\n"}));
  ExpectTrappedError(-2147220991, "the plan is locked");
}

TEST_F(GoWithAFailingPlan, RaisesNoEventWhenTheLoadBetweenThePassesFails) {
  host.component.BalancesImport(BalImport_Planned);
  host.journal->Fail("Deserialize 20..0600 21..0600", planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Count("XMLprocessing"), 0);
  ExpectTrappedError(-2147220991, "the plan is locked");
  ExpectThatTheNextImportSucceeds();
}

TEST_F(GoWithAFailingPlan, LoadsAnEmptyTextWhenThePlannedTableIsMissing) {
  host.planContent->tables.erase(fakes::TableId("20", "0600"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({BeginsToReadExpenses(), Lines({"Data", "tables 20..0600"}), Progress(100),
                      expected::LoadsTables("nothing"), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(GoWithAFailingPlan, LoadsOnlyThePlannedTableWhenTheActualOneIsMissing) {
  host.planContent->tables.erase(fakes::TableId("21", "0600"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({BeginsToReadExpenses(), expected::ReadsTable("20..0600"),
                                            Lines({"Data", "tables 21..0600"}), Progress(100),
                                            expected::LoadsTables("20..0600"), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(GoWithAFailingPlan, LoadsAnEmptyTextWhenSerializeFails) {
  host.journal->FailOccurrence("Serialize", 1, planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({BeginsToReadExpenses(), expected::ReadsTable("20..0600"), Progress(100),
                      expected::LoadsTables("nothing"), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  ExpectThatTheNextImportSucceeds();
}

TEST_F(GoWithAFailingPlan, LoadsOnlyThePlannedTableWhenSerializeOfTheActualOneFails) {
  host.journal->FailOccurrence("Serialize", 2, planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({BeginsToReadExpenses(), expected::ReadsExpenseTables(), Progress(100),
                      expected::LoadsTables("20..0600"), expected::EndsImport()}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(GoWithAFailingPlan, EndsWhenDataFailsForALoad) {
  host.journal->Fail("Data", planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({BeginsToReadExpenses(), "Data\n", Progress(100), "Data\n", "processor released\n"}));
  ExpectTrappedError(-2147220991, "the plan is locked");
  ExpectThatTheNextImportSucceeds();
}

TEST_F(GoWithAFailingPlan, EndsWithError9WhenThePastPerformanceTableIsMissing) {
  host.component.IncludeExpenseAccounts(false);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_All);
  host.planContent->tables.erase(fakes::TableId("20", "0800"));
  EXPECT_TRUE(host.component.Go());
  const std::string pass = Sequence({Asks("1"), Asks("2"), Asks("50"), Progress(80), Progress(100)});
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), pass, "XMLprocessing\n",
                                            expected::BeginsPassInOpenSession(), pass,
                                            Lines({"Data", "tables 20..0800"}), "processor released\n"}));
  ExpectTrappedError(9, "Subscript out of range");
}

TEST_F(GoWithAFailingPlan, EndsWithThePlansErrorWhenThePastPerformanceTableCannotBeRead) {
  host.component.IncludeExpenseAccounts(false);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_All);
  host.journal->Fail("Serialize", planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_TRUE(host.journal->Text().ends_with(expected::ReadsTable("20..0800") + "processor released\n"));
  ExpectTrappedError(-2147220991, "the plan is locked");
  ExpectThatTheNextImportSucceeds();
}

TEST_F(GoWithAFailingPlan, EndsWithThePlansErrorWhenThePastPerformanceTableCannotBeLoaded) {
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_All);
  host.journal->Fail("Deserialize 20..0800", planError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_TRUE(
      host.journal->Text().ends_with(Sequence({expected::WritesFirstPastPeriod(), "processor released\n"})));
  ExpectTrappedError(-2147220991, "the plan is locked");
}

TEST_F(GoWithAFailingPlan, EndsWithError91WithoutAPlan) {
  host.component.KRNPlanData(Variant(std::shared_ptr<PlanObject>()));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({BeginsToReadExpenses(), Progress(100), "processor released\n"}));
  ExpectTrappedError(91, "Object variable or With block variable not set");
  host.component.KRNPlanData(Variant(host.plan));
  ExpectThatTheNextImportSucceeds();
}

TEST_F(GoWithAFailingPlan, EndsWithError91WhenThePlanWasNeverSet) {
  QBDataExchange component(host.World());
  component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(component.Go());
  EXPECT_EQ(component.ErrorNumber(), 91);
}

TEST_F(GoWithAFailingPlan, EndsWithError91WhenThePlanHasNoData) {
  host.component.KRNPlanData(Variant(std::make_shared<PlanWithoutData>()));
  EXPECT_TRUE(host.component.Go());
  ExpectTrappedError(91, "Object variable or With block variable not set");
}

TEST_F(GoWithAFailingPlan, EndsWithError438ForAnObjectThatIsNotAPlan) {
  host.component.KRNPlanData(
      Variant(std::make_shared<fakes::ReleasableObject>(host.journal, "stranger released")));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 438);
  EXPECT_EQ(host.journal->Count("AfterImport"), 0);
}

TEST_F(GoWithAFailingPlan, NeedsNoPlanForPastPerformanceWithoutBalances) {
  host.component.KRNPlanData(Variant(std::shared_ptr<PlanObject>()));
  host.component.IncludeExpenseAccounts(false);
  host.component.IncludePastPerformance(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

}  // namespace
}  // namespace krnqb
