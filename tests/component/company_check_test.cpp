#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"

namespace krnqb {
namespace {

using fakes::CompanyAnswer;
using fakes::CompanyAnswerWith;
using fakes::TestHost;

constexpr auto provideMonth =
    "To perform the import you need to provide the QuickBooks fiscal year start month.";
constexpr auto unitedStatesNeeded =
    "To perform the import from QuickBooks Pro you need the United States version of QuickBooks Pro and an "
    "English "
    "regional setting locale.";

struct MonthCase {
  const char* text;
  std::int16_t month;
};

TEST(CompanyCheck, ParsesEnglishMonthNames) {
  const MonthCase cases[] = {{"January", 1},   {"February", 2}, {"March", 3},     {"April", 4},
                             {"May", 5},       {"June", 6},     {"July", 7},      {"August", 8},
                             {"September", 9}, {"October", 10}, {"November", 11}, {"December", 12},
                             {"october", 10},  {"OCTOBER", 10}, {"oCtObEr", 10},  {"  March  ", 3}};
  for (const MonthCase& each : cases) {
    TestHost host;
    host.quickBooks->answers["101"] = CompanyAnswer(each.text);
    EXPECT_EQ(host.component.QBCompany(), "C:\\Companies\\Nursery.qbw") << each.text;
    EXPECT_EQ(host.component.QBStartingMonth(), each.month) << each.text;
    EXPECT_EQ(host.component.ErrorNumber(), 0) << each.text;
  }
}

TEST(CompanyCheck, RefusesEveryOtherMonthText) {
  for (const char* text :
       {"", " ", "Jan", "Sept", "januar", "Januar", "janvier", "13", "1", "March 2002", "Mar ch"}) {
    TestHost host;
    host.quickBooks->answers["101"] = CompanyAnswer(text);
    EXPECT_EQ(host.component.QBCompany(), "") << text;
    EXPECT_EQ(host.component.QBStartingMonth(), 0) << text;
    EXPECT_EQ(host.component.ErrorNumber(), -2147221504) << text;
    EXPECT_EQ(host.component.ErrorDescription(), unitedStatesNeeded) << text;
  }
}

TEST(CompanyCheck, RefusesACompanyWithoutAMonth) {
  TestHost host;
  host.quickBooks->answers["101"] =
      CompanyAnswerWith("<CompanyRet><CompanyName>N</CompanyName></CompanyRet>");
  EXPECT_EQ(host.component.QBCompany(), "");
  EXPECT_EQ(host.component.ErrorNumber(), -2147221504);
  EXPECT_EQ(host.component.ErrorDescription(), unitedStatesNeeded);
}

TEST(CompanyCheck, AsksForTheMonthWhenTheAnswerHasNoCompany) {
  for (const std::string& answer :
       {fakes::NoCompanyAnswer(), std::string(), std::string("no XML at all"), std::string("<QBXML>")}) {
    TestHost host;
    host.quickBooks->answers["101"] = answer;
    EXPECT_EQ(host.component.QBCompany(), "") << answer;
    EXPECT_EQ(host.component.QBStartingMonth(), 0) << answer;
    EXPECT_EQ(host.component.ErrorNumber(), -2147221404) << answer;
    EXPECT_EQ(host.component.ErrorDescription(), provideMonth) << answer;
  }
}

TEST(CompanyCheck, AsksForTheMonthWhenTheRequestIsRefused) {
  TestHost host;
  host.journal->Fail("ProcessRequest 101", Error(-2147220478, "unexpected"));
  EXPECT_EQ(host.component.QBCompany(), "");
  EXPECT_EQ(host.component.ErrorNumber(), -2147221404);
  EXPECT_EQ(host.component.ErrorDescription(), provideMonth);
}

TEST(CompanyCheck, LeavesTheSessionOpenAndIsNotRepeatedAfterAFailure) {
  TestHost host;
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  EXPECT_TRUE(host.component.QbSerialize(Variant("<X requestID=\"7\"/>")).IsEmpty());
  EXPECT_EQ(host.journal->Text(), expected::OpensSession());
  host.journal->Clear();
  EXPECT_FALSE(host.component.QbSerialize(Variant("<X requestID=\"7\"/>")).IsEmpty());
  EXPECT_EQ(host.journal->Text(), expected::Asks("7"));
  EXPECT_EQ(host.component.ErrorNumber(), -2147221404) << "nothing clears the pair";
}

TEST(CompanyCheck, IsSkippedWhenTheHostHasSetTheMonth) {
  TestHost host;
  host.component.QBStartingMonth(4);
  EXPECT_EQ(host.component.QBCompany(), "C:\\Companies\\Nursery.qbw");
  EXPECT_EQ(host.journal->Text(), expected::Connects() + "BeginSession \"\" 2\n" + expected::ReadsCompany());
  EXPECT_EQ(host.component.QBStartingMonth(), 4);
}

TEST(CompanyCheck, IsNotRepeatedInALaterSessionOnceTheMonthIsKnown) {
  TestHost host;
  host.component.QBCompany();
  host.component.Go();
  host.journal->Clear();
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), expected::Connects() + "BeginSession \"\" 2\n");
}

TEST(CompanyCheck, IsRepeatedInALaterSessionWhileTheMonthIsUnknown) {
  TestHost host;
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  host.component.StartingMonth();
  host.component.Go();  // with nothing to import it closes the session
  host.journal->Clear();
  host.component.StartingMonth();
  EXPECT_EQ(host.journal->Text(), expected::OpensSession());
}

TEST(CompanyCheck, SendsRequest101WithTheOldestEnvelope) {
  TestHost host;
  host.component.StartingMonth();
  ASSERT_EQ(host.quickBooks->requests.size(), 1U);
  EXPECT_EQ(host.quickBooks->requests.front(),
            "<?xml version=\"1.0\"?>\r\n"
            "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' >\r\n"
            "<QBXML>\r\n"
            "<QBXMLMsgsRq onError=\"continueOnError\">\r\n"
            "<CompanyQueryRq requestID=\"101\"/>\r\n"
            "</QBXMLMsgsRq>\r\n"
            "</QBXML>");
}

}  // namespace
}  // namespace krnqb
