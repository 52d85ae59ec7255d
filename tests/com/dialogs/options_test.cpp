// The options dialog in both modes, by mouse and keyboard.
#include <gtest/gtest.h>

#include "host/component.h"
#include "numbers.h"
#include "person.h"

namespace krnqb::testing {
namespace {

const wchar_t* const importCaption = L"Import From Quickbooks";
const wchar_t* const exportCaption = L"Export Into Quickbooks";
const char* const untouched = "expenses 0, income 0, past -1, balances 0, error 0";

const std::vector<std::string> closedUntouched{"empty", untouched};

class Shown {
 public:
  explicit Shown(const std::wstring& role)
      : host(L"krnqb_dialog_host.exe " + role),
        window(host.Dialog(role == L"import" ? importCaption : exportCaption)) {}

  Program host;
  HWND window;
};

struct DescribedControl {
  int identifier;
  const wchar_t* className;
  const wchar_t* text;
};

const DescribedControl importControls[] = {{importPage, L"#32770", L"Import options"},
                                           {incomeBox, L"Button", L"Income Sales Accounts"},
                                           {expenseBox, L"Button", L"Include Expense Accounts"},
                                           {divider, L"Static", L"Separator"},
                                           {balancesLabel, L"Static", L"Import Account Balances:"},
                                           {balances, L"ComboBox", L"None"}};
const DescribedControl exportControls[] = {
    {exportPage, L"#32770", L"Export options"},
    {1021, L"Button", L"Include Income Sub-Accounts"},
    {1022, L"Button", L"Export Actual values for Income Accounts to QuickBooks budget"},
    {1023, L"Button", L"Export Planned values for Expense Accounts to QuickBooks budget"},
    {1024, L"Button", L"Include Expense Sub-Accounts"}};
const DescribedControl buttons[] = {{importButton, L"Button", L"&Import"},
                                    {cancelButton, L"Button", L"&Cancel"},
                                    {helpButton, L"Button", L"&Help"}};
const DescribedControl progress[] = {{progressBar, L"msctls_progress32", L"Import progress"},
                                     {progressText, L"Static", L""}};

template <std::size_t count>
void ExpectControls(HWND window, const DescribedControl (&expected)[count], bool shown) {
  for (const DescribedControl& control : expected) {
    HWND made = Control(window, control.identifier);
    ASSERT_NE(nullptr, made) << control.identifier;
    EXPECT_EQ(control.className, ClassOf(made));
    EXPECT_EQ(control.text, TextOf(made));
    EXPECT_EQ(shown, IsShown(window, control.identifier)) << control.identifier;
  }
}

TEST(Options, ShowsTheImportPage) {
  Shown shown(L"import");
  ExpectControls(shown.window, importControls, true);
  ExpectControls(shown.window, exportControls, false);
  ExpectControls(shown.window, buttons, true);
  ExpectControls(shown.window, progress, false);
  EXPECT_FALSE(IsChecked(shown.window, incomeBox));
  EXPECT_FALSE(IsChecked(shown.window, expenseBox));
  EXPECT_FALSE(IsEnabled(shown.window, balances));
  EXPECT_FALSE(IsEnabled(shown.window, importButton));
  EXPECT_TRUE(IsEnabled(shown.window, cancelButton));
  HWND list = Control(shown.window, balances);
  const wchar_t* const entries[] = {L"None", L"Planned", L"Actual", L"Both"};
  ASSERT_EQ(4, SendMessageW(list, CB_GETCOUNT, 0, 0));
  for (WPARAM index = 0; index < 4; ++index) {
    wchar_t text[32];
    SendMessageW(list, CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(text));
    EXPECT_STREQ(entries[index], text);
  }
  Click(Control(shown.window, cancelButton));
  EXPECT_EQ(closedUntouched, shown.host.End());
}

TEST(Options, ShowsTheExportPageWhoseBoxesEnableNothing) {
  Shown shown(L"export");
  ExpectControls(shown.window, exportControls, true);
  ExpectControls(shown.window, importControls, false);
  ExpectControls(shown.window, buttons, true);
  for (int box = firstExportBox; box <= lastExportBox; ++box) ClickBox(shown.window, box);
  EXPECT_FALSE(IsEnabled(shown.window, importButton));
  Click(Control(shown.window, importButton));
  Click(Control(shown.window, helpButton));
  EXPECT_EQ(closedUntouched, shown.host.End());
}

TEST(Options, ShowsNothingForAnotherNumber) {
  Program host(L"krnqb_dialog_host.exe other");
  EXPECT_EQ(closedUntouched, host.End());
}

TEST(Options, EnablesBalancesAndImportWhileABoxIsChecked) {
  Shown shown(L"import");
  for (const int box : {incomeBox, expenseBox}) {
    ClickBox(shown.window, box);
    EXPECT_TRUE(Becomes([&] { return IsEnabled(shown.window, importButton); }));
    EXPECT_TRUE(IsEnabled(shown.window, balances));
    ClickBox(shown.window, box);
    EXPECT_TRUE(Becomes([&] { return !IsEnabled(shown.window, importButton); }));
    EXPECT_FALSE(IsEnabled(shown.window, balances));
  }
  ClickBox(shown.window, incomeBox);
  ClickBox(shown.window, expenseBox);
  ClickBox(shown.window, incomeBox);
  EXPECT_TRUE(IsEnabled(shown.window, importButton));
  Click(Control(shown.window, cancelButton));
  EXPECT_EQ(closedUntouched, shown.host.End());
}

TEST(Options, KeepsTheSelectedBalancesWhenTheLastBoxIsUnchecked) {
  Shown shown(L"import");
  ClickBox(shown.window, incomeBox);
  ChooseBelow(shown.window, balances, 2);
  ClickBox(shown.window, incomeBox);
  EXPECT_TRUE(Becomes([&] { return !IsEnabled(shown.window, balances); }));
  EXPECT_EQ(L"Actual", TextOf(Control(shown.window, balances)));
  Click(Control(shown.window, cancelButton));
  EXPECT_EQ(closedUntouched, shown.host.End());
}

struct Closing {
  const char* name;
  void (*close)(HWND window);
};

const Closing closings[] = {{"Cancel", [](HWND window) { Click(Control(window, cancelButton)); }},
                            {"Help", [](HWND window) { Click(Control(window, helpButton)); }},
                            {"Escape", [](HWND /*window*/) { Press(VK_ESCAPE); }},
                            {"AltC", [](HWND /*window*/) { PressWithAlt('C'); }},
                            {"AltH", [](HWND /*window*/) { PressWithAlt('H'); }},
                            {"CloseButton", Close}};

class OptionsClosing : public ::testing::TestWithParam<Closing> {};

TEST_P(OptionsClosing, ChangesNothing) {
  Shown shown(L"import");
  ClickBox(shown.window, incomeBox);
  GetParam().close(shown.window);
  EXPECT_EQ(closedUntouched, shown.host.End());
}

INSTANTIATE_TEST_SUITE_P(EveryWay, OptionsClosing, ::testing::ValuesIn(closings),
                         [](const auto& tested) { return tested.param.name; });

// Returns the control that has the keyboard focus in the dialog's process.
int Focused(HWND window) {
  GUITHREADINFO information{};
  information.cbSize = sizeof(information);
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &information);
  return GetDlgCtrlID(information.hwndFocus);
}

TEST(Options, ImportsFromTheKeyboardAlone) {
  Shown shown(L"import");
  const auto tabTo = [&shown](int identifier) {
    Press(VK_TAB);
    EXPECT_TRUE(Becomes([&] { return Focused(shown.window) == identifier; }))
        << Focused(shown.window) << " instead of " << identifier;
  };
  EXPECT_TRUE(Becomes([&] { return Focused(shown.window) == incomeBox; })) << Focused(shown.window);
  tabTo(expenseBox);
  Press(VK_SPACE);
  EXPECT_TRUE(Becomes([&] { return IsEnabled(shown.window, balances); }));
  tabTo(balances);
  Press(VK_DOWN);
  Press(VK_DOWN);
  EXPECT_TRUE(Becomes([&] { return Selected(shown.window, balances) == 2; }));
  tabTo(importButton);
  tabTo(cancelButton);
  tabTo(helpButton);
  tabTo(incomeBox);
  PressWithAlt('I');
  const std::vector<std::string> lines = shown.host.End();
  ASSERT_GT(lines.size(), 2U);
  EXPECT_EQ("expenses -1, income 0, past -1, balances 2, error 0", lines.back());
}

TEST(Options, ImportsOnEnterOnceImportIsEnabled) {
  Shown shown(L"import");
  Press(VK_RETURN);
  ClickBox(shown.window, incomeBox);
  EXPECT_TRUE(Becomes([&] { return IsEnabled(shown.window, importButton); }));
  Press(VK_RETURN);
  const std::vector<std::string> lines = shown.host.End();
  ASSERT_GT(lines.size(), 2U);
  EXPECT_EQ("expenses 0, income -1, past -1, balances 0, error 0", lines.back());
}

TEST(Options, ClipsNoText) {
  for (const wchar_t* page : {L"import", L"export"}) {
    Shown shown(page);
    EXPECT_EQ(std::vector<int>(), CutOff(shown.window));
    Close(shown.window);
    EXPECT_EQ(closedUntouched, shown.host.End());
  }
}

TEST(Options, AppearsInFrontOfTheHostsWindow) {
  Shown shown(L"import");
  HWND owner = GetWindow(shown.window, GW_OWNER);
  EXPECT_EQ(L"host", TextOf(owner));
  EXPECT_FALSE(IsWindowEnabled(owner));
  Close(shown.window);
  EXPECT_EQ(closedUntouched, shown.host.End());
}

}  // namespace
}  // namespace krnqb::testing
