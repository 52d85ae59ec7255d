#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using expected::Sequence;
using fakes::HostAnswer;
using fakes::TestHost;
using tests::NumberThrownBy;

constexpr auto nursery = "C:\\Companies\\Nursery.qbw";

TEST(QBCompany, OpensTheSessionAndReadsPathAndVersions) {
  TestHost host;
  host.quickBooks->majorVersion = 2;
  host.quickBooks->minorVersion = 5;
  EXPECT_EQ(host.component.QBCompany(), nursery);
  EXPECT_EQ(host.component.QBMajorVersion(), 2);
  EXPECT_EQ(host.component.QBMinorVersion(), 5);
  EXPECT_EQ(host.component.QBStartingMonth(), 1);
  EXPECT_EQ(host.journal->Text(), expected::OpensSession() + expected::ReadsCompany());
}

TEST(QBCompany, IsReadEachTime) {
  TestHost host;
  host.component.QBCompany();
  host.journal->Clear();
  host.quickBooks->company = "D:\\Other.qbw";
  EXPECT_EQ(host.component.QBCompany(), "D:\\Other.qbw");
  EXPECT_EQ(host.journal->Text(), expected::FindsSession() + expected::ReadsCompany());
}

TEST(QBCompany, SetDuringASessionAppliesToTheNextOne) {
  TestHost host;
  host.component.QBCompany();
  host.component.QBCompany("D:\\Next.qbw");
  host.journal->Clear();
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), expected::FindsSession());
  host.journal->Clear();
  host.quickBooks->company = "";
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), Sequence({expected::FindsSession(), expected::ReplacesProcessor(),
                                            "BeginSession \"D:\\Next.qbw\" 2\n"}));
}

TEST(QBCompany, IsTheStoredPathWithoutASession) {
  TestHost host;
  host.component.QBCompany("D:\\Mine.qbw");
  host.journal->Fail("BeginSession \"D:\\Mine.qbw\" 2", Error(-2147220458, "x"));
  EXPECT_EQ(host.component.QBCompany(), "D:\\Mine.qbw");
  EXPECT_EQ(host.component.ErrorNumber(), -2147220458);
  EXPECT_EQ(host.component.QBMajorVersion(), 0);
}

TEST(QBCompany, IsTheStoredPathWhenTheCompanyCheckFailed) {
  TestHost host;
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  host.component.QBCompany("D:\\Mine.qbw");
  EXPECT_EQ(host.component.QBCompany(), "D:\\Mine.qbw");
  EXPECT_EQ(host.journal->Text(), expected::OpensSession("D:\\Mine.qbw"));
  EXPECT_EQ(host.component.QBCompany(), nursery) << "the session is open now";
}

TEST(QBCompany, IsEmptyWhenQuickBooksMustBeUpdated) {
  TestHost host;
  host.quickBooks->answers["100"] = HostAnswer({"1.0"});
  EXPECT_EQ(host.component.QBCompany(), "");
  EXPECT_EQ(host.component.ErrorNumber(), -2147221504);
  EXPECT_EQ(host.component.ErrorDescription(), "Your QuickBooks must be updated to R2.");
  EXPECT_EQ(host.component.QBMajorVersion(), 0);
  EXPECT_EQ(host.journal->Text(), expected::OpensSession() + expected::Asks("100"));
}

TEST(QBCompany, KeepsTheStoredPathWhenQuickBooksMustBeUpdated) {
  TestHost host;
  host.quickBooks->answers["100"] = HostAnswer({"1.0"});
  host.component.QBCompany("D:\\Mine.qbw");
  EXPECT_EQ(host.component.QBCompany(), "");
  host.journal->Clear();
  host.quickBooks->company = "";
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), Sequence({expected::FindsSession(), expected::ReplacesProcessor(),
                                            "BeginSession \"D:\\Mine.qbw\" 2\n"}));
}

TEST(QBCompany, RaisesTheProcessorsErrorAndKeepsThePair) {
  for (const char* line : {"ProcessRequest 100", "MajorVersion", "MinorVersion"}) {
    TestHost host;
    host.journal->Fail(line, Error(-2147220478, "unexpected"));
    EXPECT_EQ(NumberThrownBy([&host] { host.component.QBCompany(); }), -2147220478) << line;
    EXPECT_EQ(host.component.ErrorNumber(), 0) << line;
    EXPECT_EQ(host.component.ErrorDescription(), "") << line;
    host.journal->Heal();
    EXPECT_EQ(host.component.QBCompany(), nursery) << line;
  }
}

TEST(QBCompany, RaisesWhenTheOpenCompanyIsUnknown) {
  TestHost host;
  host.journal->FailOccurrence("GetCurrentCompanyFileName", 2, Error(-2147220478, "unexpected"));
  EXPECT_EQ(NumberThrownBy([&host] { host.component.QBCompany(); }), -2147220478);
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(QBCompany, RaisesWhenTheVersionResponseHasNoElement) {
  TestHost host;
  host.quickBooks->answers["100"] = "no XML";
  EXPECT_EQ(NumberThrownBy([&host] { host.component.QBCompany(); }), 91);
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(QBCompany, KeepsWhatWasReadBeforeAnError) {
  TestHost host;
  host.quickBooks->majorVersion = 2;
  host.journal->Fail("MinorVersion", Error(-2147220478, "unexpected"));
  EXPECT_EQ(NumberThrownBy([&host] { host.component.QBCompany(); }), -2147220478);
  EXPECT_EQ(host.component.QBMajorVersion(), 2);
  EXPECT_EQ(host.component.QBMinorVersion(), 0);
  host.journal->Clear();
  host.quickBooks->company = "";
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), Sequence({expected::FindsSession(), expected::ReplacesProcessor(),
                                            "BeginSession \"C:\\Companies\\Nursery.qbw\" 2\n"}));
}

TEST(QBCompany, IsEmptyWithoutAnErrorWhenNoCompanyFileIsOpen) {
  TestHost host;
  host.quickBooks->company = "";
  EXPECT_EQ(host.component.QBCompany(), "");
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  EXPECT_EQ(host.journal->Text(),
            Sequence({expected::OpensSession(), expected::FindsSession(), expected::ReplacesProcessor(),
                      expected::Lines({"BeginSession \"\" 2", "ProcessRequest 100",
                                       "GetCurrentCompanyFileName", "MajorVersion", "MinorVersion"})}));
}

TEST(QBCompany, IsEmptyAgainAfterAnImport) {
  TestHost host;
  host.component.IncludeExpenseAccounts(true);
  host.component.QBCompany(nursery);
  EXPECT_TRUE(host.component.Go());
  host.journal->Clear();
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), expected::Connects() + "BeginSession \"\" 2\n");
}

}  // namespace
}  // namespace krnqb
