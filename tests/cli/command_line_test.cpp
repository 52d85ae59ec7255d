#include "cli/command_line.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::RunProgram;
using Words = std::vector<std::string>;

template <typename Options>
Options Parsed(const Words& words) {
  return std::get<Options>(ParseCommandLine(words));
}

TEST(CommandLine, ReadsEveryOptionOfAnImport) {
  const auto options = Parsed<ImportCommand>({"import",
                                              "--company",
                                              "c.qbw",
                                              "--plan",
                                              "p.kpf",
                                              "--expenses",
                                              "--income",
                                              "--past-performance",
                                              "--balances",
                                              "all",
                                              "--growth-income",
                                              "3",
                                              "--growth-cogs",
                                              "-4",
                                              "--growth-expenses",
                                              "5",
                                              "--product",
                                              "cor",
                                              "--plan-start",
                                              "2003-01",
                                              "--import-start",
                                              "2002-02",
                                              "--fiscal-month",
                                              "July",
                                              "--select-expense",
                                              "Rent",
                                              "--select-expense",
                                              "[Old, closed]",
                                              "--select-all-expenses",
                                              "--accept-incomplete",
                                              "--dry-run",
                                              "--record",
                                              "r.jsonl",
                                              "--replay",
                                              "s.jsonl",
                                              "--json",
                                              "--quiet"});
  EXPECT_EQ(options.companyFile, "c.qbw");
  EXPECT_EQ(options.planFile, "p.kpf");
  EXPECT_TRUE(options.expenses);
  EXPECT_TRUE(options.income);
  EXPECT_TRUE(options.pastPerformance);
  EXPECT_EQ(options.balances, BalImport_All);
  EXPECT_EQ(options.growthRateIncome, std::int16_t{3});
  EXPECT_EQ(options.growthRateCogs, std::int16_t{-4});
  EXPECT_EQ(options.growthRateExpenses, std::int16_t{5});
  EXPECT_EQ(options.product, QBKRN_COR);
  EXPECT_EQ(options.planStart, (YearMonth{2003, 1}));
  EXPECT_EQ(options.importStart, (YearMonth{2002, 2}));
  EXPECT_EQ(options.fiscalMonth, std::int16_t{7});
  EXPECT_EQ(options.selectedExpenses, (Words{"Rent", "[Old, closed]"}));
  EXPECT_TRUE(options.selectAllExpenses);
  EXPECT_TRUE(options.acceptIncomplete);
  EXPECT_TRUE(options.dryRun);
  EXPECT_EQ(options.recordFile, "r.jsonl");
  EXPECT_EQ(options.replayFile, "s.jsonl");
  EXPECT_TRUE(options.json);
  EXPECT_TRUE(options.quiet);
}

TEST(CommandLine, LeavesOptionsThatWereNotGivenUnset) {
  const auto options = Parsed<ImportCommand>({"import", "--plan", "p.kpf"});
  EXPECT_EQ(options.companyFile, std::nullopt);
  EXPECT_FALSE(options.expenses || options.income || options.pastPerformance || options.selectAllExpenses);
  EXPECT_FALSE(options.acceptIncomplete || options.dryRun || options.json || options.quiet);
  EXPECT_EQ(options.balances, BalImport_None);
  EXPECT_FALSE(options.growthRateIncome || options.growthRateCogs || options.growthRateExpenses);
  EXPECT_FALSE(options.product || options.planStart || options.importStart || options.fiscalMonth);
  EXPECT_FALSE(options.recordFile || options.replayFile);
  EXPECT_EQ(options.selectedExpenses, Words{});
}

TEST(CommandLine, AcceptsOneNamePerSelectExpense) {
  const auto options = Parsed<ImportCommand>(
      {"import", "--select-expense", "Rent", "--select-expense=Gas", "--plan", "p.kpf"});
  EXPECT_EQ(options.selectedExpenses, (Words{"Rent", "Gas"}));
  EXPECT_EQ(RunProgram({"import", "--plan", "p.kpf", "--select-expense", "Rent", "Gas"}).err,
            "krnqb: wrong usage: krnqb import has no argument \"Gas\"; see krnqb import --help\n");
}

TEST(CommandLine, ReadsTheOtherCommands) {
  const auto accounts =
      Parsed<AccountsOptions>({"accounts", "expense", "--company", "c", "--plan", "p", "--json"});
  EXPECT_EQ(accounts.list, ListedAccounts::Expense);
  EXPECT_EQ(accounts.companyFile, "c");
  EXPECT_EQ(accounts.planFile, "p");
  EXPECT_TRUE(accounts.json);
  EXPECT_EQ(Parsed<TablesOptions>({"tables", "--product", "bri"}).product, QBKRN_BRI);
  const auto request =
      Parsed<RequestOptions>({"request", "10", "--from", "2002-01-01", "--to", "2002-01-31"});
  EXPECT_EQ(request.number, 10);
  EXPECT_EQ(request.fromDate, "2002-01-01");
  EXPECT_EQ(request.toDate, "2002-01-31");
  EXPECT_EQ(Parsed<RequestOptions>({"request", "-5"}).number, -5);
  EXPECT_EQ(Parsed<SupportsOptions>({"supports", "1.1", "--company", "c"}).version, "1.1");
  const auto company = Parsed<NewCompanyOptions>(
      {"company", "new", "c", "--name", "N", "--fiscal-month", "2", "--processor", "2.0"});
  EXPECT_EQ(company.file, "c");
  EXPECT_EQ(company.name, "N");
  EXPECT_EQ(company.fiscalMonth, 2);
  EXPECT_EQ(company.processorVersion, "2.0");
  EXPECT_EQ(Parsed<LoadCompanyOptions>({"company", "load", "c", "a", "b"}).documents, (Words{"a", "b"}));
  EXPECT_TRUE(Parsed<CompanyInfoOptions>({"company", "info", "c", "--json"}).json);
  const auto plan = Parsed<NewPlanOptions>({"plan", "new", "p", "--product", "cor", "--start", "2003-04"});
  EXPECT_EQ(plan.product, QBKRN_COR);
  EXPECT_EQ(plan.start, (YearMonth{2003, 4}));
  const auto shown = Parsed<ShowPlanOptions>({"plan", "show", "p", "--table", "20", "--cells"});
  EXPECT_EQ(shown.table, "20");
  EXPECT_TRUE(shown.cells);
  EXPECT_FALSE(shown.json);
}

struct InvalidLine {
  Words words;
  std::string message;
};

class InvalidCommandLines : public testing::TestWithParam<InvalidLine> {};

TEST_P(InvalidCommandLines, ExitWithTwoAndSayWhatToDo) {
  const tests::ProgramRun run = RunProgram(GetParam().words);
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err, "krnqb: wrong usage: " + GetParam().message + "\n");
  EXPECT_EQ(run.out, "");
}

INSTANTIATE_TEST_SUITE_P(
    Reported, InvalidCommandLines,
    testing::Values(
        InvalidLine{{}, "no command is given; see krnqb --help"},
        InvalidLine{{"imprt"}, "krnqb has no command \"imprt\"; did you mean \"import\"?"},
        InvalidLine{{"frobnicate"}, "krnqb has no command \"frobnicate\"; see krnqb --help"},
        InvalidLine{{"--jsn"}, "krnqb has no option \"--jsn\"; see krnqb --help"},
        InvalidLine{{"company"}, "no command is given; see krnqb company --help"},
        InvalidLine{{"plan", "sohw"}, "krnqb plan has no command \"sohw\"; did you mean \"show\"?"},
        InvalidLine{{"import", "--expense", "--plan", "p"},
                    "krnqb import has no option \"--expense\"; did you mean \"--expenses\"?"},
        InvalidLine{{"import", "--expenses"}, "--plan is required; see krnqb import --help"},
        InvalidLine{{"import", "--plan"}, "--plan needs a value; see krnqb import --help"},
        InvalidLine{{"import", "--plan", ""}, "--plan needs a value; see krnqb import --help"},
        InvalidLine{{"import", "--plan", "--expenses"}, "--plan needs a value; see krnqb import --help"},
        InvalidLine{{"import", "--plan", "p", "--select-expense", "--expenses"},
                    "--select-expense needs a value; see krnqb import --help"},
        InvalidLine{{"import", "--plan", "a", "--plan", "b"},
                    "--plan is given more than once; see krnqb import --help"},
        InvalidLine{{"import", "--plan", "p", "--product", "x"},
                    "--product \"x\" is not a product; give ald, bri or cor"},
        InvalidLine{{"accounts", "--company", "c"}, "income|expense is required; see krnqb accounts --help"},
        InvalidLine{{"accounts", "both", "--company", "c"},
                    "\"both\" is not a list of accounts; give income or expense"},
        InvalidLine{{"record", "--out", "a.jsonl"}, "--plan-start is required; see krnqb record --help"},
        InvalidLine{{"tables"}, "--product is required; see krnqb tables --help"},
        InvalidLine{{"request"}, "N is required; see krnqb request --help"},
        InvalidLine{{"supports", "--company", "c"}, "VERSION is required; see krnqb supports --help"},
        InvalidLine{{"company", "new", "c", "--name", "", "--fiscal-month", "1", "--processor", "1.1"},
                    "--name needs a value; see krnqb company new --help"},
        InvalidLine{{"company", "load", "c"}, "DOC is required; see krnqb company load --help"},
        InvalidLine{{"plan", "new", "p", "--product", "ald"},
                    "--start is required; see krnqb plan new --help"},
        InvalidLine{{"help", "imprt"}, "krnqb has no command \"imprt\"; did you mean \"import\"?"},
        InvalidLine{{"help", "company", "frobnicate"},
                    "krnqb company has no command \"frobnicate\"; see krnqb company --help"},
        InvalidLine{{"help", "import", "now"},
                    "krnqb import has no argument \"now\"; see krnqb import --help"},
        InvalidLine{{"help", "--jsn"}, "krnqb help has no option \"--jsn\"; see krnqb help --help"},
        InvalidLine{{"hlep"}, "krnqb has no command \"hlep\"; did you mean \"help\"?"},
        InvalidLine{{"plan", "show"}, "FILE is required; see krnqb plan show --help"},
        InvalidLine{{"plan", "show", "a", "b"},
                    "krnqb plan show has no argument \"b\"; see krnqb plan show --help"}));

class Helps : public testing::TestWithParam<Words> {};

TEST_P(Helps, ShowExamplesAndExitWithZero) {
  Words words = GetParam();
  words.emplace_back("--help");
  const tests::ProgramRun run = RunProgram(words);
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out.find("\nExamples:\n  krnqb "), std::string::npos) << run.out;
  std::string usage = "Usage: krnqb";
  for (const std::string& word : GetParam()) usage += " " + word;
  EXPECT_NE(run.out.find(usage + " ["), std::string::npos) << run.out;
}

INSTANTIATE_TEST_SUITE_P(OfEveryCommand, Helps,
                         testing::Values(Words{}, Words{"import"}, Words{"accounts"}, Words{"tables"},
                                         Words{"request"}, Words{"supports"}, Words{"company"},
                                         Words{"company", "new"}, Words{"company", "load"},
                                         Words{"company", "info"}, Words{"plan"}, Words{"plan", "new"},
                                         Words{"plan", "show"}));

TEST_P(Helps, AreAlsoShownByTheCommandHelp) {
  Words help{"help"};
  help.insert(help.end(), GetParam().begin(), GetParam().end());
  Words option = GetParam();
  option.emplace_back("--help");
  const tests::ProgramRun run = RunProgram(help);
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, RunProgram(option).out);
}

TEST(Help, HasNoLineLongerThanAHundredCharacters) {
  for (const Words& words : {Words{"--help"}, Words{"import", "--help"}, Words{"request", "--help"}}) {
    std::istringstream lines(RunProgram(words).out);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(line.size(), 100U) << line;
  }
}

TEST(Version, IsPrinted) {
  const tests::ProgramRun run = RunProgram({"--version"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, "krnqb 1.0.0\n");
}

}  // namespace
}  // namespace krnqb::cli
