#include <fmt/format.h>

#include "company/crafted_files.h"
#include "company/earlier_file.h"
#include "company/records/errors.h"
#include "company/testing.h"

// A company file contains what this program writes and nothing else, whether or not its pages have checksums.

namespace krnqb::company {
namespace {

using tests::ReadText;
using tests::ThrownError;
using tests::WriteText;

class ForeignSchema : public testing::CompanyTest {
 protected:
  ForeignSchema() { NewCompany("1.1"); }

  std::string Refusal(FileAccess access) const {
    const Error error = ThrownError([&] { CompanyFile::Open(file, access); });
    EXPECT_EQ(error.Number(), company_error::cannotOpen);
    return error.Description();
  }

  const std::filesystem::path file = folder / "company.qbw";
};

TEST_F(ForeignSchema, IsRefused) {
  struct Case {
    const char* change;
    std::string_view refusal;
  };
  const std::vector<Case> cases = {
      {"CREATE VIEW other AS SELECT * FROM record", "contains the view \"other\""},
      {"ALTER TABLE record RENAME TO stored; CREATE VIEW record AS SELECT * FROM stored",
       "contains the table \"stored\""},
      {"CREATE TRIGGER other AFTER INSERT ON record BEGIN DELETE FROM posting; END",
       "contains the trigger \"other\""},
      {"CREATE TABLE other (x)", "contains the table \"other\""},
      {"CREATE INDEX other ON record (xml)", "contains the index \"other\""},
      {"DROP INDEX record_by_kind; CREATE INDEX record_by_kind ON record (key)",
       "has another index \"record_by_kind\" than this program writes"},
      {"DROP INDEX record_by_kind", "has 10 of 11 tables and indexes"},
      {"ALTER TABLE item_account ADD COLUMN more TEXT DEFAULT (1)", "has another table \"item_account\""},
      {"PRAGMA user_version = 0", "has the unknown layout 0"},
      {"PRAGMA user_version = 1", "has layout 1, but its pages have checksums"},
  };
  const std::string whole = ReadText(file);
  for (const Case& each : cases) {
    SCOPED_TRACE(each.change);
    WriteText(file, whole);
    Database(file, FileAccess::ReadWrite).Execute(each.change);
    for (const FileAccess access : {FileAccess::ReadOnly, FileAccess::ReadWrite}) {
      EXPECT_NE(Refusal(access).find(each.refusal), std::string::npos) << Refusal(access);
      EXPECT_TRUE(Refusal(access).ends_with("; restore a copy of the file")) << Refusal(access);
    }
  }
}

TEST_F(ForeignSchema, IsRefusedWithoutChecksumsToo) {
  std::filesystem::rename(file, folder / "present.qbw");
  testing::WriteEarlierFile(folder / "present.qbw", file);
  testing::ExecuteDirectly(file,
                           "CREATE TRIGGER other AFTER INSERT ON record BEGIN DELETE FROM posting; END");
  EXPECT_NE(Refusal(FileAccess::ReadWrite).find("contains the trigger \"other\""), std::string::npos);
}

TEST_F(ForeignSchema, CannotAttachOtherFiles) {
  WriteText(folder / "other", "");
  const Database database(file, FileAccess::ReadWrite);
  for (const std::string& statement :
       {"ATTACH '" + (folder / "other").string() + "' AS other",
        "VACUUM INTO '" + (folder / "new").string() + "'", std::string("VACUUM")}) {
    EXPECT_NE(ThrownError([&] { database.Execute(statement.c_str()); }).Description(), "") << statement;
  }
  EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"company.qbw", "other"}));
}

TEST_F(ForeignSchema, NeverBecomesAWriteAheadLog) {
  const Database database(file, FileAccess::ReadWrite);
  database.Execute("PRAGMA journal_mode = WAL");
  database.Execute("UPDATE record SET position = 1");
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw"});
  EXPECT_EQ(ReadText(file)[18], 1);
}

}  // namespace
}  // namespace krnqb::company
