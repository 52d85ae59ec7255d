#include "company/records/database.h"

#include "company/records/errors.h"
#include "company/testing.h"

namespace krnqb::company {
namespace {

class DatabaseFile : public ::testing::Test {
 protected:
  DatabaseFile() { database.Execute("CREATE TABLE word (text TEXT, number INTEGER)"); }

  static std::filesystem::path EmptyFile(const tests::TemporaryFolder& folder) {
    tests::WriteText(folder / "words", "");
    return folder / "words";
  }

  tests::TemporaryFolder folder;
  Database database{EmptyFile(folder), FileAccess::ReadWrite};
};

TEST_F(DatabaseFile, DistinguishesEmptyTextFromNull) {
  Statement insert = database.Prepare("INSERT INTO word VALUES (?1, ?2)");
  insert.Bind(1, std::string_view()).BindNull(2).Run();
  insert.Bind(1, "two").Bind(2, std::int64_t{1} << 40).Run();
  Statement words = database.Prepare("SELECT text, number FROM word ORDER BY rowid");
  ASSERT_TRUE(words.Step());
  EXPECT_FALSE(words.IsNull(0));
  EXPECT_EQ(words.Text(0), "");
  EXPECT_TRUE(words.IsNull(1));
  ASSERT_TRUE(words.Step());
  EXPECT_EQ(words.Text(0), "two");
  EXPECT_EQ(words.Integer(1), std::int64_t{1} << 40);
  EXPECT_FALSE(words.Step());
}

TEST_F(DatabaseFile, StoresFractions) {
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

TEST_F(DatabaseFile, ReturnsZeroForAQueryWithoutRows) {
  EXPECT_EQ(database.Integer("SELECT number FROM word"), 0);
}

TEST_F(DatabaseFile, DescribesAFailure) {
  const Error error = tests::ThrownError([&] { database.Execute("SELECT * FROM sentence"); });
  EXPECT_EQ(error.Number(), company_error::unexpected);
  EXPECT_EQ(error.Description(), "An operation on the company file " + (folder / "words").string() +
                                     " failed: no such table: sentence.");
}

TEST_F(DatabaseFile, IsReadOnlyWhenOpenedForReading) {
  const Database reader(folder / "words", FileAccess::ReadOnly);
  const Error error = tests::ThrownError([&] { reader.Execute("INSERT INTO word VALUES ('a', 1)"); });
  EXPECT_EQ(error.Number(), company_error::cannotOpen);
  EXPECT_NE(error.Description().find("cannot be written"), std::string::npos);
}

TEST_F(DatabaseFile, IsNotCreatedByOpening) {
  EXPECT_EQ(tests::ThrownError([&] { Database(folder / "none", FileAccess::ReadWrite); }).Number(),
            company_error::cannotOpen);
  EXPECT_FALSE(std::filesystem::exists(folder / "none"));
}

}  // namespace
}  // namespace krnqb::company
