#include "spreadsheet/warnings_sheet.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string_view>

#include "plans.h"

namespace krnqb::spreadsheet {
namespace {

using tests::ContentAt;
using tests::SheetsOfBlocks;

// The row in whose first cell a text is.
std::optional<std::uint32_t> RowOf(const Sheet& sheet, std::string_view text) {
  for (const SheetCell& cell : sheet.cells) {
    const auto* content = std::get_if<std::string>(&cell.content);
    if (cell.column == 0 && content != nullptr && *content == text) return cell.row;
  }
  return std::nullopt;
}

ExportNotes Imported() {
  plan_file::HistoryEntry entry;
  entry.number = 3;
  entry.when = "2003-01-15T12:00:00";
  entry.import = plan_file::ImportFacts{.product = "ald",
                                        .planStart = "2003-01",
                                        .periodFrom = "2002-01",
                                        .periodTo = "2002-12",
                                        .options = {"--expenses", "--balances all"},
                                        .rowsAdded = 4};
  ExportNotes notes;
  notes.lastImport = LastImport{entry, true};
  return notes;
}

TEST(WarningsSheet, SaysWhatIsKnownOfTheLastImport) {
  const Sheet sheet = WarningsOf(SheetsOfBlocks({}), Imported());
  EXPECT_EQ(ContentAt(sheet, RowOf(sheet, "Imported").value(), 1), "2003-01-15 12:00:00");
  EXPECT_EQ(ContentAt(sheet, RowOf(sheet, "Options").value(), 1), "--expenses --balances all");
  EXPECT_EQ(ContentAt(sheet, RowOf(sheet, "Amounts of").value(), 1), "2002-01 to 2002-12");
  EXPECT_EQ(ContentAt(sheet, RowOf(sheet, "The plan").value(), 1),
            "another program has changed it since its last import");
}

TEST(WarningsSheet, SaysIfNothingIsKnown) {
  EXPECT_TRUE(RowOf(WarningsOf(SheetsOfBlocks({}), {}), "No import is recorded beside the plan."));
  ExportNotes damaged;
  damaged.historyFault = "0003.json is damaged";
  EXPECT_TRUE(RowOf(WarningsOf(SheetsOfBlocks({}), damaged), "It is unknown: 0003.json is damaged"));
}

TEST(WarningsSheet, NamesTablesWithoutBlocks) {
  const Sheet sheet = WarningsOf(SheetsOfBlocks({}), {});
  EXPECT_EQ(ContentAt(sheet, RowOf(sheet, "Planned sales and costs").value(), 1),
            "has no blocks, so it has no sheet");
}

TEST(WarningsSheet, ListsWhatTheJournalHasAndAddsItUp) {
  ExportNotes notes;
  notes.journal = "left-out.jsonl";
  notes.leftOut = {
      {.date = "2002-03-01",
       .account = "=Rent",
       .amount = "-12.50",
       .reason = "no account",
       .meaning = "lost"},
      {.date = "2002-03-02", .account = "Fuel", .amount = "40", .reason = "no item", .meaning = "lost"},
      {.date = "2002-03-03",
       .account = "Fuel",
       .amount = "?",
       .reason = "amount is no number",
       .meaning = "lost"}};
  notes.journalWarnings = {"past performance ended early"};
  const Sheet sheet = WarningsOf(SheetsOfBlocks({}), notes);
  const std::uint32_t sum = RowOf(sheet, "lost").value();
  EXPECT_EQ(ContentAt(sheet, sum, 1), "3 amounts");
  EXPECT_EQ(ContentAt(sheet, sum, 2), "of which 1 without a number");
  EXPECT_EQ(ContentAt(sheet, sum, 7), "27.5");
  const std::uint32_t first = RowOf(sheet, "2002-03-01").value();
  EXPECT_EQ(ContentAt(sheet, first, 2), "=Rent");
  EXPECT_EQ(ContentAt(sheet, first, 7), "-12.5");
  EXPECT_EQ(ContentAt(sheet, first + 2, 7), "?");
  EXPECT_EQ(ContentAt(sheet, RowOf(sheet, "The import").value(), 1), "past performance ended early");
}

TEST(WarningsSheet, HasNoTwoCellsInOnePlace) {
  ExportNotes notes = Imported();
  notes.journal = "x";
  notes.leftOut = {{.meaning = "lost"}, {.meaning = "not imported"}};
  Sheet sheet = WarningsOf(SheetsOfBlocks({}), notes);
  const auto place = [](const SheetCell& cell) { return std::pair{cell.row, cell.column}; };
  std::ranges::sort(sheet.cells, {}, place);
  EXPECT_EQ(std::ranges::adjacent_find(sheet.cells, {}, place), sheet.cells.end());
}

}  // namespace
}  // namespace krnqb::spreadsheet
