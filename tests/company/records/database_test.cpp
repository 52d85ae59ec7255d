#include "company/records/database.h"

#include "company/records/errors.h"
#include "company/testing.h"

namespace krnqb::company {
namespace {

class DatabaseFile : public ::testing::Test {
 protected:
  DatabaseFile() { database.Execute("CREATE TABLE word (text TEXT, number INTEGER)"); }

  static std::filesystem::path EmptyFile(const testing::TemporaryFolder& folder) {
    testing::WriteBytes(folder.File("words"), "");
    return folder.File("words");
  }

  testing::TemporaryFolder folder;
  Database database{EmptyFile(folder), FileAccess::ReadWrite};
};

TEST_F(DatabaseFile, KeepsEmptyTextsApartFromNothing) {
  Statement insert = database.Prepare("INSERT INTO word VALUES (?1, ?2)");
  insert.Bind(1, std::string_view()).BindNothing(2).Run();
  insert.Bind(1, "two").Bind(2, std::int64_t{1} << 40).Run();
  Statement words = database.Prepare("SELECT text, number FROM word ORDER BY rowid");
  ASSERT_TRUE(words.Step());
  EXPECT_FALSE(words.IsNothing(0));
  EXPECT_EQ(words.Text(0), "");
  EXPECT_TRUE(words.IsNothing(1));
  ASSERT_TRUE(words.Step());
  EXPECT_EQ(words.Text(0), "two");
  EXPECT_EQ(words.Integer(1), std::int64_t{1} << 40);
  EXPECT_FALSE(words.Step());
}

TEST_F(DatabaseFile, KeepsFractions) {
  database.Prepare("INSERT INTO word VALUES ('half', ?1)").Bind(1, 2.5).Run();
  EXPECT_EQ(database.Integer("SELECT number * 10 FROM word"), 25);
}

TEST_F(DatabaseFile, RollsBackWhatIsNotCommitted) {
  {
    const Transaction transaction(database);
    database.Execute("INSERT INTO word VALUES ('a', 1)");
  }
  EXPECT_EQ(database.Integer("SELECT count(*) FROM word"), 0);
  Transaction transaction(database);
  database.Execute("INSERT INTO word VALUES ('a', 1)");
  transaction.Commit();
  EXPECT_EQ(database.Integer("SELECT count(*) FROM word"), 1);
}

TEST_F(DatabaseFile, GivesZeroForAQueryWithoutRows) {
  EXPECT_EQ(database.Integer("SELECT number FROM word"), 0);
}

TEST_F(DatabaseFile, SaysWhatFailed) {
  const Error error = testing::ErrorOf([&] { database.Execute("SELECT * FROM sentence"); });
  EXPECT_EQ(error.Number(), company_error::unexpected);
  EXPECT_EQ(error.Description(),
            "The company file " + folder.File("words").string() + " failed: no such table: sentence.");
}

TEST_F(DatabaseFile, OpenForReadingIsNotWritten) {
  const Database reader(folder.File("words"), FileAccess::ReadOnly);
  const Error error = testing::ErrorOf([&] { reader.Execute("INSERT INTO word VALUES ('a', 1)"); });
  EXPECT_EQ(error.Number(), company_error::cannotOpen);
  EXPECT_NE(error.Description().find("cannot be written"), std::string::npos);
}

TEST_F(DatabaseFile, IsNotMadeByOpening) {
  EXPECT_EQ(testing::ErrorOf([&] { Database(folder.File("none"), FileAccess::ReadWrite); }).Number(),
            company_error::cannotOpen);
  EXPECT_FALSE(std::filesystem::exists(folder.File("none")));
}

}  // namespace
}  // namespace krnqb::company
