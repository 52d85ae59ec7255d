#include <gtest/gtest.h>

#include "cli/workplace.h"
#include "fakes/scripted_toolkit.h"

namespace krnqb::cli {
namespace {

using fakes::ScriptedToolkit;
using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;

struct DialogCommand : testing::Test {
  ProgramRun Show(const std::vector<std::string>& more) const {
    std::vector<std::string> arguments{"dialog"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunProgram(arguments, {.clock = tests::JanuaryClock(),
                                  .errorIsTerminal = true,
                                  .dialogToolkit = [this] { return toolkit; }});
  }
  ProgramRun ShowOptions(const std::string& plan) const {
    return Show({"options", "--company", place / "nursery.qbw", "--plan", place / plan});
  }

  void PersonImports(const std::vector<std::string>& boxes, int balances) const {
    toolkit->person = [boxes, balances](ui::Dialog& dialog) {
      for (const std::string& box : boxes) dialog.Check(box, true);
      dialog.Choose("Combo1", balances);
      dialog.Press("cmdButton0");
    };
  }

  const Workplace place;
  std::shared_ptr<ScriptedToolkit> toolkit = std::make_shared<ScriptedToolkit>();
};

const char* const incomeBox = "chkIncludeIncomeAccounts";
const char* const expenseBox = "chkIncludeExpenseAccounts";

TEST_F(DialogCommand, ShowsTheNamedDialog) {
  EXPECT_EQ(Show({"export"}).code, 0);
  EXPECT_EQ(Show({"about"}).code, 0);
  ASSERT_EQ(toolkit->shown.size(), 2U);
  EXPECT_EQ(toolkit->shown[0].caption, "Export Into Quickbooks");
  EXPECT_EQ(toolkit->shown[1].caption, "About KRN6_QB2002");
}

TEST_F(DialogCommand, PrintsTheChosenPath) {
  toolkit->chosenPath = "/companies/nursery.qbw";
  const ProgramRun company = Show({"company"});
  EXPECT_EQ(company.code, 0);
  EXPECT_EQ(company.out, "/companies/nursery.qbw\n");
  toolkit->chosenPath = "/plans/nursery.kpf";
  EXPECT_EQ(Show({"plan"}).out, "/plans/nursery.kpf\n");
  ASSERT_EQ(toolkit->asked.size(), 2U);
  EXPECT_EQ(toolkit->asked[0].defaultExtension, "qbw");
  EXPECT_EQ(toolkit->asked[1].defaultExtension, "kpf");
}

TEST_F(DialogCommand, PrintsNothingAndExitsWithOneIfNoFileIsChosen) {
  for (const char* dialog : {"company", "plan"}) {
    const ProgramRun run = Show({dialog});
    EXPECT_EQ(run.code, 1) << dialog;
    EXPECT_EQ(run.out + run.err, "") << dialog;
  }
}

TEST_F(DialogCommand, KeepsTheVersionBeforeTheImport) {
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  PersonImports({incomeBox, expenseBox}, 1);
  EXPECT_EQ(ShowOptions("ald.kpf").code, 0);
  EXPECT_EQ(ReadText(place / "ald.kpf.history/0001.kpf"), before);
  const std::string description = ReadText(place / "ald.kpf.history/0001.json");
  for (const char* option : {"\"--expenses\"", "\"--income\"", "\"--balances planned\""}) {
    EXPECT_NE(description.find(option), std::string::npos) << description;
  }
  EXPECT_EQ(RunProgram({"plan", "undo", place / "ald.kpf"}).code, 0);
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(DialogCommand, ImportsAsTheImportCommandDoes) {
  place.Nursery();
  for (const std::string plan : {"ald.kpf", "bri.kpf", "cor.kpf"}) {
    tests::WriteText(place / "typed.kpf", ReadText(place / plan));
    const ProgramRun typed =
        RunProgram(place.ImportArguments("typed.kpf", {"--expenses", "--income", "--balances", "planned"}));
    ASSERT_EQ(typed.code, 0) << typed.err;
    PersonImports({incomeBox, expenseBox}, 1);
    const ProgramRun run = ShowOptions(plan);
    EXPECT_EQ(run.code, 0) << run.err;
    EXPECT_EQ(tests::WithoutStamps(ReadText(place / plan)),
              tests::WithoutStamps(ReadText(place / "typed.kpf")))
        << plan;
    // The end of the report names the plan three times. The import command announces itself in a first line.
    std::string report = run.out;
    for (int times = 0; times < 3; ++times)
      report = tests::Replaced(report, place / plan, place / "typed.kpf");
    EXPECT_EQ(report, typed.out.substr(typed.out.find('\n') + 1));
  }
}

TEST_F(DialogCommand, DrawsOnlyTheDialogsProgressBar) {
  place.Nursery();
  PersonImports({expenseBox}, 0);
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(toolkit->shownNow.back().At("progressBar").percent, 100);
}

TEST_F(DialogCommand, WritesAndPrintsNothingIfTheOptionsAreCancelled) {
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out + run.err, "");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.bak"));
}

TEST_F(DialogCommand, ShowsCompanyPlanAndPeriodBelowTheControls) {
  place.Nursery();
  toolkit->followsTasks = true;
  ShowOptions("ald.kpf");
  EXPECT_EQ(toolkit->shown.back().At("statusLine").text,
            "From Hollow Creek Nursery (nursery.qbw) into ald.kpf, January to December 2002");
}

TEST_F(DialogCommand, WritesNothingWhenCancelStopsTheImport) {
  place.NurseryYear();
  toolkit->followsTasks = true;
  const std::string before = ReadText(place / "ald.kpf");
  // Whichever of the moments in which the window is updated the user chooses.
  for (std::size_t moment = 2; moment < 6; ++moment) {
    toolkit->shownNow.clear();
    toolkit->person = [&](ui::Dialog& dialog) {
      toolkit->meanwhile = [&] {
        if (toolkit->shownNow.size() == moment) dialog.Press("cmdButton2");
      };
      dialog.Check(incomeBox, true);
      dialog.Choose("Combo1", 3);
      dialog.Press("cmdButton0");
    };
    const ProgramRun run = ShowOptions("ald.kpf");
    toolkit->meanwhile = {};
    EXPECT_EQ(run.code, 130) << moment;
    EXPECT_EQ(run.err, "krnqb: import interrupted: stopped on request; nothing was written\n");
    EXPECT_EQ(run.out, "");
    EXPECT_TRUE(toolkit->messages.empty()) << "the user knows";
    EXPECT_FALSE(toolkit->stillOpen);
    EXPECT_EQ(ReadText(place / "ald.kpf"), before);
    for (const char* other : {"ald.kpf.bak", "ald.kpf.history"}) {
      EXPECT_FALSE(std::filesystem::exists(place / other)) << other;
    }
  }
}

TEST_F(DialogCommand, ImportsAsBeforeAfterAnImportWasStopped) {
  place.Nursery();
  toolkit->followsTasks = true;
  toolkit->person = [&](ui::Dialog& dialog) {
    toolkit->meanwhile = [&dialog] { dialog.Press("cmdButton2"); };
    dialog.Check(expenseBox, true);
    dialog.Press("cmdButton0");
  };
  EXPECT_EQ(ShowOptions("ald.kpf").code, 130);
  toolkit->meanwhile = {};
  PersonImports({expenseBox}, 0);
  EXPECT_EQ(ShowOptions("ald.kpf").code, 0);
}

TEST_F(DialogCommand, ReadsTheSelectionOfABriPlanBeforeTheDialog) {
  place.Nursery();
  tests::WriteText(place / "typed.kpf", ReadText(place / "bri.kpf"));
  ASSERT_EQ(RunProgram(place.ImportArguments("typed.kpf", {"--expenses"})).code, 0);
  PersonImports({expenseBox}, 0);
  EXPECT_EQ(ShowOptions("bri.kpf").code, 0);
  EXPECT_EQ(tests::WithoutStamps(ReadText(place / "bri.kpf")),
            tests::WithoutStamps(ReadText(place / "typed.kpf")));
}

TEST_F(DialogCommand, WarnsIfABriPlanHasNoExpenseAccountYet) {
  place.Nursery();
  ASSERT_EQ(RunProgram({"plan", "new", place / "new.kpf", "--product", "bri", "--start", "2003-01"}).code, 0);
  const ProgramRun run = ShowOptions("new.kpf");
  EXPECT_EQ(run.err, "krnqb: warning: no expense account is in the plan, so the dialog will import none\n");
}

TEST_F(DialogCommand, AlsoShowsAFailureInAMessageBox) {
  const std::string company = place / "nursery.qbw";
  ASSERT_EQ(RunProgram(
                {"company", "new", company, "--name", "Nursery", "--fiscal-month", "1", "--processor", "1.0"})
                .code,
            0);
  const std::string before = ReadText(place / "ald.kpf");
  PersonImports({expenseBox}, 0);
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.find("krnqb: import failed: Your QuickBooks must be updated to R2; "), 0U) << run.err;
  EXPECT_EQ(toolkit->messages, std::vector<std::string>{"Your QuickBooks must be updated to R2."});
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(DialogCommand, ShowsNoDialogForFilesThatCannotBeOpened) {
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err.find("krnqb: opening the company failed: There is no company file "), 0U) << run.err;
  EXPECT_TRUE(toolkit->shown.empty());
  EXPECT_TRUE(toolkit->messages.empty());
}

TEST_F(DialogCommand, DistinguishesAFailureToShowFromCancelling) {
  place.Nursery();
  toolkit->person = [](ui::Dialog& /*dialog*/) { throw Error(error_number::outOfMemory); };
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find("ShowDialog ended early: Out of memory"), std::string::npos) << run.err;
  const ProgramRun exported = Show({"export"});
  EXPECT_EQ(exported.code, 1);
  EXPECT_EQ(exported.err, "krnqb: showing the dialog failed: Out of memory; try again\n");
}

TEST_F(DialogCommand, RequiresCompanyAndPlanForTheOptionsDialog) {
  const ProgramRun none = Show({"options"});
  EXPECT_EQ(none.code, 2);
  EXPECT_EQ(none.err,
            "krnqb: wrong usage: no company is given; give --company FILE, or --quickbooks on Windows\n");
  const ProgramRun noPlan = Show({"options", "--company", "a.qbw"});
  EXPECT_EQ(noPlan.code, 2);
  EXPECT_EQ(noPlan.err, "krnqb: wrong usage: no plan is given; give --plan FILE\n");
}

TEST_F(DialogCommand, WarnsOfFilesThatTheDialogIgnores) {
  const ProgramRun run = Show({"about", "--company", "a.qbw", "--plan", "a.kpf"});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err,
            "krnqb: warning: --company is ignored because only the options dialog imports\n"
            "krnqb: warning: --plan is ignored because only the options dialog imports\n");
}

TEST_F(DialogCommand, RejectsAnUnknownDialog) {
  const ProgramRun run = Show({"print"});
  EXPECT_EQ(run.code, 2);
  EXPECT_EQ(run.err,
            "krnqb: wrong usage: \"print\" is not a dialog; give options, export, company, plan or about\n");
}

TEST(DialogCommandWithoutAToolkit, SaysSoAndExitsWithOne) {
  const ProgramRun run = RunProgram({"dialog", "about"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "krnqb: showing the dialog failed: this program was built without Qt; install Qt 6 and "
            "build it again\n");
}

TEST(DialogCommandWithoutADisplay, SaysSoAndExitsWithOne) {
  Surroundings surroundings;
  surroundings.dialogToolkit = []() -> std::shared_ptr<ui::Toolkit> {
    throw Error(error_number::cannotCreateObject, "there is no display");
  };
  const ProgramRun run = RunProgram({"dialog", "plan"}, surroundings);
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "krnqb: showing the dialog failed: there is no display; run it on a desktop, or under "
            "xvfb-run\n");
}

}  // namespace
}  // namespace krnqb::cli
