#include <gtest/gtest.h>

#include "fakes/outside_element.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using fakes::TestHost;
using tests::NumberThrownBy;

TEST(ErrorPair, KeepsTheHostsOwnValuesThroughASuccessfulImport) {
  TestHost host;
  host.component.ErrorNumber(123);
  host.component.ErrorDescription("kept");
  host.component.IncludeExpenseAccounts(true);
  host.component.BalancesImport(BalImport_All);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 123);
  EXPECT_EQ(host.component.ErrorDescription(), "kept");
}

TEST(ErrorPair, KeepsAFailureThroughALaterImportThatSucceeds) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->FailOccurrence("ProcessRequest 4", 1, Error(-2147220478, "unexpected"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
  EXPECT_EQ(host.component.ErrorNumber(), -2147220478);
  EXPECT_EQ(host.component.ErrorDescription(), "unexpected");
}

TEST(ErrorPair, IsOverwrittenByTheNextFailure) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.journal->FailOccurrence("ProcessRequest 4", 1, Error(-2147220478, "unexpected"));
  EXPECT_TRUE(host.component.Go());
  host.journal->FailOccurrence("BeginSession \"\" 2", 1, Error(-2147220448, "refused"));
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), -2147220448);
  EXPECT_EQ(host.component.ErrorDescription(), "Error (-2147220448): refused");
}

TEST(ErrorPair, HasAKindThatDistinguishesErrorsWithTheSameNumber) {
  TestHost unreadable;
  unreadable.quickBooks->answers["101"] = fakes::CompanyAnswer("Januar");
  unreadable.component.QBCompany();
  TestHost outdated;
  outdated.quickBooks->answers["100"] = fakes::HostAnswer({"1.0"});
  outdated.component.QBCompany();
  EXPECT_EQ(unreadable.component.ErrorNumber(), outdated.component.ErrorNumber());
  EXPECT_EQ(unreadable.component.LastErrorKind(), ErrorKind::FiscalMonthUnreadable);
  EXPECT_EQ(outdated.component.LastErrorKind(), ErrorKind::UpdateRequired);
}

TEST(ErrorPair, HasNoKindWhenTheHostSetsTheNumber) {
  TestHost host;
  EXPECT_EQ(host.component.LastErrorKind(), ErrorKind::Other);
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  host.component.QBCompany();
  EXPECT_EQ(host.component.LastErrorKind(), ErrorKind::ProcessorMissing);
  host.component.ErrorNumber(5);
  EXPECT_EQ(host.component.LastErrorKind(), ErrorKind::Other);
}

TEST(ErrorPair, IsUnchangedByOperationsThatEndEarly) {
  TestHost host;
  QBDataExchange& component = host.component;
  component.QBCompany();
  host.journal->Fail("Serialize", Error(-2147220991, "locked"));
  host.journal->Fail("OpenPlan C:\\Plan.kpf", Error(-2147220991, "locked"));
  host.journal->Fail("ProcessRequest 1", Error(-2147220478, "unexpected"));

  EXPECT_EQ(fakes::TextOf(component.KRNDeserialize(Variant(host.quickBooks->answers["4"]))), "");
  EXPECT_EQ(fakes::TextOf(component.KRNDeserialize(Variant("no XML"))), "");
  EXPECT_FALSE(component.QBIncomeAccounts());
  EXPECT_EQ(NumberThrownBy([&component] { component.KRNOpenPlan("C:\\Plan.kpf"); }), -2147220991);
  EXPECT_EQ(NumberThrownBy([&component] { component.SelectedExpenses(Variant("no element")); }), 13);
  component.KRNProduct(QBKRN_BRI);
  EXPECT_FALSE(component.SelectedExpenses());
  const auto months = std::make_shared<Collection>();
  months->Add(Variant("no subtotals"));
  EXPECT_EQ(component.MonthsOfActivity(months), 0);

  EXPECT_EQ(component.ErrorNumber(), 0);
  EXPECT_EQ(component.ErrorDescription(), "");
}

TEST(ErrorPair, HoldsAnOverflowOfThePeriodThatEndedTheImport) {
  for (const std::int16_t version : {std::int16_t{1}, std::int16_t{2}}) {
    TestHost host;
    host.quickBooks->majorVersion = version;
    host.component.IncludeExpenseAccounts(true);
    host.component.BalancesImport(BalImport_Actual);
    host.component.KRNStartingYear(-32768);
    EXPECT_TRUE(host.component.Go());
    EXPECT_EQ(host.component.ErrorNumber(), 6) << version;
    EXPECT_EQ(host.component.ErrorDescription(), "Overflow") << version;
    EXPECT_EQ(host.journal->Count("XMLprocessing"), 1) << version;
    EXPECT_EQ(host.journal->Count("AfterImport"), 0) << version;
    EXPECT_TRUE(host.journal->Text().ends_with("GetCurrentCompanyFileName\nprocessor released\n")) << version;
  }
}

TEST(ErrorPair, HoldsNoOverflowWhenNoPeriodIsRead) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.KRNStartingYear(-32768);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

}  // namespace
}  // namespace krnqb
