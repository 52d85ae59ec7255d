#include "ui/options_dialog.h"

#include <gtest/gtest.h>

#include "fakes/scripted_toolkit.h"
#include "fakes/test_host.h"
#include "thrown_error.h"

namespace krnqb::ui {
namespace {

using fakes::ScriptedToolkit;

struct OptionsDialogTest : testing::Test {
  const Control& Shown(const char* name) const { return dialog.Shown().At(name); }

  ScriptedToolkit toolkit;
  OptionsDialog dialog{toolkit};
};

struct ImportPageTest : OptionsDialogTest {
  ImportPageTest() { dialog.Mode(2); }
};

TEST_F(OptionsDialogTest, StartsInModeOneWithoutAComponent) {
  EXPECT_EQ(dialog.Mode(), 1);
  EXPECT_EQ(dialog.QBDataExchangeObject(), nullptr);
  EXPECT_TRUE(dialog.IsOpen());
  EXPECT_EQ(dialog.Shown().name, "frmOptions");
  EXPECT_EQ(dialog.Shown().cancelButton, "cmdButton2");
  EXPECT_EQ(dialog.Shown().defaultButton, "cmdButton0");
}

TEST_F(OptionsDialogTest, ShowsTheImportPageInModeTwo) {
  dialog.Mode(2);
  EXPECT_EQ(dialog.Mode(), 2);
  EXPECT_EQ(dialog.Shown().caption, "Import From Quickbooks");
  EXPECT_TRUE(Shown("OptionsQBtoKRN1").visible);
  EXPECT_FALSE(Shown("OptionsKRNtoQB1").visible);
}

TEST_F(OptionsDialogTest, ShowsTheExportPageInAnyOtherMode) {
  for (const int mode : {1, 0, 3, -1}) {
    dialog.Mode(2);
    dialog.Mode(mode);
    EXPECT_EQ(dialog.Mode(), 1) << mode;
    EXPECT_EQ(dialog.Shown().caption, "Export Into Quickbooks") << mode;
    EXPECT_FALSE(Shown("OptionsQBtoKRN1").visible) << mode;
    EXPECT_TRUE(Shown("OptionsKRNtoQB1").visible) << mode;
  }
}

TEST_F(OptionsDialogTest, HasThreeButtonsWithImportDisabled) {
  EXPECT_EQ(Shown("cmdButton0").text, "&Import");
  EXPECT_EQ(Shown("cmdButton2").text, "&Cancel");
  EXPECT_EQ(Shown("cmdButton3").text, "&Help");
  EXPECT_FALSE(Shown("cmdButton0").enabled);
  EXPECT_TRUE(Shown("cmdButton2").enabled);
  EXPECT_TRUE(Shown("cmdButton3").enabled);
  EXPECT_FALSE(dialog.Shown().Has("cmdButton1"));
}

TEST_F(OptionsDialogTest, HidesTheProgressUntilAnImportRuns) {
  EXPECT_EQ(Shown("progressBar").kind, ControlKind::ProgressBar);
  EXPECT_FALSE(Shown("progressBar").visible);
  EXPECT_FALSE(Shown("progressText").visible);
  dialog.ShowProgress(40, "Processing...");
  EXPECT_FALSE(Shown("progressBar").visible);
  EXPECT_TRUE(toolkit.shownNow.empty());
}

TEST_F(OptionsDialogTest, ShowsItsTaskInALineBelowTheButtons) {
  toolkit.followsTasks = true;
  dialog.Mode(2);
  dialog.Follow({.description = "From Nursery into plan.kpf", .stop = {}});
  const Control& line = Shown("statusLine");
  EXPECT_EQ(line.kind, ControlKind::Label);
  EXPECT_EQ(line.text, "From Nursery into plan.kpf");
  EXPECT_GT(line.row, Shown("cmdButton2").row);
  EXPECT_EQ(dialog.Shown().caption, "Import From Quickbooks");
}

TEST_F(OptionsDialogTest, HasNoLineForATaskThatTheToolkitCannotFollow) {
  dialog.Follow({.description = "From Nursery into plan.kpf", .stop = {}});
  EXPECT_FALSE(dialog.Shown().Has("statusLine"));
}

TEST_F(OptionsDialogTest, DoesNothingInItsShowMethods) {
  dialog.ShowQBtoKRN();
  EXPECT_EQ(dialog.Mode(), 1);
  dialog.Mode(2);
  dialog.ShowKRNtoQB();
  EXPECT_EQ(dialog.Mode(), 2);
}

TEST_F(ImportPageTest, HasTwoBoxesADividerAndTheBalances) {
  EXPECT_EQ(Shown("chkIncludeIncomeAccounts").text, "Income Sales Accounts");
  EXPECT_EQ(Shown("chkIncludeExpenseAccounts").text, "Include Expense Accounts");
  EXPECT_EQ(Shown("Label1").text, "Import Account Balances:");
  EXPECT_EQ(Shown("Divider1").kind, ControlKind::Divider);
  EXPECT_FALSE(Shown("chkIncludeIncomeAccounts").checked);
  EXPECT_FALSE(Shown("chkIncludeExpenseAccounts").checked);
  const Control& list = Shown("Combo1");
  ASSERT_EQ(list.entries.size(), 4U);
  const char* const texts[] = {"None", "Planned", "Actual", "Both"};
  for (std::size_t index = 0; index < 4; ++index) {
    EXPECT_EQ(list.entries[index].text, texts[index]);
    EXPECT_EQ(list.entries[index].data, static_cast<std::int16_t>(index));
  }
  EXPECT_EQ(list.selected, 0);
  EXPECT_FALSE(list.enabled);
  EXPECT_EQ(list.accessibleName, "Import Account Balances");
}

struct BoxesCase {
  bool income;
  bool expenses;
};

class Boxes : public testing::TestWithParam<BoxesCase> {};

TEST_P(Boxes, EnableBalancesAndImportWhenOneOfThemIsChecked) {
  ScriptedToolkit toolkit;
  OptionsDialog dialog(toolkit);
  dialog.Mode(2);
  const auto& [income, expenses] = GetParam();
  dialog.Check("chkIncludeIncomeAccounts", income);
  dialog.Check("chkIncludeExpenseAccounts", expenses);
  EXPECT_EQ(dialog.Shown().At("Combo1").enabled, income || expenses);
  EXPECT_EQ(dialog.Shown().At("cmdButton0").enabled, income || expenses);
}

INSTANTIATE_TEST_SUITE_P(Combinations, Boxes,
                         testing::Values(BoxesCase{false, false}, BoxesCase{true, false},
                                         BoxesCase{false, true}, BoxesCase{true, true}));

TEST_F(ImportPageTest, KeepsTheSelectedBalancesWhenTheLastBoxIsUnchecked) {
  dialog.Check("chkIncludeIncomeAccounts", true);
  dialog.Choose("Combo1", 2);
  dialog.Check("chkIncludeIncomeAccounts", false);
  EXPECT_FALSE(Shown("Combo1").enabled);
  EXPECT_FALSE(Shown("cmdButton0").enabled);
  EXPECT_EQ(Shown("Combo1").selected, 2);
}

TEST_F(ImportPageTest, IgnoresAChoiceThatIsInvalidOrMadeWhileTheListIsDisabled) {
  dialog.Choose("Combo1", 2);
  EXPECT_EQ(Shown("Combo1").selected, 0);
  dialog.Check("chkIncludeIncomeAccounts", true);
  dialog.Choose("Combo1", 4);
  dialog.Choose("Combo1", -1);
  EXPECT_EQ(Shown("Combo1").selected, 0);
}

TEST_F(ImportPageTest, IgnoresTheBoxesOfTheOtherPage) {
  dialog.Check("chkImport0", true);
  EXPECT_FALSE(Shown("chkImport0").checked);
}

TEST_F(OptionsDialogTest, LeavesImportDisabledOnTheExportPage) {
  const char* const texts[] = {
      "Include Income Sub-Accounts", "Export Actual values for Income Accounts to QuickBooks budget",
      "Export Planned values for Expense Accounts to QuickBooks budget", "Include Expense Sub-Accounts"};
  for (int index = 0; index < 4; ++index) {
    const std::string name = "chkImport" + std::to_string(index);
    EXPECT_EQ(Shown(name.c_str()).text, texts[index]);
    EXPECT_FALSE(Shown(name.c_str()).checked);
    dialog.Check(name, true);
    EXPECT_TRUE(Shown(name.c_str()).checked);
    EXPECT_FALSE(Shown("cmdButton0").enabled);
  }
}

TEST(ExportPage, ClearsAllOfItsBoxes) {
  Form form;
  ExportPage page(form);
  for (int index = 0; index < 4; ++index) form.At("chkImport" + std::to_string(index)).checked = true;
  page.ClearAll();
  for (int index = 0; index < 4; ++index) EXPECT_FALSE(form.At("chkImport" + std::to_string(index)).checked);
}

TEST(ImportPage, ReturnsItsValues) {
  Form form;
  const ImportPage page(form);
  EXPECT_FALSE(page.IncludeIncomeAccounts());
  EXPECT_FALSE(page.IncludeExpenseAccounts());
  EXPECT_EQ(page.BalancesImport(), 0);
  form.At("chkIncludeIncomeAccounts").checked = true;
  EXPECT_TRUE(page.IncludeIncomeAccounts());
  EXPECT_FALSE(page.IncludeExpenseAccounts());
  form.At("chkIncludeIncomeAccounts").checked = false;
  form.At("chkIncludeExpenseAccounts").checked = true;
  EXPECT_FALSE(page.IncludeIncomeAccounts());
  EXPECT_TRUE(page.IncludeExpenseAccounts());
  for (std::int16_t balances = 0; balances < 4; ++balances) {
    form.At("Combo1").selected = balances;
    EXPECT_EQ(page.BalancesImport(), balances);
  }
}

TEST(ImportPage, RaisesItsEventAtEveryClick) {
  Form form;
  ImportPage page(form);
  std::vector<bool> raised;
  page.onIncluded = [&](bool included) { raised.push_back(included); };
  form.At("chkIncludeIncomeAccounts").checked = true;
  page.Clicked();
  form.At("chkIncludeExpenseAccounts").checked = true;
  page.Clicked();
  form.At("chkIncludeIncomeAccounts").checked = false;
  page.Clicked();
  form.At("chkIncludeExpenseAccounts").checked = false;
  page.Clicked();
  EXPECT_EQ(raised, (std::vector<bool>{true, true, true, false}));
}

TEST(ImportPage, DoesNothingInClearAll) {
  Form form;
  const ImportPage page(form);
  form.At("chkIncludeIncomeAccounts").checked = true;
  form.At("Combo1").selected = 3;
  page.ClearAll();
  EXPECT_TRUE(page.IncludeIncomeAccounts());
  EXPECT_EQ(page.BalancesImport(), 3);
}

class ClosingButton : public testing::TestWithParam<const char*> {};

TEST_P(ClosingButton, ClosesTheDialogAndChangesNothing) {
  fakes::TestHost host;
  ScriptedToolkit toolkit;
  OptionsDialog dialog(toolkit);
  dialog.QBDataExchangeObject(&host.component);
  dialog.Mode(2);
  dialog.Check("chkIncludeIncomeAccounts", true);
  dialog.Check("chkIncludeExpenseAccounts", true);
  dialog.Choose("Combo1", 3);
  dialog.Press(GetParam());
  EXPECT_FALSE(dialog.IsOpen());
  EXPECT_FALSE(host.component.IncludeIncomeAccounts());
  EXPECT_FALSE(host.component.IncludeExpenseAccounts());
  EXPECT_EQ(host.component.BalancesImport(), BalImport_None);
  EXPECT_EQ(host.journal->Text(), "");
}

INSTANTIATE_TEST_SUITE_P(CancelAndHelp, ClosingButton, testing::Values("cmdButton2", "cmdButton3"));

TEST_F(OptionsDialogTest, IsCancelledByEscapeInBothModes) {
  for (const int mode : {1, 2}) {
    OptionsDialog dismissed(toolkit);
    dismissed.Mode(mode);
    dismissed.Dismiss();
    EXPECT_FALSE(dismissed.IsOpen());
  }
}

TEST_F(OptionsDialogTest, IgnoresMissingControls) {
  dialog.Press("cmdButton1");
  dialog.Press("chkImport0");
  dialog.Check("cmdButton2", true);
  dialog.Choose("chkImport0", 0);
  EXPECT_TRUE(dialog.IsOpen());
}

TEST_F(ImportPageTest, IgnoresImportWhileItIsDisabled) {
  fakes::TestHost host;
  dialog.QBDataExchangeObject(&host.component);
  dialog.Press("cmdButton0");
  EXPECT_TRUE(dialog.IsOpen());
  EXPECT_EQ(host.journal->Text(), "");
}

TEST_F(ImportPageTest, CannotImportWithoutAComponent) {
  dialog.Check("chkIncludeIncomeAccounts", true);
  EXPECT_EQ(tests::NumberThrownBy([this] { dialog.Press("cmdButton0"); }), 91);
}

TEST_F(ImportPageTest, IgnoresEverythingOnceItIsClosed) {
  dialog.Dismiss();
  dialog.Check("chkIncludeIncomeAccounts", true);
  EXPECT_FALSE(Shown("chkIncludeIncomeAccounts").checked);
}

}  // namespace
}  // namespace krnqb::ui
