#include <gtest/gtest.h>
#include <sys/stat.h>

#include <csignal>
#include <filesystem>
#include <set>

#include "build_paths.h"
#include "cli/living_quickbooks.h"
#include "cli/workplace.h"
#include "ledger/file.h"
#include "limited_files.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

using krnqb::tests::LimitedFiles;
using tests::JanuaryClock;
using tests::LivingQuickBooks;
using tests::ProgramRun;
using tests::ReadText;
using tests::Replaced;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

// A clock on which every look takes a second, so that all times are known.
Surroundings SteadySurroundings() {
  const auto looks = std::make_shared<int>(0);
  return {.clock = JanuaryClock(), .errorIsTerminal = false, .stopwatch = [looks] {
            return std::chrono::milliseconds(1000 * ++*looks);
          }};
}

mode_t ModeOf(const std::string& file) {
  struct stat status {};
  EXPECT_EQ(stat(file.c_str(), &status), 0) << file;
  return status.st_mode & 07777U;
}

class ImportReportPage : public testing::Test {
 protected:
  ImportReportPage() { place.NurseryYear(); }

  ProgramRun Import(const Words& more) const {
    return RunProgram(place.ImportArguments("ald.kpf", With({"--report", report}, more)),
                      SteadySurroundings());
  }
  ProgramRun ImportAll(const Words& more) const {
    return Import(With({"--expenses", "--income", "--balances", "all"}, more));
  }
  std::string Page() const { return ReadText(report); }
  void ExpectNoTemporaryFile() const {
    for (const auto& entry : fs::directory_iterator(place.Folder()))
      EXPECT_NE(entry.path().extension(), ".tmp") << entry.path();
  }

  const Workplace place;
  const std::string plan = place / "ald.kpf";
  const std::string report = place / "report.html";
};

void ExpectIn(const std::string& page, const std::vector<std::string>& texts) {
  for (const std::string& text : texts) EXPECT_NE(page.find(text), std::string::npos) << text;
}

TEST_F(ImportReportPage, ShowsWhatCameInAndIsForItsOwnerAlone) {
  const ProgramRun run = ImportAll({"--past-performance"});
  ASSERT_EQ(run.code, 0) << run.err;
  EXPECT_EQ(ModeOf(report), 0600U);
  ExpectNoTemporaryFile();
  ExpectIn(Page(), {"<!DOCTYPE html>", "<h1>Import into ald.kpf</h1>", "The plan was written.",
                    "<h2>Before and after</h2>", "<h2>What came in</h2>", "<h2>Rows added</h2>",
                    "<h2>Past performance</h2>", "<h2>What was left out</h2>", "<h2>Plan and books</h2>",
                    "<h2>Every change in the plan</h2>", "<h2>Settings, files and timings</h2>",
                    "<summary>May 2002: 5,670.55</summary>", "<bdi>Bennett, Alice:Front Garden</bdi>",
                    "on 2003-01-15, 12:00:00."});
}

TEST_F(ImportReportPage, IsTheSameForTheSameImport) {
  const std::string plan1 = ReadText(plan);
  ASSERT_EQ(ImportAll({"--dry-run"}).code, 0);
  const std::string first = Page();
  ASSERT_EQ(ImportAll({"--dry-run"}).code, 0);
  EXPECT_EQ(Page(), first);
  EXPECT_EQ(ReadText(plan), plan1);
}

TEST_F(ImportReportPage, OfADryRunComparesThePlanThatWouldBeWritten) {
  ASSERT_EQ(ImportAll({"--dry-run"}).code, 0);
  const std::string dry = Page();
  ExpectIn(dry,
           {"Dry run: the plan was not written.", "The plan differs from the books: its net income is "});
  ASSERT_EQ(ImportAll({}).code, 0);
  const auto verdict = [](const std::string& page) {
    const std::size_t begin = page.find("The plan differs from");
    return page.substr(begin, page.find("</p>", begin) - begin);
  };
  EXPECT_EQ(verdict(Page()), verdict(dry));
}

TEST_F(ImportReportPage, NeedsNoLedgerAndLeavesNone) {
  ASSERT_EQ(ImportAll({"--json"}).code, 0);
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(place.Folder())) names.insert(entry.path().filename());
  EXPECT_EQ(names, (std::set<std::string>{"ald.kpf", "ald.kpf.bak", "ald.kpf.history", "ald.kpf.lock",
                                          "bri.kpf", "cor.kpf", "nursery.qbw", "report.html"}));
}

TEST_F(ImportReportPage, UsesTheLedgerThatIsAskedFor) {
  const std::string ledger = place / "nursery.kql";
  ASSERT_EQ(ImportAll({"--ledger", ledger}).code, 0);
  EXPECT_EQ(ledger::LedgerFile::Open(ledger).Facts().planVersion, "written");
  ExpectIn(Page(), {"<summary>May 2002: 5,670.55</summary>", "<dt>Ledger</dt>"});
}

TEST_F(ImportReportPage, ChangesNothingElseThatIsPrintedOrWritten) {
  const std::string before = ReadText(plan);
  const Words asked{"--expenses", "--income", "--balances", "all"};
  const ProgramRun plain = RunProgram(place.ImportArguments("ald.kpf", asked), SteadySurroundings());
  const std::string written = tests::WithoutStamps(ReadText(plan));
  fs::remove_all(plan + ".history");
  fs::remove(plan + ".bak");
  WriteText(plan, before);
  const ProgramRun reported = Import(asked);
  EXPECT_EQ(reported.out, plain.out);
  EXPECT_EQ(reported.err, plain.err);
  EXPECT_EQ(tests::WithoutStamps(ReadText(plan)), written);
}

TEST_F(ImportReportPage, OfAFailedImportSaysWhyAndWhatToDo) {
  WriteText(plan, Replaced(ReadText(plan), "</plan>", "</pln>"));
  const ProgramRun run = ImportAll({});
  EXPECT_EQ(run.code, 1);
  const std::string page = Page();
  ExpectIn(page, {"The plan was not written: ", "What to do: ", "<h2>Settings, files and timings</h2>"});
  EXPECT_EQ(page.find("<h2>What came in</h2>"), std::string::npos);
  EXPECT_EQ(ModeOf(report), 0600U);
}

TEST_F(ImportReportPage, IsNotWrittenForAWrongCommandLine) {
  EXPECT_EQ(Import({"--balances", "all"}).code, 2);
  EXPECT_EQ(ImportAll({"--report", plan}).code, 2);
  EXPECT_FALSE(fs::exists(report));
  ExpectNoTemporaryFile();
}

TEST_F(ImportReportPage, NeverReplacesAnInputOrAnotherOutput) {
  const std::string company = place / "nursery.qbw";
  const std::string before = ReadText(company);
  fs::create_hard_link(company, place / "link.html");
  const Words asked{"--expenses", "--income", "--balances", "all"};
  for (const std::string& file : {place / "nursery.qbw", place / "link.html", plan, plan + ".bak",
                                  plan + ".history", place / "journal"}) {
    const ProgramRun run = RunProgram(
        place.ImportArguments("ald.kpf", With(asked, {"--report", file, "--journal", place / "journal"})));
    EXPECT_EQ(run.code, 2) << file;
    EXPECT_NE(run.err.find("--report"), std::string::npos) << run.err;
  }
  EXPECT_EQ(ReadText(company), before);
}

TEST_F(ImportReportPage, ThatCannotBeCreatedEndsTheImportBeforeAnythingIsWritten) {
  const std::string before = ReadText(plan);
  fs::create_directory(report);
  const ProgramRun run = ImportAll({});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: writing the report failed: " + report +
                         " is not a regular file; give another file with --report, or leave it out\n");
  EXPECT_EQ(ReadText(plan), before);
  const ProgramRun missing = RunProgram(
      place.ImportArguments("ald.kpf", {"--expenses", "--report", place / "no-folder/report.html"}));
  EXPECT_EQ(missing.code, 1);
  EXPECT_NE(missing.err.find("krnqb: writing the report failed: "), std::string::npos) << missing.err;
  EXPECT_EQ(ReadText(plan), before);
}

TEST_F(ImportReportPage, ThatCannotBeCompletedDoesNotUndoTheImport) {
  WriteText(report, "earlier");
  for (const bool dryRun : {true, false}) {
    const std::string before = ReadText(plan);
    ProgramRun run;
    {
      const LimitedFiles limited(380'000);  // room for plan and ledger, not for the page
      run = ImportAll(dryRun ? Words{"--past-performance", "--dry-run"} : Words{"--past-performance"});
    }
    EXPECT_EQ(run.code, dryRun ? 1 : 0) << run.err;
    EXPECT_NE(run.err.find("krnqb: writing the report failed: "), std::string::npos) << run.err;
    EXPECT_EQ(run.err.find("the plan was written and need not be imported again") != std::string::npos,
              !dryRun)
        << run.err;
    EXPECT_EQ(ReadText(plan) == before, dryRun);
    EXPECT_EQ(Page(), "earlier");
    ExpectNoTemporaryFile();
  }
}

TEST_F(ImportReportPage, OfACompanyWithoutRoomForItsLedgerIsThatOfAFailure) {
  const std::string before = ReadText(plan);
  ProgramRun run;
  {
    const LimitedFiles limited(100'000);
    run = ImportAll({});
  }
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("free space in the folder for temporary files, or import without --report"),
            std::string::npos)
      << run.err;
  EXPECT_EQ(ReadText(plan), before);
  ExpectIn(Page(), {"The plan was not written: "});
}

TEST_F(ImportReportPage, ReplacesAnEarlierOneWholeAndFollowsLinks) {
  const std::string target = place / "target.html";
  WriteText(target, "earlier");
  fs::permissions(target, fs::perms::all);
  fs::create_symlink(target, report);
  ASSERT_EQ(ImportAll({}).code, 0);
  EXPECT_TRUE(fs::is_symlink(report));
  EXPECT_EQ(ModeOf(target), 0600U);
  ExpectIn(ReadText(target), {"<h1>Import into ald.kpf</h1>"});
}

TEST_F(ImportReportPage, ShowsHostileNamesAsTexts) {
  const std::string documents = place / "accounts.xml";
  const std::string company = place / "hostile.qbw";
  ASSERT_EQ(RunProgram({"company", "new", company, "--name", "</title><script>alert(\"1\")</script>",
                        "--fiscal-month", "January", "--processor", "1.1"})
                .code,
            0);
  std::string accounts = ReadText(krnqb::tests::SamplesFolder() + "/nursery/accounts.xml");
  for (std::size_t at = 0; (at = accounts.find("Automobile", at)) != std::string::npos;)
    accounts.replace(at, 10, "&lt;b&gt;\" x='&#x202E;gnp");
  WriteText(documents, accounts);
  ASSERT_EQ(RunProgram({"company", "load", company, documents}).code, 0);
  const ProgramRun run = RunProgram({"import", "--company", company, "--plan", plan, "--expenses",
                                     "--balances", "all", "--report", report});
  ASSERT_EQ(run.code, 0) << run.err;
  const std::string page = Page();
  EXPECT_EQ(page.find("<script"), std::string::npos);
  EXPECT_EQ(page.find("\u202E"), std::string::npos);
  ExpectIn(page, {"&lt;b&gt;&quot; x=&#39;\uFFFDgnp"});
}

TEST_F(ImportReportPage, WithoutAmountsHasNothingToCompare) {
  ASSERT_EQ(Import({"--expenses", "--income"}).code, 0);
  ExpectIn(Page(), {"No amounts were imported, so there is nothing to compare with the books."});
}

TEST_F(ImportReportPage, OfQuickBooksComparesWhatWasReadWithoutAskingAgain) {
  const auto run = [&](const Words& more) {
    auto quickBooks = std::make_shared<LivingQuickBooks>();
    quickBooks->openCompany = place / "nursery.qbw";
    WriteText(place / "live.kpf", ReadText(krnqb::tests::SamplesFolder() + "/plans/nursery-ald.kpf"));
    const ProgramRun ran = RunProgram(With({"import", "--quickbooks", "--plan", place / "live.kpf",
                                            "--expenses", "--income", "--balances", "all"},
                                           more),
                                      With(quickBooks));
    EXPECT_EQ(ran.code, 0) << ran.err;
    return quickBooks->requests.size();
  };
  const std::size_t plain = run({});
  EXPECT_EQ(run({"--report", report}), plain);
  ExpectIn(Page(), {"The plan differs from", "QuickBooks"});
}

TEST_F(ImportReportPage, OfARecordingComparesWithIt) {
  const std::string recording = place / "exchange.jsonl";
  ASSERT_EQ(RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all",
                                                         "--dry-run", "--record", recording}))
                .code,
            0);
  const ProgramRun run = RunProgram({"import", "--replay", recording, "--plan", plan, "--expenses",
                                     "--income", "--balances", "all", "--report", report});
  ASSERT_EQ(run.code, 0) << run.err;
  ExpectIn(Page(), {"<dt>Replayed recording</dt>", "data-table=\"reconciled\""});
}

}  // namespace
}  // namespace krnqb::cli
