#include "ui/win32/form_window.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "krnqb/error.h"
#include "support/own_module.h"
#include "support/windows_text.h"
#include "ui/controls.h"
#include "ui/win32/control_windows.h"
#include "ui/win32/drawn_controls.h"

namespace krnqb::ui::win32 {
namespace {

HFONT NewHeadingFont(HFONT text) {
  LOGFONTW description{};
  GetObjectW(text, sizeof(description), &description);
  description.lfHeight = MulDiv(description.lfHeight, 13, 10);
  description.lfWeight = FW_BOLD;
  return CreateFontIndirectW(&description);
}

// What a person did while nobody listened would go to whatever window stands there next.
void DropInput() {
  MSG dropped{};
  while (PeekMessageW(&dropped, nullptr, 0, 0, PM_REMOVE | PM_QS_INPUT) != FALSE) {
  }
}

}  // namespace

void FormWindow::Run(HWND owner) {
  const INITCOMMONCONTROLSEX classes{sizeof(classes), ICC_PROGRESS_CLASS};
  InitCommonControlsEx(&classes);
  const std::wstring name = Wide(dialog.Shown().name);
  DialogBoxParamW(OwnModule(), name.c_str(), owner, Procedure, reinterpret_cast<LPARAM>(this));
  if (fault) std::rethrow_exception(std::exchange(fault, nullptr));
  if (window == nullptr) throw Error(error_number::cannotCreateObject);
}

void FormWindow::ShowNow() {
  hasWorked = true;
  ShowState();
  RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
}

INT_PTR CALLBACK FormWindow::Procedure(HWND place, UINT message, WPARAM first, LPARAM second) noexcept {
  if (message == WM_INITDIALOG) SetWindowLongPtrW(place, DWLP_USER, second);
  auto* shown = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(place, DWLP_USER));
  if (shown == nullptr) return FALSE;
  try {
    return shown->Handle(place, message, first, second);
  } catch (...) {
    shown->fault = std::current_exception();
    shown->End();
    return TRUE;
  }
}

// The messages of the window and of its pages.
INT_PTR FormWindow::Handle(HWND place, UINT message, WPARAM first, LPARAM second) {
  switch (message) {
    case WM_INITDIALOG:
      if (window == nullptr) Load(place);
      return FALSE;  // the focus is set
    case WM_COMMAND:
      if (rows) Command(LOWORD(first), HIWORD(first));
      return TRUE;
    case WM_CLOSE:
      Act([this] { dialog.Dismiss(); });
      return TRUE;
    case WM_DRAWITEM:
      if (const Control* drawn = ControlOf(static_cast<int>(first))) {
        DrawControl(drawn->kind, *reinterpret_cast<const DRAWITEMSTRUCT*>(second));
      }
      return TRUE;
    default:
      return FALSE;
  }
}

void FormWindow::Load(HWND made) {
  window = made;
  RemoveUnknown();
  LoadPages();
  LoadControls();
  LoadHeading();
  rows.emplace(dialog.Shown(), controls, window);
  ShowState();
  SetFocus(GetNextDlgTabItem(window, nullptr, FALSE));
}

// A template has all controls that there can be.
void FormWindow::RemoveUnknown() {
  std::vector<HWND> unknown;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (ControlOf(GetDlgCtrlID(child)) == nullptr) unknown.push_back(child);
  }
  for (HWND child : unknown) DestroyWindow(child);
}

// Pages come before everything else in the tab order, in theirs.
void FormWindow::LoadPages() {
  HWND previous = HWND_TOP;
  for (const Control& control : dialog.Shown().controls) {
    if (control.kind != ControlKind::Page) continue;
    const std::wstring name = Wide(control.name);
    HWND page =
        CreateDialogParamW(OwnModule(), name.c_str(), window, Procedure, reinterpret_cast<LPARAM>(this));
    if (page == nullptr) throw Error(error_number::cannotCreateObject);
    SetWindowLongPtrW(page, GWLP_ID, control.identifier);
    SetWindowPos(page, previous, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    previous = page;
    controls.emplace(control.name, page);
  }
}

void FormWindow::LoadControls() {
  for (const Control& control : dialog.Shown().controls) {
    HWND made = WindowOf(control);
    if (made == nullptr) throw Error(error_number::cannotCreateObject);
    controls.emplace(control.name, made);
    SetUpControl(control, made);
  }
}

void FormWindow::LoadHeading() {
  const auto title = controls.find(std::string(control::title.name));
  if (title == controls.end()) return;
  heading.reset(NewHeadingFont(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0))));
  SendMessageW(title->second, WM_SETFONT, reinterpret_cast<WPARAM>(heading.get()), FALSE);
}

void FormWindow::ShowState() {
  const Form& form = dialog.Shown();
  SetWindowTextW(window, Wide(form.caption).c_str());
  for (const Control& control : form.controls) ShowControl(control, controls.at(control.name));
  rows->Arrange(form, controls);
}

void FormWindow::Command(int identifier, int notification) {
  const Control* control = ControlOf(identifier);
  if (control == nullptr) {
    // Enter and Escape, where the buttons that they press have other numbers.
    if (identifier == IDOK) Act([this] { dialog.Press(dialog.Shown().defaultButton); });
    if (identifier == IDCANCEL) Act([this] { dialog.Dismiss(); });
    return;
  }
  const std::string name = control->name;
  HWND place = controls.at(name);
  if (control->kind == ControlKind::Button && notification == BN_CLICKED) {
    Act([&] { dialog.Press(name); });
  } else if (control->kind == ControlKind::CheckBox && notification == BN_CLICKED) {
    const bool checked = SendMessageW(place, BM_GETCHECK, 0, 0) == BST_CHECKED;
    Act([&] { dialog.Check(name, checked); });
  } else if (control->kind == ControlKind::DropDownList && notification == CBN_SELCHANGE) {
    const auto index = static_cast<int>(SendMessageW(place, CB_GETCURSEL, 0, 0));
    Act([&] { dialog.Choose(name, index); });
  }
}

void FormWindow::Act(const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    fault = std::current_exception();
  }
  ShowState();
  if (fault || !dialog.IsOpen()) End();
}

void FormWindow::End() {
  if (hasWorked) DropInput();
  EndDialog(window, 0);
}

HWND FormWindow::WindowOf(const Control& control) const {
  if (control.kind == ControlKind::Page) return controls.at(control.name);
  return GetDlgItem(control.page.empty() ? window : controls.at(control.page), control.identifier);
}

const Control* FormWindow::ControlOf(int identifier) const noexcept {
  const std::vector<Control>& all = dialog.Shown().controls;
  const auto found = std::find_if(all.begin(), all.end(), [identifier](const Control& control) {
    return control.identifier == identifier;
  });
  return found == all.end() ? nullptr : &*found;
}

}  // namespace krnqb::ui::win32
