#include "fakes/recording_bookings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "fakes/amounts_host.h"
#include "support/number_text.h"

// What an import reports about the figures that it writes.

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::CustomerRef;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::ItemRef;
using fakes::Quantity;
using fakes::RecordAnswer;
using fakes::RecordingBookings;
using fakes::ReportAnswer;
using fakes::ReportRow;
using Booked = RecordingBookings::Booked;
using Cell = RecordingBookings::Cell;

class Bookings : public testing::Test {
 protected:
  Bookings() {
    host.observer->bookings = &received;
    host.IncludeAccounts();
  }

  void Answer(const std::string& question, const std::string& response, const std::string& records) {
    host.quickBooks->answers[question] = RecordAnswer(response, records);
  }
  void AnswerBill(const std::string& lines) {
    Answer("10 2002-02-01", "BillQueryRs",
           Element("BillRet", fakes::Transaction("B-1", "2002-02-14") + lines));
  }
  void AnswerInvoice(const std::string& fields) {
    Answer("20 2002-03-01", "InvoiceQueryRs",
           Element("InvoiceRet", fakes::Transaction("V-1", "2002-03-15") + fields));
  }
  void Import() {
    ASSERT_TRUE(host.component.Go());
    ASSERT_EQ(host.component.ErrorNumber(), 0);
  }
  /// Returns the bookings with a rule.
  std::vector<Booked> With(BookingRule rule) const {
    std::vector<Booked> found;
    for (const Booked& booked : received.bookings) {
      if (booked.rule == rule) found.push_back(booked);
    }
    return found;
  }
  Booked Only(BookingRule rule) const {
    const std::vector<Booked> found = With(rule);
    EXPECT_EQ(found.size(), 1U) << BookingRuleWord(rule);
    return found.empty() ? Booked{} : found.front();
  }
  static RecordingBookings::Slot Slot(AmountGroup group, const std::string& name, std::int16_t number,
                                      std::int16_t pastPeriod = 0) {
    return {group, FoldedKey(name), number, pastPeriod};
  }
  std::vector<Cell> CellsWith(CellContent content, const std::string& row, std::int16_t number) const {
    std::vector<Cell> found;
    for (const Cell& cell : received.cells) {
      if (cell.content == content && cell.row == row && cell.number == number) found.push_back(cell);
    }
    return found;
  }
  /// Checks that every amount that was written is the sum of its bookings.
  void ExpectEveryCellToAddUp() const {
    ASSERT_FALSE(received.cells.empty());
    for (const Cell& cell : received.cells) {
      const double amount = received.AmountOf(cell);
      switch (cell.content) {
        case CellContent::GrowthRate:
          EXPECT_TRUE(cell.terms.empty());
          break;
        case CellContent::GrowthFormula: {
          const std::string begin = "=" + GeneralNumberText(amount);
          EXPECT_EQ(cell.text.substr(0, begin.size()), begin) << cell.row << " " << cell.number;
          EXPECT_EQ(cell.text.find_first_of(" *", begin.size()), begin.size()) << cell.text;
          break;
        }
        case CellContent::Amount:
          EXPECT_EQ(cell.text, GeneralNumberText(amount)) << cell.row << " " << cell.number;
          break;
        case CellContent::PastFigure:
          EXPECT_EQ(cell.text, PlainNumberText(amount)) << cell.row << " " << cell.number;
          break;
      }
    }
  }

  fakes::AmountsHost host;
  RecordingBookings received;
};

TEST_F(Bookings, AreReportedWithTheirLines) {
  Answer(
      "10 2002-02-01", "BillQueryRs",
      Element("BillRet",
              fakes::Transaction("B-1", "2002-02-14") +
                  Element("VendorRef", Element("ListID", "N-1") + Element("FullName", "Hill Gas")) +
                  Element("RefNumber", "4711") +
                  ExpenseLine(
                      Element("TxnLineID", "B-1-2") +
                      Element("AccountRef", Element("ListID", "E-3") + Element("FullName", "Utilities:Gas")) +
                      Amount("120.50") +
                      Element("CustomerRef", Element("ListID", "K-1") + Element("FullName", "Ann:Garden")))));
  Import();
  ASSERT_EQ(received.lines.size(), 1U);
  const RecordingBookings::Line& line = received.lines.front();
  EXPECT_EQ(line.number, 1);
  EXPECT_EQ(line.request, 10);
  EXPECT_EQ(line.month, 2);
  EXPECT_EQ(line.pastPeriod, 0);
  EXPECT_EQ(line.transactionId, "B-1");
  EXPECT_EQ(line.lineId, "B-1-2");
  EXPECT_EQ(line.date, "2002-02-14");
  EXPECT_EQ(line.referenceNumber, "4711");
  EXPECT_EQ(line.element, "ExpenseLineRet");
  EXPECT_EQ(line.party, "Hill Gas");
  EXPECT_EQ(line.customer, "Ann:Garden");
  EXPECT_EQ(line.account, "E-3");
  EXPECT_EQ(line.accountName, "Utilities:Gas");
  EXPECT_EQ(line.amount, "120.50");
  const Booked booked = Only(BookingRule::ChargedToExpense);
  EXPECT_EQ(booked.slot, Slot(AmountGroup::Expenses, "Utilities", 2));
  EXPECT_EQ(booked.amount, 120.5);
  EXPECT_EQ(booked.account, "E-3");
  EXPECT_EQ(booked.accountName, "Utilities:Gas");
  EXPECT_EQ(booked.text, "120.50");
  EXPECT_EQ(booked.line, 1);
  EXPECT_FALSE(booked.replaces);
}

TEST_F(Bookings, OfAnExpenseLineOnAnIncomeAccountAreSubtracted) {
  AnswerBill(ExpenseLine(AccountRef("I-3") + Amount("50.00")));
  Import();
  const Booked booked = Only(BookingRule::CreditedToIncome);
  EXPECT_EQ(booked.slot, Slot(AmountGroup::Income, "Plants", 2));
  EXPECT_EQ(booked.amount, -50);
}

TEST_F(Bookings, OfASaleHaveItsIncomeAndItsCost) {
  AnswerInvoice(Element("CustomerRef", Element("ListID", "K-1") + Element("FullName", "Ann")) +
                fakes::InvoiceLine(ItemRef("IT-3") + Amount("40.00") + Quantity("3")));
  Import();
  const Booked sale = Only(BookingRule::Sale);
  EXPECT_EQ(sale.slot, Slot(AmountGroup::Income, "Plants", 3));
  EXPECT_EQ(sale.amount, 40);
  const Booked cost = Only(BookingRule::CostOfSale);
  EXPECT_EQ(cost.slot, Slot(AmountGroup::CostOfGoods, "Seeds", 3));
  EXPECT_EQ(cost.amount, 7.5);
  EXPECT_EQ(cost.account, "C-1");
  EXPECT_EQ(cost.quantity, 3);
  EXPECT_EQ(cost.averageCost, 2.5);
  EXPECT_EQ(cost.text, "40.00");
  EXPECT_EQ(received.lines.front().party, "Ann");
  EXPECT_EQ(received.lines.front().quantity, "3");
}

TEST_F(Bookings, OfASaleOfAnExpenseAccountsItemAreSubtracted) {
  host.quickBooks->answers["50"] = fakes::ItemAnswer(fakes::OneAccountItem("IT-9", "E-1"));
  AnswerInvoice(fakes::InvoiceLine(ItemRef("IT-9") + Amount("40.00")));
  Import();
  const Booked booked = Only(BookingRule::SaleCreditedToExpense);
  EXPECT_EQ(booked.slot, Slot(AmountGroup::Expenses, "Rent", 3));
  EXPECT_EQ(booked.amount, -40);
}

TEST_F(Bookings, OfABilledExpenseNameItsLine) {
  AnswerBill(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")));
  AnswerInvoice(CustomerRef("K-1") + fakes::InvoiceLine(ItemRef("IT-4") + Amount("75.00")) +
                fakes::InvoiceLine(ItemRef("IT-4") + Amount("75.00")));
  Import();
  const std::vector<Booked> takenBack = With(BookingRule::BilledExpenseTakenBack);
  ASSERT_EQ(takenBack.size(), 2U);
  EXPECT_EQ(takenBack[0].slot, Slot(AmountGroup::Expenses, "Rent", 3));
  EXPECT_EQ(takenBack[0].amount, -75);
  EXPECT_EQ(takenBack[0].line, 2);
  EXPECT_EQ(takenBack[0].billedLine, 1);
  EXPECT_FALSE(takenBack[0].billedAgain);
  EXPECT_EQ(takenBack[1].line, 3);
  EXPECT_TRUE(takenBack[1].billedAgain);
}

TEST_F(Bookings, OfASpreadBalanceReplaceTheMonth) {
  host.quickBooks->answers["4"] = fakes::AccountAnswer(
      "4",
      {Element("AccountRet", Element("ListID", "E-1") + Element("Name", "Rent") + Element("Sublevel", "0") +
                                 Element("AccountType", "Expense") + Element("Balance", "1200.00"))});
  AnswerBill(ExpenseLine(AccountRef("E-1") + Amount("5.00")) +
             ExpenseLine(AccountRef("E-1") + Amount("-5.00")));
  Import();
  const std::vector<Booked> spread = With(BookingRule::SpreadBalance);
  ASSERT_EQ(spread.size(), 12U);
  EXPECT_EQ(spread[1].slot, Slot(AmountGroup::Expenses, "Rent", 2));
  EXPECT_EQ(spread[1].amount, 100);
  EXPECT_TRUE(spread[1].replaces);
  EXPECT_EQ(spread[1].text, "1200.00");
  EXPECT_EQ(spread[1].account, "E-1");
  EXPECT_EQ(spread[1].line, 0);
  ExpectEveryCellToAddUp();
}

TEST_F(Bookings, OfALineThatIsLeftOutAreMissingAndItsReasonNamesTheLine) {
  AnswerBill(ExpenseLine(AccountRef("E-1") + Amount("0.00")) +
             ExpenseLine(AccountRef("X-1") + Amount("9.00")));
  Import();
  EXPECT_EQ(received.lines.size(), 2U);
  EXPECT_TRUE(received.bookings.empty());
  for (const Notice& notice : host.observer->notices) {
    if (notice.kind != NoticeKind::AmountSkipped) continue;
    EXPECT_EQ(notice.skipped->line, 2);
  }
}

TEST_F(Bookings, AreMissingForALineInsideAnItemGroupButTheLineIsReported) {
  AnswerBill(ExpenseLine(AccountRef("E-1") + Amount("1.00")) +
             Element("ItemGroupLineRet", Element("ItemGroupRef", Element("ListID", "G-1")) +
                                             Element("ItemLineRet", ItemRef("IT-1") + Amount("9.00"))));
  Import();
  ASSERT_EQ(received.lines.size(), 2U);
  EXPECT_EQ(received.lines[1].amount, "9.00");
  EXPECT_EQ(received.bookings.size(), 1U);
  const auto skipped = std::ranges::find(host.observer->notices, NoticeKind::AmountSkipped, &Notice::kind);
  ASSERT_NE(skipped, host.observer->notices.end());
  EXPECT_EQ(skipped->skipped->reason, SkipReason::InsideItemGroup);
  EXPECT_EQ(skipped->skipped->line, 2);
}

TEST_F(Bookings, OfReportsHaveTheGroupOfTheirReport) {
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["300"] = ReportAnswer(ReportRow("Plants", {"1.50"}));
  host.quickBooks->answers["310"] = ReportAnswer(ReportRow("Rent", {"2.50"}));
  host.quickBooks->answers["320"] = ReportAnswer(ReportRow("Seeds", {"3.50"}));
  Import();
  std::map<double, AmountGroup> groups;
  for (const Booked& booked : With(BookingRule::ReportCell)) groups[booked.amount] = std::get<0>(booked.slot);
  EXPECT_EQ(groups,
            (std::map<double, AmountGroup>{
                {1.5, AmountGroup::Income}, {2.5, AmountGroup::Expenses}, {3.5, AmountGroup::CostOfGoods}}));
}

TEST_F(Bookings, OfReportsHaveTheirCells) {
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["310"] = ReportAnswer(ReportRow("4000 \u00b7 Rent", {"1.50", "", "2.25"}));
  Import();
  const std::vector<Booked> cells = With(BookingRule::ReportCell);
  ASSERT_EQ(cells.size(), 2U) << "an empty cell is nothing";
  EXPECT_EQ(cells[1].slot, Slot(AmountGroup::Expenses, "Rent", 3));
  EXPECT_EQ(cells[1].amount, 2.25);
  EXPECT_EQ(cells[1].text, "2.25");
  EXPECT_EQ(cells[1].request, 310);
  EXPECT_EQ(cells[1].fromDate, "2002-01-01");
  EXPECT_EQ(cells[1].toDate, "2002-12-31");
  ExpectEveryCellToAddUp();
}

TEST_F(Bookings, AddUpToTheCellsWrittenFromThem) {
  AnswerBill(ExpenseLine(AccountRef("E-1") + Amount("0.10")) +
             ExpenseLine(AccountRef("E-1") + Amount("0.20")) +
             ExpenseLine(AccountRef("E-3") + Amount("-3.30")));
  AnswerInvoice(fakes::InvoiceLine(ItemRef("IT-3") + Amount("40.00") + Quantity("0.1")) +
                fakes::InvoiceLine(ItemRef("IT-1") + Amount("1e15")));
  host.component.GrowthRateExpenses(7);
  Import();
  ExpectEveryCellToAddUp();
  const std::vector<Cell> planned = CellsWith(CellContent::GrowthFormula, "Rent", 2);
  ASSERT_EQ(planned.size(), 1U);
  EXPECT_EQ(planned[0].table, "20000000000000000000000000000600");
  EXPECT_EQ(planned[0].block, "db_income_range_cat3");
  EXPECT_EQ(planned[0].rowNumber, 2);
  EXPECT_EQ(planned[0].column, 3);
  EXPECT_EQ(planned[0].text, "=0.3* (1 + B6)");
  const std::vector<Cell> actual = CellsWith(CellContent::Amount, "Rent", 2);
  ASSERT_EQ(actual.size(), 1U);
  EXPECT_EQ(actual[0].table, "21000000000000000000000000000600");
  EXPECT_EQ(actual[0].block, "db_income_range_cat3_actual");
  EXPECT_EQ(actual[0].column, 2);
  EXPECT_EQ(actual[0].text, "0.3");
  const std::vector<Cell> rate = CellsWith(CellContent::GrowthRate, "Rent", 0);
  ASSERT_EQ(rate.size(), 1U);
  EXPECT_EQ(rate[0].column, 1);
  EXPECT_EQ(rate[0].text, "0.07");
}

TEST_F(Bookings, OfARowOfDepreciationAreThoseOfEveryAccountInIt) {
  host.PutTable(
      "20", "0600",
      fakes::AmountBlock("db_income_range_cat3", "startrow=\"5\"",
                         fakes::WideRow("Depreciation", 13, "0") + fakes::WideRow("Total", 13, "0")));
  host.quickBooks->answers["4"] =
      fakes::AccountAnswer("4", {fakes::Account("E-1", "Deprec"), fakes::Account("E-2", "preciation")});
  AnswerBill(ExpenseLine(AccountRef("E-1") + Amount("7.00")) +
             ExpenseLine(AccountRef("E-2") + Amount("3.00")));
  Import();
  ExpectEveryCellToAddUp();
  const std::vector<Cell> cells = CellsWith(CellContent::GrowthFormula, "Depreciation", 2);
  ASSERT_EQ(cells.size(), 1U);
  EXPECT_EQ(cells[0].terms.size(), 2U);
  EXPECT_EQ(received.AmountOf(cells[0]), 10);
}

TEST_F(Bookings, OfPastPerformanceAddUpToItsFigures) {
  host.component.KRNProduct(QBKRN_COR);
  host.component.IncludePastPerformance(true);
  const auto typed = [](const std::string& type, const std::string& name, const std::string& balance) {
    return Element("AccountRet", Element("Name", name) + Element("Sublevel", "0") +
                                     Element("AccountType", type) + Element("TotalBalance", balance));
  };
  std::string accounts;
  for (const char* type :
       {"CostOfGoodsSold", "Bank", "AccountsReceivable", "OtherAsset", "OtherCurrentAsset", "FixedAsset",
        "AccountsPayable", "CreditCard", "OtherCurrentLiability", "LongTermLiability", "Equity"}) {
    accounts +=
        typed(type, std::string("My ") + type, "0.10") + typed(type, std::string("Our ") + type, "0.20");
  }
  host.quickBooks->answers["60"] = fakes::AccountAnswer("60", {accounts});
  Answer("20", "InvoiceQueryRs",
         Element("InvoiceRet", fakes::InvoiceLine(ItemRef("IT-1") + Amount("40.00")) +
                                   fakes::InvoiceLine(ItemRef("IT-3") + Amount("9.00") + Quantity("2"))));
  Import();
  ExpectEveryCellToAddUp();
  EXPECT_FALSE(With(BookingRule::CostOfSale).empty());
  EXPECT_FALSE(With(BookingRule::BalanceToday).empty());
  EXPECT_FALSE(With(BookingRule::PreviousPeriod).empty());
  EXPECT_FALSE(With(BookingRule::PeriodTotal).empty());
  bool anyPastLine = false;
  for (const RecordingBookings::Line& line : received.lines)
    anyPastLine = anyPastLine || line.pastPeriod != 0;
  EXPECT_TRUE(anyPastLine);
}

TEST_F(Bookings, OfPastReportsHaveTheirPeriod) {
  host.component.KRNProduct(QBKRN_ALD);
  host.component.IncludePastPerformance(true);
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["60"] =
      fakes::AccountAnswer("60", {Element("AccountRet", Element("Name", "Seeds") + Element("Sublevel", "0") +
                                                            Element("AccountType", "CostOfGoodsSold"))});
  host.quickBooks->answers["300"] = ReportAnswer(ReportRow("Plants", {"1.50", "2.00"}));
  host.quickBooks->answers["320"] = ReportAnswer(ReportRow("Seeds", {"0.40"}));
  host.quickBooks->answers["330"] = ReportAnswer(ReportRow("Bank", {"9.00"}));
  Import();
  ExpectEveryCellToAddUp();
  const auto subtractsCosts = [&](const Cell& cell) {
    return cell.content == CellContent::PastFigure && cell.terms.size() == 2 && cell.terms[1].second &&
           std::get<1>(cell.terms[1].first) == FoldedKey("CostOfGoodsSold") && received.AmountOf(cell) == 3.1;
  };
  EXPECT_TRUE(std::ranges::any_of(received.cells, subtractsCosts));
  const RecordingBookings::Slot past = Slot(AmountGroup::Income, "Plants", 1, 2);
  EXPECT_EQ(received.sums.at(past), 1.5);
  EXPECT_EQ(received.sums.at(Slot(AmountGroup::PastPerformance, "Income", 2)), 3.5);
}

TEST_F(Bookings, ChangeNothing) {
  const auto tables = [](bool bookings) {
    fakes::AmountsHost plain;
    RecordingBookings receiver;
    if (bookings) plain.observer->bookings = &receiver;
    plain.IncludeAccounts();
    plain.quickBooks->answers["10"] =
        RecordAnswer("BillQueryRs", Element("BillRet", ExpenseLine(AccountRef("E-3") + Amount("120.50"))));
    EXPECT_TRUE(plain.component.Go());
    return plain.planContent->tables;
  };
  EXPECT_EQ(tables(true), tables(false));
}

}  // namespace
}  // namespace krnqb
