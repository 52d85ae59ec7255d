// Imports started from the dialog, with the test processor.
#include <gtest/gtest.h>

#include <sstream>

#include "host/component.h"
#include "numbers.h"
#include "person.h"

namespace krnqb::testing {
namespace {

const wchar_t* const caption = L"Import From Quickbooks";

void ChooseEverything(HWND window) {
  ClickBox(window, incomeBox);
  ClickBox(window, expenseBox);
  ChooseBelow(window, balances, 3);
}

const RecordedImport everything{"1.1", "ald", "all"};

// Returns what the dialog shows at each event, then what the host has. The host receives an event before the
// dialog does; only the bar and its text are enabled.
std::vector<std::string> LinesOfImport() {
  std::vector<std::string> lines;
  std::string percent = "0";
  std::string text;
  for (const std::string& event : everything.Events()) {
    lines.push_back("at " + event + ": bar " + percent + " shown, text \"" + text + "\", usable 1030 1031");
    std::istringstream words(event);
    std::string name;
    words >> name;
    if (name != "ProgressBarChange") continue;
    words >> percent >> std::ws;
    std::getline(words, text);
  }
  EXPECT_GT(lines.size(), 20U);
  lines.push_back("empty");
  lines.push_back("expenses -1, income -1, past -1, balances 3, error 0");
  return lines;
}

TEST(Importing, ChangesThePlanAsTheCommandLineDoes) {
  DeleteFileW(L"cells.txt");
  Program host(L"krnqb_dialog_host.exe import");
  HWND window = host.Dialog(caption);
  ChooseEverything(window);
  Click(Control(window, importButton));
  EXPECT_EQ(LinesOfImport(), host.End());
  const std::string cells = everything.Cells();
  EXPECT_FALSE(cells.empty());
  EXPECT_EQ(cells, FileText("cells.txt"));
  EXPECT_NE(PlanTables("recordings\\ald.kpf").Cells(), cells);
}

// User input during the import is discarded.
TEST(Importing, DiscardsInputAndCannotBeClosed) {
  DeleteFileW(L"release");
  DeleteFileW(L"cells.txt");
  const Variable hold(L"KRNQB_HOLD_AT", L"ProgressBarChange 33 Importing income balances...");
  Program host(L"krnqb_dialog_host.exe import");
  HWND window = host.Dialog(caption);
  ChooseEverything(window);
  Click(Control(window, importButton));
  ASSERT_TRUE(Becomes([&host] { return host.HasSaid("held"); }));
  for (const int identifier : {incomeBox, balances, importButton, cancelButton, helpButton}) {
    EXPECT_FALSE(IsEnabled(window, identifier)) << identifier;
    Click(Control(window, identifier));
  }
  Press(VK_ESCAPE);
  Press(VK_RETURN);
  PostMessageW(window, WM_CLOSE, 0, 0);
  Close(window);
  EXPECT_TRUE(host.Shows(caption));
  FILE* release = fopen("release", "w");
  fclose(release);
  std::vector<std::string> lines = host.End();
  EXPECT_EQ(1, std::erase(lines, "held"));
  EXPECT_EQ(LinesOfImport(), lines);
  const std::string cells = everything.Cells();
  EXPECT_EQ(cells, FileText("cells.txt"));
}

// No message is shown: the host checks the error.
TEST(Importing, LeavesFailuresToTheHost) {
  const Variable refused(L"KRNQB_REFUSED_CALL", L"creation");
  const Variable number(L"KRNQB_REFUSAL_NUMBER", L"80040154");
  Program host(L"krnqb_dialog_host.exe import");
  HWND window = host.Dialog(caption);
  ClickBox(window, expenseBox);
  Click(Control(window, importButton));
  const std::vector<std::string> lines = host.End();
  ASSERT_GE(lines.size(), 2U);
  EXPECT_EQ("empty", lines.end()[-2]);
  EXPECT_TRUE(lines.back().starts_with("expenses -1, income 0, past -1, balances 0, error ")) << lines.back();
  EXPECT_FALSE(lines.back().ends_with("error 0")) << lines.back();
}

}  // namespace
}  // namespace krnqb::testing
