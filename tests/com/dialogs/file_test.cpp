// The open-file dialogs.
#include <windows.h>

#include <dlgs.h>
#include <gtest/gtest.h>

#include "host/component.h"
#include "person.h"
#include "test_processor/texts.h"

namespace krnqb::testing {
namespace {

const wchar_t* const companyCaption = L"Select QuickBooks Company";
const wchar_t* const planCaption = L"Select Business Plan";

std::wstring CurrentFolder() {
  wchar_t folder[MAX_PATH];
  return {folder, GetCurrentDirectoryW(MAX_PATH, folder)};
}

void Touch(const std::wstring& path) {
  CloseHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
}

BOOL CALLBACK FindField(HWND window, LPARAM found) {
  if (ClassOf(window) != L"Edit" || IsWindowVisible(window) == FALSE) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

// Returns the dialog's only text field, where a name is typed.
HWND NameField(HWND window) {
  HWND found = nullptr;
  EnumChildWindows(window, FindField, reinterpret_cast<LPARAM>(&found));
  EXPECT_NE(nullptr, found);
  return found;
}

// A folder with files. Sessions are refused, so QBCompany returns the stored path.
struct Files : ::testing::Test {
  Files() {
    CreateDirectoryW(folder.c_str(), nullptr);
    for (const wchar_t* name : {L"nursery.qbw", L"caf\u00e9 \u20ac.QBW", L"nursery.kpf", L"notes.txt"}) {
      Touch(folder + L'\\' + name);
    }
  }

  static void Choose(HWND window, const std::wstring& name) {
    SendMessageW(NameField(window), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
    Press(VK_RETURN);
  }

  std::vector<std::string> Lines(const std::wstring& result, const std::wstring& company) const {
    return {Utf8(result), "company " + Utf8(company), "folder " + Utf8(CurrentFolder())};
  }

  const std::wstring folder = CurrentFolder() + L"\\companies";
  const Variable refused{L"KRNQB_REFUSED_CALL", L"connection"};
  const Variable number{L"KRNQB_REFUSAL_NUMBER", L"80040408"};
};

TEST_F(Files, ReturnAndStoreTheChosenCompany) {
  Program host(L"krnqb_dialog_host.exe company");
  HWND window = host.Dialog(companyCaption);
  EXPECT_EQ(L"*.qbw", TextOf(NameField(window)));
  EXPECT_EQ(L"QuickBooks Company (*.qbw)", TextOf(Control(window, cmb1)));
  Choose(window, folder + L"\\nursery.qbw");
  EXPECT_EQ(Lines(L"chosen " + folder + L"\\nursery.qbw", folder + L"\\nursery.qbw"), host.End());
}

TEST_F(Files, ReturnNonAsciiNamesUnchanged) {
  Program host(L"krnqb_dialog_host.exe company");
  const std::wstring path = folder + L"\\caf\u00e9 \u20ac.QBW";
  Choose(host.Dialog(companyCaption), path);
  EXPECT_EQ(Lines(L"chosen " + path, path), host.End());
}

TEST_F(Files, KeepTheCompanyWhenCancelled) {
  Program host(L"krnqb_dialog_host.exe company");
  Click(Control(host.Dialog(companyCaption), IDCANCEL));
  EXPECT_EQ(Lines(L"empty", L"C:\\before.qbw"), host.End());
}

TEST_F(Files, AreCancelledByEscape) {
  Program host(L"krnqb_dialog_host.exe plan");
  host.Dialog(planCaption);
  Press(VK_ESCAPE);
  EXPECT_EQ(Lines(L"empty", L"C:\\before.qbw"), host.End());
}

TEST_F(Files, KeepTheCompanyWhenAPlanIsChosen) {
  Program host(L"krnqb_dialog_host.exe plan");
  HWND window = host.Dialog(planCaption);
  EXPECT_EQ(L"*.kpf", TextOf(NameField(window)));
  EXPECT_EQ(L"Business Plan (*.kpf)", TextOf(Control(window, cmb1)));
  Choose(window, folder + L"\\nursery.kpf");
  EXPECT_EQ(Lines(L"chosen " + folder + L"\\nursery.kpf", L"C:\\before.qbw"), host.End());
}

TEST_F(Files, RejectAMissingFile) {
  Program host(L"krnqb_dialog_host.exe company");
  HWND window = host.Dialog(companyCaption);
  Choose(window, folder + L"\\missing.qbw");
  // The system shows an error and keeps the dialog open.
  EXPECT_TRUE(Becomes([window] { return IsWindowEnabled(window) == FALSE; }));
  Press(VK_RETURN);
  EXPECT_TRUE(Becomes([window] { return IsWindowEnabled(window) != FALSE; }));
  EXPECT_TRUE(host.Shows(companyCaption));
  Click(Control(window, IDCANCEL));
  EXPECT_EQ(Lines(L"empty", L"C:\\before.qbw"), host.End());
}

}  // namespace
}  // namespace krnqb::testing
