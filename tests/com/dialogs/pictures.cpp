// Shows the dialogs one after another for script/screenshots. For each it writes name, left, top, width and
// height to the file "picture", and waits until that file is removed.
#include <windows.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <functional>

#include "host/component.h"
#include "numbers.h"
#include "person.h"

namespace krnqb::testing {
namespace {

using Deed = std::function<void(HWND window)>;

const wchar_t* const importCaption = L"Import From Quickbooks";

bool IsThere(const char* file) {
  return GetFileAttributesA(file) != INVALID_FILE_ATTRIBUTES;
}

// Throws if nobody takes the picture.
void TakePicture(const char* name, HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  Sleep(300);
  std::ofstream("picture.new") << name << ' ' << place.left << ' ' << place.top << ' '
                               << place.right - place.left << ' ' << place.bottom - place.top << '\n';
  MoveFileA("picture.new", "picture");
  if (!Becomes([] { return !IsThere("picture"); })) throw std::runtime_error("no picture is taken");
}

void Picture(const char* name, const wchar_t* role, const wchar_t* caption, const Deed& before = {}) {
  Program host(std::wstring(L"krnqb_dialog_host.exe ") + role);
  HWND window = host.Dialog(caption);
  if (before) before(window);
  TakePicture(name, window);
  Press(VK_ESCAPE);
  host.End();
}

void ChooseEverything(HWND window) {
  ClickBox(window, incomeBox);
  ClickBox(window, expenseBox);
  ChooseBelow(window, balances, 3);
}

void PictureOfAnImport() {
  DeleteFileA("release");
  const Variable hold(L"KRNQB_HOLD_AT", L"ProgressBarChange 67 Importing income balances...");
  Program host(L"krnqb_dialog_host.exe import");
  HWND window = host.Dialog(importCaption);
  ChooseEverything(window);
  Click(Control(window, importButton));
  if (!Becomes([&host] { return host.HasSaid("held"); })) throw std::runtime_error("no import runs");
  TakePicture("import-running", window);
  std::ofstream("release").put('x');
  host.End();
}

void TakeAll() {
  Picture("import", L"import", importCaption);
  Picture("import-chosen", L"import", importCaption, ChooseEverything);
  PictureOfAnImport();
  Picture("export", L"export", L"Export Into Quickbooks");
  Picture("company", L"company", L"Select QuickBooks Company");
  Picture("plan", L"plan", L"Select Business Plan");
  Picture("about", L"about", L"About KRN6_QB2002");
  Picture("message", L"message", L"");
}

}  // namespace
}  // namespace krnqb::testing

int main() {
  try {
    krnqb::testing::TakeAll();
  } catch (const std::exception& fault) {
    std::puts(fault.what());
    return 1;
  }
  std::puts("end of the pictures");
  return 0;
}
