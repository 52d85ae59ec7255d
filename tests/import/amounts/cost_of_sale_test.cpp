#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "fakes/import_surroundings.h"
#include "import/amounts/sales_transactions.h"
#include "thrown_error.h"

namespace krnqb {
namespace {

using tests::NumberThrownBy;

constexpr auto largest = "1.7976931348623157E+308";

class BookedCostOfSale : public testing::Test {
 protected:
  AccountId Book(const CostOfSale& sale, float quantity) {
    LineBooking booking(surroundings.context, query, Operation::ReadSalesTransactions);
    return BookCostOfSale(booking, line, sale, quantity);
  }
  double Seeds() const { return surroundings.Cost("Seeds", 3); }

  fakes::ImportSurroundings surroundings;
  TransactionQuery query{.kind = 20, .request = {}, .month = 3, .range = {}};
  TransactionLine line{.element = "InvoiceLineRet",
                       .amount = "10.00",
                       .quantity = {},
                       .accountId = {},
                       .itemId = "IT-1",
                       .itemGroupId = {},
                       .parentItemGroupId = {},
                       .customerId = {},
                       .parentCustomerId = {},
                       .grandparentCustomerId = {},
                       .transactionId = "T-1",
                       .transactionDate = "2002-03-01"};
};

TEST_F(BookedCostOfSale, IsQuantityTimesAverageCostInTheMonthOfTheSale) {
  EXPECT_EQ(Book({"C-1", "I-1", "2.5"}, 3), "I-1");
  EXPECT_EQ(Seeds(), 7.5);
  EXPECT_EQ(surroundings.SumOfAll(), 7.5);
}

TEST_F(BookedCostOfSale, IsAddedToExistingAmounts) {
  surroundings.state.costSubtotals->At("Seeds").SubTotal(3, 100);
  Book({"C-1", "I-1", "2.5"}, -2);
  EXPECT_EQ(Seeds(), 95);
}

TEST_F(BookedCostOfSale, RollsUpToTheTopLevelAccount) {
  Book({"C-3", "I-1", "2"}, 4);
  EXPECT_EQ(Seeds(), 8);
}

TEST_F(BookedCostOfSale, UsesTheQuantityInSinglePrecision) {
  Book({"C-1", "I-1", "10"}, 0.1F);
  EXPECT_EQ(Seeds(), 1.0000000149011612);
  Book({"C-2", "I-1", "0.1"}, 10);
  EXPECT_EQ(surroundings.Cost("Freight", 3), 1);
}

struct AverageCostCase {
  const char* text;
  double cost;
};

TEST_F(BookedCostOfSale, UsesTheLeadingNumberOfTheAverageCost) {
  for (const auto& [text, cost] : {AverageCostCase{"2.50", 2.5},
                                   {" 2.5 each", 2.5},
                                   {"2,500", 2},
                                   {"-2", -2},
                                   {"1E2x", 100},
                                   {".5", 0.5},
                                   {"each 2", 0},
                                   {"$2", 0}}) {
    surroundings.state.costSubtotals->At("Seeds").SubTotal(3, 0);
    EXPECT_EQ(Book({"C-1", "I-1", text}, 1), "I-1") << text;
    EXPECT_EQ(Seeds(), cost) << text;
  }
}

TEST_F(BookedCostOfSale, IsSkippedForAnUnlistedCostAccount) {
  EXPECT_EQ(Book({"E-1", "I-1", "2.5"}, 3), "I-1");
  EXPECT_EQ(Book({"", "", "2.5"}, 3), "");
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

TEST_F(BookedCostOfSale, FailsWithoutASubtotalForTheAccount) {
  surroundings.state.costSubtotals = fakes::ImportSurroundings::Zeros({"Freight"});
  EXPECT_EQ(NumberThrownBy([&] { Book({"C-1", "I-1", "2"}, 1); }), error_number::invalidProcedureCall);
  surroundings.state.costSubtotals.reset();
  EXPECT_EQ(NumberThrownBy([&] { Book({"C-1", "I-1", "2"}, 1); }), error_number::invalidProcedureCall);
}

TEST_F(BookedCostOfSale, FailsIfTheCostIsOutOfRange) {
  EXPECT_EQ(NumberThrownBy([&] { Book({"C-1", "I-1", largest}, 2); }), error_number::overflow);
  EXPECT_EQ(Seeds(), 0);
}

TEST_F(BookedCostOfSale, FailsIfTheSumIsOutOfRangeAndChangesNothing) {
  Book({"C-1", "I-1", largest}, 1);
  EXPECT_EQ(NumberThrownBy([&] { Book({"C-1", "I-1", largest}, 1); }), error_number::overflow);
  EXPECT_EQ(Seeds(), std::numeric_limits<double>::max());
}

}  // namespace
}  // namespace krnqb
