#include "company/check.h"

#include <fmt/format.h>

#include "company/crafted_files.h"
#include "company/earlier_file.h"
#include "company/records/errors.h"
#include "company/testing.h"
#include "sample_company/generator.h"

namespace krnqb::company {
namespace {

using testing::Account;
using testing::Accounts;
using tests::ReadText;
using tests::ThrownError;
using tests::WriteText;

class CompanyCheck : public ::testing::Test {
 protected:
  CompanyCheck() {
    sample_company::GeneratorSettings settings;
    settings.accounts = 60;
    settings.items = 20;
    settings.customers = 5;
    settings.transactions = 150;
    sample_company::GenerateCompany(file, settings);
  }

  // Changes the company behind the back of whatever computes its postings, with correct checksums.
  void Change(const char* statements) const { Database(file, FileAccess::ReadWrite).Execute(statements); }

  std::string OnlyFinding() const {
    const CheckReport report = CheckCompany(file);
    EXPECT_EQ(report.findingCount, 1);
    return report.findings.empty() ? "" : report.findings.front();
  }

  tests::TemporaryFolder folder;
  const std::filesystem::path file = folder / "company.qbw";
};

TEST_F(CompanyCheck, CountsEverythingThatIsWhole) {
  const std::string before = ReadText(file);
  const CheckReport report = CheckCompany(file);
  EXPECT_EQ(report.findings, std::vector<std::string>());
  EXPECT_EQ(report.findingCount, 0);
  EXPECT_TRUE(report.checksums);
  EXPECT_EQ(report.pages, static_cast<std::int64_t>(before.size() / testing::pageSize));
  EXPECT_EQ(report.records, 60 + 20 + 150 + 2);
  EXPECT_GT(report.postings, 300);
  EXPECT_EQ(ReadText(file), before);
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw"});
}

TEST_F(CompanyCheck, FindsWhateverTheTextsDoNotGive) {
  struct Case {
    const char* change;
    std::string_view finding;
  };
  const std::vector<Case> cases = {
      {"UPDATE posting SET amount = amount + 1 WHERE number = 1 AND record_id = (SELECT max(record_id) FROM "
       "posting)",
       "has 1 postings that differ from its text"},
      {"DELETE FROM posting WHERE number = 1 AND record_id = (SELECT min(record_id) FROM posting)",
       "postings, but its text gives"},
      {"INSERT INTO posting VALUES (999999, 1, 0, 'a', '2002-01-01', 1, 0)",
       "posting 1 of record 999999 belongs to no transaction"},
      {"UPDATE item_account SET account = 'x' WHERE rowid = 1", "has other accounts than its text"},
      {"INSERT INTO item_account VALUES ('none', 1, 'x', NULL)",
       "1 accounts belong to items that are missing"},
      {"UPDATE record SET txn_date = '2002-03-03', position = 1 WHERE id = (SELECT max(id) FROM record WHERE "
       "family = 'Account')",
       "is filed under other values than its text has"},
      {"UPDATE record SET xml = replace(xml, '</AccountRet>', '') WHERE id = (SELECT max(id) FROM record "
       "WHERE "
       "family = 'Account')",
       "has a text that is not well-formed"},
      {"UPDATE record SET xml = '<JournalRet/>' WHERE id = (SELECT max(id) FROM record WHERE family = "
       "'Account')",
       "has a text that cannot be read"},
  };
  const std::string whole = ReadText(file);
  for (const Case& each : cases) {
    SCOPED_TRACE(each.change);
    WriteText(file, whole);
    Change(each.change);
    EXPECT_NE(OnlyFinding().find(each.finding), std::string::npos) << OnlyFinding();
  }
}

TEST_F(CompanyCheck, FindsEveryDamagedPageEvenUnusedOnes) {
  Change("DELETE FROM record WHERE family <> 'Company'");
  Change("DELETE FROM posting");
  ASSERT_GT(Database(file, FileAccess::ReadOnly).Integer("PRAGMA freelist_count"), 5);
  std::string bytes = ReadText(file);
  const std::size_t pages = bytes.size() / testing::pageSize;
  for (std::size_t page = 0; page < pages; ++page) {
    bytes[page * testing::pageSize + 1000 + page] =
        static_cast<char>(bytes[page * testing::pageSize + 1000 + page] ^ 4);
  }
  WriteText(file, bytes);
  const CheckReport report = CheckCompany(file);
  EXPECT_EQ(report.findingCount, static_cast<std::int64_t>(pages));
  EXPECT_EQ(report.findings.at(2), "page 3 does not match its checksum");
}

TEST_F(CompanyCheck, FindsThatTheFileEndsWithinAPage) {
  std::string bytes = ReadText(file);
  const std::size_t pages = bytes.size() / testing::pageSize;
  bytes.resize(bytes.size() - 100);
  WriteText(file, bytes);
  EXPECT_EQ(OnlyFinding(), fmt::format("page {} does not match its checksum", pages));
}

TEST_F(CompanyCheck, FindsExchangedPages) {
  std::string bytes = ReadText(file);
  const std::string third = bytes.substr(2 * testing::pageSize, testing::pageSize);
  bytes.replace(2 * testing::pageSize, testing::pageSize,
                bytes.substr(3 * testing::pageSize, testing::pageSize));
  bytes.replace(3 * testing::pageSize, testing::pageSize, third);
  WriteText(file, bytes);
  EXPECT_EQ(CheckCompany(file).findings, (std::vector<std::string>{"page 3 does not match its checksum",
                                                                   "page 4 does not match its checksum"}));
}

TEST_F(CompanyCheck, RefusesWhatIsNoCompanyFile) {
  WriteText(file, std::string(2000, 'x'));
  EXPECT_EQ(ThrownError([&] { CheckCompany(file); }).Description(),
            fmt::format("The file {} is not a company file.", file.string()));
}

TEST_F(CompanyCheck, IsInterrupted) {
  int polls = 0;
  const auto interrupted = [&] { return ++polls > 10; };
  EXPECT_EQ(ThrownError([&] { CheckCompany(file, interrupted); }).Description(), "interrupted");
  EXPECT_GT(polls, 10);
}

TEST_F(CompanyCheck, FixesNothingInAWholeCompany) {
  const std::string before = ReadText(file);
  const FixReport report = FixCompany(file);
  EXPECT_FALSE(report.loadUndone);
  EXPECT_FALSE(report.backup);
  EXPECT_EQ(ReadText(file), before);
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw"});
}

class EarlierCompany : public CompanyCheck {
 protected:
  EarlierCompany() {
    std::filesystem::rename(file, folder / "present.qbw");
    testing::WriteEarlierFile(folder / "present.qbw", file);
    figures = testing::Figures(CompanyFile::Open(folder / "present.qbw", FileAccess::ReadOnly));
    std::filesystem::remove(folder / "present.qbw");
  }

  std::string figures;
};

TEST_F(EarlierCompany, IsReadAndLoadedWithoutChecksums) {
  {
    const CompanyFile company = CompanyFile::Open(file, FileAccess::ReadOnly);
    EXPECT_FALSE(company.HasChecksums());
    EXPECT_EQ(testing::Figures(company), figures);
  }
  CompanyFile company = CompanyFile::Open(file, FileAccess::ReadWrite);
  EXPECT_EQ(company.Load("a.xml", Accounts(Account("new", "Income"))).added.at(0).count, 1);
  EXPECT_FALSE(CheckCompany(file).checksums);
  EXPECT_EQ(CheckCompany(file).findings, std::vector<std::string>());
}

TEST_F(EarlierCompany, IsWrittenAnewWithChecksums) {
  std::filesystem::permissions(file, std::filesystem::perms::owner_read |
                                         std::filesystem::perms::owner_write |
                                         std::filesystem::perms::group_read);
  const std::string before = ReadText(file);
  const FixReport report = FixCompany(file);
  EXPECT_FALSE(report.check.checksums);
  ASSERT_TRUE(report.backup);
  EXPECT_EQ(*report.backup, folder / "company.qbw.bak");
  EXPECT_EQ(ReadText(*report.backup), before);
  EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"company.qbw", "company.qbw.bak"}));
  EXPECT_EQ(std::filesystem::status(file).permissions(),
            std::filesystem::status(*report.backup).permissions());
  const CheckReport after = CheckCompany(file);
  EXPECT_TRUE(after.checksums);
  EXPECT_EQ(after.findings, std::vector<std::string>());
  EXPECT_EQ(after.records, report.check.records);
  EXPECT_EQ(after.postings, report.check.postings);
  EXPECT_EQ(testing::Figures(CompanyFile::Open(file, FileAccess::ReadOnly)), figures);
}

TEST_F(EarlierCompany, IsNotWrittenAnewIfItIsDamaged) {
  testing::ExecuteDirectly(file,
                           "UPDATE posting SET amount = 7 WHERE record_id = (SELECT max(record_id) FROM "
                           "posting) AND number = 1");
  const std::string before = ReadText(file);
  const FixReport report = FixCompany(file);
  EXPECT_EQ(report.check.findingCount, 1);
  EXPECT_FALSE(report.backup);
  EXPECT_EQ(ReadText(file), before);
}

TEST_F(EarlierCompany, IsLeftAloneIfWritingItAnewIsInterrupted) {
  const std::string before = ReadText(file);
  int polls = 0;
  FixCompany(file, [&] {
    ++polls;
    return false;
  });
  WriteText(file, before);
  std::filesystem::remove(folder / "company.qbw.bak");
  const int last = polls - 5;
  polls = 0;
  EXPECT_EQ(ThrownError([&] { FixCompany(file, [&] { return ++polls > last; }); }).Description(),
            "interrupted");
  EXPECT_EQ(ReadText(file), before);
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>{"company.qbw"});
}

TEST_F(EarlierCompany, DoesNotHaveReservedBytes) {
  const auto flip = [&](std::size_t place, char value) {
    std::string bytes = ReadText(file);
    bytes[place] = value;
    WriteText(file, bytes);
  };
  flip(63, 2);  // claims the layout with checksums
  EXPECT_NE(ThrownError([&] { CompanyFile::Open(file, FileAccess::ReadOnly); })
                .Description()
                .find("page 1 does not match its checksum"),
            std::string::npos);
}

}  // namespace
}  // namespace krnqb::company
