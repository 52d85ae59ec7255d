#include "cli/explain/ledger_proof.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

#include "cli/explain/transaction_report.h"
#include "ledger/figures.h"
#include "ledger/listing.h"
#include "plan_file/content.h"
#include "support/number_text.h"

namespace krnqb::cli::tests {
namespace {

using ledger::LedgerFile;

std::string TextInPlan(const plan_file::PlanContent& plan, const ledger::LedgerCell& cell) {
  for (const plan_file::PlanTableContent& table : plan) {
    if (table.id != cell.table) continue;
    for (const plan_file::PlanBlock& block : table.blocks) {
      if (block.id != cell.block) continue;
      return block.rows.at(static_cast<std::size_t>(cell.rowNumber) - 1)
          .at(static_cast<std::size_t>(cell.column));
    }
  }
  return "no such block";
}

void ProveCells(const LedgerFile& ledger, const std::string& plan, ProvedLedger& proved) {
  const plan_file::PlanContent content = plan_file::ReadPlanContent(*plan_file::PlanFile::Open(plan));
  for (const ledger::LedgerCell& cell : ledger.Cells()) {
    EXPECT_EQ(TextInPlan(content, cell), cell.text) << cell.table << ' ' << cell.row << ' ' << cell.column;
    if (cell.content == CellContent::GrowthRate) continue;
    const double amount = ledger.AmountOf(cell);
    EXPECT_TRUE(ledger::ShowsAmount(cell, amount))
        << cell.table << ' ' << cell.row << ' ' << cell.number << ": " << cell.text << " is not " << amount;
    ++proved.amountCells;
  }
}

void ProveTotals(const LedgerFile& ledger) {
  for (const ledger::LedgerSlot& slot : ledger.Slots()) {
    ledger.ForEachBooking(slot.id, [&](const ledger::LedgerBooking& booking, bool /*replaced*/) {
      if (booking.rule != BookingRule::PeriodTotal) return;
      double total = 0;
      for (const ledger::LedgerSlot& month : MonthsOf(ledger, slot, booking)) total += ledger.SumOf(month.id);
      EXPECT_EQ(total, booking.amount) << booking.accountName << " in period " << slot.number;
    });
  }
}

void ProveLines(const LedgerFile& ledger, bool everyRow, ProvedLedger& proved) {
  std::set<std::int64_t> shown;
  for (const ledger::LedgerCell& cell : ledger.Cells()) {
    for (const ledger::LedgerTerm& term : cell.terms) shown.insert(term.slot);
  }
  for (std::int64_t number = 1; number <= ledger.LineCount(); ++number) {
    const ledger::LedgerLine line = ledger.Line(number);
    const auto bookings = ledger.BookingsOf(line);
    const bool leftOut = !ledger.OmissionsOf(line).empty();
    if (bookings.empty() && !leftOut) {
      EXPECT_EQ(ConvertToDouble(line.amount), 0.0) << "line " << number << " is nowhere";
    }
    for (const auto& [booking, replaced] : bookings) {
      const ledger::LedgerSlot& slot = ledger.Slot(booking.slot);
      EXPECT_EQ(slot.number, line.month);
      if (everyRow && !slot.pastPeriod) {
        EXPECT_TRUE(shown.contains(slot.id)) << slot.name << " has no cell";
      }
      if (booking.rule == BookingRule::CostOfSale) {
        EXPECT_EQ(*booking.averageCost * *booking.quantity, booking.amount);
      } else {
        const double amount = RequireDouble(line.amount);
        EXPECT_TRUE(booking.amount == amount || booking.amount == -amount) << line.amount;
      }
      EXPECT_EQ(booking.text, line.amount);
      ++proved.bookings;
    }
    ++proved.lines;
  }
}

}  // namespace

ProvedLedger ProveLedger(const std::string& file, const std::string& plan, bool everyRow) {
  const LedgerFile ledger = LedgerFile::Open(file);
  ProvedLedger proved;
  ProveCells(ledger, plan, proved);
  ProveTotals(ledger);
  ProveLines(ledger, everyRow, proved);
  return proved;
}

std::string LedgerListing(const std::string& ledger) {
  return ledger::testing::Listing(LedgerFile::Open(ledger));
}

}  // namespace krnqb::cli::tests
