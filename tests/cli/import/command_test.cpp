#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <sstream>

#include "cli/workplace.h"
#include "files/lock.h"
#include "support/characters.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;
using tests::WriteText;

// A company of one income and two expense accounts, small enough to expect the whole output.
std::string SmallCompany(const Workplace& place, const std::string& processorVersion = "1.1",
                         const std::string& fiscalMonth = "January") {
  const std::string file = place / "nursery.qbw";
  EXPECT_EQ(RunProgram({"company", "new", file, "--name", "Acme", "--fiscal-month", "1", "--processor",
                        processorVersion})
                .code,
            0);
  WriteText(place / "small.xml",
            "<QBXML><QBXMLMsgsRs><CompanyQueryRs><CompanyRet><CompanyName>Acme</"
            "CompanyName><FirstMonthFiscalYear>" +
                fiscalMonth +
                "</FirstMonthFiscalYear></CompanyRet></CompanyQueryRs><AccountQueryRs>"
                "<AccountRet><ListID>1-1</ListID><Name>Sales</Name><Sublevel>0</Sublevel>"
                "<AccountType>Income</AccountType></AccountRet>"
                "<AccountRet><ListID>2-1</ListID><Name>Café</Name><Sublevel>0</Sublevel>"
                "<AccountType>Expense</AccountType></AccountRet>"
                "<AccountRet><ListID>3-1</ListID><Name>Rent</Name><Sublevel>0</Sublevel>"
                "<AccountType>Expense</AccountType></AccountRet></AccountQueryRs></QBXMLMsgsRs></QBXML>");
  EXPECT_EQ(RunProgram({"company", "load", file, place / "small.xml"}).code, 0);
  return file;
}

std::string NewPlan(const Workplace& place) {
  const std::string file = place / "plan.kpf";
  EXPECT_EQ(RunProgram({"plan", "new", file, "--product", "ald", "--start", "2003-01"}).code, 0);
  return file;
}

struct FileState {
  std::string text;
  fs::file_time_type written;
  ino_t number;
  bool operator==(const FileState&) const = default;
};

FileState StateOf(const std::string& file) {
  struct stat status {};
  EXPECT_EQ(::stat(file.c_str(), &status), 0);
  return {ReadText(file), fs::last_write_time(file), status.st_ino};
}

TEST(ImportCommand, AnnouncesItselfAndReportsTheChangesAndTheBackup) {
  const Workplace place;
  const std::string company = SmallCompany(place);
  const std::string plan = NewPlan(place);
  const std::string before = ReadText(plan);
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--income"}));
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, "Importing expense and income accounts from Acme (" + company +
                         "), January to December 2002, into " + plan +
                         " (product ald, from January 2003): no amounts.\n"
                         "Rows added (no amounts were imported):\n"
                         "  Sales: Sales\n"
                         "  Expenses: Café, Rent\n"
                         "\n"
                         "4 tables change: 8 rows added, 108 formulas cleared.\n"
                         "The planning program computes the cleared formulas again.\n"
                         "Wrote " +
                         plan + ". Its previous version is kept as " + plan +
                         ".bak.\nTo bring it back: krnqb plan undo " + plan + "\n");
  EXPECT_EQ(ReadText(plan + ".bak"), before);
  EXPECT_NE(ReadText(plan), before);
}

TEST(ImportCommand, WritesNothingTheSecondTime) {
  const Workplace place;
  SmallCompany(place);
  const std::string plan = NewPlan(place);
  const auto arguments = place.ImportArguments("plan.kpf", {"--expenses", "--income"});
  ASSERT_EQ(RunProgram(arguments).code, 0);
  const FileState after = StateOf(plan);
  const FileState backup = StateOf(plan + ".bak");
  const ProgramRun again = RunProgram(arguments);
  EXPECT_EQ(again.code, 0);
  EXPECT_TRUE(again.out.ends_with("\nNothing in the plan changes.\n" + plan +
                                  " is up to date and was not written.\n"))
      << again.out;
  EXPECT_EQ(StateOf(plan), after);
  EXPECT_EQ(StateOf(plan + ".bak"), backup);
}

TEST(ImportCommand, ShowsChangesInADryRunAndTouchesNoFile) {
  const Workplace place;
  SmallCompany(place);
  const std::string plan = NewPlan(place);
  const FileState before = StateOf(plan);
  const ProgramRun dry = RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--dry-run"}));
  EXPECT_EQ(dry.code, 0);
  EXPECT_NE(dry.out.find("  Expenses: Café, Rent\n"), std::string::npos);
  EXPECT_TRUE(dry.out.ends_with("Dry run: nothing was written.\n")) << dry.out;
  EXPECT_EQ(StateOf(plan), before);
  EXPECT_FALSE(fs::exists(plan + ".bak"));
  EXPECT_FALSE(fs::exists(plan + ".lock"));
}

TEST(ImportCommand, PrintsNothingWhenQuiet) {
  const Workplace place;
  SmallCompany(place);
  const std::string plan = NewPlan(place);
  const Surroundings terminal{.clock = tests::JanuaryClock(), .errorIsTerminal = true};
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--quiet"}), terminal);
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "");
  EXPECT_NE(ReadText(plan).find("<c>Rent</c>"), std::string::npos);
}

TEST(ImportCommand, StillWarnsWhenQuiet) {
  const Workplace place;
  SmallCompany(place);
  NewPlan(place);
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--past-performance", "--quiet"}));
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "krnqb: warning: --past-performance is ignored because --balances is none\n");
}

TEST(ImportCommand, MovesAProgressBarOnATerminal) {
  const Workplace place;
  SmallCompany(place);
  NewPlan(place);
  const Surroundings terminal{.clock = tests::JanuaryClock(), .errorIsTerminal = true};
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}), terminal);
  EXPECT_EQ(run.err.find("\r[........................]   0% opening the company\r"), 0U) << run.err;
  EXPECT_NE(run.err.find("% adding expense accounts"), std::string::npos) << run.err;
  EXPECT_EQ(run.err.find("income"), std::string::npos) << run.err;
  EXPECT_NE(run.err.find("] 100% writing the plan"), std::string::npos) << run.err;
  EXPECT_TRUE(run.err.ends_with(" \r")) << run.err;
  EXPECT_EQ(run.out.find('\r'), std::string::npos);
}

TEST(ImportCommand, WipesTheProgressBarBeforeAnError) {
  const Workplace place;
  SmallCompany(place, "1.1", "Janvier");
  NewPlan(place);
  const Surroundings terminal{.clock = tests::JanuaryClock(), .errorIsTerminal = true};
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}), terminal);
  EXPECT_NE(run.err.find(std::string(46, ' ') + "\rkrnqb: import failed: "), std::string::npos) << run.err;
}

TEST(ImportCommand, ShowsTheFiguresBeforeAndAfterAndTheSumsOfNewRows) {
  const Workplace place;
  place.NurseryYear();
  const auto arguments = place.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all"});
  const ProgramRun run = RunProgram(arguments);
  ASSERT_EQ(run.code, 0) << run.err;
  const std::size_t planned = run.out.find("\nPlanned amounts with growth, January to December 2003:\n");
  const std::size_t actual = run.out.find("\n\nActual amounts, January to December 2002:\n");
  const std::size_t rows = run.out.find("\n\nRows added, with the sum of the year:\n");
  ASSERT_TRUE(planned < actual && actual < rows && rows != std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("\nSales\n  before", planned), run.out.find("\nSales\n", planned)) << run.out;
  EXPECT_NE(run.out.find("\nResult\n  before", planned), std::string::npos) << run.out;
  EXPECT_NE(run.out.find("\nExpenses\n  Automobile", rows), std::string::npos) << run.out;
  const ProgramRun again = RunProgram(arguments);
  EXPECT_EQ(again.out.find("  before"), std::string::npos) << again.out;
  EXPECT_NE(again.out.find("\n  same"), std::string::npos) << again.out;
  EXPECT_NE(again.out.find("\nNothing in the plan changes.\n"), std::string::npos) << again.out;
}

TEST(ImportCommand, ShowsTheActualFiguresAsPlannedOnesWithoutGrowth) {
  const Workplace place;
  place.NurseryYear();
  NewPlan(place);
  const ProgramRun run = RunProgram(
      place.ImportArguments("plan.kpf", {"--expenses", "--income", "--balances", "all", "--dry-run"}));
  ASSERT_EQ(run.code, 0) << run.err;
  const std::size_t planned = run.out.find("Planned amounts");
  const std::size_t actual = run.out.find("Actual amounts");
  const std::size_t rows = run.out.find("Rows added");
  ASSERT_NE(rows, std::string::npos) << run.out;
  const auto withoutTitle = [&](std::size_t from, std::size_t end) {
    const std::size_t table = run.out.find('\n', from);
    return run.out.substr(table, end - table);
  };
  EXPECT_EQ(withoutTitle(planned, actual), withoutTitle(actual, rows)) << run.out;
}

TEST(ImportCommand, FitsItsSummaryIntoTheTerminal) {
  const Workplace place;
  place.NurseryYear();
  const auto arguments = place.ImportArguments(
      "cor.kpf", {"--expenses", "--income", "--past-performance", "--balances", "all", "--dry-run"});
  for (const std::size_t width : {60U, 80U, 160U}) {
    const ProgramRun run =
        RunProgram(arguments, {.clock = tests::JanuaryClock(), .outputWidth = [width] { return width; }});
    const std::size_t summary = run.out.find("Planned amounts");
    ASSERT_NE(summary, std::string::npos) << run.out;
    std::istringstream lines(run.out.substr(summary, run.out.find(" tables change:") - summary));
    std::size_t longest = 0;
    for (std::string line; std::getline(lines, line);) longest = std::max(longest, CharacterCount(line));
    EXPECT_LE(longest, width) << run.out;
    EXPECT_GT(longest, width == 160 ? 100U : 40U) << run.out;
  }
}

TEST(ImportCommand, ImportsAmountsByTheBalancesOption) {
  for (const std::string balances : {"none", "planned", "actual", "all"}) {
    const Workplace place;
    SmallCompany(place);
    NewPlan(place);
    const ProgramRun run =
        RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--balances", balances}));
    EXPECT_EQ(run.code, 0) << run.err;
    // The small company has no transactions.
    const bool empty =
        run.err == "krnqb: warning: QuickBooks has no amounts in the twelve months from 2002-01\n";
    EXPECT_TRUE(balances == "none" ? run.err.empty() : empty) << run.err;
  }
}

TEST(ImportCommand, ReportsACompanyThatCannotBeOpened) {
  const Workplace place;
  NewPlan(place);
  const ProgramRun missing = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}));
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.out, "");
  EXPECT_EQ(missing.err, "krnqb: opening the company failed: There is no company file " +
                             (place / "nursery.qbw") +
                             "; check the path, or create a company with krnqb company new\n");
  WriteText(place / "nursery.qbw", "just a text");
  const ProgramRun noCompany = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}));
  EXPECT_EQ(noCompany.code, 1);
  EXPECT_EQ(noCompany.err,
            "krnqb: opening the company failed: The file " + (place / "nursery.qbw") +
                " is not a company file; check the path, or create a company with krnqb company new\n");
}

TEST(ImportCommand, OpensTheCompanyBeforeThePlan) {
  const Workplace place;
  const ProgramRun run = RunProgram(place.ImportArguments("none.kpf", {"--expenses"}));
  EXPECT_NE(run.err.find("There is no company file"), std::string::npos) << run.err;
}

TEST(ImportCommand, ReportsAPlanThatCannotBeOpened) {
  const Workplace place;
  SmallCompany(place);
  const ProgramRun missing = RunProgram(place.ImportArguments("none.kpf", {"--expenses"}));
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.err, "krnqb: cannot open the plan " + (place / "none.kpf") +
                             ": No such file or directory; check the path\n");
  WriteText(place / "broken.kpf", "<plan>");
  const ProgramRun broken = RunProgram(place.ImportArguments("broken.kpf", {"--expenses"}));
  EXPECT_EQ(broken.code, 1);
  EXPECT_EQ(broken.err.find("krnqb: cannot open the plan " + (place / "broken.kpf") +
                            ": line 1: not well-formed XML"),
            0U)
      << broken.err;
}

TEST(ImportCommand, LeavesNoLockFileBesideAFileThatItDoesNotChange) {
  const Workplace place;
  SmallCompany(place);
  WriteText(place / "letter.txt", "Dear reader,\n");
  const ProgramRun letter = RunProgram(place.ImportArguments("letter.txt", {"--expenses"}));
  EXPECT_EQ(letter.code, 1);
  EXPECT_EQ(letter.err, "krnqb: cannot open the plan " + (place / "letter.txt") +
                            ": it is not an XML document; check that the path is that of a plan\n");
  WriteText(place / "broken.kpf", "<plan>");
  EXPECT_EQ(RunProgram(place.ImportArguments("broken.kpf", {"--expenses"})).code, 1);
  const ProgramRun other = RunProgram(place.ImportArguments("bri.kpf", {"--expenses", "--product", "cor"}));
  EXPECT_EQ(other.code, 2);
  EXPECT_EQ(other.err, "krnqb: wrong usage: the plan " + (place / "bri.kpf") +
                           " is of product bri and begins in 2003-01, but --product is cor; leave out "
                           "--product, or give another plan\n");
  for (const std::string name : {"letter.txt", "broken.kpf", "bri.kpf"}) {
    EXPECT_FALSE(fs::exists(place / (name + ".lock"))) << name;
  }
}

TEST(ImportCommand, NamesTheOptionForAnUnreadableFiscalMonth) {
  const Workplace place;
  SmallCompany(place, "1.1", "Janvier");
  const std::string plan = NewPlan(place);
  const FileState before = StateOf(plan);
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(
      run.err,
      "krnqb: import failed: To perform the import from QuickBooks Pro you need the United States version of "
      "QuickBooks Pro and an English regional setting locale; give the first month of the company's fiscal "
      "year, for example --fiscal-month January; nothing was written\n");
  EXPECT_EQ(StateOf(plan), before);
  for (const std::string month : {"January", "1"}) {
    EXPECT_EQ(RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--fiscal-month", month})).code, 0);
  }
}

TEST(ImportCommand, DistinguishesAnOutdatedCompanyFromOneWithoutAFiscalMonth) {
  const Workplace place;
  SmallCompany(place, "1.0");
  NewPlan(place);
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}));
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "krnqb: import failed: Your QuickBooks must be updated to R2; use a company whose processor "
            "answers qbXML 1.1; nothing was written\n");
}

TEST(ImportCommand, RequiresProductAndStartFromThePlanOrTheOptions) {
  const Workplace place;
  SmallCompany(place);
  const std::string plan = NewPlan(place);
  WriteText(plan, tests::Replaced(ReadText(plan), " product=\"ald\" start=\"2003-01\"", ""));
  const ProgramRun product = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}));
  EXPECT_EQ(product.code, 2);
  EXPECT_EQ(product.err, "krnqb: wrong usage: the plan " + plan +
                             " does not state its product; give --product ald, bri or cor\n");
  const ProgramRun start = RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--product", "ald"}));
  EXPECT_EQ(start.code, 2);
  EXPECT_EQ(start.err, "krnqb: wrong usage: the plan " + plan +
                           " does not state its first month; give --plan-start YYYY-MM\n");
  EXPECT_EQ(RunProgram(place.ImportArguments("plan.kpf",
                                             {"--expenses", "--product", "ald", "--plan-start", "2003-01"}))
                .code,
            0);
}

TEST(ImportCommand, IsRefusedWhileAnotherImportLocksThePlan) {
  const Workplace place;
  SmallCompany(place);
  const std::string plan = NewPlan(place);
  const FileState before = StateOf(plan);
  {
    const files::PlanLock other(plan);
    const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses"}));
    EXPECT_EQ(run.code, 1);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(run.err,
              "krnqb: cannot change the plan " + plan +
                  ": another import or undo is changing it; wait until that has ended and try again\n");
    EXPECT_EQ(StateOf(plan), before);
    EXPECT_EQ(RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--dry-run"})).code, 0);
  }
  EXPECT_EQ(RunProgram(place.ImportArguments("plan.kpf", {"--expenses"})).code, 0);
}

TEST(ImportCommand, FollowsASymbolicLinkToThePlan) {
  const Workplace place;
  SmallCompany(place);
  const std::string plan = NewPlan(place);
  fs::create_symlink("plan.kpf", place / "link.kpf");
  const ProgramRun run = RunProgram(place.ImportArguments("link.kpf", {"--expenses"}));
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(fs::is_symlink(place / "link.kpf"));
  EXPECT_NE(ReadText(plan).find("<c>Rent</c>"), std::string::npos);
  EXPECT_NE(run.out.find("is kept as " + plan + ".bak."), std::string::npos) << run.out;
}

// Changes the plan's file while the import runs.
class MeddlingClock : public Clock {
 public:
  explicit MeddlingClock(std::string file) : file_(std::move(file)) {}
  LocalDateTime Now() override {
    WriteText(file_, "<plan><tables/></plan>");
    return tests::JanuaryClock()->Now();
  }

 private:
  std::string file_;
};

TEST(ImportCommand, DoesNotReplaceAPlanThatChangedMeanwhile) {
  const Workplace place;
  SmallCompany(place);
  const std::string plan = NewPlan(place);
  const Surroundings meddling{.clock = std::make_shared<MeddlingClock>(plan), .errorIsTerminal = false};
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--expenses", "--quiet"}), meddling);
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.find("krnqb: cannot save " + plan + ": another program has changed or moved it"), 0U)
      << run.err;
  EXPECT_EQ(ReadText(plan), "<plan><tables/></plan>");
}

TEST(ImportCommand, AnnouncesItselfOnOneLineForAnyCompanyName) {
  const Workplace place;
  SmallCompany(place);
  WriteText(place / "name.xml",
            "<QBXML><QBXMLMsgsRs><CompanyQueryRs><CompanyRet><CompanyName>Two\nlines</CompanyName>"
            "<FirstMonthFiscalYear>January</FirstMonthFiscalYear></CompanyRet></CompanyQueryRs></"
            "QBXMLMsgsRs></QBXML>");
  ASSERT_EQ(RunProgram({"company", "load", place / "nursery.qbw", place / "name.xml"}).code, 0);
  NewPlan(place);
  const ProgramRun run = RunProgram(place.ImportArguments("plan.kpf", {"--past-performance"}));
  EXPECT_EQ(run.out.find("Importing past performance from Two lines ("), 0U) << run.out;
}

}  // namespace
}  // namespace krnqb::cli
