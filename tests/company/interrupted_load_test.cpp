#include <fmt/format.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <csignal>

#include "company/check.h"
#include "company/crafted_files.h"
#include "company/records/errors.h"
#include "company/testing.h"

// Loads that a kill, an interrupt or a fault ends leave the company as it was.

namespace krnqb::company {
namespace {

using testing::Account;
using testing::Accounts;
using tests::ErrorOf;
using tests::ReadText;
using tests::ThrownError;
using tests::WriteText;

class InterruptedLoad : public testing::CompanyTest {
 protected:
  // Enough accounts to make the pages and the journal of a load large.
  static std::string ManyAccounts(int count, std::string_view prefix) {
    std::string records;
    for (int number = 0; number < count; ++number) {
      records += Account(fmt::format("{}{}", prefix, number), "Income");
    }
    return Accounts(records);
  }

  // A copy of the company as a load leaves it that is killed after it has changed pages.
  void Kill() {
    NewCompany("1.1").Load("a.xml", ManyAccounts(2000, "a"));
    before = ReadText(file);
    const Database loader(file, FileAccess::ReadWrite);
    loader.Execute(
        "PRAGMA cache_size = 1; BEGIN IMMEDIATE");  // so that changes reach the file before the commit
    loader.Execute("UPDATE record SET xml = xml || hex(zeroblob(100)); UPDATE record SET position = 7");
    std::filesystem::copy(file, killed);
    std::filesystem::copy(file.string() + "-journal", journal);
    ASSERT_NE(ReadText(killed).substr(0, before.size()), before);
  }

  const std::filesystem::path file = folder / "company.qbw";
  const std::filesystem::path killed = folder / "killed.qbw";
  const std::filesystem::path journal = folder / "killed.qbw-journal";
  std::string before;
};

TEST_F(InterruptedLoad, IsNotUndoneByReaders) {
  Kill();
  const std::string bytes = ReadText(killed);
  const std::string expected = fmt::format(
      "A load into the company file {0} was interrupted and has to be undone first; run krnqb company check "
      "--fix {0}",
      killed.string());
  EXPECT_EQ(ThrownError([&] { CompanyFile::Open(killed, FileAccess::ReadOnly); }).Description(), expected);
  EXPECT_EQ(ThrownError([&] { CheckCompany(killed); }).Description(), expected);
  EXPECT_EQ(ReadText(killed), bytes);
  EXPECT_TRUE(std::filesystem::exists(journal));
}

TEST_F(InterruptedLoad, IsUndoneByTheNextWriter) {
  Kill();
  CompanyFile::Open(killed, FileAccess::ReadWrite);
  EXPECT_FALSE(std::filesystem::exists(journal));
  EXPECT_EQ(ReadText(killed), before);
}

TEST_F(InterruptedLoad, IsUndoneByAFix) {
  Kill();
  const FixReport report = FixCompany(killed);
  EXPECT_TRUE(report.loadUndone);
  EXPECT_EQ(report.check.findings, std::vector<std::string>());
  EXPECT_FALSE(report.backup);
  EXPECT_FALSE(std::filesystem::exists(journal));
  EXPECT_EQ(ReadText(killed), before);
}

TEST_F(InterruptedLoad, IsNotUndoneFromADamagedPageInTheJournal) {
  Kill();
  std::string bytes = ReadText(journal);
  constexpr std::size_t firstPage = 512 + 4;  // after the header and the page's number
  // The journal's own checksum covers every 200th byte of a page, and not this one.
  bytes.at(firstPage + 700) = static_cast<char>(bytes.at(firstPage + 700) ^ 16);
  WriteText(journal, bytes);
  const std::string expected = fmt::format(
      "The interrupted load into the company file {0} cannot be undone: its journal {0}-journal is "
      "damaged; restore a copy of the file and remove the journal",
      killed.string());
  EXPECT_EQ(ThrownError([&] { FixCompany(killed); }).Description(), expected);
  EXPECT_EQ(ThrownError([&] { CompanyFile::Open(killed, FileAccess::ReadWrite); }).Description(), expected);
  EXPECT_TRUE(std::filesystem::exists(journal));
}

TEST_F(InterruptedLoad, EndsSoonAndChangesNothing) {
  NewCompany("1.1");
  before = ReadText(file);
  const std::string document = ManyAccounts(3000, "a");
  int polls = 0;
  {
    CompanyFile company = CompanyFile::Open(file, FileAccess::ReadWrite, [&] { return ++polls > 50; });
    EXPECT_EQ(ThrownError([&] { company.Load("a.xml", document); }).Description(), "interrupted");
  }
  EXPECT_GT(polls, 50);
  EXPECT_EQ(ReadText(file), before);
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw"});
}

TEST_F(InterruptedLoad, EndsALongStatement) {
  NewCompany("1.1");
  int polls = 0;
  const Database database(file, FileAccess::ReadOnly, [&] { return ++polls > 1000; });
  // Without an interrupt this statement counts for days.
  EXPECT_EQ(ThrownError([&] {
              database.Integer(
                  "WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < "
                  "1000000000000) SELECT count(*) FROM n");
            }).Description(),
            "interrupted");
  EXPECT_LT(polls, 1100);
}

TEST_F(InterruptedLoad, ByLackOfMemoryChangesNothing) {
  CompanyFile company = NewCompany("1.1");
  before = ReadText(file);
  const std::string document = ManyAccounts(4'000, "a");
  const sqlite3_int64 earlier = sqlite3_hard_heap_limit64(sqlite3_memory_used() + 200'000);
  const std::optional<Error> error = ErrorOf([&] { company.Load("a.xml", document); });
  sqlite3_hard_heap_limit64(earlier);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Number(), error_number::outOfMemory);
  EXPECT_EQ(error->Description(),
            fmt::format("There is not enough memory to use the company file {}.", file.string()));
  EXPECT_EQ(ReadText(file), before);
  EXPECT_EQ(company.Load("a.xml", document).added.at(0).count, 4'000);
}

TEST_F(InterruptedLoad, ByAFullDiskChangesNothing) {
  CompanyFile company = NewCompany("1.1");
  before = ReadText(file);
  rlimit limit{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
  rlimit small = limit;
  small.rlim_cur = before.size() + 100'000;
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
  const std::optional<Error> error = ErrorOf([&] { company.Load("a.xml", ManyAccounts(4'000, "a")); });
  ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
  std::signal(SIGXFSZ, handler);
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Number(), company_error::cannotOpen);
  EXPECT_EQ(error->Description(),
            fmt::format("The company file {} cannot be read or written: File too large.", file.string()));
  EXPECT_EQ(ReadText(file), before);
}

}  // namespace
}  // namespace krnqb::company
