#include <gtest/gtest.h>

#include "expected_sequences.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using fakes::TestHost;
using tests::NumberThrownBy;

TEST(KRNStartingMonth, DefaultsToTheImportsMonthAndKeepsIt) {
  TestHost host;
  host.component.StartingMonth(5);
  EXPECT_EQ(host.component.KRNStartingMonth(), 5);
  host.component.StartingMonth(6);
  EXPECT_EQ(host.component.KRNStartingMonth(), 5);
}

TEST(KRNStartingMonth, IsNotDerivedFromADefaultThatWasNeverRead) {
  TestHost host;
  EXPECT_EQ(host.component.KRNStartingMonth(), 0);
  host.component.KRNStartingMonth(3);
  EXPECT_EQ(host.component.KRNStartingMonth(), 3);
  EXPECT_EQ(host.journal->Text(), "") << "no session is opened for it";
}

TEST(KRNStartingYear, DefaultsToTheImportsYearAndKeepsIt) {
  TestHost host;
  host.component.StartingYear(2003);
  EXPECT_EQ(host.component.KRNStartingYear(), 2003);
  host.component.StartingYear(2001);
  EXPECT_EQ(host.component.KRNStartingYear(), 2003);
}

TEST(KRNStartingYear, CopiesTheStoredYearWithoutItsDefault) {
  TestHost host;
  EXPECT_EQ(host.component.KRNStartingYear(), 0);
}

TEST(StartingMonth, DefaultsToThePlansMonthAndKeepsIt) {
  TestHost host;
  host.component.KRNStartingMonth(4);
  EXPECT_EQ(host.component.StartingMonth(), 4);
  host.component.KRNStartingMonth(7);
  EXPECT_EQ(host.component.StartingMonth(), 4);
}

TEST(StartingMonth, OpensASessionFirstEvenWhenItIsSet) {
  TestHost host;
  host.component.StartingMonth(9);
  EXPECT_EQ(host.component.StartingMonth(), 9);
  EXPECT_EQ(host.journal->Text(), expected::OpensSession());
  host.journal->Clear();
  EXPECT_EQ(host.component.StartingMonth(), 9);
  EXPECT_EQ(host.journal->Text(), expected::FindsSession());
}

TEST(StartingMonth, IgnoresASessionThatIsRefused) {
  TestHost host;
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  host.component.KRNStartingMonth(4);
  EXPECT_EQ(host.component.StartingMonth(), 4);
  EXPECT_EQ(host.component.ErrorNumber(), 429) << "opening the session still writes the pair";
}

TEST(StartingMonth, IsNotTheCompanysFiscalMonth) {
  TestHost host;
  host.quickBooks->answers["101"] = fakes::CompanyAnswer("July");
  EXPECT_EQ(host.component.StartingMonth(), 0);
  EXPECT_EQ(host.component.QBStartingMonth(), 7);
}

TEST(StartingYear, IsTheYearBeforeThePlans) {
  TestHost host;
  host.component.KRNStartingYear(2004);
  EXPECT_EQ(host.component.StartingYear(), 2003);
  EXPECT_EQ(host.component.KRNStartingYear(), 2004);
  EXPECT_EQ(host.journal->Text(), "") << "no session is opened for it";
}

TEST(StartingYear, IsKeptWhenThePlansYearChangesAndComputedAgainFromZero) {
  TestHost host;
  host.component.KRNStartingYear(2004);
  EXPECT_EQ(host.component.StartingYear(), 2003);
  host.component.KRNStartingYear(2010);
  EXPECT_EQ(host.component.StartingYear(), 2003);
  host.component.StartingYear(0);
  EXPECT_EQ(host.component.StartingYear(), 2009);
}

TEST(StartingYear, WithoutAPlanYearIsMinusOneAndBecomesThePlansDefault) {
  TestHost host;
  EXPECT_EQ(host.component.StartingYear(), -1);
  EXPECT_EQ(host.component.KRNStartingYear(), -1);
}

TEST(StartingYear, OverflowsBelowSixteenBits) {
  TestHost host;
  host.component.KRNStartingYear(-32768);
  EXPECT_EQ(NumberThrownBy([&host] { host.component.StartingYear(); }), 6);
  EXPECT_EQ(host.component.ErrorNumber(), 0) << "it is raised and not written to the pair";
  host.component.KRNStartingYear(-32767);
  EXPECT_EQ(host.component.StartingYear(), -32768) << "the failed read stored nothing";
}

TEST(StartingYear, DoesNotOverflowWhenItIsSet) {
  TestHost host;
  host.component.KRNStartingYear(-32768);
  host.component.StartingYear(2002);
  EXPECT_EQ(host.component.StartingYear(), 2002);
}

}  // namespace
}  // namespace krnqb
