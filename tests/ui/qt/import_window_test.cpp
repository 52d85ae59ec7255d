#include <gtest/gtest.h>

#include <QMessageBox>
#include <QTimer>

#include "ui/qt/module_toolkit.h"
#include "ui/qt/person.h"
#include "ui/qt/text.h"

// End to end: the command line, the module with the window, the component, the company file and the plan
// file.
namespace krnqb::ui::qt {
namespace {

using cli::tests::ProgramRun;
using cli::tests::ReadText;
using cli::tests::RunProgram;
using cli::tests::Workplace;
using tests::Click;
using tests::Find;
using tests::Person;
using tests::Press;

struct ImportWindow : testing::Test {
  ~ImportWindow() override {
    EXPECT_TRUE(person.Done());
    EXPECT_EQ(person.Trouble(), "");
  }

  ProgramRun ShowOptions(const std::string& plan) const {
    return tests::RunWithModule(
        {"dialog", "options", "--company", place / "nursery.qbw", "--plan", place / plan});
  }

  const Workplace place;
  Person person;
};

struct ImportCase {
  const char* plan;
  std::vector<const char*> boxes;
  int balances;
  std::vector<std::string> options;
};

class ImportFromWindow : public ImportWindow, public testing::WithParamInterface<ImportCase> {};

TEST_P(ImportFromWindow, ChangesThePlanAsTheImportCommandDoes) {
  place.Nursery();
  const ImportCase& wanted = GetParam();
  const std::string plan = place / wanted.plan;
  const std::string before = ReadText(plan);
  cli::tests::WriteText(place / "typed.kpf", before);
  const ProgramRun typed = RunProgram(place.ImportArguments("typed.kpf", wanted.options));
  ASSERT_EQ(typed.code, 0) << typed.err;

  person.At("frmOptions", [&](QWidget& window) {
    for (const char* box : wanted.boxes) Click(Find(window, box));
    for (int step = 0; step < wanted.balances; ++step) Press(Find(window, "Combo1"), Qt::Key_Down);
    Click(Find(window, "cmdButton0"));
  });
  const ProgramRun run = ShowOptions(wanted.plan);
  EXPECT_EQ(run.code, 0) << run.err;
  EXPECT_NE(run.out.find("Wrote " + plan), std::string::npos) << run.out;
  EXPECT_NE(ReadText(plan), before);
  EXPECT_EQ(ReadText(plan + ".bak"), before);
  EXPECT_EQ(cli::tests::WithoutStamps(ReadText(plan)),
            cli::tests::WithoutStamps(ReadText(place / "typed.kpf")));
}

const char* const incomeBox = "chkIncludeIncomeAccounts";
const char* const expenseBox = "chkIncludeExpenseAccounts";

INSTANTIATE_TEST_SUITE_P(
    Plans, ImportFromWindow,
    testing::Values(
        ImportCase{"ald.kpf", {expenseBox}, 0, {"--expenses"}},
        ImportCase{"ald.kpf", {incomeBox, expenseBox}, 2, {"--income", "--expenses", "--balances", "actual"}},
        ImportCase{"cor.kpf", {expenseBox, incomeBox}, 3, {"--income", "--expenses", "--balances", "all"}},
        ImportCase{
            "bri.kpf", {incomeBox, expenseBox}, 1, {"--income", "--expenses", "--balances", "planned"}}));

TEST_F(ImportWindow, WritesNothingWhenItIsCancelled) {
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  person.At("frmOptions", [](QWidget& window) {
    Click(Find(window, expenseBox));
    Press(window, Qt::Key_Escape);
  });
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(ImportWindow, WritesNothingWhenItIsCancelledWhileItRuns) {
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  bool cancelled = false;
  person.At("frmOptions", [&](QWidget& window) {
    // Acts while the running import shows the window.
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &window, [&] {
      if (!Find(window, "progressBar").isVisible() || !Find(window, "cmdButton2").isEnabled()) return;
      cancelled = true;
      Click(Find(window, "cmdButton2"));
    });
    timer.start(0);
    Click(Find(window, expenseBox));
    Click(Find(window, "cmdButton0"));
  });
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_TRUE(cancelled);
  EXPECT_EQ(run.code, 130);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "krnqb: import interrupted: stopped on request; nothing was written\n");
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST_F(ImportWindow, ShowsFailuresInAMessage) {
  const std::string file = place / "nursery.qbw";
  ASSERT_EQ(
      RunProgram({"company", "new", file, "--name", "Nursery", "--fiscal-month", "1", "--processor", "1.0"})
          .code,
      0);
  person.At("frmOptions", [](QWidget& window) {
    Click(Find(window, expenseBox));
    Click(Find(window, "cmdButton0"));
  });
  person.At("", [](QWidget& window) {
    auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_EQ(FromQt(box.text()), "Your QuickBooks must be updated to R2.");
    Press(window, Qt::Key_Return);
  });
  const ProgramRun run = ShowOptions("ald.kpf");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err.find("krnqb: import failed: Your QuickBooks must be updated to R2; "), 0U) << run.err;
}

}  // namespace
}  // namespace krnqb::ui::qt
