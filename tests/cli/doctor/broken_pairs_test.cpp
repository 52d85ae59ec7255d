#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <nlohmann/json.hpp>

#include "cli/doctor/healthy_pair.h"
#include "company/crafted_files.h"
#include "company/earlier_file.h"
#include "files/lock.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using nlohmann::json;
using tests::HealthyPair;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::WriteText;

// A pair that is broken in one way, and the line that says so.
struct BrokenPair {
  std::string name;
  /// Breaks the pair; what it returns keeps it broken.
  std::function<std::shared_ptr<void>(const HealthyPair&)> breakIt;
  std::string check;
  std::string verdict;
  std::string found;     ///< the beginning of what was found; "FOLDER" is the pair's folder
  std::string whatToDo;  ///< the beginning of what to do
};

// Breaks something that stays broken by itself.
template <typename Break>
std::function<std::shared_ptr<void>(const HealthyPair&)> Once(Break breakIt) {
  return [breakIt](const HealthyPair& pair) {
    breakIt(pair);
    return nullptr;
  };
}

void FlipByte(const std::string& file, std::size_t offset) {
  std::string bytes = ReadText(file);
  bytes.at(offset) = static_cast<char>(bytes.at(offset) ^ 1);
  WriteText(file, bytes);
}

void ReplaceCompany(const HealthyPair& pair, std::string_view processor) {
  fs::remove(pair.Company());
  ASSERT_EQ(RunProgram({"company", "new", pair.Company(), "--name", "Garden", "--fiscal-month", "January",
                        "--processor", std::string(processor)})
                .code,
            0);
}

// Two imports, so that the history has two versions.
void ImportTwice(const HealthyPair& pair) {
  ASSERT_EQ(pair.Import().code, 0);
  ASSERT_EQ(pair.Import({"--growth-income", "5"}).code, 0);
}

std::string AccountRecord(std::string_view name) {
  return "<AccountRet><ListID>77-1</ListID><Name>" + std::string(name) + "</Name><FullName>" +
         std::string(name) +
         "</FullName><Sublevel>0</Sublevel><AccountType>Expense</AccountType><Balance>0.00</Balance>"
         "<TotalBalance>0.00</TotalBalance></AccountRet>";
}

// Names the example row of expenses and its actual twin.
void NameExample(const HealthyPair& pair, std::string_view name) {
  const std::string cell = "<c>" + std::string(name) + "</c>";
  pair.ChangePlan("<c>Example expense</c>", cell);
  pair.ChangePlan("<c>Example expense</c>", cell);
}

const std::vector<BrokenPair>& Pairs() {
  static const std::vector<BrokenPair> pairs{
      {"CompanyMissing", Once([](const HealthyPair& pair) { fs::remove(pair.Company()); }), "company", "fail",
       "There is no company file FOLDER/garden.qbw", "check the path"},
      {"CompanyOfText", Once([](const HealthyPair& pair) { WriteText(pair.Company(), "a letter"); }),
       "company", "fail", "The file FOLDER/garden.qbw is not a company file", "check the path"},
      {"CompanyDamagedAtItsBeginning", Once([](const HealthyPair& pair) { FlipByte(pair.Company(), 3000); }),
       "company", "fail", "The company file FOLDER/garden.qbw is damaged: page 1 does not match its checksum",
       "restore a copy of the file"},
      {"CompanyDamagedAtItsEnd", Once([](const HealthyPair& pair) {
         FlipByte(pair.Company(), ReadText(pair.Company()).size() - 9000);
       }),
       "integrity", "fail", "1 finding: page ", "restore a copy of the file"},
      {"LoadInterrupted", Once([](const HealthyPair& pair) {
         const std::size_t pages = ReadText(pair.Company()).size() / company::testing::pageSize;
         WriteText(pair.Company() + "-journal",
                   company::testing::EmptyJournal(static_cast<std::uint32_t>(pages)));
       }),
       "company", "fail", "A load into the company file FOLDER/garden.qbw", "run krnqb company check --fix"},
      {"CompanyWithoutChecksums", Once([](const HealthyPair& pair) {
         fs::rename(pair.Company(), pair.File("present.qbw"));
         company::testing::WriteEarlierFile(pair.File("present.qbw"), pair.Company());
       }),
       "integrity", "warn", "", "add checksums with krnqb company check --fix"},
      {"CompanyTooOld", Once([](const HealthyPair& pair) { ReplaceCompany(pair, "1.0"); }), "versions",
       "fail", "the company answers qbXML 1.0, and imports ask with 1.1",
       "load its documents into a company"},
      {"FiscalMonthInAnotherLanguage", Once([](const HealthyPair& pair) {
         pair.Load("CompanyQueryRs",
                   "<CompanyRet><CompanyName>Garten</CompanyName>"
                   "<FirstMonthFiscalYear>Januar</FirstMonthFiscalYear></CompanyRet>");
       }),
       "fiscal-month", "fail", "the first month of the fiscal year, \"Januar\", is not an English month name",
       "import with --fiscal-month"},
      {"FiscalMonthMissing", Once([](const HealthyPair& pair) {
         pair.Load("CompanyQueryRs", "<CompanyRet><CompanyName>Garten</CompanyName></CompanyRet>");
       }),
       "fiscal-month", "fail", "the company does not state the first month of its fiscal year",
       "import with --fiscal-month"},
      {"PlanOfAnotherYear",
       Once([](const HealthyPair& pair) { pair.ChangePlan("start=\"2003-01\"", "start=\"2010-01\""); }),
       "months", "warn", "no month from January to December 2009 has a transaction",
       "choose other months with --import-start YYYY-MM (the company has transactions from 2002-01-"},
      {"LastMonthWithoutTransactions",
       Once([](const HealthyPair& pair) { pair.ChangePlan("start=\"2003-01\"", "start=\"2003-02\""); }),
       "months", "warn", "January 2003 from February 2002 to January 2003 has no transaction",
       "make sure that nothing is missing"},
      {"AccountsThatDifferInCase",
       Once([](const HealthyPair& pair) { pair.Load("AccountQueryRs", AccountRecord("RENT")); }), "accounts",
       "fail", "names of accounts differ only in case: \"Rent\" and \"RENT\"", "rename one of the accounts"},
      {"RowNotWrittenAsItsAccount", Once([](const HealthyPair& pair) { NameExample(pair, "RENT"); }),
       "accounts", "warn", "the row \"RENT\" is not written as the account \"Rent\"",
       "keep one row of the account"},
      {"RowTwice", Once([](const HealthyPair& pair) {
         ASSERT_EQ(pair.Import().code, 0);
         NameExample(pair, "Rent");
       }),
       "accounts", "warn", "the account \"Rent\" has 2 rows", "keep one row of the account"},
      {"PlanMissing", Once([](const HealthyPair& pair) { fs::remove(pair.Plan()); }), "plan", "fail",
       "cannot open the plan FOLDER/garden.kpf: No such file or directory", "check the path"},
      {"PlanCutOff",
       Once([](const HealthyPair& pair) { WriteText(pair.Plan(), ReadText(pair.Plan()).substr(0, 1000)); }),
       "plan", "fail", "cannot open the plan FOLDER/garden.kpf: line ", ""},
      {"PlanWithoutEdition", Once([](const HealthyPair& pair) { pair.ChangePlan("product=\"ald\" ", ""); }),
       "plan", "fail", "FOLDER/garden.kpf does not state its edition",
       "import with --product ald, bri or cor"},
      {"PlanWithoutFirstMonth",
       Once([](const HealthyPair& pair) { pair.ChangePlan("start=\"2003-01\"", ""); }), "plan", "fail",
       "FOLDER/garden.kpf does not state its first month", "import with --plan-start YYYY-MM"},
      {"TableMissing", Once([](const HealthyPair& pair) {
         pair.ChangePlan("<tableitem id=\"21000000000000000000000000000600\">", "<tableitem id=\"9\">");
       }),
       "tables", "fail", "the table Actual expenses is missing",
       "let the planning program write the plan again"},
      {"BlockMissing", Once([](const HealthyPair& pair) {
         pair.ChangePlan("<block id=\"db_income_range_cat3\"", "<block id=\"another\"");
       }),
       "tables", "fail", "the block Expenses of Planned expenses is missing",
       "let the planning program write the plan again"},
      {"StartRowMissing", Once([](const HealthyPair& pair) {
         pair.ChangePlan("<block id=\"db_income_range_cat3\" startrow=\"5\"",
                         "<block id=\"db_income_range_cat3\"");
       }),
       "tables", "warn", "the startrow of the block Expenses of Planned expenses is missing",
       "correct startrow"},
      {"PastPerformanceMissing", Once([](const HealthyPair& pair) {
         pair.ChangePlan("<tableitem id=\"20000000000000000000000000000800\">", "<tableitem id=\"9\">");
       }),
       "tables", "warn", "the table Past performance is missing", "import without --past-performance"},
      {"TwinsWithOtherNames", Once([](const HealthyPair& pair) {
         const std::string text = ReadText(pair.Plan());
         const std::size_t actual = text.find("db_income_range_cat3_actual");
         ASSERT_NE(actual, std::string::npos);
         WriteText(pair.Plan(), text.substr(0, actual) +
                                    tests::Replaced(text.substr(actual), "Example expense", "Insurance"));
       }),
       "twins", "warn",
       "row 1 of the block Expenses is \"Example expense\" in Planned expenses, but \"Insurance\"",
       "align the rows"},
      {"TwinWithoutRow", Once([](const HealthyPair& pair) {
         const std::string text = ReadText(pair.Plan());
         const std::size_t actual = text.find("<row>", text.find("db_income_range_cat3_actual"));
         const std::size_t end = text.find("</row>", actual) + 6;
         WriteText(pair.Plan(), text.substr(0, actual) + text.substr(end));
       }),
       "twins", "warn", "row 1 of the block Expenses is ", "align the rows"},
      {"RowShortOfCells", Once([](const HealthyPair& pair) {
         pair.ChangePlan("<c>Example expense</c><c>0</c><c>0</c>", "<c>Example expense</c>");
       }),
       "cells", "warn", "\"Example expense\" in Planned expenses has 12 of 14 cells",
       "add the missing cells"},
      {"RowWithoutCells", Once([](const HealthyPair& pair) {
         pair.ChangePlan(
             "<c>Example expense</c><c>0</c><c>0</c><c>0</c><c>0</c><c>0</c><c>0</c><c>0</c><c>0</c>"
             "<c>0</c><c>0</c><c>0</c><c>0</c><c>0</c>",
             "");
       }),
       "cells", "fail", "row 1 of the block Expenses in Planned expenses has no cell",
       "give the row its cells"},
      {"BackupIsAFolder",
       Once([](const HealthyPair& pair) { fs::create_directories(pair.File("garden.kpf.bak/deep")); }),
       "folder", "fail", "cannot write FOLDER/garden.kpf.bak: it is a folder", "move it away"},
      {"LockHeld",
       [](const HealthyPair& pair) { return std::make_shared<files::PlanLock>(fs::path(pair.Plan())); },
       "lock", "fail", "cannot change the plan FOLDER/garden.kpf: another import or undo is changing it",
       "wait until that has ended and try again"},
      {"LockIsALink",
       Once([](const HealthyPair& pair) { fs::create_symlink("elsewhere", pair.File("garden.kpf.lock")); }),
       "lock", "fail", "cannot lock the plan with FOLDER/garden.kpf.lock: it is a symbolic link",
       "move it away"},
      {"LockIsAFolder",
       Once([](const HealthyPair& pair) { fs::create_directory(pair.File("garden.kpf.lock")); }), "lock",
       "fail", "cannot lock the plan with FOLDER/garden.kpf.lock: ", ""},
      {"HistoryIsAFile",
       Once([](const HealthyPair& pair) { WriteText(pair.File("garden.kpf.history"), "x"); }), "history",
       "fail", "cannot read the plan's history FOLDER/garden.kpf.history: it is not a folder",
       "move it away"},
      {"KeptVersionChanged", Once([](const HealthyPair& pair) {
         ImportTwice(pair);
         WriteText(pair.File("garden.kpf.history/0001.kpf"), "<plan/>");
       }),
       "history", "warn",
       "cannot use version 1 of the history: another program has changed FOLDER/garden.kpf.history/0001.kpf",
       "choose another version"},
      {"DescriptionDamaged", Once([](const HealthyPair& pair) {
         ImportTwice(pair);
         WriteText(pair.File("garden.kpf.history/0002.json"), "{");
       }),
       "history", "warn", "cannot use version 2 of the history: its description is missing or damaged",
       "if you need the version, copy"},
  };
  return pairs;
}

class BrokenPairs : public testing::TestWithParam<BrokenPair> {};

TEST_P(BrokenPairs, GiveTheirLineAlone) {
  const BrokenPair& broken = GetParam();
  const HealthyPair pair;
  const std::shared_ptr<void> kept = broken.breakIt(pair);
  ASSERT_FALSE(HasFatalFailure());
  const ProgramRun run = pair.Doctor({"--json"});
  EXPECT_EQ(run.code, broken.verdict == "fail" ? 1 : 3);
  EXPECT_EQ(run.err, "");
  const json checkup = json::parse(run.out);
  EXPECT_EQ(checkup.at("result"), broken.verdict);
  int lines = 0;
  for (const json& line : checkup.at("checks")) {
    if (line.at("verdict") == "ok") continue;
    ++lines;
    EXPECT_EQ(line.at("check"), broken.check) << line;
    EXPECT_EQ(line.at("verdict"), broken.verdict);
    std::string found = broken.found;
    if (const std::size_t folder = found.find("FOLDER"); folder != std::string::npos)
      found.replace(folder, 6, fs::path(pair.Plan()).parent_path().string());
    EXPECT_EQ(line.at("found").get<std::string>().substr(0, found.size()), found);
    EXPECT_EQ(line.at("what_to_do").get<std::string>().substr(0, broken.whatToDo.size()), broken.whatToDo);
    EXPECT_GT(line.at("what_to_do").get<std::string>().size(), 5U);
  }
  EXPECT_EQ(lines, 1) << run.out;
  EXPECT_EQ(checkup.at("checks").size() + checkup.at("not_checked").size(), 13U);
}

class ImportedPairs : public testing::TestWithParam<BrokenPair> {};

// What fails in the check-up keeps an import from writing; what only warns does not.
TEST_P(ImportedPairs, FailExactlyWhereTheCheckupDoes) {
  const BrokenPair& broken = GetParam();
  const HealthyPair pair;
  const std::shared_ptr<void> kept = broken.breakIt(pair);
  ASSERT_FALSE(HasFatalFailure());
  const ProgramRun run = pair.Import({"--quiet"});
  EXPECT_EQ(run.code == 0, broken.verdict == "warn") << run.code << run.err;
}

INSTANTIATE_TEST_SUITE_P(Doctor, BrokenPairs, testing::ValuesIn(Pairs()),
                         [](const auto& pair) { return pair.param.name; });

// A damaged page that an import does not read is no obstacle to it.
std::vector<BrokenPair> PairsWithReadFaults() {
  std::vector<BrokenPair> pairs = Pairs();
  std::erase_if(pairs,
                [](const BrokenPair& pair) { return pair.check == "integrity" && pair.verdict == "fail"; });
  return pairs;
}

INSTANTIATE_TEST_SUITE_P(Doctor, ImportedPairs, testing::ValuesIn(PairsWithReadFaults()),
                         [](const auto& pair) { return pair.param.name; });

}  // namespace
}  // namespace krnqb::cli
