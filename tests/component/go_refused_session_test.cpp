#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"

// Imports whose session is refused or whose company check fails, with and without a path set by the host.

namespace krnqb {
namespace {

using expected::Asks;
using expected::FindsSession;
using expected::Progress;
using expected::Sequence;
using fakes::TestHost;

constexpr auto mine = "D:\\Mine.qbw";
constexpr auto beginMine = "BeginSession \"D:\\Mine.qbw\" 2";
constexpr auto beginAny = "BeginSession \"\" 2";

class GoWithoutASession : public testing::Test {
 protected:
  GoWithoutASession() { host.component.IncludeExpenseAccounts(true); }

  /// Returns the journal of an import of the expense accounts from the account lists on.
  static std::string ImportsExpenses() {
    return Sequence({Asks("4"), Progress(80), expected::ReadsExpenseTables(), Progress(100),
                     expected::LoadsExpenseTables(), expected::EndsImport()});
  }
  static std::string NewSession(const std::string& beginLine) {
    return expected::ReplacesProcessor() + beginLine + "\n";
  }

  TestHost host;
};

TEST_F(GoWithoutASession, EndsWithError91WhenAPathIsSetAndTheSessionIsRefused) {
  host.component.QBCompany(mine);
  host.journal->Fail(beginMine, Error(-2147220458, "x"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), expected::Connects(), expected::Lines({beginMine}), Progress(40),
                      FindsSession(), NewSession(beginMine), "processor released\n"}));
  EXPECT_EQ(host.component.ErrorNumber(), 91);
  EXPECT_EQ(host.component.ErrorDescription(), "Object variable or With block variable not set");
}

TEST_F(GoWithoutASession, ClearsThePathAfterError91) {
  host.component.QBCompany(mine);
  host.journal->Fail(beginMine, Error(-2147220458, "x"));
  EXPECT_TRUE(host.component.Go());
  host.journal->Heal();
  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), expected::BeginsFirstPass() + ImportsExpenses());
}

TEST_F(GoWithoutASession, ReturnsFalseWithTheSessionsErrorWhenNoPathIsSet) {
  host.journal->Fail(beginAny, Error(-2147220458, "x"));
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), expected::Connects(), expected::Lines({beginAny})}));
  EXPECT_EQ(host.component.ErrorNumber(), -2147220458);
  EXPECT_EQ(host.component.ErrorDescription(),
            "Your QuickBooks company file must be open to perform this import.");

  host.journal->Heal();
  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), FindsSession(), NewSession(beginAny), "ProcessRequest 101\n",
                      expected::ReadsCompany(), Progress(40), Asks("100"), Progress(60), ImportsExpenses()}));
  EXPECT_EQ(host.component.ErrorNumber(), -2147220458) << "nothing clears the pair";
}

TEST_F(GoWithoutASession, ImportsToTheEndWhenAPathIsSetAndTheCompanyCheckFails) {
  host.component.QBCompany(mine);
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({Progress(20), expected::OpensSession(mine), Progress(40),
                                            Asks("100"), Progress(60), ImportsExpenses()}));
  EXPECT_EQ(host.component.ErrorNumber(), -2147221404);
  EXPECT_EQ(host.component.ErrorDescription(),
            "To perform the import you need to provide the QuickBooks fiscal year start month.");
  EXPECT_EQ(host.component.QBMajorVersion(), 0) << "the version is not read without the check";
}

TEST_F(GoWithoutASession, ReadsTheVersionInTheSecondPassWhenAPathIsSetAndTheCompanyCheckFails) {
  host.component.KRNStartingMonth(1);
  host.component.KRNStartingYear(2003);
  host.component.QBCompany(mine);
  host.component.BalancesImport(BalImport_Actual);
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  EXPECT_TRUE(host.component.Go());
  const std::string pass =
      Sequence({Asks("4"), Asks("50"), Progress(80), expected::ReadsExpenseTables(), Progress(100)});
  EXPECT_EQ(
      host.journal->Text(),
      Sequence({Progress(20), expected::OpensSession(mine), Progress(40), Asks("100"), Progress(60), pass,
                expected::LoadsExpenseTables(), "XMLprocessing\n", expected::BeginsPassInOpenSession(), pass,
                expected::ReadsTransactions(), expected::LoadsExpenseTables(), expected::EndsImport()}));
  EXPECT_EQ(host.component.QBMajorVersion(), 1);
  EXPECT_EQ(host.component.ErrorNumber(), -2147221404);
}

TEST_F(GoWithoutASession, ReturnsFalseOnceWhenNoPathIsSetAndTheCompanyCheckFails) {
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Progress(20) + expected::OpensSession());
  EXPECT_EQ(host.component.ErrorNumber(), -2147221404);

  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), expected::BeginsPassInOpenSession() + ImportsExpenses());
  EXPECT_EQ(host.component.ErrorNumber(), -2147221404) << "nothing clears the pair";
}

TEST_F(GoWithoutASession, ReturnsFalseWhenNoProcessorCanBeCreated) {
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Progress(20) + "create processor\n");
  EXPECT_EQ(host.component.ErrorNumber(), 429);
  EXPECT_TRUE(host.component.ErrorDescription().starts_with("You must have a U.S. version of one of"));

  host.journal->Heal();
  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), expected::BeginsFirstPass() + ImportsExpenses());
}

TEST_F(GoWithoutASession, EndsWithError91WhenAPathIsSetAndNoProcessorCanBeCreated) {
  host.component.QBCompany(mine);
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), "create processor\n", Progress(40), "create processor\n"}));
  EXPECT_EQ(host.component.ErrorNumber(), 91);
}

TEST_F(GoWithoutASession, ReturnsFalseWithoutAnErrorWhenNoCompanyFileIsOpen) {
  host.quickBooks->company = "";
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), expected::OpensSession(), FindsSession(), NewSession(beginAny),
                      expected::Lines({"ProcessRequest 100", "GetCurrentCompanyFileName", "MajorVersion",
                                       "MinorVersion"})}));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST_F(GoWithoutASession, ReturnsFalseAfterTheFirstProgressWhenQuickBooksMustBeUpdated) {
  host.quickBooks->answers["100"] = fakes::HostAnswer({"1.0"});
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), Sequence({Progress(20), expected::OpensSession(), Asks("100")}));
  EXPECT_EQ(host.component.ErrorNumber(), -2147221504);
  EXPECT_EQ(host.component.ErrorDescription(), "Your QuickBooks must be updated to R2.");

  host.quickBooks->answers["100"] = fakes::HostAnswer({"1.0", "1.1"});
  host.journal->Clear();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Text(), expected::BeginsPassInOpenSession() + ImportsExpenses())
      << "the session was left open";
}

TEST_F(GoWithoutASession, ReturnsFalseAfterTheSecondProgressWhenTheVersionCheckFails) {
  host.component.QBCompany(mine);
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  host.quickBooks->answers["100"] = fakes::HostAnswer({"1.0"});
  EXPECT_FALSE(host.component.Go());
  EXPECT_EQ(host.journal->Text(),
            Sequence({Progress(20), expected::OpensSession(mine), Progress(40), Asks("100")}));
  EXPECT_EQ(host.component.ErrorNumber(), -2147221504);
  EXPECT_EQ(host.component.ErrorDescription(), "Your QuickBooks must be updated to R2.");
}

}  // namespace
}  // namespace krnqb
