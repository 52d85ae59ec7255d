#include "ledger/figures.h"

#include <gtest/gtest.h>

#include "ledger/small_import.h"
#include "temporary_folder.h"

namespace krnqb::ledger {
namespace {

class Figures : public ::testing::Test {
 protected:
  static LedgerFile Written(const tests::TemporaryFolder& folder) {
    testing::WriteSmallLedger(folder / "small.kql");
    return LedgerFile::Open(folder / "small.kql");
  }

  tests::TemporaryFolder folder;
  LedgerFile ledger = Written(folder);
};

TEST_F(Figures, AreSharedByPlannedAndActualCellsAndByRowsOfOneAccount) {
  const std::vector<RowFigures> rows = FiguresOf(ledger, ledger.Cells());
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[0].name, "Rent");
  ASSERT_EQ(rows[0].figures.size(), 1U);
  EXPECT_EQ(rows[0].figures[0].cells.size(), 4U);
  EXPECT_EQ(rows[0].figures[0].amount, 0.1 + 0.2);
  EXPECT_FALSE(rows[0].figures[0].past);
  ASSERT_EQ(rows[0].rates.size(), 1U);
  EXPECT_EQ(rows[0].rates[0].text, "0.05");
  EXPECT_EQ(rows[2].name, "Gross Margin");
  EXPECT_TRUE(rows[2].figures[0].past);
  EXPECT_EQ(rows[2].figures[0].amount, 27.5);
}

TEST_F(Figures, AreTheAmountsInTheTextsOfTheirCells) {
  int amounts = 0;
  for (const LedgerCell& cell : ledger.Cells()) {
    EXPECT_TRUE(ShowsAmount(cell, ledger.AmountOf(cell))) << cell.text;
    if (cell.content == CellContent::GrowthRate) continue;
    EXPECT_FALSE(ShowsAmount(cell, ledger.AmountOf(cell) + 0.01)) << cell.text;
    ++amounts;
  }
  EXPECT_EQ(amounts, 7);
}

TEST_F(Figures, OfAPeriodStandForTheMonthsOfTheirAccounts) {
  const LedgerCell& margin = ledger.Cells().back();
  ASSERT_EQ(margin.terms.size(), 2U);
  std::vector<LedgerSlot> months;
  ledger.ForEachBooking(margin.terms[0].slot, [&](const LedgerBooking& booking, bool replaced) {
    EXPECT_EQ(replaced, booking.rule == BookingRule::BalanceToday);
    for (const LedgerSlot& month : MonthsOf(ledger, ledger.Slot(margin.terms[0].slot), booking)) {
      months.push_back(month);
    }
  });
  ASSERT_EQ(months.size(), 1U);
  EXPECT_EQ(months[0].name, "Plants");
  EXPECT_EQ(months[0].number, 5);
  EXPECT_EQ(ledger.SumOf(months[0].id), 40);
  const std::vector<LedgerCell> cells = CellsOf(ledger, months[0]);
  ASSERT_EQ(cells.size(), 1U);
  EXPECT_EQ(cells[0].row, "Gross Margin");
}

TEST_F(Figures, OfASumAreInAllCellsThatShowIt) {
  EXPECT_EQ(CellsOf(ledger, ledger.Slot(1)).size(), 4U);
  EXPECT_EQ(CellsOf(ledger, ledger.Slot(2)).size(), 2U);
}

}  // namespace
}  // namespace krnqb::ledger
