#include "database/connection.h"

#include <gtest/gtest.h>

#include "krnqb/error.h"
#include "ledger/schema.h"
#include "temporary_folder.h"

namespace krnqb::database {
namespace {

using krnqb::tests::TemporaryFolder;

struct NumberTable : testing::Test {
  NumberTable() : database(MakeFile(), folder / "numbers", FileAccess::ReadWrite) {
    database.Execute("CREATE TABLE number (value INTEGER); INSERT INTO number VALUES (1), (2), (3);");
  }

  const FileKind& MakeFile() const {
    krnqb::tests::WriteText(folder / "numbers", "");
    return ledger::ledgerFileKind;
  }

  const TemporaryFolder folder;
  Connection database;
};

constexpr const char* above = "SELECT value FROM number WHERE value > ?1 ORDER BY value";

TEST_F(NumberTable, StatementsOfTheSameTextRunSideBySide) {
  Statement one = database.Prepare(above);
  Statement other = database.Prepare(above);
  one.Bind(1, std::int64_t{0});
  other.Bind(1, std::int64_t{2});
  ASSERT_TRUE(one.Step());
  ASSERT_TRUE(other.Step());
  EXPECT_EQ(one.Integer(0), 1);
  EXPECT_EQ(other.Integer(0), 3);
  EXPECT_TRUE(one.Step());
  EXPECT_FALSE(other.Step());
}

TEST_F(NumberTable, AStatementBeginsAnewAndUnbound) {
  {
    Statement ended = database.Prepare(above);
    ended.Bind(1, std::int64_t{0});
    ASSERT_TRUE(ended.Step());
  }
  Statement unbound = database.Prepare(above);
  EXPECT_FALSE(unbound.Step()) << "nothing is above NULL";
  unbound.Reset();
  unbound.Bind(1, std::int64_t{1});
  ASSERT_TRUE(unbound.Step());
  EXPECT_EQ(unbound.Integer(0), 2);
}

TEST_F(NumberTable, AStatementThatNothingUsesHoldsNoLock) {
  {
    Statement ended = database.Prepare("SELECT value FROM number");
    ASSERT_TRUE(ended.Step());
  }
  Connection other(ledger::ledgerFileKind, folder / "numbers", FileAccess::ReadWrite);
  other.Execute("ALTER TABLE number ADD COLUMN text TEXT; UPDATE number SET value = value * 10;");
  Statement again = database.Prepare("SELECT value FROM number");
  ASSERT_TRUE(again.Step());
  EXPECT_EQ(again.Integer(0), 10);
}

TEST_F(NumberTable, ManyStatementsOfDifferentTextsAreClosedWithTheConnection) {
  for (int round = 0; round < 2; ++round) {
    std::vector<Statement> statements;
    for (int number = 0; number < 40; ++number) {
      statements.push_back(database.Prepare("SELECT " + std::to_string(number)));
      ASSERT_TRUE(statements.back().Step());
      EXPECT_EQ(statements.back().Integer(0), number);
    }
  }
}

}  // namespace
}  // namespace krnqb::database
