#include "database/connection.h"
#include "files/operations.h"
#include "ledger/file.h"
#include "ledger/schema.h"
#include "ledger/small_import.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::ledger {
namespace {

struct Change {
  const char* statements;
  const char* refusal;  // part of the description
};

class ForeignLedger : public ::testing::TestWithParam<Change> {};

TEST_P(ForeignLedger, IsRefused) {
  const tests::TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "l.kql");
  database::Connection(ledgerFileKind, folder / "l.kql", database::FileAccess::ReadWrite)
      .Execute(GetParam().statements);
  const Error error = tests::ThrownError([&] {
    const LedgerFile ledger = LedgerFile::Open(folder / "l.kql");
    for (const LedgerCell& cell : ledger.Cells()) ledger.AmountOf(cell);
    for (const LedgerSlot& slot : ledger.Slots()) ledger.ForEachBooking(slot.id, [](const auto&, bool) {});
    for (std::int64_t line = 1; line <= ledger.LineCount(); ++line) {
      ledger.OmissionsOf(ledger.Line(line));
      ledger.Document(ledger.Line(line).document);
    }
  });
  EXPECT_EQ(error.Number(), unusableFile);
  EXPECT_NE(error.Description().find(GetParam().refusal), std::string::npos) << error.Description();
}

INSTANTIATE_TEST_SUITE_P(
    Changes, ForeignLedger,
    ::testing::Values(Change{"CREATE VIEW extra AS SELECT * FROM cell", "contains the view \"extra\""},
                      Change{"CREATE TABLE extra (a)", "contains the table \"extra\""},
                      Change{"CREATE TRIGGER extra AFTER INSERT ON cell BEGIN DELETE FROM cell; END",
                             "contains the trigger \"extra\""},
                      Change{"DROP TABLE cell; CREATE VIEW cell AS SELECT * FROM line",
                             "has another table \"cell\""},
                      Change{"DROP INDEX booking_by_slot", "has 13 of 14 tables and indexes"},
                      Change{"PRAGMA user_version = 2", "has the unknown layout 2"},
                      Change{"PRAGMA application_id = 7", "is not a ledger"},
                      Change{"DELETE FROM fact WHERE name = 'plan_digest'", "lacks the fact \"plan_digest\""},
                      Change{"UPDATE cell SET content = 99", "contains the unknown value 99"},
                      Change{"UPDATE cell SET row_number = 1 << 40", "out of range"},
                      Change{"UPDATE slot SET number = -70000", "out of range"},
                      Change{"UPDATE booking SET rule = -1", "contains the unknown value -1"},
                      Change{"UPDATE term SET slot = 99", "lacks the sum 99"},
                      Change{"DELETE FROM slot WHERE id = 1", "lacks the sum 1"},
                      Change{"UPDATE line SET document = 99", "lacks the transaction 99"},
                      Change{"DELETE FROM line WHERE number = 2", "lacks the line 2"},
                      Change{"UPDATE left_out SET reason = 1000", "contains the unknown value 1000"}));

TEST(ForeignLedger, ThatIsAnotherFileIsRefused) {
  const tests::TemporaryFolder folder;
  tests::WriteText(folder / "notes", std::string(20'000, 'x'));
  tests::WriteText(folder / "empty", "");
  std::filesystem::create_directory(folder / "folder");
  const auto refusal = [&](const char* name) {
    const Error error = tests::ThrownError([&] { LedgerFile::Open(folder / name); });
    EXPECT_EQ(error.Number(), unusableFile);
    return error.Description();
  };
  EXPECT_EQ(refusal("none"), "There is no ledger " + (folder / "none").string() + ".");
  for (const char* name : {"notes", "empty", "folder"}) {
    EXPECT_EQ(refusal(name), "The file " + (folder / name).string() + " is not a ledger.");
  }
}

TEST(ForeignLedger, WithAJournalBesideItIsRefused) {
  const tests::TemporaryFolder folder;
  testing::WriteSmallLedger(folder / "l.kql");
  tests::WriteText(folder / "l.kql-journal", "\xd9\xd5\x05\xf9\x20\xa1\x63\xd7" + std::string(600, '\1'));
  const Error error = tests::ThrownError([&] { LedgerFile::Open(folder / "l.kql"); });
  EXPECT_NE(error.Description().find("l.kql-journal"), std::string::npos) << error.Description();
  EXPECT_TRUE(std::filesystem::exists(folder / "l.kql-journal"));
}

}  // namespace
}  // namespace krnqb::ledger
