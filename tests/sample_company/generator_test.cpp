#include "sample_company/generator.h"

#include <algorithm>
#include <functional>
#include <set>

#include "company/records/errors.h"
#include "sample_company/testing.h"
#include "thrown_error.h"

namespace krnqb::sample_company {
namespace {

using testing::Contents;
using testing::FullCompany;
using testing::GeneratedCompany;
using testing::TextAt;
using tests::TemporaryFolder;
using tests::ThrownError;

std::int64_t CountOf(const GeneratorSummary& summary, std::string_view kind) {
  const auto found = std::ranges::find(summary.records, kind, &company::RecordCount::kind);
  return found == summary.records.end() ? 0 : found->count;
}

TEST(CompanyGenerator, GeneratesTheSameCompanyForTheSameSeed) {
  const std::string contents = Contents(GeneratedCompany(FullCompany()));
  EXPECT_GT(contents.size(), 1'000'000U);
  EXPECT_EQ(Contents(GeneratedCompany(FullCompany())), contents);
}

TEST(CompanyGenerator, GeneratesAnotherCompanyForAnotherSeed) {
  GeneratorSettings settings = FullCompany();
  ++settings.seed;
  EXPECT_NE(Contents(GeneratedCompany(settings)), Contents(GeneratedCompany(FullCompany())));
}

TEST(CompanyGenerator, GeneratesTheRequestedNumbers) {
  const GeneratorSummary summary = GeneratedCompany(FullCompany()).summary;
  EXPECT_EQ(CountOf(summary, "AccountRet"), 150);
  std::int64_t items = 0;
  std::int64_t transactions = 0;
  for (const company::RecordCount& count : summary.records) {
    if (count.kind.starts_with("Item")) items += count.count;
    if (company::FindRecordKind(count.kind)->shape == company::RecordShape::Transaction)
      transactions += count.count;
  }
  EXPECT_EQ(items, 60);
  EXPECT_EQ(transactions, 2'000);
}

TEST(CompanyGenerator, ReportsLinesAndFileSize) {
  const GeneratedCompany company(FullCompany());
  std::size_t lines = 0;
  for (const XmlElement& transaction : company.Transactions()) {
    lines += transaction.SelectAll(".//*[TxnLineID]").size();
  }
  EXPECT_EQ(company.summary.transactionLines, static_cast<std::int64_t>(lines));
  EXPECT_EQ(company.summary.fileSize, std::filesystem::file_size(company.folder / "company.qbw"));
  EXPECT_GE(lines, 6'000U) << "a transaction has three to four lines";
}

TEST(CompanyGenerator, NamesTheCompanyAndItsProcessor) {
  GeneratorSettings settings = FullCompany();
  settings.companyName = "Björk & Daughters";
  settings.processorVersion = "1.0";
  settings.transactions = 0;
  const company::CompanyInfo info = GeneratedCompany(settings).file.Info();
  EXPECT_EQ(info.name, "Björk & Daughters");
  EXPECT_EQ(info.processorVersion, "1.0");
  EXPECT_EQ(info.fiscalMonth, 1);
}

TEST(CompanyGenerator, AcceptsTheMinimumOfEverything) {
  GeneratorSettings settings;
  settings.accounts = GeneratorBounds::leastAccounts;
  settings.items = GeneratorBounds::leastItems;
  settings.customers = GeneratorBounds::leastCustomers;
  settings.firstYear = 1999;
  settings.lastYear = 1999;
  for (const std::int64_t transactions : {0, 1, 2, 13, 100}) {
    settings.transactions = transactions;
    for (const std::uint64_t seed : {1U, 2U, 3U}) {
      settings.seed = seed;
      EXPECT_EQ(GeneratedCompany(settings).Transactions().size(), static_cast<std::size_t>(transactions));
    }
  }
}

TEST(CompanyGenerator, GrowsOverTheYearsAndIsBusiestInSpring) {
  std::map<std::string, int> inMonth;
  std::map<std::string, int> inYear;
  for (const XmlElement& transaction : GeneratedCompany(FullCompany()).Transactions()) {
    const std::string date = TextAt(transaction, "TxnDate");
    ++inMonth[date.substr(0, 7)];
    ++inYear[date.substr(0, 4)];
  }
  ASSERT_EQ(inYear.size(), 2U);
  EXPECT_GT(inYear["2002"], inYear["2001"]);
  ASSERT_EQ(inMonth.size(), 24U);
  EXPECT_GT(inMonth["2001-05"], 2 * inMonth["2001-01"]);
  EXPECT_GT(inMonth["2002-05"], 2 * inMonth["2002-01"]);
}

TEST(CompanyGenerator, EntersTransactionsInTheOrderOfTheirNumbers) {
  std::map<int, std::string> datesByNumber;
  std::set<std::string> ids;
  for (const XmlElement& transaction : GeneratedCompany(FullCompany()).Transactions()) {
    datesByNumber[std::stoi(TextAt(transaction, "TxnNumber"))] =
        TextAt(transaction, "TimeCreated") + " " + TextAt(transaction, "TxnDate");
    ids.insert(TextAt(transaction, "TxnID"));
    for (const XmlElement& line : transaction.SelectAll(".//TxnLineID")) ids.insert(line.Text());
    EXPECT_EQ(TextAt(transaction, "TimeCreated").substr(0, 10), TextAt(transaction, "TxnDate"));
  }
  EXPECT_EQ(datesByNumber.size(), 2'000U);
  std::vector<std::string> dates;
  for (const auto& [number, date] : datesByNumber) dates.push_back(date);
  EXPECT_TRUE(std::ranges::is_sorted(dates));
  EXPECT_EQ(static_cast<std::int64_t>(ids.size()),
            2'000 + GeneratedCompany(FullCompany()).summary.transactionLines);
}

TEST(CompanyGenerator, RefusesSettingsOutOfBounds) {
  struct Case {
    std::string_view what;
    std::function<void(GeneratorSettings&)> change;
    std::string_view inDescription;
  };
  const std::vector<Case> cases = {
      {"too few accounts", [](auto& s) { s.accounts = GeneratorBounds::leastAccounts - 1; },
       "43 to 10000 accounts"},
      {"too many accounts", [](auto& s) { s.accounts = GeneratorBounds::mostAccounts + 1; }, "not 10001"},
      {"too few items", [](auto& s) { s.items = GeneratorBounds::leastItems - 1; }, "16 to 100000 items"},
      {"too many items", [](auto& s) { s.items = GeneratorBounds::mostItems + 1; }, "not 100001"},
      {"no customers", [](auto& s) { s.customers = 0; }, "1 to 100000 customers"},
      {"too many customers", [](auto& s) { s.customers = 100'001; }, "not 100001"},
      {"fewer than no transactions", [](auto& s) { s.transactions = -1; }, "transactions, not -1"},
      {"too many transactions", [](auto& s) { s.transactions = 5'000'001; }, "0 to 5000000 transactions"},
      {"too early a year", [](auto& s) { s.firstYear = 1979; }, "1980 to 2099, not 1979"},
      {"too late a year", [](auto& s) { s.lastYear = 2100; }, "1980 to 2099, not 2100"},
      {"years backwards", [](auto& s) { s.firstYear = 2003; },
       "The last year, 2002, is before the first, 2003"},
      {"too many years", [](auto& s) { s.firstYear = 1990, s.lastYear = 2040; }, "1 to 50 years, not 51"},
      {"no version", [](auto& s) { s.processorVersion = "3.0"; }, "not 3.0"},
      {"no name", [](auto& s) { s.companyName = "\x01"; }, "XML"},
  };
  const TemporaryFolder folder;
  for (const Case& refused : cases) {
    GeneratorSettings settings = FullCompany();
    refused.change(settings);
    const Error error = ThrownError([&] { GenerateCompany(folder / "company.qbw", settings); });
    EXPECT_EQ(error.Number(), error_number::invalidProcedureCall) << refused.what;
    EXPECT_NE(error.Description().find(refused.inDescription), std::string::npos) << error.Description();
  }
  EXPECT_EQ(folder.FileNames(), std::vector<std::string>());
}

TEST(CompanyGenerator, DoesNotReplaceAFile) {
  const TemporaryFolder folder;
  tests::WriteText(folder / "company.qbw", "precious");
  EXPECT_EQ(ThrownError([&] { GenerateCompany(folder / "company.qbw", FullCompany()); }).Number(),
            company::company_error::fileAlreadyExists);
  EXPECT_EQ(tests::ReadText(folder / "company.qbw"), "precious");
}

}  // namespace
}  // namespace krnqb::sample_company
