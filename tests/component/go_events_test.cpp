#include <gtest/gtest.h>

#include <stdexcept>

#include "expected_sequences.h"
#include "fakes/test_host.h"

namespace krnqb {
namespace {

using expected::Asks;
using expected::FindsSession;
using expected::Lines;
using expected::Progress;
using expected::Sequence;
using fakes::TestHost;

const Error sinkError(-2147220000, "the host has had enough");

std::string ProgressLine(int percent) {
  return "ProgressBarChange " + std::to_string(percent) + " Processing...";
}

TEST(Events, XMLprocessingPassesNothingAndIgnoresWhatTheHandlerLeaves) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  EXPECT_TRUE(host.component.Go());
  EXPECT_TRUE(host.sink->receivedNothing);
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(Events, ReachEverySinkInOrder) {
  TestHost host;
  OutsideWorld world = host.World();
  world.sinks = {std::make_shared<fakes::RecordingSink>(host.journal, "first"),
                 std::make_shared<fakes::RecordingSink>(host.journal, "second")};
  QBDataExchange component(world);
  component.KRNPlanData(Variant(host.plan));
  component.IncludePastPerformance(true);
  EXPECT_TRUE(component.Go());
  const std::string text = host.journal->Text();
  EXPECT_TRUE(text.starts_with(
      Lines({"first: ProgressBarChange 20 Processing...", "second: ProgressBarChange 20 Processing..."})));
  EXPECT_TRUE(text.ends_with(Lines({"first: AfterImport", "second: AfterImport", "processor released"})));
}

TEST(Events, AreNotNeededByAnImport) {
  TestHost host;
  OutsideWorld world = host.World();
  world.sinks.clear();
  world.observer = nullptr;
  QBDataExchange component(world);
  component.KRNPlanData(Variant(host.plan));
  component.IncludeExpenseAccounts(true);
  component.BalancesImport(BalImport_All);
  EXPECT_TRUE(component.Go());
  EXPECT_EQ(component.ErrorNumber(), 0);
  EXPECT_EQ(host.planContent->loaded.size(), 2U);
}

TEST(OptionsChangedBetweenThePasses, ApplyToTheSecondPass) {
  TestHost host;
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->On("XMLprocessing", [&host] {
    host.component.IncludeExpenseAccounts(false);
    host.component.IncludeIncomeAccounts(true);
  });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(),
                                            Asks("4"),
                                            Asks("50"),
                                            Progress(80),
                                            expected::ReadsExpenseTables(),
                                            Progress(100),
                                            expected::LoadsExpenseTables(),
                                            "XMLprocessing\n",
                                            expected::BeginsPassInOpenSession(),
                                            Asks("1"),
                                            Asks("2"),
                                            Asks("50"),
                                            Progress(80),
                                            Progress(100),
                                            expected::ReadsSalesTables(),
                                            expected::LoadsSalesTables(),
                                            expected::ReadsSalesTables(),
                                            expected::ReadsTransactions(),
                                            expected::LoadsSalesTables(),
                                            expected::EndsImport()}));
}

TEST(OptionsChangedBetweenThePasses, CanLeaveNothingToImport) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->On("XMLprocessing", [&host] { host.component.IncludeExpenseAccounts(false); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("4"), Asks("50"), Progress(80),
                      expected::ReadsExpenseTables(), Progress(100), expected::LoadsExpenseTables(),
                      "XMLprocessing\n", "processor released\n"}));
}

TEST(OptionsChangedBetweenThePasses, CanTurnTheBalancesOff) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->On("XMLprocessing", [&host] { host.component.BalancesImport(BalImport_None); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("4"), Asks("50"), Progress(80),
                      expected::ReadsExpenseTables(), Progress(100), expected::LoadsExpenseTables(),
                      "XMLprocessing\n", expected::BeginsPassInOpenSession(), Asks("4"), Progress(80),
                      expected::ReadsExpenseTables(), Progress(100), expected::LoadsExpenseTables(),
                      expected::EndsImport()}));
}

TEST(OptionsChangedBetweenThePasses, CanBeTheProduct) {
  TestHost host;
  host.component.IncludePastPerformance(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->On("XMLprocessing", [&host] { host.component.KRNProduct(QBKRN_BRI); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Count("tables 20..0800"), 0);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST(OptionsChangedDuringAPass, ApplyFromTheNextStepOn) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->On(ProgressLine(80), [&host] {
    host.component.IncludeExpenseAccounts(false);
    host.component.IncludeIncomeAccounts(true);
  });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({expected::BeginsFirstPass(), Asks("4"), Progress(80),
                                            Progress(100), expected::LoadsTables("nothing"),
                                            expected::LoadsTables("nothing"), expected::EndsImport()}))
      << "the income accounts were never requested";
}

TEST(PlanChangedBetweenThePasses, IsUsedInTheSecondPass) {
  TestHost host;
  const auto otherContent = std::make_shared<fakes::PlanContent>(*host.planContent);
  const auto otherPlan = std::make_shared<fakes::FakePlan>(otherContent, host.journal);
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->On("XMLprocessing", [&host, &otherPlan] { host.component.KRNPlanData(Variant(otherPlan)); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.planContent->loaded.size(), 1U);
  EXPECT_EQ(otherContent->loaded.size(), 1U);
}

TEST(SinkThatFails, EndsTheImportAtTheEventWithItsError) {
  for (const int percent : {20, 40, 60, 80, 100}) {
    TestHost host;
    host.component.IncludeExpenseAccounts(true);
    host.component.QBCompany();  // so that every event has a session to close
    host.journal->FailOccurrence(ProgressLine(percent), 1, sinkError);
    EXPECT_TRUE(host.component.Go());
    EXPECT_EQ(host.component.ErrorNumber(), -2147220000) << percent;
    EXPECT_EQ(host.component.ErrorDescription(), "the host has had enough") << percent;
    EXPECT_TRUE(host.journal->Text().ends_with(ProgressLine(percent) + "\nprocessor released\n")) << percent;
    EXPECT_EQ(host.journal->Count("AfterImport"), 0) << percent;
    EXPECT_TRUE(host.component.Go());
    EXPECT_EQ(host.journal->Count("AfterImport"), 1) << percent;
  }
}

TEST(SinkThatFails, InXMLprocessingKeepsTheTablesOfTheFirstPass) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_Actual);
  host.journal->Fail("XMLprocessing", sinkError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("4"), Asks("50"), Progress(80),
                      expected::ReadsExpenseTables(), Progress(100), expected::LoadsExpenseTables(),
                      "XMLprocessing\n", "processor released\n"}));
  EXPECT_EQ(host.component.ErrorNumber(), -2147220000);
}

TEST(SinkThatFails, InAfterImportIsTrappedAfterTheImport) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->Fail("AfterImport", sinkError);
  EXPECT_TRUE(host.component.Go());
  EXPECT_TRUE(host.journal->Text().ends_with(expected::EndsImport()));
  EXPECT_EQ(host.planContent->loaded.size(), 1U);
  EXPECT_EQ(host.component.ErrorNumber(), -2147220000);
}

TEST(SinkThatFails, WithAnotherExceptionIsAnInternalError) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->On(ProgressLine(60), [] { throw std::runtime_error("x"); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 51);
  EXPECT_EQ(host.component.ErrorDescription(), "Internal error");
}

TEST(HandlerThatCallsBack, ReadsTheCompanyInTheSameSession) {
  TestHost host;
  std::string company;
  host.component.IncludePastPerformance(true);
  host.journal->On(ProgressLine(100), [&host, &company] { company = host.component.QBCompany(); });
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(company, "C:\\Companies\\Nursery.qbw");
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::BeginsFirstPass(), Asks("1"), Progress(80), Progress(100), FindsSession(),
                      expected::ReadsCompany(), expected::EndsImport()}));
}

TEST(HandlerThatCallsBack, MayImportWhileAnImportRuns) {
  for (const int percent : {20, 60, 80, 100}) {
    SCOPED_TRACE(percent);
    TestHost host;
    host.component.IncludeExpenseAccounts(true);
    host.component.IncludeIncomeAccounts(true);
    bool inner = false;
    host.journal->OnOccurrence(ProgressLine(percent), 1, [&host, &inner] { inner = host.component.Go(); });
    EXPECT_TRUE(host.component.Go());
    EXPECT_TRUE(inner);
    EXPECT_EQ(host.journal->Count("AfterImport"), 2);
    EXPECT_EQ(host.component.ErrorNumber(), 0) << host.component.ErrorDescription();
  }
}

}  // namespace
}  // namespace krnqb
