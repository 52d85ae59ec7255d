#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"

namespace krnqb {
namespace {

using fakes::TestHost;

TEST(QBIncomeAccounts, IsTheDocumentElementOfTheResponse) {
  TestHost host;
  const XmlElement list = host.component.QBIncomeAccounts();
  ASSERT_TRUE(list);
  EXPECT_EQ(list.Name(), "QBXML");
  EXPECT_EQ(list.SelectAll("//AccountRet").size(), 2U);
  EXPECT_EQ(list.Select("//AccountRet/Name").Text(), "Plants");
  EXPECT_EQ(host.journal->Text(), expected::OpensSession() + "ProcessRequest 1\n");
}

TEST(QBExpenseAccounts, IsTheDocumentElementOfTheResponse) {
  TestHost host;
  const XmlElement list = host.component.QBExpenseAccounts();
  ASSERT_TRUE(list);
  EXPECT_EQ(list.Select("//AccountRet/Name").Text(), "Rent");
  EXPECT_EQ(host.journal->Text(), expected::OpensSession() + "ProcessRequest 4\n");
}

TEST(QuickBooksLists, AreRequestedEachTime) {
  TestHost host;
  const XmlElement first = host.component.QBIncomeAccounts();
  host.quickBooks->answers["1"] = fakes::AccountAnswer("1", {fakes::Account("9", "Bulbs")});
  host.journal->Clear();
  const XmlElement second = host.component.QBIncomeAccounts();
  EXPECT_EQ(host.journal->Text(), expected::Asks("1"));
  EXPECT_EQ(second.Select("//AccountRet/Name").Text(), "Bulbs");
  EXPECT_EQ(first.Select("//AccountRet/Name").Text(), "Plants")
      << "an element returned earlier does not change";
}

TEST(QuickBooksLists, AreNothingWithoutASession) {
  TestHost host;
  host.journal->Fail("BeginSession \"\" 2", Error(-2147220458, "x"));
  EXPECT_FALSE(host.component.QBIncomeAccounts());
  EXPECT_FALSE(host.component.QBExpenseAccounts());
  EXPECT_EQ(host.component.ErrorNumber(), -2147220458);
}

TEST(QuickBooksLists, AreNothingWhenTheCompanyCheckFails) {
  TestHost host;
  host.quickBooks->answers["101"] = fakes::NoCompanyAnswer();
  EXPECT_FALSE(host.component.QBIncomeAccounts());
  EXPECT_EQ(host.journal->Text(), expected::OpensSession());
}

TEST(QuickBooksLists, AreNothingForAResponseThatIsEmptyOrDoesNotParse) {
  for (const char* answer : {"", "no XML", "<QBXML>", "<QBXML>]]></QBXML>"}) {
    TestHost host;
    host.quickBooks->answers["1"] = answer;
    EXPECT_FALSE(host.component.QBIncomeAccounts()) << answer;
    EXPECT_EQ(host.component.ErrorNumber(), 0) << answer;
  }
}

TEST(QuickBooksLists, AreNothingWhenTheRequestIsRefusedAndKeepThePair) {
  TestHost host;
  host.journal->Fail("ProcessRequest 1", Error(-2147220478, "unexpected"));
  host.journal->Fail("ProcessRequest 4", Error(-2147220478, "unexpected"));
  EXPECT_FALSE(host.component.QBIncomeAccounts());
  EXPECT_FALSE(host.component.QBExpenseAccounts());
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

TEST(QuickBooksLists, AreRequestedInTheOldestEnvelopeWithCrLf) {
  TestHost host;
  host.component.QBExpenseAccounts();
  EXPECT_EQ(host.quickBooks->requests.back(),
            "<?xml version=\"1.0\"?>\r\n"
            "<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' >\r\n"
            "<QBXML>\r\n"
            "<QBXMLMsgsRq onError=\"continueOnError\">\r\n"
            "<AccountQueryRq requestID=\"4\">\r\n"
            "<AccountType>Expense</AccountType>\r\n"
            "</AccountQueryRq>\r\n"
            "</QBXMLMsgsRq>\r\n"
            "</QBXML>");
}

}  // namespace
}  // namespace krnqb
