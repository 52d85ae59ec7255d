#include "profit_and_loss/merging.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "profit_and_loss/listing.h"
#include "profit_and_loss/reading.h"
#include "thrown_error.h"

namespace krnqb::profit_and_loss {
namespace {

ProfitAndLoss Merged(const std::vector<std::string_view>& documents) {
  std::vector<ProfitAndLoss> statements;
  for (const std::string_view document : documents) {
    const std::string name = "d" + std::to_string(statements.size() + 1);
    statements.push_back(ReadProfitAndLoss(name, document));
  }
  return MergeStatements(std::move(statements));
}

TEST(MergeStatements, JoinsMonthsAndAccounts) {
  const ProfitAndLoss merged =
      Merged({",Feb 02\nRent,5.00\n", ",Jan 02\nRent,4.00\nFuel,1.00\n", ",Feb 02\nrent,5.00\nPhone,2.00\n"});
  EXPECT_EQ(AmountListing(merged), "? | Rent | 4.00 5.00\n? | Fuel | 1.00 0.00\n? | Phone | 0.00 2.00\n");
  EXPECT_EQ(ColumnListing(merged), "1/2002 2002-01-01..2002-01-31\n2/2002 2002-02-01..2002-02-28\n");
  EXPECT_EQ(merged.document, "d1, d2, d3");
  EXPECT_TRUE(merged.hasMonths);
}

TEST(MergeStatements, TakesTheSectionFromTheDocumentThatHasIt) {
  const ProfitAndLoss merged =
      Merged({",Jan 02\nRent,5.00\n", ",Feb 02\nExpense\nRent,5.00\nTotal Expense,5.00\nNet Income,-5.00\n"});
  EXPECT_EQ(AmountListing(merged), "Expense | Rent | 5.00 5.00\n");
}

TEST(MergeStatements, AddsTheTransactionsOfADetailReportOnce) {
  const std::string_view lines =
      "January through February 2002\nType,Date,Account,Amount\nBill,2002-01-05,Rent,5.00\n"
      "Paycheck,2002-02-05,Rent,4.00\n";
  const std::string_view months = ",Jan 02,Feb 02\nRent,5.00,4.00\n";
  for (const auto& documents :
       std::vector<std::vector<std::string_view>>{{lines, months}, {months, lines}, {lines, months, lines}}) {
    const ProfitAndLoss merged = Merged(documents);
    EXPECT_EQ(AmountListing(merged), "? | Rent | 5.00 4.00\n");
    EXPECT_EQ(merged.lines.size(), 2U);
    EXPECT_TRUE(merged.hasDetail);
  }
  const ProfitAndLoss whole = Merged({",Jan - Feb 02\nRent,9.00\n", lines});
  EXPECT_EQ(AmountListing(whole), "? | Rent | 9.00\n");
  EXPECT_EQ(whole.lines.size(), 2U);
}

TEST(MergeStatements, RefusesDocumentsThatContradictEachOther) {
  const std::string_view lines =
      "January through February 2002\nType,Date,Account,Amount\nBill,2002-01-05,Rent,5.00\n";
  struct Case {
    std::vector<std::string_view> documents;
    std::string_view message;
  };
  const std::vector<Case> cases = {
      {{",Jan 02\nRent,5.00\n", ",Jan 02\nRent,6.00\n"},
       "d2: line 2: the account \"Rent\" has 6.00 in \"Jan 02\", but 5.00 at d1: line 2;"},
      {{",Jan 02\nRent,5.00\n", ",Jan - Mar 02\nRent,6.00\n"},
       "d2: line 2: the account \"Rent\" has an amount for \"Jan - Mar 02\", and one for \"Jan 02\" at d1: "
       "line 2;"},
      {{",Jan - Mar 02\nRent,6.00\n", ",Jan 02\nRent,5.00\n"},
       "d2: line 2: the account \"Rent\" has an amount for \"Jan 02\", and one for \"Jan - Mar 02\" at d1: "
       "line 2;"},
      {{",Jan 02\nExpense\nRent,5.00\nTotal Expense,5.00\n",
        ",Feb 02\nIncome\nRent,5.00\nTotal Income,5.00\n"},
       "d2: line 3: the account \"Rent\" is in the section \"Income\", but in \"Expense\" at d1: line 3;"},
      {{"Cash Basis\n,Jan 02\nRent,5.00\n", "Accrual Basis\n,Feb 02\nRent,5.00\n"},
       "d2: the basis is \"Accrual\", but \"Cash\" in another document;"},
      {{"Nursery\n,Jan 02\nRent,5.00\n", "Print Shop\n,Feb 02\nRent,5.00\n"},
       "d2: the company is \"Print Shop\", but \"Nursery\" in another document;"},
      {{",Jan - Feb 02\nRent,6.00\n", lines},
       "d2: line 3: the transactions of the account \"Rent\" add up to 5.00 in \"Jan - Feb 02\", but it has "
       "6.00 at"},
      {{",Jan - Feb 02\nFuel,6.00\n", lines},
       "d2: line 3: the account \"Rent\" has transactions in \"2002-01\", but no amount in the summary "
       "report;"},
  };
  for (const Case& test : cases) {
    const Error error = tests::ThrownError([&] { Merged(test.documents); });
    EXPECT_EQ(error.Description().substr(0, test.message.size()), test.message);
  }
}

TEST(MergeStatements, OfNothingIsEmpty) {
  const ProfitAndLoss merged = MergeStatements({});
  EXPECT_TRUE(merged.accounts.empty());
  EXPECT_FALSE(merged.hasMonths);
}

}  // namespace
}  // namespace krnqb::profit_and_loss
