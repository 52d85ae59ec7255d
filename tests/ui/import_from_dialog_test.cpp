#include <gtest/gtest.h>

#include "fakes/scripted_toolkit.h"
#include "fakes/test_host.h"
#include "ui/dialogs.h"

namespace krnqb::ui {
namespace {

using fakes::ScriptedToolkit;
using fakes::TestHost;

// A host whose component has the dialogs, operated by a simulated user.
struct ImportFromDialog : testing::Test {
  ImportFromDialog() : component(World()) { component.KRNPlanData(Variant(host.plan)); }

  OutsideWorld World() const {
    OutsideWorld world = host.World();
    world.userInterface = dialogs;
    world.sinks.push_back(dialogs);
    return world;
  }

  // Checks the named boxes, selects balances, and imports.
  void Imports(const std::vector<std::string>& boxes, int balances) {
    toolkit->person = [boxes, balances](Dialog& dialog) {
      for (const std::string& box : boxes) dialog.Check(box, true);
      dialog.Choose("Combo1", balances);
      dialog.Press("cmdButton0");
    };
    EXPECT_TRUE(component.ShowDialog(dlg_QBtoKRN).IsEmpty());
  }

  std::shared_ptr<ScriptedToolkit> toolkit = std::make_shared<ScriptedToolkit>();
  std::shared_ptr<Dialogs> dialogs = std::make_shared<Dialogs>(toolkit);
  TestHost host;
  QBDataExchange component;
};

const char* const incomeBox = "chkIncludeIncomeAccounts";
const char* const expenseBox = "chkIncludeExpenseAccounts";

TEST_F(ImportFromDialog, SetsTheOptionsBeforeItRuns) {
  bool expenses = false;
  bool income = true;
  QBKRN_BalancesImport balances = BalImport_None;
  host.journal->OnOccurrence("ProgressBarChange 20 Processing...", 1, [&] {
    expenses = component.IncludeExpenseAccounts();
    income = component.IncludeIncomeAccounts();
    balances = component.BalancesImport();
  });
  Imports({expenseBox}, 2);
  EXPECT_TRUE(expenses);
  EXPECT_FALSE(income);
  EXPECT_EQ(balances, BalImport_Actual);
}

TEST_F(ImportFromDialog, ImportsTheAccountsIntoThePlanAndClosesTheDialog) {
  Imports({incomeBox, expenseBox}, 0);
  EXPECT_FALSE(toolkit->stillOpen);
  EXPECT_EQ(component.ErrorNumber(), 0);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
  EXPECT_TRUE(component.IncludeIncomeAccounts());
  EXPECT_TRUE(component.IncludeExpenseAccounts());
  const std::string table = host.planContent->tables[fakes::TableId("20", "0600")];
  EXPECT_TRUE(fakes::Holds(table, "Rent")) << table;
}

TEST_F(ImportFromDialog, PassesEachChoiceOfBalancesToTheComponent) {
  for (int balances = 0; balances < 4; ++balances) {
    Imports({incomeBox}, balances);
    EXPECT_EQ(static_cast<int>(component.BalancesImport()), balances);
  }
}

TEST_F(ImportFromDialog, ResetsOptionsThatTheHostHadSet) {
  component.IncludeExpenseAccounts(true);
  component.BalancesImport(BalImport_All);
  Imports({incomeBox}, 0);
  EXPECT_FALSE(component.IncludeExpenseAccounts());
  EXPECT_EQ(component.BalancesImport(), BalImport_None);
}

TEST_F(ImportFromDialog, LeavesPastPerformanceAndGrowthAsTheHostSetThem) {
  component.IncludePastPerformance(true);
  component.GrowthRateIncome(3);
  component.GrowthRateCOGS(4);
  component.GrowthRateExpenses(5);
  Imports({incomeBox}, 0);
  EXPECT_TRUE(component.IncludePastPerformance());
  EXPECT_EQ(component.GrowthRateIncome(), 3);
  EXPECT_EQ(component.GrowthRateCOGS(), 4);
  EXPECT_EQ(component.GrowthRateExpenses(), 5);
}

TEST_F(ImportFromDialog, ShowsProgressAtOnceAndAtEveryEvent) {
  Imports({expenseBox}, 0);
  std::vector<int> percents;
  std::vector<std::string> texts;
  for (const Form& form : toolkit->shownNow) {
    EXPECT_TRUE(form.At("progressBar").visible);
    EXPECT_TRUE(form.At("progressText").visible);
    percents.push_back(form.At("progressBar").percent);
    texts.push_back(form.At("progressText").text);
  }
  EXPECT_EQ(percents, (std::vector<int>{0, 20, 40, 60, 80, 100}));
  EXPECT_EQ(texts, (std::vector<std::string>{"", "Processing...", "Processing...", "Processing...",
                                             "Processing...", "Processing..."}));
}

TEST_F(ImportFromDialog, DisablesEveryControlButTheProgressWhileItRuns) {
  Imports({expenseBox}, 0);
  ASSERT_FALSE(toolkit->shownNow.empty());
  for (const Form& form : toolkit->shownNow) {
    for (const Control& control : form.controls) {
      const bool progress = control.name == "progressBar" || control.name == "progressText";
      EXPECT_EQ(control.enabled, progress) << control.name;
    }
  }
}

TEST_F(ImportFromDialog, CannotBeClosedOrChangedWhileItRuns) {
  Dialog* shown = nullptr;
  int tries = 0;
  toolkit->meanwhile = [&] {
    shown->Dismiss();
    shown->Press("cmdButton3");
    shown->Press("cmdButton0");
    shown->Check(incomeBox, true);
    EXPECT_TRUE(shown->IsOpen());
    EXPECT_FALSE(shown->Shown().At(incomeBox).checked);
    ++tries;
  };
  toolkit->person = [&](Dialog& dialog) {
    shown = &dialog;
    dialog.Check(expenseBox, true);
    dialog.Press("cmdButton0");
  };
  component.ShowDialog(dlg_QBtoKRN);
  EXPECT_EQ(tries, 6);
  EXPECT_FALSE(toolkit->stillOpen);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

struct ImportThatCanBeStopped : ImportFromDialog {
  ImportThatCanBeStopped() {
    toolkit->followsTasks = true;
    dialogs->Follow({.description = "From Nursery into plan.kpf", .stop = [this] { ++stops; }});
    toolkit->person = [this](Dialog& dialog) {
      shown = &dialog;
      dialog.Check(expenseBox, true);
      dialog.Press("cmdButton0");
    };
  }

  bool CancelIsEnabled() const { return toolkit->shownNow.back().At("cmdButton2").enabled; }

  int stops = 0;
  Dialog* shown = nullptr;
};

TEST_F(ImportThatCanBeStopped, EnablesCancelOnceTheWindowShowsThatItRuns) {
  component.ShowDialog(dlg_QBtoKRN);
  ASSERT_EQ(toolkit->shownNow.size(), 6U);
  for (std::size_t index = 0; index < toolkit->shownNow.size(); ++index) {
    for (const Control& control : toolkit->shownNow[index].controls) {
      const bool cancel = control.name == "cmdButton2" && index > 0;
      const bool text =
          control.name == "progressBar" || control.name == "progressText" || control.name == "statusLine";
      EXPECT_EQ(control.enabled, cancel || text) << control.name << ' ' << index;
    }
  }
  EXPECT_EQ(stops, 0);
}

TEST_F(ImportThatCanBeStopped, StopsOnceAndStaysOpenUntilTheImportHasEnded) {
  int tries = 0;
  toolkit->meanwhile = [&] {
    if (!CancelIsEnabled()) return;
    ++tries;
    shown->Dismiss();
    shown->Press("cmdButton2");
    EXPECT_TRUE(shown->IsOpen());
    EXPECT_FALSE(shown->Shown().At("cmdButton2").enabled);
    EXPECT_EQ(shown->Shown().At("progressText").text, "Cancelling the import; nothing will be written.");
  };
  component.ShowDialog(dlg_QBtoKRN);
  EXPECT_EQ(tries, 1) << "later events leave the window as it is";
  EXPECT_EQ(stops, 1);
  EXPECT_FALSE(toolkit->stillOpen);
}

TEST_F(ImportThatCanBeStopped, IsShownBetweenTwoEventsToo) {
  std::size_t before = 0;
  host.journal->OnOccurrence("ProgressBarChange 60 Processing...", 1, [&] {
    before = toolkit->shownNow.size();
    dialogs->ShowNow();
    EXPECT_EQ(toolkit->shownNow.size(), before + 1);
  });
  component.ShowDialog(dlg_QBtoKRN);
  EXPECT_NE(before, 0U);
  dialogs->ShowNow();
  EXPECT_EQ(toolkit->shownNow.size(), 7U) << "no import runs any more";
}

TEST_F(ImportThatCanBeStopped, ClosesTheDialogWhenCancelIsPressedBeforeItRuns) {
  toolkit->person = [](Dialog& dialog) { dialog.Press("cmdButton2"); };
  component.ShowDialog(dlg_QBtoKRN);
  EXPECT_FALSE(toolkit->stillOpen);
  EXPECT_EQ(stops, 0);
  EXPECT_EQ(host.journal->Count("AfterImport"), 0);
}

TEST_F(ImportThatCanBeStopped, HasNoLineInTheExportDialog) {
  toolkit->person = [](Dialog& dialog) { dialog.Dismiss(); };
  component.ShowDialog(dlg_KRNtoQB);
  EXPECT_FALSE(toolkit->shown.back().Has("statusLine"));
}

TEST_F(ImportFromDialog, ClosesTheDialogAfterAFailureAndShowsNoMessage) {
  host.journal->Fail("create processor", Error(error_number::cannotCreateObject));
  Imports({expenseBox}, 0);
  EXPECT_FALSE(toolkit->stillOpen);
  EXPECT_NE(component.ErrorNumber(), 0);
  EXPECT_TRUE(toolkit->messages.empty());
}

TEST_F(ImportFromDialog, StartsEachTimeWithAFreshDialog) {
  Imports({incomeBox, expenseBox}, 3);
  toolkit->person = [](Dialog& dialog) { dialog.Dismiss(); };
  component.ShowDialog(dlg_QBtoKRN);
  const Form& again = toolkit->shown.back();
  EXPECT_FALSE(again.At(incomeBox).checked);
  EXPECT_FALSE(again.At(expenseBox).checked);
  EXPECT_EQ(again.At("Combo1").selected, 0);
  EXPECT_FALSE(again.At("cmdButton0").enabled);
  EXPECT_FALSE(again.At("progressBar").visible);
}

TEST_F(ImportFromDialog, ShowsNoProgressOfAnImportThatTheHostStarts) {
  component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(component.Go());
  EXPECT_TRUE(toolkit->shownNow.empty());
}

TEST_F(ImportFromDialog, RefusesASecondOptionsDialogWhileOneIsShown) {
  host.journal->OnOccurrence("ProgressBarChange 20 Processing...", 1,
                             [&] { EXPECT_TRUE(component.ShowDialog(dlg_QBtoKRN).IsEmpty()); });
  Imports({expenseBox}, 0);
  EXPECT_EQ(toolkit->shown.size(), 1U);
  EXPECT_TRUE(host.observer->Reported(NoticeKind::OperationEnded, 400));
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(ImportFromDialog, RunsWithoutProgressIfTheDialogsAreNotASink) {
  OutsideWorld world = host.World();
  world.userInterface = dialogs;
  QBDataExchange other(world);
  other.KRNPlanData(Variant(host.plan));
  toolkit->person = [](Dialog& dialog) {
    dialog.Check(expenseBox, true);
    dialog.Press("cmdButton0");
  };
  other.ShowDialog(dlg_QBtoKRN);
  EXPECT_EQ(toolkit->shownNow.size(), 1U);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

}  // namespace
}  // namespace krnqb::ui
